#include "billing/BillingMonth.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kDayFormat = u"yyyy/MM/dd"_s;

QDate firstDay(const QString& sSeikyuYM)
{
    return QDate::fromString(sSeikyuYM + u"/01"_s, kDayFormat);
}

QString dayText(const QDate& day)
{
    return day.isValid() ? day.toString(kDayFormat) : QString();
}

} // namespace

QString csMonthFirstDay(const QString& sSeikyuYM)
{
    return sSeikyuYM + u"/01"_s;
}

QString csNextMonthFirstDay(const QString& sSeikyuYM)
{
    return dayText(firstDay(sSeikyuYM).addMonths(1));
}

QString csMonthLastDay(const QString& sSeikyuYM)
{
    return dayText(firstDay(sSeikyuYM).addMonths(1).addDays(-1));
}

QString csMonthFirstDay(qint32 nSeikyuYM)
{
    // The pattern fills its "@" places from the number's digits, left to right.
    const QString digits = QString::number(nSeikyuYM);
    return digits.left(4) + u'/' + digits.mid(4, 2) + u"/01"_s;
}

} // namespace qelprn
