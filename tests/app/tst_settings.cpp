#include "app/CliInteraction.h"
#include "app/Cp932.h"
#include "app/FileUtil.h"
#include "app/Kiriage.h"
#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/Platform.h"
#include "app/RunTimeError.h"
#include "app/SpaceTrim.h"
#include "app/StartupCheck.h"
#include "app/SysIni.h"
#include "app/Val.h"
#include "app/clsOplIniFile.h"
#include "support/TestInteraction.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;

namespace {

// The text of the run-time error the work raises, or "" when it raises none.
QString overflowText(const std::function<void()>& work)
{
    try {
        work();
    } catch (const qelprn::RunTimeError& e) {
        return qelprn::csRunTimeErrorText(e);
    }
    return QString();
}

void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QByteArray readBytes(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class tst_settings : public QObject
{
    Q_OBJECT

private slots:
    // One table for both converters (ICU on Linux, the system's code page on Windows): the bytes
    // are those Windows writes, so files match the suite's byte for byte.
    void cp932Table_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("full-width minus") << u"－"_s << QByteArray("\x81\x7C");
        QTest::newRow("full-width tilde") << u"～"_s << QByteArray("\x81\x60");
        QTest::newRow("circled one") << u"①"_s << QByteArray("\x87\x40");
        // Characters with an NEC-selected and an IBM code: Windows writes the FA-FC form.
        QTest::newRow("taka (IBM)") << u"髙"_s << QByteArray("\xFB\xFC");
        QTest::newRow("small roman one (IBM)") << u"ⅰ"_s << QByteArray("\xFA\x40");
        QTest::newRow("kou (IBM)") << u"纊"_s << QByteArray("\xFA\x5C");
        // Symbols in both the JIS rows and NEC row 13: Windows writes the JIS code.
        QTest::newRow("not sign") << u"￢"_s << QByteArray("\x81\xCA");
        QTest::newRow("nearly equal") << u"≒"_s << QByteArray("\x81\xE0");
        QTest::newRow("no code") << u"鷗"_s << QByteArray("?");
        QTest::newRow("mixed line") << u"髙橋 ①－～\t1"_s
                                    << QByteArray("\xFB\xFC\x8B\xB4 \x87\x40\x81\x7C\x81\x60\t1");
    }

    void cp932Table()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(qelprn::toCp932(text), bytes);
        // A second time comes from the per-thread memory of converted units.
        QCOMPARE(qelprn::toCp932(text), bytes);
        if (!bytes.contains('?'))
            QCOMPARE(qelprn::fromCp932(bytes), text);
    }

    void cp932RoundTrips()
    {
        // The NEC-selected duplicates read as the same characters.
        QCOMPARE(qelprn::fromCp932(QByteArray("\xEE\xEF\xED\x40\x87\x90\xFA\x54")), u"ⅰ纊≒￢"_s);
        // A file cut after a lead byte keeps the cut visible instead of dropping it.
        QCOMPARE(qelprn::fromCp932(QByteArray("A\x82")), u"A\uFFFD"_s);
        // One "?" per code point, also outside the basic plane.
        QCOMPARE(qelprn::toCp932(u"a€😀b"), QByteArray("a?\x3F"
                                                      "b")
                                               .replace("?\x3F", "??"));
        QByteArray out("x");
        qelprn::appendCp932(out, u"髙");
        qelprn::appendCp932(out, u"");
        QCOMPARE(out, QByteArray("x\xFB\xFC"));
        QCOMPARE(qelprn::decodeSettingsText(QByteArray("\xEF\xBB\xBF") + u"髙"_s.toUtf8()), u"髙"_s);
    }

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

    void flatKeyLookup()
    {
        QTemporaryDir dir;
        writeBytes(
            dir.filePath(u"Tovara.ini"_s),
            qelprn::toCp932(
                u"[A]\r\nsystem_tmp=\\lower\r\n SYSTEM_TMP = \\TMP\r\nno equals here\r\n"
                "KEY=a=b\r\n\tTABKEY=t\r\n[B]\r\nSYSTEM_TMP=\\second\r\nBASEID=1X03\r\n終了患者施術期間=3"_s));
        TestInteraction ui;
        qelprn::AppContext ctx;
        ctx.ui = &ui;
        ctx.csAppDir = dir.path();
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"SYSTEM_TMP"_s, true), u" \\TMP"_s);
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"KEY"_s, true), u"a=b"_s);
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"終了患者施術期間"_s, true), u"3"_s);
        QCOMPARE(qelprn::csTmpDir(ctx), dir.path() + u" \\TMP\\"_s);
        QVERIFY(ui.messages.isEmpty());

        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"TABKEY"_s, false), QString()); // only spaces are trimmed
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"Missing"_s, false), QString());
        QVERIFY(ui.messages.isEmpty());
        QCOMPARE(qelprn::vGetSysIniValue(ctx, u"Missing"_s, true), QString());
        QCOMPARE(ui.messages.size(), 1);
        QCOMPARE(ui.messages[0].text, u"システム設定ファイルに、指定の項目が見つかりません。\r[Missing]"_s);
        QCOMPARE(ui.messages[0].title, u"警告！"_s);
        QCOMPARE(ui.messages[0].icon, qelprn::MsgIcon::Critical);

        ui.clear();
        const qelprn::AppContext loaded = qelprn::loadAppContext(ui, dir.path());
        QCOMPARE(loaded.iBaseKyotenCd, qint16(1)); // "1X": the leading digits, as Val() takes them
        QCOMPARE(loaded.iBaseKyotenEb, qint16(3));
    }

    void missingSuiteSettingsEndsProgram()
    {
        QTemporaryDir dir;
        TestInteraction ui;
        qelprn::AppContext ctx;
        ctx.ui = &ui;
        ctx.csAppDir = dir.path();
        bool ended = false;
        try {
            qelprn::vGetSysIniValue(ctx, u"BASEID"_s, true);
        } catch (const qelprn::ProgramEnd& e) {
            ended = true;
            QCOMPARE(e.exitCode, 2);
        }
        QVERIFY(ended);
        QCOMPARE(ui.calls,
                 QStringList({u"message:警告！:システム設定ファイルが見つかりません。"_s, u"end:2"_s}));
    }

    void privateProfileReads()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"adodb.ini"_s);
        qelprn::clsOplIniFile ini;
        QCOMPARE(ini.iInit(QString()), qint16(-1));
        QCOMPARE(ini.CsErrStr(), u"Iniファイル名を指定してください。"_s);
        QCOMPARE(ini.iInit(path), qint16(-1));
        QCOMPARE(ini.CsErrStr(), u"指定されたIni（"_s + path + u"）ファイルが見つかりません。"_s);

        writeBytes(path,
                   qelprn::toCp932(
                       u"; comment\r\n[ 接続情報 ]\r\n 接続情報 = \"Provider=SQLOLEDB;Data Source=x\" \r\n"
                       "Port=42abc\r\n\tTabbed=1\r\nQuoted='a b'\r\nHalf='x\"\r\n[OTHER]\r\nlong="_s +
                       QString(300, u'x') + u"\r\n[接続情報]\r\nLate=1\r\n"_s));
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
        QVERIFY(QDir(dir.path()).mkdir(u"folder.ini"_s));
        QCOMPARE(ini.iInit(dir.filePath(u"folder.ini"_s)), qint16(-1));
        QCOMPARE(ini.iInit(path), qint16(0));
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"other"_s, u"LONG"_s)), QString(255, u'x'));
        // Only the first section of a name is read.
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"接続情報"_s, u"Late"_s)), QString());
        QCOMPARE(qelprn::csCutNull(ini.csGetProfileString(u"nosection"_s, u"x"_s)), QString());
    }

    void privateProfileWriteKeepsTheRest()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"x.ini"_s);
        const QByteArray before =
            qelprn::toCp932(u"; 先頭の注釈\r\n[A]\r\nkey = old\r\n  other=1 \r\n\r\n[B]\r\nz=髙\r\n"_s);
        writeBytes(path, before);
        qelprn::clsOplIniFile ini;
        QCOMPARE(ini.iInit(path), qint16(0));
        QVERIFY(ini.iWriteProfileString(u"a"_s, u"KEY"_s, u"新しい値"_s) != 0);
        QByteArray expected = before;
        expected.replace("key = old\r\n", qelprn::toCp932(u"KEY=新しい値\r\n"_s));
        QCOMPARE(readBytes(path), expected);
        QVERIFY(ini.iWriteProfileString(u"B"_s, u"added"_s, u"2"_s) != 0);
        expected.append("added=2\r\n");
        QCOMPARE(readBytes(path), expected);
        QVERIFY(ini.iWriteProfileString(u"C"_s, u"k"_s, u"v"_s) != 0);
        expected.append("[C]\r\nk=v\r\n");
        QCOMPARE(readBytes(path), expected);
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList({u"x.ini"_s}));

        // A write to a missing file creates it.
        qelprn::clsOplIniFile fresh;
        fresh.iInit(dir.filePath(u"new.ini"_s));
        QVERIFY(fresh.iWriteProfileString(u"S"_s, u"k"_s, u"v"_s) != 0);
        QCOMPARE(readBytes(dir.filePath(u"new.ini"_s)), QByteArray("[S]\r\nk=v\r\n"));
    }

    void rounding_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("up exact") << 1 << 1 << 100.0 << 100;
        QTest::newRow("up fraction") << 1 << 1 << 100.2 << 101;
        QTest::newRow("up tens") << 1 << 10 << 101.0 << 110;
        QTest::newRow("half up") << 3 << 1 << 100.5 << 101;
        QTest::newRow("half down") << 3 << 1 << 100.49 << 100;
        QTest::newRow("down negative") << 2 << 1 << -0.5 << -1;
        QTest::newRow("down") << 2 << 1 << 100.9 << 100;
        QTest::newRow("none") << 0 << 1 << 123.4 << 0;
    }

    void rounding()
    {
        QFETCH(int, kind);
        QFETCH(int, unit);
        QFETCH(double, value);
        QFETCH(int, expected);
        TestInteraction ui;
        const qelprn::Kiriage rule{qint16(kind), qint16(unit)};
        QCOMPARE(qelprn::nKiriage(rule, value, &ui), expected);
        QVERIFY(ui.messages.isEmpty());
    }

    void roundingWithoutUnitWarns()
    {
        TestInteraction ui;
        QCOMPARE(qelprn::nKiriage({1, 0}, 5.5, &ui), 0);
        QCOMPARE(ui.calls, QStringList({u"message:警告！:切り上げ桁が設定されていません。"_s}));
        // A result beyond 32 bits raises the suite's overflow error.
        QCOMPARE(overflowText([&] { qelprn::nKiriage({1, 1}, 3e9); }), u"( 6)オーバーフローしました。"_s);
        // down: the largest 32-bit value itself
        QCOMPARE(qelprn::nKiriage({2, 1}, 2147483647.0), 2147483647);
    }

    void commandLineCheck()
    {
        TestInteraction ui;
        QVERIFY(qelprn::bCheckCommandLine(ui, u" "_s));
        QVERIFY(ui.messages.isEmpty());
        QVERIFY(!qelprn::bCheckCommandLine(ui, QString()));
        QCOMPARE(ui.texts(), QStringList({u"処理モードが設定されていません。"_s, u"起動できません！"_s}));
        QCOMPARE(ui.messages[0].title, u"　エラー！！"_s);
        QCOMPARE(ui.messages[0].icon, qelprn::MsgIcon::Exclamation);
        QCOMPARE(ui.messages[1].icon, qelprn::MsgIcon::Critical);
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
        QCOMPARE(lookup.found, QString());
        QCOMPARE(lookup.tried.size(), 2);
        QCOMPARE(lookup.tried[0].folder, exeDir);
        QCOMPARE(lookup.tried[1].folder, userData);
        QCOMPARE(lookup.suggested(), userData);
        QCOMPARE(QCoreApplication::applicationName(), ownName); // asked as "qelprn", then restored
        QVERIFY(lookup.describeMissing().endsWith(u"\n・利用者のデータフォルダ："_s +
                                                  QDir::toNativeSeparators(userData)));
        TestInteraction ui;
        try {
            qelprn::loadAppContext(ui);
            QFAIL("the run goes on without a program folder");
        } catch (const qelprn::ProgramEnd& end) {
            QCOMPARE(end.exitCode, 2);
        }
        QCOMPARE(ui.texts(), QStringList({lookup.describeMissing()}));

        QVERIFY(QDir().mkpath(userData));
        writeBytes(userData + u"/Tovara.ini"_s, "BASEID=0203\r\n");
        QCOMPARE(qelprn::findAppDir().found, userData);
        ui.clear();
        const qelprn::AppContext ctx = qelprn::loadAppContext(ui);
        QCOMPARE(ctx.csAppDir, userData);
        QCOMPARE(ctx.iBaseKyotenCd, 2);

        writeBytes(exeDir + u"/Tovara.ini"_s, "BASEID=0101\r\n");
        QCOMPARE(qelprn::findAppDir().found, exeDir);

        qputenv("QELPRN_APP_DIR", QFile::encodeName(dir.filePath(u"chosen/"_s)));
        lookup = qelprn::findAppDir();
        QCOMPARE(lookup.found, QString());
        QCOMPARE(lookup.tried.size(), 1);
        QCOMPARE(lookup.suggested(), dir.filePath(u"chosen"_s));
        QVERIFY(lookup.describeMissing().contains(u"環境変数 QELPRN_APP_DIR："_s +
                                                  QDir::toNativeSeparators(dir.filePath(u"chosen"_s))));
        QVERIFY(QDir().mkpath(dir.filePath(u"chosen"_s)));
        writeBytes(dir.filePath(u"chosen/Tovara.ini"_s), "");
        QCOMPARE(qelprn::findAppDir().found, dir.filePath(u"chosen"_s));
        qunsetenv("QELPRN_APP_DIR");
    }

    void valueHelpers()
    {
        QCOMPARE(qelprn::csNullToStr(QVariant()), QString());
        QCOMPARE(qelprn::csNullToStr(QVariant(QMetaType::fromType<QString>())), QString());
        QCOMPARE(qelprn::csNullToRTrim(u" a  "_s), u" a"_s);
        QCOMPARE(qelprn::nNullToLng(QVariant()), 0);
        QCOMPARE(qelprn::nNullToLng(u"12"_s), 12);
        QCOMPARE(overflowText([] { qelprn::nNullToLng(-2147483649.0); }), u"( 6)オーバーフローしました。"_s);
        // The suite's trims remove spaces only.
        QCOMPARE(qelprn::csRTrim(u" a\t\u3000  "_s), u" a\t\u3000"_s);
        QCOMPARE(qelprn::csTrim(u"  \ta "_s), u"\ta"_s);
        QCOMPARE(qelprn::csTrim(u"   "_s), QString());
        QCOMPARE(qelprn::nVal(u" 12X3"_s), 12);
        QCOMPARE(qelprn::nVal(u"X1"_s), 0);
        // Val skips blanks, tabs, line feeds and ideographic spaces in front, no other white space.
        QCOMPARE(qelprn::nVal(u"\u3000\t\n 12"_s), 12);
        QCOMPARE(qelprn::nVal(u"\r12"_s), 0);
        QCOMPARE(qelprn::nVal(u"\u00a012"_s), 0);
        // A folder is no file.
        QTemporaryDir dir;
        QVERIFY(qelprn::bFileExists(dir.filePath(u"."_s)) == false);
        writeBytes(dir.filePath(u"f"_s), "x");
        QVERIFY(qelprn::bFileExists(dir.filePath(u"f"_s)));
        QCOMPARE(qelprn::csCutNull(u"ab"_s + QChar(0) + u"c"_s), u"ab"_s);
    }

    // The command-line program's interaction: messages on the error stream, questions answered
    // by --yes.
    void messagesQuestionsAndEnd()
    {
        QString text;
        QTextStream err(&text);
        qelprn::CliInteraction no(false, &err);
        no.progress(u"phase"_s, 1, 2); // a captured stream is never a terminal
        QCOMPARE(no.messageBox(u"一行目\r\n二行目\r三行目"_s, u"警告！"_s, qelprn::MsgIcon::Critical),
                 qelprn::MsgResult::Ok);
        QCOMPARE(text, u"警告！: 一行目\n二行目\n三行目\n"_s);
        text.clear();
        QCOMPARE(no.messageBox(u"続けますか？"_s, u"施設請求書印刷"_s, qelprn::MsgIcon::Question,
                               qelprn::MsgButtons::YesNo),
                 qelprn::MsgResult::No);
        QVERIFY(text.startsWith(u"施設請求書印刷: 続けますか？\n"_s));
        QVERIFY(text.contains(u"--yes"_s));

        // At a terminal the person is asked; anything but yes is no.
        for (const auto& [typed, answer] :
             {std::pair{u"y\n"_s, qelprn::MsgResult::Yes}, std::pair{u"はい\n"_s, qelprn::MsgResult::Yes},
              std::pair{u"\n"_s, qelprn::MsgResult::No}}) {
            QString input = typed;
            QTextStream in(&input);
            qelprn::CliInteraction asked(false, &err, &in);
            text.clear();
            QCOMPARE(asked.messageBox(u"続けますか？"_s, u"確認"_s, qelprn::MsgIcon::Question,
                                      qelprn::MsgButtons::YesNo),
                     answer);
            QCOMPARE(text, u"確認: 続けますか？\n  はい / いいえ (y/N): "_s);
        }
        // A wait is said once, however often it is asked about.
        text.clear();
        QVERIFY(no.keepWaiting(u"待っています"_s, 0) && no.keepWaiting(u"待っています"_s, 500));
        no.waitEnded();
        QCOMPARE(text.count(u"待っています"_s), 1);

        qelprn::CliInteraction yes(true, &err);
        QCOMPARE(yes.messageBox(u"q"_s, u"t"_s, qelprn::MsgIcon::Question, qelprn::MsgButtons::YesNo),
                 qelprn::MsgResult::Yes);
        text.clear();
        yes.openUrl(u"https://example.invalid/x"_s);
        QCOMPARE(text, u"https://example.invalid/x\n"_s);
        int code = 0;
        try {
            yes.endProgram(2);
        } catch (const qelprn::ProgramEnd& e) {
            code = e.exitCode;
        }
        QCOMPARE(code, 2);
    }
};

QTEST_GUILESS_MAIN(tst_settings)
#include "tst_settings.moc"
