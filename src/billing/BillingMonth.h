#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

// Day texts of the billing month as the statements and the printed columns use them, all
// "yyyy/mm/dd". An unreadable month gives empty texts, which match no treatment day.

// "yyyy/mm" & "/01".
QString monthFirstDay(const QString& sSeikyuYM);
// The first day of the following month: the exclusive upper bound of the month's visits.
QString nextMonthFirstDay(const QString& sSeikyuYM);
// The month's last calendar day.
QString monthLastDay(const QString& sSeikyuYM);
// yyyymm written with the pattern "@@@@/@@/01": "yyyy/mm/01".
QString monthFirstDay(qint32 nSeikyuYM);

} // namespace qelprn
