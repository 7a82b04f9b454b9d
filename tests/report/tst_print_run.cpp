// The print run on small databases built per case: the conditions it takes from its caller and a
// month end's from the saved choices, the message sequences and outcomes of every ending, the seal
// image search, and the kind's layout, data and paper reaching the engine.
#include "app/Cp932.h"
#include "cli/PrintFixture.h"
#include "db/ConnectionPool.h"
#include "report/PrintFolderLock.h"
#include "report/PrintRun.h"
#include "report/SavedPrintSettings.h"
#include "support/ExeName.h"
#include "support/FileBytes.h"
#include "support/StandInProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <functional>

using namespace Qt::StringLiterals;
using qelprn::test::readAll;
using namespace qelprn;
using Outcome = PrintRun::Outcome;

namespace {

// The form as the run sees it: conditions set by the test, or a failure to read them. It keeps
// what the run handed it (the previous run's conditions).
class FakeForm : public PrintConditionSource
{
public:
    FakeForm() { jouken.setMonthAndIssue(QDate(2024, 10, 1), QDate(2024, 11, 5)); }
    bool iGetPrintJouken(PrintJouken& j) override
    {
        handed.append(j);
        j = jouken;
        return readable;
    }

    FakeForm& kind(int k)
    {
        jouken.iPrintKind = qint16(k);
        return *this;
    }

    PrintJouken jouken;
    QList<PrintJouken> handed;
    bool readable = true;
};

// One billing facility, one treated facility and one patient with a self-pay fee and two
// treatment days, so every print kind finds something.
struct RunFixture : test::PrintFixture
{
    FakeForm form;

    RunFixture() { form.jouken.selectedDatabases = {{u"suite"_s, {{1, 1}}}}; }

    PrintRun::Result run(qint16 mode, int kind, PrintRun::Handoff handoff = PrintRun::Handoff::Engine)
    {
        return PrintRun(ctx, handoff).PrintSisetsuSeikyu(mode, form.kind(kind));
    }

    // The texts shown, after checking that every box carried the program's title.
    QStringList texts() const
    {
        for (const auto& m : ui.messages)
            QTest::qVerify(m.title == u"施設請求書印刷"_s, "title", qPrintable(m.title), __FILE__, __LINE__);
        return ui.texts();
    }

    // A stand-in engine that keeps a copy of the command file it was started with.
    QString engineCopy()
    {
        const QString seen = folder.filePath(u"seen.dat"_s);
        const QString engine =
            test::writeStandInProgram(folder.filePath(u"engine"_s),
                                      {.copyArg = 2, .copyTo = seen, .argsFile = folder.filePath(u"args"_s)});
        folder.writeSettingsFile(u"Tovara.ini"_s, u"SYSTEM_SYS=\\SYS\nSYSTEM_TMP=\\TMP\nSYSTEM_ICON=\\ICON\n"
                                                  u"SYSTEM_DATA=\\DATA\nBASEID=0101\nFORM_ENGINE="_s +
                                                      engine + u"\n"_s);
        return seen;
    }

    QString tmp(const QString& name) const { return folder.filePath(u"TMP/"_s + name); }
};

} // namespace

class tst_PrintRun : public QObject
{
    Q_OBJECT

private slots:
    void conditionsFromTheCaller()
    {
        RunFixture f;
        f.form.jouken.iSort = 3;
        f.form.jouken.nKanjaCd = 1001;
        PrintRun run(f.ctx, PrintRun::Handoff::CsvOnly);
        PrintRun::Result r = run.PrintSisetsuSeikyu(2, f.form.kind(3));
        QCOMPARE(r.outcome, Outcome::CsvWritten);
        // The next reading starts from this run's conditions (a form that sets no sort keeps it).
        f.form.jouken.iSort = 1;
        r = run.PrintSisetsuSeikyu(2, f.form);
        QCOMPARE(f.form.handed.size(), 2);
        QCOMPARE(std::tuple(f.form.handed.at(1).iSort, f.form.handed.at(1).nKanjaCd, r.jouken.iSort),
                 std::tuple(qint16(3), 1001, qint16(1)));

        // Unreadable conditions, a missing month or issue date, a kind the table lacks.
        const QList<std::function<void(FakeForm&)>> faults = {
            [](FakeForm& form) { form.readable = false; },
            [](FakeForm& form) { form.jouken.setMonthAndIssue({}, QDate(2024, 11, 5)); },
            [](FakeForm& form) { form.jouken.setMonthAndIssue(QDate(2024, 10, 1), {}); },
            [](FakeForm& form) { form.kind(7); },
        };
        for (const auto& fault : faults) {
            FakeForm form;
            fault(form);
            f.ui.clear();
            r = run.PrintSisetsuSeikyu(0, form);
            QCOMPARE(f.texts(), QStringList{u"印刷条件の取得に失敗しました。"_s});
            QCOMPARE(f.ui.messages.last().icon, MsgIcon::Information);
            QCOMPARE(r.outcome, Outcome::ConditionsFailed);
        }
    }

    void nothingToPrint()
    {
        RunFixture f;
        f.form.jouken.setMonthAndIssue(QDate(2024, 9, 1), QDate(2024, 11, 5));
        const PrintRun::Result r = f.run(0, 1);
        // The query's own message only: no CSV, no engine.
        QCOMPARE(f.texts(), QStringList({u"該当する実績データがありません。"_s}));
        QCOMPARE(f.ui.busyDepth, 0);
        QVERIFY(f.ui.calls.contains(u"busy:on"_s));
        QVERIFY(!QFile::exists(f.tmp(u"施設請求データ.csv"_s)));
        QVERIFY(!QFile::exists(f.tmp(u"WfdCom.dat"_s)));
        QCOMPARE(r.outcome, Outcome::NothingToPrint);
    }

    // The choices the desktop program keeps between runs, read back into a month end's conditions.
    void savedChoicesForTheMonthEnd()
    {
        BillingFixture f;
        QVERIFY(!readSavedPrintChoices(f.ctx));
        PrintJouken j = monthEndJouken(f.ctx, 4, QDate(2024, 10, 1), QDate(2024, 11, 5));
        QCOMPARE(std::tuple(j.iSort, j.nDairiCd, j.nTiryoinCd, j.bSelSisetsuType),
                 std::tuple(1, 0, 0, false));

        QVERIFY(writeSavedPrintChoices(f.ctx, {2, 11, 13, true}));
        bool ok = false;
        QCOMPARE(readTextLines(f.folder.filePath(u"DATA/印刷設定.ini"_s), &ok),
                 (QStringList{u"[施設請求書]"_s, u"並び順=2"_s, u"印字社名=11"_s, u"印字治療院名=13"_s,
                              u"対象施設=-1"_s}));
        j = monthEndJouken(f.ctx, 4, QDate(2024, 10, 1), QDate(2024, 11, 5));
        QCOMPARE(std::tuple(j.iSort, j.nDairiCd, j.nTiryoinCd, j.bSelSisetsuType),
                 std::tuple(3, 11, 13, true));
        QCOMPARE(std::tuple(j.iPrintKind, j.nSeikyuYM, j.sTeisyutuDate),
                 std::tuple(4, 202410, u"2024/11/05"_s));

        // A sort out of range and a negative code keep the defaults.
        f.folder.writeSettingsFile(u"DATA/印刷設定.ini"_s, u"[施設請求書]\n並び順=3\n印字社名=-5\n"_s);
        QCOMPARE(readSavedPrintChoices(f.ctx)->corpCode, -5);
        j = monthEndJouken(f.ctx, 1, QDate(2024, 10, 1), QDate(2024, 11, 5));
        QCOMPARE(std::tuple(j.iSort, j.nDairiCd, j.bSelSisetsuType), std::tuple(1, 0, false));
        // A folder that cannot take the file.
        QVERIFY(QDir(f.folder.filePath(u"DATA"_s)).removeRecursively());
        QVERIFY(!writeSavedPrintChoices(f.ctx, {}));
    }

    // "Tovara.ini" gone while the program runs: the run says so and stops before writing anywhere.
    void settingsFileRemoved()
    {
        RunFixture f;
        QVERIFY(QFile::remove(f.folder.filePath(u"Tovara.ini"_s)));
        const PrintRun::Result r = f.run(0, 2);
        QCOMPARE(f.ui.texts(),
                 QStringList({u"システム設定ファイルが見つかりません。"_s, u"帳票の印刷に失敗しました。"_s}));
        QCOMPARE(r.outcome, Outcome::Failed);
        QCOMPARE(r.csvFilePath, QString());
        QVERIFY(!QFile::exists(f.folder.filePath(u"施設請求データ.csv"_s)));
        QVERIFY(!QFile::exists(f.tmp(u"施設請求データ.csv"_s)));
    }

    void queryFailure()
    {
        RunFixture f;
        f.folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=\n"_s);
        f.run(1, 2);
        QStringList texts = f.texts();
        QCOMPARE(texts.size(), 3); // the query's error, the run's, the entry's
        QCOMPARE(texts.mid(1),
                 QStringList({u"請求データの取得に失敗しました。"_s, u"帳票の印刷に失敗しました。"_s}));

        f.ui.clear();
        const PrintRun::Result r = f.run(2, 2); // CSV output: its own final message
        QCOMPARE(f.texts().last(), u"CSVの出力に失敗しました。"_s);
        QCOMPARE(r.outcome, Outcome::Failed);
    }

    void writerFailure()
    {
        RunFixture f;
        QVERIFY(QDir(f.folder.filePath(u"TMP"_s)).removeRecursively()); // no temporary folder
        const PrintRun::Result r = f.run(0, 4);
        const QStringList texts = f.texts();
        QCOMPARE(texts.size(), 3);
        QVERIFY2(texts.at(0).startsWith(u"(76)パスが見つかりません。"_s), qPrintable(texts.at(0)));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::None);
        QCOMPARE(texts.mid(1),
                 QStringList({u"データの出力に失敗しました。"_s, u"帳票の印刷に失敗しました。"_s}));
        QCOMPARE(r.outcome, Outcome::Failed);
        QCOMPARE(r.csvFilePath, f.folder.path() + u"\\TMP\\請求書兼領収書.csv"_s);
    }

    // Another run holds the temporary folder past the time limit: the run stops with a message that
    // names the holder and writes nothing; a person who stops waiting is told nothing more.
    void folderHeldByAnotherRun()
    {
        RunFixture f;
        const QString lock = f.tmp(PrintFolderLock::kFileName);
        QProcess holder;
        holder.start(
            test::writeStandInProgram(f.folder.filePath(u"holder"_s), {.holdLock = lock, .holdMs = -1}));
        QVERIFY(holder.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(lock), 20000);
        PrintRun run(f.ctx, PrintRun::Handoff::CsvOnly);
        run.setFolderWaitLimit(std::chrono::milliseconds(600));
        PrintRun::Result r = run.PrintSisetsuSeikyu(2, f.form.kind(1));
        QCOMPARE(r.outcome, Outcome::FolderBusy);
        QVERIFY(f.ui.calls.contains(u"wait:他の印刷が終わるのを待っています"_s));
        QCOMPARE(f.ui.calls.count(u"wait:end"_s), 1);
        const QString text = f.texts().value(0);
        QVERIFY2(text.startsWith(u"他の印刷が終わらないため、印刷を中止しました。\r\n（印刷中: "_s) &&
                     text.contains(QString::number(holder.processId())),
                 qPrintable(text));
        QVERIFY(!QFile::exists(f.tmp(u"施設請求データ.csv"_s)));

        f.ui.clear();
        f.ui.cancelWaitAfterMs = 200;
        run.setFolderWaitLimit(std::chrono::minutes(1));
        r = run.PrintSisetsuSeikyu(2, f.form.kind(1));
        QCOMPARE(r.outcome, Outcome::WaitCancelled);
        QVERIFY(f.ui.messages.isEmpty());
        QVERIFY(f.ui.longestWaitMs < 5000);
        holder.kill();
        holder.waitForFinished();
    }

    void engineMissing()
    {
        RunFixture f; // no FORM_ENGINE: our engine beside the program, which a test folder lacks
        const PrintRun::Result r = f.run(0, 1);
        const QString tried = QDir::toNativeSeparators(
            QDir(QCoreApplication::applicationDirPath()).filePath(test::exeName(u"qelprn-engine"_s)));
        QCOMPARE(f.texts(), QStringList({u"帳票の印刷に失敗しました。\r[帳票印刷エンジン "_s + tried +
                                         u" が見つかりません。]"_s}));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::Critical);
        QCOMPARE(r.outcome, Outcome::EngineFailed);
        QVERIFY(QFile::exists(f.tmp(u"施設請求データ.csv"_s))); // the data is there for a second try
    }

    // The kind's layout, data name, CSV file and paper line reach the engine: an invoice from the
    // program folder's layouts in preview, an invoice-receipt (A4) from the layouts installed beside
    // the program, which the program folder lacks, in print.
    void engineJobOfTheKind()
    {
        RunFixture f;
        const QString seen = f.engineCopy();
        f.folder.writeSettingsFile(u"SYS/施設別請求書.wfd"_s, u"{}"_s);
        const QString installed =
            QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/qelprn/layouts"_s);
        const QString tmp = f.folder.path() + u"\\TMP\\"_s;
        PrintRun::Result r = f.run(0, 1);
        QCOMPARE(r.outcome, Outcome::Done);
        QCOMPARE(test::waitForArgs(f.folder.filePath(u"args"_s), 3).size(), 3);
        QCOMPARE(readAll(seen), toCp932(u"FileName,\""_s + f.folder.path() +
                                        u"\\SYS\\施設別請求書.wfd\"\r\n"
                                        u"Title,\"施設請求書印刷\"\r\nSetDataText,\"施設請求データ\",\""_s +
                                        tmp + u"施設請求データ.csv\"\r\nShowWindow,2\r\n"_s));

        r = f.run(1, 4);
        QVERIFY2(f.ui.messages.isEmpty(), qPrintable(f.ui.texts().join(u'\n')));
        QCOMPARE(r.outcome, Outcome::Done);
        QCOMPARE(test::waitForArgs(f.folder.filePath(u"args"_s), 6).size(), 6);
        QCOMPARE(readAll(seen),
                 toCp932(u"FileName,\""_s +
                         QDir::toNativeSeparators(installed + u"/請求書兼領収書_回数区分あり.wfd"_s) +
                         u"\"\r\n"
                         u"Title,\"施設請求書印刷\"\r\nSetDataText,\"請求書兼領収書\",\""_s +
                         tmp + u"請求書兼領収書.csv\"\r\nPrintPaper, A4\r\nPrintOutFromDialog\r\n"_s));
        QVERIFY(r.times.engineMs >= 0);
    }

    // The data folder's seal wins (its path keeps the doubled separator), then the program folder's,
    // else "" in the last column.
    void sealImageSearch()
    {
        RunFixture f;
        const auto lastColumn = [&] {
            const QList<QByteArray> lines = readAll(f.tmp(u"施設請求データ.csv"_s)).split('\n');
            return fromCp932(lines.at(1).trimmed()).section(u',', -1);
        };
        const auto csvOnly = PrintRun::Handoff::CsvOnly;
        QCOMPARE(f.run(2, 1, csvOnly).outcome, Outcome::CsvWritten);
        QCOMPARE(lastColumn(), u"\"\""_s);

        const QString base = f.folder.filePath(u"corpseal.bmp"_s);
        QVERIFY(test::writeAll(base, {}));
        f.run(2, 1, csvOnly);
        QCOMPARE(lastColumn(), u"\""_s + f.folder.path() + u"\\corpseal.bmp\""_s);

        QVERIFY(QFile::copy(base, f.folder.filePath(u"DATA/corpseal.bmp"_s)));
        const PrintRun::Result r = f.run(2, 1, csvOnly);
        QCOMPARE(lastColumn(), u"\""_s + f.folder.path() + u"\\DATA\\\\corpseal.bmp\""_s);
        QCOMPARE(r.sealImagePath, f.folder.path() + u"\\DATA\\\\corpseal.bmp"_s);
    }
};

QTEST_GUILESS_MAIN(tst_PrintRun)
#include "tst_print_run.moc"
