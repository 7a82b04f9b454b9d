#pragma once

#include <QByteArrayView>
#include <QString>

// The code page 932 table behind Cp932.cpp: ICU on Linux (Cp932Icu.cpp), the operating system's
// own code page on Windows (Cp932Windows.cpp), which is the table the suite's files are written with.
namespace qelprn::cp932table {

// Writes the bytes of one UTF-16 unit (never a surrogate) into out (room for 2 bytes) and returns
// how many: 2 or 1 for a code, 1 ("?") when the code page has none, 0 when the unit is dropped.
// Returns -1 when no table is available.
int encodeUnit(char16_t unit, char* out);

// Decodes bytes; an invalid sequence becomes U+FFFD. Without a table, Latin-1.
QString decode(QByteArrayView bytes);

} // namespace qelprn::cp932table
