#pragma once

#include "cli/CliMain.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace qelprn::test {

// What a run of the command-line program left: exit status (-1 when the built program crashed or
// did not end within the time-out) and both streams.
struct CliRun
{
    int exitCode = -1;
    QString out;
    QString err;
};

// The program's folder, as CTest passes it (QELPRN_BIN_DIR).
QString binDir();

// A built program of the product in that folder by its base name ("qelprn-cli"), with ".exe" on
// Windows.
QString builtProgram(const QString& name);

// Runs the built qelprn-cli with args and waits for it (up to five minutes).
CliRun runCli(const QStringList& args);

// Runs the command-line program's main function in this process with captured streams; the test
// links qelprn_cli for it.
inline CliRun callCli(const QStringList& args)
{
    CliRun run;
    QTextStream out(&run.out);
    QTextStream err(&run.err);
    run.exitCode = cli::runCli(args, out, err);
    out.flush();
    err.flush();
    return run;
}

} // namespace qelprn::test
