#pragma once

#include <QStringList>
#include <QTextStream>

namespace qelprn::cli {

// The command-line program without its process: picks the command named by args[0] from
// allCommands() and runs it with the rest, or prints the help. Returns the exit status: the
// command's own, 0 for help, 2 for a missing or unknown command. A ProgramEnd thrown by a command
// ends the run with its exit code.
int runCli(const QStringList& args, QTextStream& out, QTextStream& err);

} // namespace qelprn::cli
