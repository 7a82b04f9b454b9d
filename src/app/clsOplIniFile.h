#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

namespace qelprn {

// One sectioned INI file read and written with private-profile rules: names compare
// case-insensitively, blanks around names and values are trimmed, a value in matching double
// quotes loses them, the first matching section and key win, a missing item gives the default.
class clsOplIniFile
{
public:
    // 0 when the file exists, else -1 with CsErrStr() set.
    qint16 iInit(const QString& fileName);
    // Leading integer of the value; 0 when missing or not a number.
    qint32 nGetProfileLong(const QString& section, const QString& key);
    // The value in a 256-character buffer: at most 255 characters, NUL-padded (callers csCutNull).
    QString csGetProfileString(const QString& section, const QString& key);
    // Replaces or adds the one key and keeps every other byte; the file is replaced atomically.
    // Non-zero when written.
    qint16 iWriteProfileString(const QString& section, const QString& key, const QString& value);
    QString CsErrStr() const { return m_errStr; }

private:
    std::optional<QString> readValue(const QString& section, const QString& key) const;

    QString m_fileName;
    QString m_errStr;
};

} // namespace qelprn
