#ifndef _WIN32

#include "app/Cp932Table.h"

#include <memory>
#include <unicode/ucnv.h>

namespace qelprn::cp932table {

namespace {

struct ConverterCloser
{
    void operator()(UConverter* c) const { ucnv_close(c); }
};
using ConverterPtr = std::unique_ptr<UConverter, ConverterCloser>;

// Opening a converter costs far more than a conversion, so each thread keeps its own (converters
// are not thread-safe).
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

int encodeUnit(char16_t unit, char* out)
{
    UConverter* conv = converter();
    if (!conv)
        return -1;
    ucnv_resetFromUnicode(conv);
    char bytes[16];
    char* target = bytes;
    const UChar* source = &unit;
    UErrorCode err = U_ZERO_ERROR;
    ucnv_fromUnicode(conv, &target, bytes + sizeof bytes, &source, source + 1, nullptr, true, &err);
    // ICU drops the default-ignorable characters (soft hyphen, ...) instead of writing "?".
    const int n = int(target - bytes);
    if (n < 1 || n > 2)
        return 0;
    out[0] = bytes[0];
    if (n == 2)
        out[1] = bytes[1];
    return n;
}

QString decode(QByteArrayView bytes)
{
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

} // namespace qelprn::cp932table

#endif
