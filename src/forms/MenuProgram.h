#pragma once

#include "app/AppContext.h"

#include <QStringList>

namespace qelprn {

// The suite's menu program started when the main form closes: csAppDir/Main.exe in its own folder,
// without arguments when the user asked for the main menu, with the argument 2 otherwise.
QStringList menuProgramArguments(bool bMenuReturn);
// False (and nothing started) when the program is not there or cannot be started.
bool startMenuProgram(const AppContext& ctx, bool bMenuReturn);

} // namespace qelprn
