#pragma once

#include "app/Interaction.h"

#include <QtGlobal>

namespace qelprn {

// How nKiriage rounds money: the kind (0 gives 0, 1 up, 2 down, 3 half up) and the unit (1 whole
// yen, 10 tens, ...).
struct Kiriage
{
    qint16 iKiriageKbn = 0;
    qint16 iKiriageKeta = 0;
};

// The rounding of the invoice forms' amounts: up, to the whole yen.
inline constexpr Kiriage kKiriageWholeYenUp{1, 1};

// value rounded by rule. Without a unit the result is 0, after a warning through ui when one is
// given. A result beyond 32 bits throws RunTimeError 6 (overflow), as the suite's conversion
// raises it.
qint32 nKiriage(const Kiriage& rule, double value, Interaction* ui = nullptr);

} // namespace qelprn
