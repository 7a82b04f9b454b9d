#include "master/MonthPeriod.h"

#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString monthPeriodSelect(const QString& table, const QString& yearMonth, const QString& orderBy)
{
    const QString ym = sqlText(yearMonth);
    return u"SELECT * FROM "_s + table +
           u" WHERE SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '"_s +
           ym +
           u"' AND SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),6,2) >=   '"_s +
           ym + u"'"_s + orderBy;
}

} // namespace qelprn
