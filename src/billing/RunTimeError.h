#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

// A run-time error inside a query (a value too large for its 16-bit field, ...). The query catches
// it and shows "(" number ")" description, as the suite shows its run-time errors.
struct RunTimeError
{
    int number = 0;
    QString description;
};

// The value as a 16-bit field; throws RunTimeError 6 (overflow) when it does not fit.
qint16 toInt16(qint64 value);

// "(" the number with its leading sign space ")" the description: "( 6)オーバーフローしました。".
QString csRunTimeErrorText(const RunTimeError& error);

} // namespace qelprn
