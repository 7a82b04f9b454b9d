#pragma once

#include "app/AppContext.h"

namespace qelprn {

// Money rounding by ctx.iKiriageKbn (0 gives 0, 1 up, 2 down, 3 half up) to ctx.iKiriageKeta.
qint32 nKiriage(const AppContext& ctx, double value);

} // namespace qelprn
