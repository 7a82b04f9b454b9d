#pragma once

#include <QString>
#include <QStringList>

namespace qelprn::test {

// What a run of the built command-line program left: exit status (-1 when it crashed or did not
// end within the time-out) and both streams.
struct CliRun
{
    int exitCode = -1;
    QString out;
    QString err;
};

// The program's folder, as CTest passes it (QELPRN_BIN_DIR).
QString binDir();

// Runs qelprn-cli with args and waits for it (up to five minutes).
CliRun runCli(const QStringList& args);

} // namespace qelprn::test
