#pragma once

#include <QString>

namespace qelprn {

// "SELECT * FROM <table>" restricted to the rows whose start and end dates (text "yyyy/mm/dd")
// enclose the month "yyyymm", followed by the given ORDER BY fragment. Sent exactly as written;
// the connection translates SUBSTRING/CONVERT for the embedded engine.
QString monthPeriodSelect(const QString& table, const QString& yearMonth, const QString& orderBy);

} // namespace qelprn
