#pragma once

#include <QStringList>
#include <QTextStream>

namespace qelprn::cli {

// The command-line program without its process: picks the command named by args[0] from
// allCommands(), parses the rest with the command's options and runs it, or prints the help or the
// version. Returns the exit status: the command's own, 0 for help and version, 2 for a missing or
// unknown command and for usage errors.
int runCli(const QStringList& args, QTextStream& out, QTextStream& err);

} // namespace qelprn::cli
