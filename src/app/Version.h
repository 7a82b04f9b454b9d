#pragma once

#include <QString>

namespace qelprn {

// The product version, set by the build: the project version and, from a git checkout, the commit.
QString productVersion();

// True when the command line asks only for the version ("--version" as the first argument), which
// the programs answer before they open any window.
bool asksForVersion(int argc, char* argv[]);

} // namespace qelprn
