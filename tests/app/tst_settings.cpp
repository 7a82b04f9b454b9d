// The suite's settings and folders: Windows paths, the file stamp, "Tovara.ini" and the private
// profile files, the start-up check and where the program folder is looked for.
#include "app/CliInteraction.h"
#include "app/Cp932.h"
#include "app/FileUtil.h"
#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/Platform.h"
#include "app/StartupCheck.h"
#include "app/SysIni.h"
#include "app/clsOplIniFile.h"
#include "support/FileBytes.h"
#include "support/TestInteraction.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::test::readAll;
using qelprn::test::TestInteraction;
using qelprn::test::writeAll;

class tst_settings : public QObject
{
    Q_OBJECT

private slots:
    // The suite's folder values are appended to the program folder, which may be on a drive or
    // a UNC share; the result must be a path Windows accepts as it is.
    void windowsPaths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("windows");
        QTest::newRow("drive, mixed") << u"C:/suite\\\\TMP\\"_s << u"C:\\suite\\TMP\\"_s;
        QTest::newRow("drive root") << u"D:\\"_s << u"D:\\"_s;
        QTest::newRow("UNC from Qt") << u"//server/suite\\DATA\\"_s << u"\\\\server\\suite\\DATA\\"_s;
        QTest::newRow("UNC doubled inside") << u"\\\\server\\suite\\\\TMP"_s << u"\\\\server\\suite\\TMP"_s;
        QTest::newRow("long path") << u"\\\\?\\C:\\suite//a"_s << u"\\\\?\\C:\\suite\\a"_s;
        QTest::newRow("relative") << u"TMP\\\\a.csv"_s << u"TMP\\a.csv"_s;
    }

    void windowsPaths()
    {
        QFETCH(QString, path);
        QFETCH(QString, windows);
        QCOMPARE(qelprn::platform::windowsPath(path), windows);
    }

    // The stamp that tells a changed settings file from the one read before.
    void fileStampSeesChanges()
    {
        QTemporaryDir dir;
        const QDateTime time = QDateTime::currentDateTime().addSecs(-60);
        auto write = [&](const QString& name, const QByteArray& bytes) {
            QFile f(dir.filePath(name));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(bytes);
            QVERIFY(f.flush());
            QVERIFY(f.setFileTime(time, QFileDevice::FileModificationTime));
        };
        const QString a = QDir::toNativeSeparators(dir.filePath(u"adodb.ini"_s));
        write(u"adodb.ini"_s, "one");
        const auto first = qelprn::platform::fileStamp(a);
        QVERIFY(first);
        QCOMPARE(first->size, 3);
        QCOMPARE(qelprn::platform::fileStamp(a), first);
        // Another file of the same size and time put in its place is still another file.
        write(u"new.ini"_s, "two");
        QVERIFY(QFile::remove(a));
        QVERIFY(QFile::rename(dir.filePath(u"new.ini"_s), a));
        const auto replaced = qelprn::platform::fileStamp(a);
        QVERIFY(replaced);
        QCOMPARE(replaced->modifiedNs, first->modifiedNs);
        QVERIFY(replaced != first);
        QVERIFY(!qelprn::platform::fileStamp(dir.filePath(u"missing.ini"_s)));
    }

    // "Tovara.ini" is read as flat keys, sections ignored. A missing file is told once per look-up
    // and gives nothing: start-up stops, the folders are unknown.
    void flatKeyLookup()
    {
        QTemporaryDir dir;
        TestInteraction ui;
        qelprn::AppContext ctx;
        ctx.ui = &ui;
        ctx.csAppDir = dir.path();
        QCOMPARE(qelprn::readSysIniValue(ctx, u"BASEID"_s, true), std::nullopt);
        QCOMPARE(qelprn::csTmpDir(ctx), QString());
        QVERIFY(!qelprn::loadAppContext(ui, dir.path()));
        QCOMPARE(ui.calls, QStringList(3, u"message:警告！:システム設定ファイルが見つかりません。"_s));

        ui.clear();
        QVERIFY(writeAll(
            dir.filePath(u"Tovara.ini"_s),
            qelprn::toCp932(
                u"[A]\r\nsystem_tmp=\\lower\r\n SYSTEM_TMP = \\TMP\r\nno equals here\r\n"
                "KEY=a=b\r\n\tTABKEY=t\r\n[B]\r\nSYSTEM_TMP=\\second\r\nBASEID=1X03\r\n終了患者施術期間=3"_s)));
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"SYSTEM_TMP"_s, true), u" \\TMP"_s);
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"KEY"_s, true), u"a=b"_s);
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"終了患者施術期間"_s, true), u"3"_s);
        QCOMPARE(qelprn::csTmpDir(ctx), dir.path() + u" \\TMP\\"_s);

        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"TABKEY"_s, false), QString()); // only spaces are trimmed
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"Missing"_s, false), QString());
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"Missing"_s, true), QString());
        QCOMPARE(
            ui.calls,
            QStringList{u"message:警告！:システム設定ファイルに、指定の項目が見つかりません。\r[Missing]"_s});
        QCOMPARE(ui.messages[0].icon, qelprn::MsgIcon::Critical);

        ui.clear();
        const std::optional<qelprn::AppContext> loaded = qelprn::loadAppContext(ui, dir.path());
        QVERIFY(loaded);
        QCOMPARE(loaded->iBaseKyotenCd, qint16(1)); // "1X": the leading digits, as Val() takes them
        QCOMPARE(loaded->iBaseKyotenEb, qint16(3));
    }

    void privateProfileReadsAndWrites()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"adodb.ini"_s);
        qelprn::clsOplIniFile ini;
        QCOMPARE(ini.iInit(QString()), qint16(-1));
        QCOMPARE(ini.CsErrStr(), u"Iniファイル名を指定してください。"_s);
        QCOMPARE(ini.iInit(path), qint16(-1));
        QCOMPARE(ini.CsErrStr(), u"指定されたIni（"_s + path + u"）ファイルが見つかりません。"_s);

        QVERIFY(writeAll(
            path, qelprn::toCp932(
                      u"; comment\r\n[ 接続情報 ]\r\n 接続情報 = \"Provider=SQLOLEDB;Data Source=x\" \r\n"
                      "Port=42abc\r\n\tTabbed=1\r\nQuoted='a b'\r\nHalf='x\"\r\n[OTHER]\r\nlong="_s +
                      QString(300, u'x') + u"\r\n[接続情報]\r\nLate=1\r\n"_s)));
        QCOMPARE(ini.iInit(path), qint16(0));
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s)),
                 u"Provider=SQLOLEDB;Data Source=x"_s);
        QCOMPARE(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s).size(), 256);
        QCOMPARE(ini.nGetProfileLong(u"接続情報"_s, u"PORT"_s), 42);
        QCOMPARE(ini.nGetProfileLong(u"接続情報"_s, u"none"_s), 0);
        QCOMPARE(ini.nGetProfileLong(u"接続情報"_s, u"Tabbed"_s), 0); // only spaces are trimmed
        // A matching pair of single or double quotes is taken off, a mismatched one stays.
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"接続情報"_s, u"Quoted"_s)), u"a b"_s);
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"接続情報"_s, u"Half"_s)), u"'x\""_s);
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"other"_s, u"LONG"_s)), QString(255, u'x'));
        // Only the first section of a name is read.
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"接続情報"_s, u"Late"_s)), QString());
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"nosection"_s, u"x"_s)), QString());

        // A write keeps the rest of the file as it was.
        const QByteArray before =
            qelprn::toCp932(u"; 先頭の注釈\r\n[A]\r\nkey = old\r\n  other=1 \r\n\r\n[B]\r\nz=髙\r\n"_s);
        QVERIFY(writeAll(path, before));
        QCOMPARE(ini.iInit(path), qint16(0));
        QVERIFY(ini.iWriteProfileString(u"a"_s, u"KEY"_s, u"新しい値"_s) != 0);
        QByteArray expected = before;
        expected.replace("key = old\r\n", qelprn::toCp932(u"KEY=新しい値\r\n"_s));
        QCOMPARE(readAll(path), expected);
        QVERIFY(ini.iWriteProfileString(u"B"_s, u"added"_s, u"2"_s) != 0);
        expected.append("added=2\r\n");
        QCOMPARE(readAll(path), expected);
        QVERIFY(ini.iWriteProfileString(u"C"_s, u"k"_s, u"v"_s) != 0);
        expected.append("[C]\r\nk=v\r\n");
        QCOMPARE(readAll(path), expected);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList({u"adodb.ini"_s}));

        // A write to a missing file creates it.
        QCOMPARE(ini.iInit(dir.filePath(u"new.ini"_s)), qint16(-1));
        QVERIFY(ini.iWriteProfileString(u"S"_s, u"k"_s, u"v"_s) != 0);
        QCOMPARE(readAll(dir.filePath(u"new.ini"_s)), QByteArray("[S]\r\nk=v\r\n"));
    }

    // QELPRN_APP_DIR alone when set; else the program's folder when it holds "Tovara.ini", then
    // the per-user data folder; when none holds it, the folders tried are named and the run ends.
    void programFolderLookupOrder()
    {
        QTemporaryDir dir;
#ifdef Q_OS_WIN
        // Windows has no variable that moves the folder: Qt's test mode keeps the user's own apart.
        QStandardPaths::setTestModeEnabled(true);
        const QString userData =
            QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA")) + u"/qttest/qelprn"_s;
#else
        const QString userData = dir.filePath(u"data/qelprn"_s);
        qputenv("XDG_DATA_HOME", QFile::encodeName(dir.filePath(u"data"_s)));
#endif
        const QString exeDir = QCoreApplication::applicationDirPath();
        const QString ownName = QCoreApplication::applicationName();
        QVERIFY(!QFile::exists(exeDir + u"/Tovara.ini"_s));
        qunsetenv("QELPRN_APP_DIR");
        const auto restore = qScopeGuard([&] {
            QFile::remove(exeDir + u"/Tovara.ini"_s);
#ifdef Q_OS_WIN
            QDir(userData).removeRecursively();
            QStandardPaths::setTestModeEnabled(false);
#else
            qunsetenv("XDG_DATA_HOME");
#endif
        });

        qelprn::AppDirLookup lookup = qelprn::findAppDir();
        QCOMPARE(lookup.tried.size(), 2);
        QCOMPARE(
            QStringList({lookup.found, lookup.tried[0].folder, lookup.tried[1].folder, lookup.suggested()}),
            QStringList({QString(), exeDir, userData, userData}));
        QCOMPARE(QCoreApplication::applicationName(), ownName); // asked as "qelprn", then restored
        QVERIFY(lookup.describeMissing().endsWith(u"\n・利用者のデータフォルダ："_s +
                                                  QDir::toNativeSeparators(userData)));
        TestInteraction ui;
        QVERIFY(!qelprn::loadAppContext(ui));
        QCOMPARE(ui.texts(), QStringList({lookup.describeMissing()}));

        QVERIFY(QDir().mkpath(userData));
        QVERIFY(writeAll(userData + u"/Tovara.ini"_s, "BASEID=0203\r\n"));
        ui.clear();
        const std::optional<qelprn::AppContext> ctx = qelprn::loadAppContext(ui);
        QVERIFY(ctx);
        QCOMPARE(ctx->csAppDir, userData);

        QVERIFY(writeAll(exeDir + u"/Tovara.ini"_s, "BASEID=0101\r\n"));
        QCOMPARE(qelprn::findAppDir().found, exeDir);

        qputenv("QELPRN_APP_DIR", QFile::encodeName(dir.filePath(u"chosen/"_s)));
        lookup = qelprn::findAppDir();
        QCOMPARE(lookup.found, QString());
        QCOMPARE(lookup.tried.size(), 1);
        QCOMPARE(lookup.suggested(), dir.filePath(u"chosen"_s));
        QVERIFY(QDir().mkpath(dir.filePath(u"chosen"_s)));
        QVERIFY(writeAll(dir.filePath(u"chosen/Tovara.ini"_s), ""));
        QCOMPARE(qelprn::findAppDir().found, dir.filePath(u"chosen"_s));
        qunsetenv("QELPRN_APP_DIR");
    }
};

QTEST_GUILESS_MAIN(tst_settings)
#include "tst_settings.moc"
