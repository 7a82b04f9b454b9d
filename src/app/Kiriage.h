#pragma once

#include "app/AppContext.h"

namespace qelprn {

// Money rounding by ctx.iKiriageKbn (0 gives 0, 1 up, 2 down, 3 half up) to ctx.iKiriageKeta.
// A result beyond 32 bits throws RunTimeError 6 (overflow), as the suite's conversion raises it.
qint32 nKiriage(const AppContext& ctx, double value);

} // namespace qelprn
