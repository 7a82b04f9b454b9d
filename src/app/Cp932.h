#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace qelprn {

// The one conversion between text and the Windows Japanese code page used by every file the program
// reads or writes. A character the code page cannot hold becomes "?" (one per code point).
QByteArray toCp932(QStringView text);
// Appends the CP932 bytes of text to out without building a temporary array (for the CSV writers).
void appendCp932(QByteArray& out, QStringView text);
// Writes the CP932 bytes of text to out, which must have room for text.size() * 2 + 8 bytes, and
// returns how many were written (for writers that keep their own buffer).
qsizetype writeCp932(char* out, QStringView text);
// Invalid byte sequences decode to U+FFFD; never crashes.
QString fromCp932(QByteArrayView bytes);
// Settings and list files: CP932, or UTF-8 when the bytes start with a UTF-8 byte order mark.
QString decodeSettingsText(QByteArrayView bytes);
// A settings/list file decoded and split on CR LF, LF or CR. A trailing line break gives no empty
// last line. ok is false when the file cannot be read.
QStringList readTextLines(const QString& path, bool* ok = nullptr);

} // namespace qelprn
