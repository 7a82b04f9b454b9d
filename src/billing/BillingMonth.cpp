#include "billing/BillingMonth.h"

#include <QDate>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kDayFormat = u"yyyy/MM/dd"_s;

// "yyyy/MM" read by hand: QDate::fromString with a format is slow, and the co-payment list asks
// for the month's bounds twice per patient. Anything else gives an invalid date.
QDate firstDay(const QString& sSeikyuYM)
{
    if (sSeikyuYM.size() != 7 || sSeikyuYM.at(4) != u'/')
        return QDate();
    bool yearOk = false;
    bool monthOk = false;
    const int year = QStringView(sSeikyuYM).left(4).toInt(&yearOk);
    const int month = QStringView(sSeikyuYM).mid(5, 2).toInt(&monthOk);
    const auto digits = [](QStringView v) {
        return std::all_of(v.begin(), v.end(), [](QChar c) { return c.isDigit(); });
    };
    if (!yearOk || !monthOk || !digits(QStringView(sSeikyuYM).left(4)) ||
        !digits(QStringView(sSeikyuYM).mid(5, 2)))
        return QDate();
    return QDate(year, month, 1);
}

QString dayText(const QDate& day)
{
    return day.isValid() ? day.toString(kDayFormat) : QString();
}

} // namespace

QString monthFirstDay(const QString& sSeikyuYM)
{
    return sSeikyuYM + u"/01"_s;
}

QString nextMonthFirstDay(const QString& sSeikyuYM)
{
    return dayText(firstDay(sSeikyuYM).addMonths(1));
}

QString monthLastDay(const QString& sSeikyuYM)
{
    return dayText(firstDay(sSeikyuYM).addMonths(1).addDays(-1));
}

QString monthFirstDay(qint32 nSeikyuYM)
{
    // The pattern fills its "@" places from the number's digits, left to right.
    const QString digits = QString::number(nSeikyuYM);
    return digits.left(4) + u'/' + digits.mid(4, 2) + u"/01"_s;
}

} // namespace qelprn
