#include "app/NullValue.h"

#include "app/RunTimeError.h"
#include "app/SpaceTrim.h"

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
    return trimRightSpaces(csNullToStr(value));
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
    return toInt32(std::nearbyint(d));
}

QString csCutNull(const QString& text)
{
    const qsizetype i = text.indexOf(QChar(0));
    return i < 0 ? text : text.left(i);
}

} // namespace qelprn
