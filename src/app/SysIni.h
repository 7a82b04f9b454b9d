#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

// Flat-key lookup in "Tovara.ini": the first line whose trimmed key equals key (case-sensitive) gives
// everything after its first "=", untrimmed. A missing file shows a message and ends the program.
QString vGetSysIniValue(const AppContext& ctx, const QString& key, bool showError);

// csAppDir + the folder value + "\" in the suite's spelling; use toLocalPath() before file access.
QString csSysDir(const AppContext& ctx);
QString csTmpDir(const AppContext& ctx);
QString csIconDir(const AppContext& ctx);
QString csDataDir(const AppContext& ctx);

} // namespace qelprn
