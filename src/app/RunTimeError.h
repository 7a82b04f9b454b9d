#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

// A run-time error of the suite (a value too large for its 16- or 32-bit field, ...). The procedure
// that runs the work catches it: a query shows "(" number ")" description, a table class keeps that
// text in sErrMsg, a loader hands it back as its error text.
struct RunTimeError
{
    int number = 0;
    QString description;
};

// The value as a 16-bit field; throws RunTimeError 6 (overflow) when it does not fit.
qint16 toInt16(qint64 value);

// A whole number as a 32-bit value; throws RunTimeError 6 (overflow) beyond that range or for NaN.
qint32 toInt32(double value);

// "(" the number with its leading sign space ")" the description: "( 6)オーバーフローしました。".
QString runTimeErrorText(const RunTimeError& error);

} // namespace qelprn
