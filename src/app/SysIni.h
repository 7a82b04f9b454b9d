#pragma once

#include "app/AppContext.h"

#include <QString>
#include <optional>

namespace qelprn {

// Flat-key lookup in "Tovara.ini": the first line whose trimmed key equals key (case-sensitive) gives
// everything after its first "=", untrimmed; "" for a missing key (with a message when showError).
// A missing file is told to the person and gives nothing: the caller stops what it was doing (at
// start-up the program's entry point ends the program).
std::optional<QString> readSysIniValue(const AppContext& ctx, const QString& key, bool showError);
// The same with "" for a missing file.
QString vGetSysIniValue(const AppContext& ctx, const QString& key, bool showError);

// csAppDir + the folder value + "\" in the suite's spelling; use toLocalPath() before file access.
// "" when "Tovara.ini" is missing (after its message).
QString csSysDir(const AppContext& ctx);
QString csTmpDir(const AppContext& ctx);
QString csIconDir(const AppContext& ctx);
QString csDataDir(const AppContext& ctx);

} // namespace qelprn
