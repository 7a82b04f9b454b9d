#pragma once

#include <QStringList>

namespace qelprn {

// The fields of one CSV record of a settings file ("DB.ini", "Version.ini"): fields are trimmed
// unless quoted; quoted fields may hold commas and doubled quotes.
QStringList splitCsvRecord(const QString& line);

} // namespace qelprn
