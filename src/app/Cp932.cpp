#include "app/Cp932.h"

#include "app/Cp932Table.h"

#include <QFile>
#include <vector>

namespace qelprn {

namespace {

// CP932 is stateless: every UTF-16 unit outside the surrogates converts on its own. The CSV
// writers convert millions of short fields, where a call into the table per field costs far more
// than the conversion, so each thread remembers the bytes of every unit it has met (one or two
// bytes in a 16-bit entry; two-byte codes never have a zero lead byte, and 0xFFFF and 0xFFFE are
// no codes at all).
constexpr quint16 kUnknown = 0xFFFF;
constexpr quint16 kDropped = 0xFFFE;

quint16 unitBytes(char16_t unit)
{
    char bytes[2];
    const int n = cp932table::encodeUnit(unit, bytes);
    if (n < 0)
        return kUnknown;
    if (n == 2)
        return quint16((quint8(bytes[0]) << 8) | quint8(bytes[1]));
    return n == 1 ? quint8(bytes[0]) : kDropped;
}

} // namespace

qsizetype writeCp932(char* out, QStringView text)
{
    char* p = out;
    // Most fields are printable ASCII or units met before: the table is asked only for the others.
    thread_local std::vector<quint16> known(0x10000, kUnknown);
    const char16_t* units = text.utf16();
    for (qsizetype i = 0, n = text.size(); i < n; ++i) {
        const char16_t unit = units[i];
        // Printable ASCII stays as it is (ICU's table moves some control characters).
        if (unit >= 0x20 && unit < 0x7F) {
            *p++ = char(unit);
            continue;
        }
        // The code page has nothing outside the basic plane: one "?" per code point, and one per
        // stray half of a pair.
        if (QChar::isSurrogate(unit)) {
            if (QChar::isHighSurrogate(unit) && i + 1 < n && QChar::isLowSurrogate(units[i + 1]))
                ++i;
            *p++ = '?';
            continue;
        }
        quint16& code = known[unit];
        if (code == kUnknown) {
            code = unitBytes(unit);
            if (code == kUnknown) {
                // Without a table keep ASCII and mark the rest, so nothing silently disappears.
                *p++ = unit < 0x80 ? char(unit) : '?';
                continue;
            }
        }
        if (code == kDropped)
            continue;
        if (code > 0xFF)
            *p++ = char(code >> 8);
        *p++ = char(code & 0xFF);
    }
    return p - out;
}

void appendCp932(QByteArray& out, QStringView text)
{
    if (text.isEmpty())
        return;
    const qsizetype start = out.size();
    out.resize(start + text.size() * 2 + 8);
    out.resize(start + writeCp932(out.data() + start, text));
}

QByteArray toCp932(QStringView text)
{
    QByteArray out;
    appendCp932(out, text);
    return out;
}

QString fromCp932(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return {};
    return cp932table::decode(bytes);
}

QString decodeSettingsText(QByteArrayView bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes.sliced(3));
    return fromCp932(bytes);
}

QStringList readTextLines(const QString& path, bool* ok)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (ok)
            *ok = false;
        return {};
    }
    if (ok)
        *ok = true;
    const QString text = decodeSettingsText(file.readAll());
    QStringList lines;
    qsizetype begin = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c == u'\r' || c == u'\n') {
            lines.append(text.mid(begin, i - begin));
            if (c == u'\r' && i + 1 < n && text.at(i + 1) == u'\n')
                ++i;
            begin = i + 1;
        }
    }
    if (begin < n)
        lines.append(text.mid(begin));
    return lines;
}

} // namespace qelprn
