#include "support/StandInProgram.h"

#include "support/ExeName.h"
#include "support/FileBytes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

namespace qelprn::test {

namespace {

QByteArray behaviourJson(const StandIn& b)
{
    return QJsonDocument(QJsonObject{{u"copyArg"_s, b.copyArg},
                                     {u"copyTo"_s, b.copyTo},
                                     {u"writeArg"_s, b.writeArg},
                                     {u"writeBytes"_s, QString::fromLatin1(b.writeBytes.toBase64())},
                                     {u"argsFile"_s, b.argsFile},
                                     {u"stderrText"_s, b.stderrText},
                                     {u"exitCode"_s, b.exitCode},
                                     {u"holdLock"_s, b.holdLock},
                                     {u"holdMs"_s, b.holdMs},
                                     {u"receiptVariable"_s, b.receiptVariable},
                                     {u"receiptNote"_s, b.receiptNote}})
        .toJson();
}

} // namespace

QString writeStandInProgram(const QString& path, const StandIn& behaviour)
{
    const QString program = path.endsWith(u".exe"_s, Qt::CaseInsensitive) ? path : exeName(path);
    const QString source = QCoreApplication::applicationDirPath() + exeName(u"/qelprn-standin"_s);
    QDir().mkpath(QFileInfo(program).absolutePath());
    // A copy already in place is kept: Windows does not let a running program be replaced.
    if (!QFile::exists(program) || QFileInfo(program).size() != QFileInfo(source).size()) {
        QFile::remove(program);
        if (!QFile::copy(source, program))
            return {};
    }
    return writeAll(program + u".standin"_s, behaviourJson(behaviour)) ? program : QString();
}

QStringList waitForArgs(const QString& argsFile, int lines)
{
    QStringList read;
    (void)QTest::qWaitFor(
        [&] {
            read = QString::fromUtf8(readAll(argsFile)).split(u'\n', Qt::SkipEmptyParts);
            return read.size() >= lines;
        },
        20000);
    return read;
}

} // namespace qelprn::test
