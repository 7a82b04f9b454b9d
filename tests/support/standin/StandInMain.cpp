// A stand-in for another program in tests (the form-print engine, the suite's menu program): it
// does what the file "<its own path>.standin" says, written by writeStandInProgram. A real program
// rather than a script, so that it starts the same way on Linux and on Windows, under any name.
#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>
#include <QStringList>
#include <QThread>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void complain(const QString& text)
{
    std::fprintf(stderr, "qelprn-standin: %s\n", text.toLocal8Bit().constData());
}

// The argument at a 1-based index, or "" when there are fewer.
QString argument(const QStringList& args, int index)
{
    return index >= 1 && index <= args.size() ? args.at(index - 1) : QString();
}

// Copies through a temporary name, so that a test waiting for the copy never reads half of it.
void copyFile(const QString& from, const QString& to)
{
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly) ||
        target.write(source.readAll()) < 0 || !target.commit())
        complain(u"could not copy %1 to %2"_s.arg(from, to));
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    QFile behaviourFile(QCoreApplication::applicationFilePath() + u".standin"_s);
    if (!behaviourFile.open(QIODevice::ReadOnly)) {
        complain(u"%1 is missing"_s.arg(behaviourFile.fileName()));
        return 127;
    }
    const QJsonObject b = QJsonDocument::fromJson(behaviourFile.readAll()).object();

    if (const int n = b[u"copyArg"_s].toInt(); n > 0)
        copyFile(argument(args, n), b[u"copyTo"_s].toString());
    if (const int n = b[u"writeArg"_s].toInt(); n > 0) {
        QFile out(argument(args, n));
        if (!out.open(QIODevice::WriteOnly) ||
            out.write(QByteArray::fromBase64(b[u"writeBytes"_s].toString().toLatin1())) < 0)
            complain(u"could not write %1"_s.arg(out.fileName()));
    }
    if (const QString argsFile = b[u"argsFile"_s].toString(); !argsFile.isEmpty()) {
        QFile out(argsFile);
        const QString lines =
            QString::number(args.size()) + u'\n' + args.join(u'\n') + (args.isEmpty() ? u""_s : u"\n"_s);
        if (!out.open(QIODevice::Append) || out.write(lines.toUtf8()) < 0)
            complain(u"could not append to %1"_s.arg(argsFile));
    }
    // Like our engine: say the job was read by creating the file the receipt variable names, and
    // note whether there was one.
    if (const QString variable = b[u"receiptVariable"_s].toString(); !variable.isEmpty()) {
        const QString receipt = qEnvironmentVariable(variable.toLatin1().constData());
        if (!receipt.isEmpty()) {
            QFile file(receipt);
            if (!file.open(QIODevice::WriteOnly))
                complain(u"could not create %1"_s.arg(receipt));
        }
        QFile out(b[u"receiptNote"_s].toString());
        if (!out.open(QIODevice::Append) || out.write(receipt.isEmpty() ? "none\n" : "given\n") < 0)
            complain(u"could not append to %1"_s.arg(out.fileName()));
    }
    if (const QString text = b[u"stderrText"_s].toString(); !text.isEmpty())
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    if (const QString lockPath = b[u"holdLock"_s].toString(); !lockPath.isEmpty()) {
        QLockFile lock(lockPath);
        if (!lock.lock())
            complain(u"could not lock %1"_s.arg(lockPath));
        const int ms = b[u"holdMs"_s].toInt();
        for (int waited = 0; ms < 0 || waited < ms; waited += 50)
            QThread::msleep(50);
    }
    return b[u"exitCode"_s].toInt();
}
