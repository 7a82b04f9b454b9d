#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

// The layout file to hand to the engine: the program folder's SYSTEM_SYS folder, as the suite keeps
// its layouts, when it holds the file; else the copy installed with the programs
// (installedLayoutsDir()), so a suite folder needs no copy of our layouts. When neither holds it,
// the SYSTEM_SYS path, which the engine's message then names.
QString layoutFilePath(const AppContext& ctx, const QString& fileName);

} // namespace qelprn
