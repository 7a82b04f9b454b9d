#include "engine/ValueFormat.h"

#include <QDate>
#include <cmath>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

QString groupThousands(QString digits)
{
    for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, u',');
    return digits;
}

QDate readDate(const QString& raw)
{
    // "yyyy/mm/dd", "yyyy/mm/dd hh:mm:ss", "yyyy-mm-dd" or "yyyy/mm"
    QString s = raw.trimmed().left(10);
    s.replace(u'-', u'/');
    if (s.size() == 7)
        s += u"/01"_s;
    const QStringList parts = s.split(u'/');
    if (parts.size() != 3)
        return {};
    return QDate(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
}

QString eraYear(const QDate& d)
{
    struct Era
    {
        QDate start;
        const char16_t* name;
    };
    static const Era eras[] = {{QDate(2019, 5, 1), u"令和"},
                               {QDate(1989, 1, 8), u"平成"},
                               {QDate(1926, 12, 25), u"昭和"},
                               {QDate(1912, 7, 30), u"大正"}};
    for (const Era& e : eras) {
        if (d >= e.start) {
            const int year = d.year() - e.start.year() + 1;
            return QString::fromUtf16(e.name) + (year == 1 ? u"元"_s : QString::number(year)) + u'年';
        }
    }
    return QString::number(d.year()) + u'年';
}

// The co-payment share is stored as a code: the share in tenths plus one (1 = none, 2 = 10 %,
// 4 = 30 %). 0 or empty means no share is known and prints nothing.
QString formatShare(const QString& raw)
{
    const QString trimmed = raw.trimmed();
    bool ok = false;
    const int code = trimmed.toInt(&ok);
    if (trimmed.isEmpty() || (ok && code == 0))
        return QString();
    if (!ok || code < 1 || code > 11)
        return raw;
    return QString::number(code - 1) + u'割';
}

} // namespace

QString formatNumber(double value)
{
    const bool negative = value < 0;
    const double magnitude = std::fabs(value);
    QString text;
    if (magnitude == std::floor(magnitude) && magnitude < 1e15) {
        text = groupThousands(QString::number(qint64(magnitude)));
    } else {
        const QString plain = QString::number(magnitude, 'f', 6);
        QString fraction = plain.section(u'.', 1);
        while (fraction.endsWith(u'0'))
            fraction.chop(1);
        text = groupThousands(plain.section(u'.', 0, 0)) + (fraction.isEmpty() ? QString() : u'.' + fraction);
    }
    return negative ? u'-' + text : text;
}

QString formatForDateStyle(const QString& format, DateStyle style)
{
    if (style == DateStyle::Era) {
        if (format == u"date"_s)
            return u"era-date"_s;
        if (format == u"month"_s)
            return u"era-month"_s;
    } else {
        if (format == u"era-date"_s)
            return u"date"_s;
        if (format == u"era-month"_s)
            return u"month"_s;
    }
    return format;
}

QString formatValue(const QString& raw, const QString& format, bool blankZero)
{
    // A blank zero holds for every format: a room number of 0 is as empty as an amount of 0.
    bool isNumber = false;
    if (blankZero && raw.trimmed().toDouble(&isNumber) == 0 && isNumber)
        return QString();
    if (format == u"text"_s || format.isEmpty())
        return raw;
    if (format == u"share"_s)
        return formatShare(raw);
    if (format == u"number"_s || format == u"yen"_s) {
        bool ok = false;
        const double v = raw.trimmed().toDouble(&ok);
        if (!ok)
            return raw.trimmed().isEmpty() || blankZero ? QString() : raw;
        return format == u"yen"_s ? u'¥' + formatNumber(v) : formatNumber(v);
    }
    const QDate d = readDate(raw);
    if (!d.isValid())
        return raw;
    const QString m = QString::number(d.month());
    const QString day = QString::number(d.day());
    if (format == u"date"_s)
        return QString::number(d.year()) + u'年' + m + u'月' + day + u'日';
    if (format == u"month"_s)
        return QString::number(d.year()) + u'年' + m + u"月分"_s;
    if (format == u"era-month"_s)
        return eraYear(d) + m + u"月分"_s;
    if (format == u"era-date"_s)
        return eraYear(d) + m + u'月' + day + u'日';
    if (format == u"md"_s)
        return m + u'/' + day;
    return raw;
}

double roundYen(double value, YenRounding rounding)
{
    switch (rounding) {
    case YenRounding::None:
        return value;
    case YenRounding::Up:
        return std::floor(value + 0.999999999);
    case YenRounding::HalfUp:
        return std::floor(value + 0.5);
    case YenRounding::Down:
        return std::floor(value);
    }
    return value;
}

QString roundYenText(const QString& raw, YenRounding rounding)
{
    if (rounding == YenRounding::None)
        return raw;
    bool ok = false;
    const double value = raw.trimmed().toDouble(&ok);
    if (!ok || value == std::floor(value))
        return raw;
    return QString::number(roundYen(value, rounding), 'f', 0);
}

} // namespace qelprn::engine
