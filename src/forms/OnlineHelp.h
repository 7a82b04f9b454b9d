#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

// The online help address: "ADDRESS" of section "OnlineHelp" in "Halvex.Ver", the map-service user
// and password of "EmapUser.ini" (stored reversed) and the help context. Empty, with the message
// shown, when "Halvex.Ver" cannot be read or holds no http address.
QString onlineHelpUrl(const AppContext& ctx, int helpContext);
// Opens that address in the user's browser through the interaction interface.
void showOnlineHelp(const AppContext& ctx, int helpContext);

} // namespace qelprn
