#ifdef _WIN32

#include "app/Cp932Table.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace qelprn::cp932table {

namespace {

constexpr UINT kCodePage = 932;

// One character (one or two bytes) that the strict whole-buffer conversion refused, or U+FFFD.
char16_t decodeOne(const char* bytes, int n)
{
    wchar_t wide[2];
    const int got = MultiByteToWideChar(kCodePage, MB_ERR_INVALID_CHARS, bytes, n, wide, 2);
    return got == 1 ? char16_t(wide[0]) : char16_t(0xFFFD);
}

} // namespace

int encodeUnit(char16_t unit, char* out)
{
    // No best-fit mapping: a character without its own code becomes "?", never a look-alike.
    const wchar_t wide = wchar_t(unit);
    char bytes[4];
    BOOL usedDefault = FALSE;
    const int n = WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, &wide, 1, bytes, sizeof bytes, "?",
                                      &usedDefault);
    if (n < 1 || n > 2) {
        out[0] = '?';
        return 1;
    }
    out[0] = bytes[0];
    if (n == 2)
        out[1] = bytes[1];
    return n;
}

QString decode(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return {};
    const int size = int(bytes.size());
    QString out(size, Qt::Uninitialized);
    const int n = MultiByteToWideChar(kCodePage, MB_ERR_INVALID_CHARS, bytes.data(), size,
                                      reinterpret_cast<wchar_t*>(out.data()), size);
    if (n > 0) {
        out.resize(n);
        return out;
    }
    // Some sequence is invalid: go character by character so that only it becomes U+FFFD (the
    // system's own replacement would be a katakana middle dot, indistinguishable from real text).
    out.clear();
    for (int i = 0; i < size;) {
        const auto lead = quint8(bytes[i]);
        if (IsDBCSLeadByteEx(kCodePage, lead) && i + 1 < size) {
            const char16_t c = decodeOne(bytes.data() + i, 2);
            out.append(QChar(c));
            // A refused pair whose second byte is plain ASCII gives that byte back.
            i += (c == 0xFFFD && quint8(bytes[i + 1]) < 0x80) ? 1 : 2;
            continue;
        }
        out.append(
            QChar(IsDBCSLeadByteEx(kCodePage, lead) ? char16_t(0xFFFD) : decodeOne(bytes.data() + i, 1)));
        ++i;
    }
    return out;
}

} // namespace qelprn::cp932table

#endif
