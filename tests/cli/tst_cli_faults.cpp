// What the clerk sees when the database, the disk or the settings misbehave during a month-end run
// from the command line: the messages, the exit status, and what is left on disk.
#include "app/Cp932.h"
#include "cli/PrintFixture.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTest>
#include <QUuid>
#ifndef Q_OS_WIN
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

using Run = qelprn::test::CliRun;

// The small month of PrintFixture, its print data made by the built command-line program
// (optionally under a shell limit such as "ulimit -f 2").
struct FaultFixture : qelprn::test::PrintFixture
{
    Run print(const QStringList& more = {}, const QString& shellLimit = {}, int kind = 1,
              bool asNobody = false)
    {
        QStringList command{qelprn::test::builtProgram(u"qelprn-cli"_s)};
        if (asNobody) // permission bits do not stop root: the run goes on as the unprivileged user
            command = QStringList{u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s} +
                      command;
        else if (!shellLimit.isEmpty())
            command = QStringList{u"/bin/sh"_s, u"-c"_s, shellLimit + u"; exec \"$0\" \"$@\""_s} + command;
        const QString program = command.takeFirst();
        QProcess p;
        p.start(program, command + args(kind, more + QStringList{u"--csv-only"_s}));
        Run run; // a crash or a run that does not end is exit status -1
        if (p.waitForFinished(120000) && p.exitStatus() == QProcess::NormalExit)
            run.exitCode = p.exitCode();
        run.err = QString::fromUtf8(p.readAllStandardError());
        return run;
    }

    QString csvPath() const { return folder.filePath(u"TMP/施設請求データ.csv"_s); }
};

} // namespace

class tst_CliFaults : public QObject
{
    Q_OBJECT

private slots:
    // A writer holding the database locked: the run waits the busy time-out, then fails clearly. A
    // file that is no database: the reason, no print data.
    void databaseLockedOrCorrupt()
    {
        FaultFixture f;
        const QString name = QUuid::createUuid().toString();
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
            db.setDatabaseName(f.folder.filePath(u"db/suite.sqlite"_s));
            QVERIFY(db.open());
            QSqlQuery q(db);
            QVERIFY(q.exec(u"BEGIN EXCLUSIVE"_s));
            const Run run = f.print();
            QCOMPARE(run.exitCode, 2);
            QVERIFY2(run.err.contains(u"database is locked"_s), qPrintable(run.err));
            q.exec(u"ROLLBACK"_s);
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
        QCOMPARE(f.print().exitCode, 0);

        QVERIFY(QFile::remove(f.csvPath()));
        QVERIFY(qelprn::test::writeAll(f.folder.filePath(u"db/suite.sqlite"_s), QByteArray(8192, 'x')));
        const Run run = f.print();
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(u"file is not a database"_s), qPrintable(run.err));
        QVERIFY(!QFile::exists(f.csvPath()));
    }

    void diskFull()
    {
        FaultFixture f;
        // A full disk while the file is written (a 2 KiB file-size limit): a message, not a crash.
        Run run = f.print({}, u"ulimit -f 2"_s);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(u"データの出力に失敗しました。"_s), qPrintable(run.err));
        // Neither a half-written file nor the writer's temporary file is left for the engine.
        QVERIFY(!QFile::exists(f.csvPath()));
        QCOMPARE(QDir(f.folder.filePath(u"TMP"_s)).entryList(QDir::Files), QStringList());
        run = f.print();
        QCOMPARE(run.exitCode, 0);
        QVERIFY(QFileInfo(f.csvPath()).size() > 2048);
    }

    // A temporary folder the clerk may not write to: the reason is named, nothing is left.
    void outputFolderReadOnly()
    {
        FaultFixture f;
#ifdef Q_OS_WIN
        const bool root = false; // the Windows build compiles this file; the Wine run skips it
#else
        const bool root = ::geteuid() == 0;
#endif
        if (root && QStandardPaths::findExecutable(u"setpriv"_s).isEmpty())
            QSKIP("running as root without setpriv: permission bits cannot be tested");
        if (root) {
            // The unprivileged user must reach the program folder and read its database.
            const auto open = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                              QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther |
                              QFileDevice::ExeOther;
            // The test's own folders only, up to the system's temporary folder.
            const QString top = QDir(QDir::tempPath()).canonicalPath();
            for (QDir dir(f.folder.path()); dir.canonicalPath().startsWith(top + u'/'); dir.cdUp())
                QFile::setPermissions(dir.path(), QFile::permissions(dir.path()) | open);
            for (const QString& sub : {u"db"_s, u"SYS"_s, u"DATA"_s, u"ICON"_s})
                QFile::setPermissions(f.folder.filePath(sub), open);
        }
        QVERIFY(QFile::setPermissions(f.folder.filePath(u"TMP"_s),
                                      QFileDevice::ReadOwner | QFileDevice::ExeOwner |
                                          QFileDevice::ReadOther | QFileDevice::ExeOther));
        const Run run = f.print({}, {}, 1, root);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(u"施設請求書印刷: (70)書き込みできません。"_s), qPrintable(run.err));
        QCOMPARE(QDir(f.folder.filePath(u"TMP"_s)).entryList(QDir::Files), QStringList());
    }

    // Names the code page cannot hold, with commas, quotes and apostrophes, and very long ones.
    void awkwardNames()
    {
        FaultFixture f;
        const QString longName = QString(u"長"_s).repeated(1000);
        f.facility(200, u"𠮷野家ホーム, \"本館\" O'Neil"_s);
        f.facility(201, longName, 200);
        f.patient(2001, 201, 5000, 500, 300, 1, 1, u"suite"_s, {{u"cName"_s, u"髙橋 𠮷子"_s}});
        const Run run = f.print();
        QCOMPARE(run.exitCode, 0);
        const QString text = qelprn::fromCp932(qelprn::test::readAll(f.csvPath()));
        QVERIFY(text.contains(u"\"?野家ホーム, \"本館\" O'Neil\""_s));
        QVERIFY(text.contains(u"\""_s + longName + u"\""_s));
        QVERIFY(text.contains(u"\"髙橋 ?子 様\""_s));
    }

    void brokenSettingsFiles()
    {
        FaultFixture f;
        // A settings file in the wrong encoding or cut short reads as what it holds, never crashes:
        // the site its cut-short BASEID names has nothing to print.
        const QString tovara = f.folder.filePath(u"Tovara.ini"_s);
        QVERIFY(qelprn::test::writeAll(tovara, QByteArray("SYSTEM_TMP=\\TMP\r\nBASEID=01\xff\xfe")));
        Run run = f.print();
        QCOMPARE(run.exitCode, 1);

        // A huge settings file (5 MB of lines before the keys) is read through, not refused.
        QVERIFY(qelprn::test::writeAll(
            tovara, QByteArray("; a line of a settings file gone wrong\r\n").repeated(128 * 1024) +
                        "SYSTEM_SYS=\\SYS\r\nSYSTEM_TMP=\\TMP\r\nSYSTEM_ICON=\\ICON\r\nSYSTEM_DATA=\\DATA\r\n"
                        "BASEID=0101\r\n"));
        QCOMPARE(f.print().exitCode, 0);

        // "DB.ini" with a quote that never closes: the database it names cannot be reached, and
        // the kind 6 run says so.
        QVERIFY(QFile::remove(f.csvPath()));
        f.folder.writeSettingsFile(u"DB.ini"_s, u"\"本店:suite,\"sqlite:db\",\"suite\"\n"_s);
        run = f.print({u"--sites"_s, u"1-1"_s}, {}, 6);
        QCOMPARE(run.exitCode, 2);
        QVERIFY(!QFile::exists(f.csvPath()));

        QVERIFY(QFile::remove(tovara));
        run = f.print();
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(u"システム設定ファイルが見つかりません。"_s), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(tst_CliFaults)
#include "tst_cli_faults.moc"
