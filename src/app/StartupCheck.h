#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

// The program must be started by the suite's menu with some argument: an empty command line shows
// the two refusal messages and returns false. Any non-empty line, a single blank too, is accepted.
bool checkCommandLine(Interaction& ui, const QString& commandLine);

// The process settings: csAppDir (findAppDir()) and the own site from BASEID characters 1-2 and
// 3-4. When no folder holds "Tovara.ini", ui is told which were tried and the program ends (2).
AppContext loadAppContext(Interaction& ui);
// The same for a given program folder; a missing "Tovara.ini" ends the program through ui.
AppContext loadAppContext(Interaction& ui, const QString& appDir);

} // namespace qelprn
