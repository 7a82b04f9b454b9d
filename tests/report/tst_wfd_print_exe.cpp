// The engine bridge: "WfdCom.dat" byte for byte with every optional line on and off, finding the
// engine program, starting it detached with "/c" and the command file, and the PDF hand-off.
#include "app/Cp932.h"
#include "app/EngineReceipt.h"
#include "report/cls_WfdPrintExe.h"
#include "support/FileBytes.h"
#include "support/StandInProgram.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using qelprn::test::readAll;
using namespace qelprn;

namespace {

const QString kTovara =
    u"[SYSTEM]\nSYSTEM_SYS=\\SYS\nSYSTEM_TMP=\\TMP\nSYSTEM_ICON=\\ICON\nSYSTEM_DATA=\\DATA\n"
    u"BASEID=0101\n"_s;

} // namespace

class tst_WfdPrintExe : public QObject
{
    Q_OBJECT

private slots:
    void commandFileLines()
    {
        test::TestProgramFolder folder;
        test::TestInteraction ui;
        const AppContext ctx = folder.context(ui);
        const QString sys = folder.path() + u"\\SYS\\"_s;
        const QString tmp = folder.path() + u"\\TMP\\"_s;

        cls_WfdPrintExe wfd(ctx);
        QCOMPARE(wfd.iInit(sys + u"施設別請求書.wfd"_s, u"施設請求書印刷"_s), 0);
        QCOMPARE(wfd.iSetDataText(1, u"施設請求データ"_s, u"施設請求データ.csv"_s), 0);
        QCOMPARE(wfd.iSetDataTextNoTitle(3, u"明細"_s, u"明細.csv"_s), 0);
        QCOMPARE(wfd.iSetOffset(-12, 30), 0);
        QCOMPARE(wfd.iSetPrintZoom(95), 0);
        QCOMPARE(wfd.iSetRepeatStart(0), 0); // set, even to 0
        QCOMPARE(wfd.iSetItemValue(u"見出し.表題"_s, u"請求書"_s), 0);
        QCOMPARE(wfd.iSetItemValue(u"備考"_s, u""_s), 0);
        QCOMPARE(wfd.commandFileBytes(cls_WfdPrintExe::Action::PrintFromDialog, true),
                 toCp932(u"FileName,\""_s + sys +
                         u"施設別請求書.wfd\"\r\n"
                         u"Title,\"施設請求書印刷\"\r\n"
                         u"SetDataText,\"施設請求データ\",\""_s +
                         tmp +
                         u"施設請求データ.csv\"\r\n"
                         u"SetDataText,\"明細\",\""_s +
                         tmp +
                         u"明細.csv\",,,1\r\n"
                         u"PrintOffsetX, -12\r\n"
                         u"PrintOffsetY, 30\r\n"
                         u"PrintZoom, 95\r\n"
                         u"SectionRepeatStart, 0\r\n"
                         u"PrintPaper, A4\r\n"
                         u"SetItemValue,\"見出し.表題\",\"請求書\"\r\n"
                         u"SetItemValue,\"備考\",\"\"\r\n"
                         u"PrintOutFromDialog\r\n"_s));

        // iInit resets everything: no title, no optional lines, the action last.
        QCOMPARE(wfd.iInit(sys + u"x.wfd"_s, QString()), 0);
        QCOMPARE(wfd.iSetDataText(2, QString(), u"skipped.csv"_s), 0); // no data name: skipped
        QCOMPARE(wfd.iSetOffset(0, 0), 0);
        QCOMPARE(wfd.commandFileBytes(cls_WfdPrintExe::Action::Preview, false),
                 toCp932(u"FileName,\""_s + sys + u"x.wfd\"\r\nShowWindow,2\r\n"_s));
        QCOMPARE(wfd.commandFileBytes(cls_WfdPrintExe::Action::Print, false),
                 toCp932(u"FileName,\""_s + sys + u"x.wfd\"\r\nPrintOut\r\n"_s));

        QVERIFY(wfd.iSetDataText(6, u"x"_s, u"x.csv"_s) != 0);
        QVERIFY(wfd.sErrMsg.contains(u"6"_s));
        QVERIFY(ui.messages.isEmpty()); // the bridge never shows a message itself
    }

    void findsAndStartsTheEngine()
    {
        test::TestProgramFolder folder;
        test::TestInteraction ui;
        const AppContext ctx = folder.context(ui);
        cls_WfdPrintExe wfd(ctx);

        // No FORM_ENGINE: our engine beside the program (absent beside a test). The command file is
        // written before the engine is looked for: a previous run's file is replaced, never left for
        // a second try to pick up.
        folder.writeSettingsFile(u"Tovara.ini"_s, kTovara);
        const QString commandFile = folder.filePath(u"TMP/WfdCom.dat"_s);
        QVERIFY(test::writeAll(commandFile, "FileName,\"old.wfd\"\r\nPrintOut\r\n"));
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
        QVERIFY(wfd.iPreview(false) != 0);
        QCOMPARE(readAll(commandFile), wfd.commandFileBytes(cls_WfdPrintExe::Action::Preview, false));
        QVERIFY(wfd.renderToPdf(true, folder.filePath(u"x.pdf"_s)) != 0);
        QCOMPARE(readAll(commandFile), wfd.commandFileBytes(cls_WfdPrintExe::Action::Preview, true));
        QVERIFY(wfd.iPreviewData() != 0); // on the layout's own paper
        QCOMPARE(readAll(commandFile), wfd.commandFileBytes(cls_WfdPrintExe::Action::Preview, false));

        // The suite's engine only when FORM_ENGINE names it; a bare name is looked for on the PATH
        // and beside the program, and the message says so.
        folder.writeSettingsFile(u"Tovara.ini"_s, kTovara + u"FORM_ENGINE=wfrfv10.exe\n"_s);
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
        QVERIFY(wfd.iPreview(false) != 0);
        QVERIFY2(
            wfd.sErrMsg.startsWith(u"帳票印刷エンジン wfrfv10.exe が見つかりません。（PATH のフォルダと "_s +
                                   QDir::toNativeSeparators(QCoreApplication::applicationDirPath())),
            qPrintable(wfd.sErrMsg));

        // A path: started detached with "/c" and the command file as separate arguments.
        const QString args = folder.filePath(u"bin/args.txt"_s);
        const QString engine = test::writeStandInProgram(
            folder.filePath(u"bin/fake engine"_s),
            {.copyArg = 2, .copyTo = folder.filePath(u"bin/seen.dat"_s), .argsFile = args});
        folder.writeSettingsFile(u"Tovara.ini"_s, kTovara + u"[PRINT]\nFORM_ENGINE="_s + engine + u"\n"_s);
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
        QCOMPARE(wfd.iSetDataText(1, u"d"_s, u"d.csv"_s), 0);
        QCOMPARE(wfd.iPrintDialog(true), 0);
        QCOMPARE(test::waitForArgs(args, 3),
                 (QStringList{u"2"_s, u"/c"_s, QDir::toNativeSeparators(commandFile)}));
        QCOMPARE(readAll(folder.filePath(u"bin/seen.dat"_s)),
                 wfd.commandFileBytes(cls_WfdPrintExe::Action::PrintFromDialog, true));

        // Only spaces around the name are trimmed, as the suite trims: a tab is part of the name.
        folder.writeSettingsFile(u"Tovara.ini"_s, kTovara + u"FORM_ENGINE=  "_s + engine + u"  \n"_s);
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
        QCOMPARE(wfd.resolveEngine(), QFileInfo(engine).absoluteFilePath());
        folder.writeSettingsFile(u"Tovara.ini"_s, kTovara + u"FORM_ENGINE="_s + engine + u"\t\n"_s);
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
        QVERIFY(wfd.resolveEngine().isEmpty());
    }

    // The viewer takes its data from "./TMP\\"; the image program joins reports into one job.
    void viewerAndJoinedJobs()
    {
        test::TestProgramFolder folder;
        test::TestInteraction ui;
        const AppContext ctx = folder.context(ui);
        for (const QString& name : {u"WrVb6Viewer"_s, u"wfrimg10"_s})
            test::writeStandInProgram(
                folder.filePath(u"bin/"_s + name + u".exe"_s),
                {.copyArg = 2, .copyTo = folder.filePath(u"bin/"_s + name + u".dat"_s)});
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(QDir::toNativeSeparators(folder.filePath(u"bin"_s)) +
                                          QDir::listSeparator()) +
                            path);
        const auto restore = qScopeGuard([&] { qputenv("PATH", path); });
        const QString tmp = folder.path() + u"\\TMP\\"_s;

        cls_WfdPrintExe wfd(ctx);
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"請求"_s), 0);
        QCOMPARE(wfd.iSetDataText(1, u"d"_s, u"d.csv"_s), 0);
        QCOMPARE(wfd.iPreviewActX(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(folder.filePath(u"bin/WrVb6Viewer.dat"_s)), 20000);
        QCOMPARE(readAll(folder.filePath(u"bin/WrVb6Viewer.dat"_s)),
                 toCp932(u"FileName,\"a.wfd\"\r\nTitle,\"請求\"\r\nSetDataText,\"d\",\"./TMP\\d.csv\"\r\n"
                         u"ShowWindow,2\r\n"_s));

        QCOMPARE(wfd.addPrint(), 0);                   // waits for the image program
        QCOMPARE(wfd.iInit(u"b.wfd"_s, u"請求"_s), 0); // the job outlives iInit
        QCOMPARE(wfd.iSetDataTextNoTitle(2, u"e"_s, u"e.csv"_s), 0);
        QCOMPARE(wfd.addPrint_addCSV(), 0);
        const QByteArray job = toCp932(u"setTitle,\"請求\"\r\nsetreport,\"a.wfd\"\r\nAddReport\r\n"
                                       u"setreport,\"b.wfd\"\r\nSetDataText,\"e\",\""_s +
                                       tmp + u"e.csv\",,,1\r\nAddReport\r\n"_s);
        QCOMPARE(wfd.jobFileBytes(), job);
        QCOMPARE(readAll(folder.filePath(u"bin/wfrimg10.dat"_s)), job);
    }

    void rendersPdfAndWaits()
    {
        test::TestProgramFolder folder;
        test::TestInteraction ui;
        const AppContext ctx = folder.context(ui);
        const QString args = folder.filePath(u"args.txt"_s);
        const QString engine =
            test::writeStandInProgram(folder.filePath(u"engine"_s), {.copyArg = 4,
                                                                     .copyTo = folder.filePath(u"seen.dat"_s),
                                                                     .writeArg = 2,
                                                                     .writeBytes = "pdf",
                                                                     .argsFile = args});
        folder.writeSettingsFile(u"Tovara.ini"_s, kTovara + u"FORM_ENGINE="_s + engine + u"\n"_s);
        cls_WfdPrintExe wfd(ctx);

        // The engine gets "--pdf FILE /c <command file>" for a preview job and is waited for.
        QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
        const QString pdf = folder.filePath(u"out.pdf"_s);
        QCOMPARE(wfd.renderToPdf(false, pdf), 0);
        QCOMPARE(readAll(pdf), QByteArray("pdf"));
        const QString commandFile = folder.filePath(u"TMP/WfdCom.dat"_s);
        QCOMPARE(
            readAll(args),
            (u"4\n--pdf\n"_s + pdf + u"\n/c\n"_s + QDir::toNativeSeparators(commandFile) + u"\n"_s).toUtf8());
        QVERIFY(readAll(folder.filePath(u"seen.dat"_s)).endsWith("ShowWindow,2\r\n"));

        // Its message on standard error becomes the error text.
        test::writeStandInProgram(folder.filePath(u"engine"_s),
                                  {.stderrText = u"レイアウト a.wfd がありません。"_s, .exitCode = 2});
        QVERIFY(wfd.renderToPdf(false, pdf) != 0);
        QCOMPARE(wfd.sErrMsg, u"レイアウト a.wfd がありません。"_s);
    }

    // Our engine is told where to say it has read the job only when someone waits for that; the
    // one waiting hears it once, and the receipt is not left behind. Another engine is not told.
    void engineSaysWhenItHasReadTheJob()
    {
        test::TestProgramFolder folder;
        test::TestInteraction ui;
        const AppContext ctx = folder.context(ui);
        const QString note = folder.filePath(u"receipts.txt"_s);
        QTemporaryDir temp;
        qputenv("TMPDIR", QFile::encodeName(temp.path()));
        const auto restore = qScopeGuard([] { qunsetenv("TMPDIR"); });
        const test::StandIn ours = {.receiptVariable = QString::fromLatin1(kEngineReceiptVariable),
                                    .receiptNote = note};
        for (const QString& name :
             {QFileInfo(cls_WfdPrintExe::bundledEngine()).completeBaseName(), u"wfrfv10"_s}) {
            const QString engine = test::writeStandInProgram(folder.filePath(u"bin/"_s + name), ours);
            folder.writeSettingsFile(u"Tovara.ini"_s, kTovara + u"FORM_ENGINE="_s + engine + u"\n"_s);
            cls_WfdPrintExe wfd(ctx);
            QCOMPARE(wfd.iInit(u"a.wfd"_s, u"t"_s), 0);
            QCOMPARE(wfd.renderToPdf(false, folder.filePath(u"out.pdf"_s)), 0); // nobody waits
            int heard = 0;
            wfd.onJobRead = [&heard] { ++heard; };
            QCOMPARE(wfd.renderToPdf(false, folder.filePath(u"out.pdf"_s)), 0);
            QCOMPARE(heard, 1);
            QVERIFY(!wfd.onJobRead);
            QVERIFY(QDir(temp.path()).entryList(QDir::Files).isEmpty());
        }
        QCOMPARE(readAll(note), QByteArray("none\ngiven\nnone\nnone\n"));
    }
};

QTEST_GUILESS_MAIN(tst_WfdPrintExe)
#include "tst_wfd_print_exe.moc"
