#include "app/RunTimeError.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 toInt16(qint64 value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw RunTimeError{6, u"オーバーフローしました。"_s};
    return qint16(value);
}

qint32 toInt32(double value)
{
    // Written so that NaN fails the test too.
    if (!(value >= std::numeric_limits<qint32>::min() && value <= std::numeric_limits<qint32>::max()))
        throw RunTimeError{6, u"オーバーフローしました。"_s};
    return qint32(value);
}

QString runTimeErrorText(const RunTimeError& error)
{
    // A number is written with a leading blank where its sign would stand.
    const QString number =
        error.number < 0 ? QString::number(error.number) : u' ' + QString::number(error.number);
    return u"("_s + number + u")"_s + error.description;
}

} // namespace qelprn
