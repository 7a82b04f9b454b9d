#include "billing/modPrint施設請求書.h"

namespace qelprn {

modPrint施設請求書::modPrint施設請求書(AppContext& ctx) : context(ctx) {}

} // namespace qelprn
