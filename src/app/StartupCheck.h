#pragma once

#include "app/AppContext.h"

#include <QString>
#include <optional>

namespace qelprn {

// The program must be started by the suite's menu with some argument: an empty command line shows
// the two refusal messages and returns false. Any non-empty line, a single blank too, is accepted.
bool checkCommandLine(Interaction& ui, const QString& commandLine);

// The process settings: csAppDir (findAppDir()) and the own site from BASEID characters 1-2 and
// 3-4. Nothing when no folder holds "Tovara.ini", after ui was told which were tried: the
// program's entry point then ends the program (status 2).
std::optional<AppContext> loadAppContext(Interaction& ui);
// The same for a given program folder; nothing when its "Tovara.ini" is missing (after the message).
std::optional<AppContext> loadAppContext(Interaction& ui, const QString& appDir);

} // namespace qelprn
