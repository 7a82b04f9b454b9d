#pragma once

#include "app/Interaction.h"

#include <QString>

namespace qelprn {

// The desktop program's first step: the program folder found by findAppDir(). When no folder holds
// "Tovara.ini", the user is told which folders were tried and asked whether to write the demo
// program folder into the suggested one (the per-user data folder, or QELPRN_APP_DIR when set).
// Returns the folder to run on, or "" when the user declined or the demo could not be written
// (after saying why).
QString chooseProgramFolder(Interaction& ui);

} // namespace qelprn
