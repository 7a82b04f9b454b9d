#include "support/CliRun.h"

#include <QDir>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace qelprn::test {

QString binDir()
{
    return qEnvironmentVariable("QELPRN_BIN_DIR");
}

CliRun runCli(const QStringList& args)
{
    CliRun run;
    QProcess p;
    p.start(QDir(binDir()).filePath(u"qelprn-cli"_s), args);
    if (!p.waitForFinished(300000) || p.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitCode = p.exitCode();
    run.out = QString::fromUtf8(p.readAllStandardOutput());
    run.err = QString::fromUtf8(p.readAllStandardError());
    return run;
}

} // namespace qelprn::test
