#include "app/NullValue.h"

#include <cmath>

namespace qelprn {

namespace {
bool isNull(const QVariant& v)
{
    return !v.isValid() || v.isNull();
}
} // namespace

QString csNullToStr(const QVariant& value)
{
    return isNull(value) ? QString() : value.toString();
}

QString csNullToRTrim(const QVariant& value)
{
    QString s = csNullToStr(value);
    qsizetype n = s.size();
    while (n > 0 && s.at(n - 1) == QLatin1Char(' '))
        --n;
    s.truncate(n);
    return s;
}

qint32 nNullToLng(const QVariant& value)
{
    if (isNull(value))
        return 0;
    // Conversion to a whole number rounds half to even, as the suite's conversion does.
    bool ok = false;
    const double d = value.toDouble(&ok);
    if (!ok)
        return 0;
    return qint32(std::nearbyint(d));
}

QString csCutNull(const QString& text)
{
    const qsizetype i = text.indexOf(QChar(0));
    return i < 0 ? text : text.left(i);
}

} // namespace qelprn
