#include "app/clsOplIniFile.h"

#include "app/AtomicFile.h"
#include "app/Cp932.h"
#include "app/FileUtil.h"
#include "app/Paths.h"
#include "app/SpaceTrim.h"
#include "app/Val.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

constexpr int kBufferLength = 256;

// "[name]" with blanks allowed around the name; returns the trimmed name.
std::optional<QString> sectionName(QStringView line)
{
    const QString t = trimSpaces(line);
    if (!t.startsWith(u'['))
        return std::nullopt;
    const qsizetype close = t.indexOf(u']');
    if (close < 0)
        return std::nullopt;
    return trimSpaces(QStringView(t).mid(1, close - 1));
}

bool sameName(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// The key of a "key=value" line (trimmed), or nullopt for comments and other lines.
std::optional<QString> keyOf(QStringView line)
{
    const QString t = trimSpaces(line);
    if (t.isEmpty() || t.startsWith(u';'))
        return std::nullopt;
    const qsizetype eq = t.indexOf(u'=');
    if (eq < 0)
        return std::nullopt;
    return trimSpaces(QStringView(t).left(eq));
}

QString valueOf(QStringView line)
{
    const qsizetype eq = line.indexOf(u'=');
    const QString trimmed = trimSpaces(line.mid(eq + 1));
    QStringView v = trimmed;
    if (v.size() >= 2 &&
        ((v.front() == u'"' && v.back() == u'"') || (v.front() == u'\'' && v.back() == u'\'')))
        v = v.mid(1, v.size() - 2);
    return v.toString();
}

} // namespace

qint16 clsOplIniFile::iInit(const QString& fileName)
{
    if (fileName.isEmpty()) {
        m_errStr = u"Iniファイル名を指定してください。"_s;
        return -1;
    }
    m_fileName = fileName;
    if (!bFileExists(fileName)) {
        m_errStr = u"指定されたIni（"_s + fileName + u"）ファイルが見つかりません。"_s;
        return -1;
    }
    return 0;
}

std::optional<QString> clsOplIniFile::readValue(const QString& section, const QString& key) const
{
    bool ok = false;
    const QStringList lines = readTextLines(toLocalPath(m_fileName), &ok);
    if (!ok)
        return std::nullopt;
    bool inSection = false;
    bool seenSection = false;
    for (const QString& line : lines) {
        if (const auto name = sectionName(line)) {
            // Only the first section of a name counts.
            if (inSection)
                return std::nullopt;
            inSection = !seenSection && sameName(*name, trimSpaces(section));
            seenSection = seenSection || inSection;
            continue;
        }
        if (!inSection)
            continue;
        if (const auto k = keyOf(line); k && sameName(*k, trimSpaces(key)))
            return valueOf(line);
    }
    return std::nullopt;
}

qint32 clsOplIniFile::nGetProfileLong(const QString& section, const QString& key)
{
    // Leading decimal digits (optionally signed), as the platform's integer read does.
    return leadingNumber(readValue(section, key).value_or(QString()));
}

QString clsOplIniFile::csGetProfileString(const QString& section, const QString& key)
{
    QString v = readValue(section, key).value_or(QString());
    v.truncate(kBufferLength - 1);
    // The buffer keeps its NUL padding; callers cut it with csCutNull.
    return v + QString(kBufferLength - v.size(), QChar(0));
}

qint16 clsOplIniFile::iWriteProfileString(const QString& section, const QString& key, const QString& value)
{
    const QString path = toLocalPath(m_fileName);
    if (path.isEmpty()) {
        m_errStr = u"Iniファイル名を指定してください。"_s;
        return 0;
    }
    QByteArray original;
    {
        QFile file(path);
        if (file.exists()) {
            if (!file.open(QIODevice::ReadOnly)) {
                m_errStr = file.errorString();
                return 0;
            }
            original = file.readAll();
        }
    }
    const bool utf8 = original.startsWith("\xEF\xBB\xBF");
    const auto encode = [utf8](const QString& s) { return utf8 ? s.toUtf8() : toCp932(s); };
    const QByteArray newline = original.contains("\r\n") || !original.contains('\n') ? "\r\n" : "\n";
    const QByteArray entry = encode(trimSpaces(key) + u'=' + value) + newline;

    // Work on raw byte lines so every untouched line stays byte for byte.
    QList<QByteArray> lines;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < original.size(); ++i) {
        if (original.at(i) == '\n') {
            lines.append(original.mid(begin, i + 1 - begin));
            begin = i + 1;
        }
    }
    if (begin < original.size())
        lines.append(original.mid(begin));
    const auto decode = [utf8](const QByteArray& b) {
        QByteArray t = b;
        while (t.endsWith('\n') || t.endsWith('\r'))
            t.chop(1);
        return utf8 ? QString::fromUtf8(t) : fromCp932(t);
    };

    qsizetype sectionStart = -1; // index of the header line of the first matching section
    qsizetype sectionEnd = -1;   // index after its last non-blank line
    qsizetype keyLine = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString text = decode(lines.at(i));
        if (i == 0 && utf8 && text.startsWith(QChar(0xFEFF)))
            text.remove(0, 1);
        if (const auto name = sectionName(text)) {
            if (sectionStart >= 0)
                break;
            if (sameName(*name, trimSpaces(section))) {
                sectionStart = i;
                sectionEnd = i + 1;
            }
            continue;
        }
        if (sectionStart < 0)
            continue;
        if (!trimSpaces(text).isEmpty())
            sectionEnd = i + 1;
        if (const auto k = keyOf(text); k && sameName(*k, trimSpaces(key))) {
            keyLine = i;
            break;
        }
    }

    if (keyLine >= 0) {
        lines[keyLine] = entry;
    } else if (sectionStart >= 0) {
        // A last line without a line break gets one before the new key follows it.
        if (!lines[sectionEnd - 1].endsWith('\n'))
            lines[sectionEnd - 1].append(newline);
        lines.insert(sectionEnd, entry);
    } else {
        if (!lines.isEmpty() && !lines.last().endsWith('\n'))
            lines.last().append(newline);
        lines.append(encode(u'[' + trimSpaces(section) + u']') + newline);
        lines.append(entry);
    }
    QByteArray bytes;
    for (const QByteArray& l : std::as_const(lines))
        bytes += l;
    QString error;
    if (!writeFileAtomically(path, bytes, &error)) {
        m_errStr = error;
        return 0;
    }
    return 1;
}

} // namespace qelprn
