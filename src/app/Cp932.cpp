#include "app/Cp932.h"

#include <QFile>
#include <memory>
#include <unicode/ucnv.h>

namespace qelprn {

namespace {

struct ConverterCloser
{
    void operator()(UConverter* c) const { ucnv_close(c); }
};
using ConverterPtr = std::unique_ptr<UConverter, ConverterCloser>;

// Opening a converter costs far more than a conversion; the CSV writers convert every field, so each
// thread keeps its own (converters are not thread-safe).
UConverter* converter()
{
    thread_local ConverterPtr conv = [] {
        UErrorCode err = U_ZERO_ERROR;
        ConverterPtr c(ucnv_open("windows-932", &err));
        if (c && U_SUCCESS(err)) {
            UErrorCode subErr = U_ZERO_ERROR;
            ucnv_setSubstChars(c.get(), "?", 1, &subErr);
        }
        return c;
    }();
    return conv.get();
}

} // namespace

void appendCp932(QByteArray& out, QStringView text)
{
    if (text.isEmpty())
        return;
    UConverter* conv = converter();
    if (!conv) {
        // Without ICU's table keep ASCII and mark the rest, so nothing silently disappears.
        for (QChar ch : text) {
            if (ch.isLowSurrogate())
                continue;
            out.append(ch.unicode() < 0x80 ? char(ch.unicode()) : '?');
        }
        return;
    }
    ucnv_resetFromUnicode(conv);
    const qsizetype start = out.size();
    // CP932 needs at most two bytes per UTF-16 unit.
    out.resize(start + text.size() * 2 + 8);
    char* target = out.data() + start;
    const char* targetLimit = out.data() + out.size();
    const UChar* source = reinterpret_cast<const UChar*>(text.utf16());
    const UChar* sourceLimit = source + text.size();
    UErrorCode err = U_ZERO_ERROR;
    ucnv_fromUnicode(conv, &target, targetLimit, &source, sourceLimit, nullptr, true, &err);
    out.resize(target - out.constData());
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
    UConverter* conv = converter();
    if (!conv)
        return QString::fromLatin1(bytes);
    ucnv_resetToUnicode(conv);
    QString out(bytes.size() + 1, Qt::Uninitialized);
    UChar* target = reinterpret_cast<UChar*>(out.data());
    const UChar* targetLimit = target + out.size();
    const char* source = bytes.data();
    const char* sourceLimit = source + bytes.size();
    UErrorCode err = U_ZERO_ERROR;
    ucnv_toUnicode(conv, &target, targetLimit, &source, sourceLimit, nullptr, true, &err);
    out.resize(target - reinterpret_cast<const UChar*>(out.constData()));
    return out;
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
