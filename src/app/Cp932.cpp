#include "app/Cp932.h"

#include <QFile>
#include <memory>
#include <unicode/ucnv.h>
#include <vector>

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

// ICU's conversion of text into out, which has room bytes; returns the bytes written.
qsizetype icuInto(char* out, qsizetype room, UConverter* conv, QStringView text)
{
    ucnv_resetFromUnicode(conv);
    char* target = out;
    const UChar* source = reinterpret_cast<const UChar*>(text.utf16());
    UErrorCode err = U_ZERO_ERROR;
    ucnv_fromUnicode(conv, &target, out + room, &source, source + text.size(), nullptr, true, &err);
    return target - out;
}

// CP932 is stateless: every UTF-16 unit outside the surrogates converts on its own. The CSV
// writers convert millions of short fields, where a call into ICU per field costs far more than
// the conversion, so each thread remembers the bytes of every unit it has met (one or two bytes in
// a 16-bit entry; two-byte codes never have a zero lead byte, and 0xFFFF and 0xFFFE are no codes
// at all). ICU drops the default-ignorable characters (soft hyphen, ...) instead of writing "?".
constexpr quint16 kUnknown = 0xFFFF;
constexpr quint16 kDropped = 0xFFFE;

quint16 unitBytes(UConverter* conv, char16_t unit)
{
    char bytes[16];
    const qsizetype n = icuInto(bytes, sizeof bytes, conv, QStringView(&unit, 1));
    if (n == 2)
        return quint16((quint8(bytes[0]) << 8) | quint8(bytes[1]));
    return n == 1 ? quint8(bytes[0]) : kDropped;
}

} // namespace

qsizetype writeCp932(char* out, QStringView text)
{
    char* p = out;
    // Most fields are printable ASCII or units met before: ICU is asked only for the others.
    thread_local std::vector<quint16> known(0x10000, kUnknown);
    const char16_t* units = text.utf16();
    for (qsizetype i = 0, n = text.size(); i < n; ++i) {
        const char16_t unit = units[i];
        // Printable ASCII stays as it is (ICU's table moves some control characters).
        if (unit >= 0x20 && unit < 0x7F) {
            *p++ = char(unit);
            continue;
        }
        quint16& code = known[unit];
        if (code == kUnknown || QChar::isSurrogate(unit)) {
            UConverter* conv = converter();
            if (!conv) {
                // Without ICU's table keep ASCII and mark the rest, so nothing silently disappears.
                if (!QChar::isLowSurrogate(unit))
                    *p++ = unit < 0x80 ? char(unit) : '?';
                continue;
            }
            if (QChar::isSurrogate(unit)) {
                // Pairs and stray halves go the whole way through ICU, from here to the end.
                p += icuInto(p, out + text.size() * 2 + 8 - p, conv, text.sliced(i));
                return p - out;
            }
            code = unitBytes(conv, unit);
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
