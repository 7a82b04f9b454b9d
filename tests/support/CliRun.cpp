#include "support/CliRun.h"

#include "support/ExeName.h"

#include <QDir>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace qelprn::test {

QString binDir()
{
    return qEnvironmentVariable("QELPRN_BIN_DIR");
}

QString builtProgram(const QString& name)
{
    return QDir(binDir()).filePath(exeName(name));
}

CliRun runCli(const QStringList& args)
{
    CliRun run;
    QProcess p;
    // Text mode: Windows ends the program's lines with CR LF.
    p.start(builtProgram(u"qelprn-cli"_s), args, QIODevice::ReadOnly | QIODevice::Text);
    if (!p.waitForFinished(300000) || p.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitCode = p.exitCode();
    run.out = QString::fromUtf8(p.readAllStandardOutput());
    run.err = QString::fromUtf8(p.readAllStandardError());
    return run;
}

} // namespace qelprn::test
