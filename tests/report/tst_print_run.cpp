// The print run driver on small databases built per case: the message sequences of every ending,
// the busy pointer, the conditions read from the form values, the seal image search, and what the
// engine is handed for each print kind.
#include "app/Cp932.h"
#include "app/Paths.h"
#include "app/StartupCheck.h"
#include "billing/BillingFixture.h"
#include "db/ConnectionPool.h"
#include "db/ConnectionReport.h"
#include "demo/DemoProgramFolder.h"
#include "report/PrintRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

// The form as the run sees it: values set by the test, or a failure to read them.
class FakeForm : public PrintConditionSource
{
public:
    FakeForm()
    {
        values.imD_Out = QDate(2024, 10, 1);
        values.imD_Teis = QDate(2024, 11, 5);
        values.optSelSisetsuType[0] = true;
    }
    bool readPrintFormValues(PrintFormValues& v) override
    {
        v = values;
        return readable;
    }
    QList<SelectedDatabase> selectedDatabases() override { return sites; }

    PrintFormValues values;
    QList<SelectedDatabase> sites;
    bool readable = true;

    FakeForm& kind(int k)
    {
        values.optPrint = {};
        values.optPrint[k - 1] = true;
        return *this;
    }
};

// A fixture with one billing facility, one treated facility and one patient with a self-pay fee
// and two treatment days, so every print kind finds something.
struct RunFixture : BillingFixture
{
    PrintRun run{ctx};
    FakeForm form;

    RunFixture()
    {
        corp(1, 0, u"ほほえみ治療院"_s);
        facility(100, u"さくら会"_s);
        facility(101, u"さくら館"_s, 100);
        patient(1001, 101, 40000, 4000, 500, 201);
        day(1001, u"2024/10/03 10:00:00"_s, 5000, 500, 500);
        day(1001, u"2024/10/10 10:00:00"_s, 5000, 500, 0);
        form.sites = {{u"suite"_s, {{1, 1}}}};
        // The invoice-receipt's basic house-call fee.
        insert(u"療養費単価"_s, {{u"iTankaKbn"_s, 2},
                                 {u"nTankaCode"_s, 1},
                                 {u"cStartDate"_s, u"2024/04/01"_s},
                                 {u"cEndDate"_s, u"2026/03/31"_s},
                                 {u"nTanka"_s, 2300}});
    }

    // The texts shown, after checking that every box carried the program's title.
    QStringList texts() const
    {
        for (const auto& m : ui.messages)
            QTest::qVerify(m.title == u"施設請求書印刷"_s, "title", qPrintable(m.title), __FILE__, __LINE__);
        return ui.texts();
    }

    void engine(const QString& script)
    {
        const QString path = folder.filePath(u"engine.sh"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script.toUtf8() + "\n");
        file.close();
        QVERIFY(file.setPermissions(file.permissions() | QFileDevice::ExeOwner));
        folder.writeSettingsFile(u"Tovara.ini"_s, u"SYSTEM_SYS=\\SYS\nSYSTEM_TMP=\\TMP\nSYSTEM_ICON=\\ICON\n"
                                                  u"SYSTEM_DATA=\\DATA\nBASEID=0101\nFORM_ENGINE="_s +
                                                      path + u"\n"_s);
    }

    QString tmp(const QString& name) const { return folder.filePath(u"TMP/"_s + name); }
};

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_PrintRun : public QObject
{
    Q_OBJECT

    // The demo program folder the back-end rows share, and the embedded engine's CSV files.
    QTemporaryDir m_demo;
    QList<DemoSite> m_demoSites;
    QHash<QString, QByteArray> m_embeddedCsv;

    // Points "adodb.ini" and "DB.ini" of the demo folder at the embedded engine or at the same
    // files through the ODBC driver manager with SQLite's driver.
    void pointDemoAt(bool odbc)
    {
        const QString source = odbc ? m_demo.filePath(u"db"_s) : u"sqlite:db"_s;
        if (odbc)
            qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
        else
            qunsetenv("QELPRN_ODBC_DRIVER");
        QString error;
        QVERIFY2(writeDemoSettingsFile(m_demo.filePath(u"adodb.ini"_s),
                                       u"[接続情報]\n接続情報=Provider=SQLOLEDB;Data Source="_s + source +
                                           u";Database=suite;uid=sa;pwd=x\n"_s,
                                       &error),
                 qPrintable(error));
        QStringList lines;
        for (const QString& db : QStringList{u"suite"_s, u"suite2"_s})
            lines.append(u"\""_s + db + u"\",\""_s + source + u"\",\""_s + db + u"\""_s);
        QVERIFY2(writeDemoSettingsFile(m_demo.filePath(u"DB.ini"_s), lines.join(u'\n'), &error),
                 qPrintable(error));
        ConnectionPool::instance().clear();
    }

private slots:
    void everyKindOnBothBackEnds_data() { qelprn::test::addBackEndRows(); }

    // Every print kind in every sort order on the demo data, to CSV: through the ODBC driver
    // manager with SQLite's driver the files are the embedded engine's byte for byte.
    void everyKindOnBothBackEnds()
    {
        QFETCH(bool, odbc);
        test::TestInteraction ui;
        if (m_demoSites.isEmpty()) {
            DemoOptions options;
            options.folder = m_demo.path();
            options.patients = 90;
            options.month = QDate(2026, 10, 1);
            options.replace = true;
            DemoProgramFolder demo(options);
            QString error;
            QVERIFY2(demo.create(ui, &error), qPrintable(error));
            m_demoSites = demo.sites();
        }
        pointDemoAt(odbc);
        const auto restore = qScopeGuard([] {
            qunsetenv("QELPRN_ODBC_DRIVER");
            ConnectionPool::instance().clear();
        });
        AppContext ctx = loadAppContext(ui, m_demo.path());
        // 接続確認 of the demo folder opens every database.
        const ConnectionReport check = checkConnections(ctx);
        QVERIFY2(check.allOpened(), qPrintable(check.lines().join(u'\n')));
        QCOMPARE(check.databases.size(), 2);
        FakeForm form;
        form.values.imD_Out = QDate(2026, 10, 1);
        form.values.imD_Teis = QDate(2026, 11, 5);
        for (const DemoSite& site : std::as_const(m_demoSites)) {
            if (form.sites.isEmpty() || form.sites.last().cDatabase != site.database)
                form.sites.append({site.database, {}});
            form.sites.last().sites.append({qint16(site.code), qint16(site.branch)});
        }
        for (int kind = 1; kind <= 6; ++kind) {
            const int orders = kind == 2 || kind == 3 ? 4 : kind == 4 || kind == 5 ? 3 : 1;
            for (int order = 0; order < orders; ++order) {
                form.kind(kind);
                form.values.optSortShisetsu = {};
                form.values.optSort = {};
                if (orders == 4)
                    form.values.optSortShisetsu[order] = true;
                else if (orders == 3)
                    form.values.optSort[order] = true;
                PrintRun run(ctx);
                run.handoff = PrintRun::Handoff::CsvOnly;
                run.PrintSisetsuSeikyu(2, form);
                const QString tag = u"kind %1 order %2"_s.arg(kind).arg(order);
                QVERIFY2(run.outcome == PrintRun::Outcome::CsvWritten,
                         qPrintable(tag + u": "_s + ui.texts().join(u'\n')));
                const QByteArray csv = readAll(toLocalPath(run.csvFilePath));
                QVERIFY2(csv.count('\n') > 1, qPrintable(tag)); // a header and lines
                if (!odbc)
                    m_embeddedCsv.insert(tag, csv);
                else if (m_embeddedCsv.contains(tag))
                    QVERIFY2(csv == m_embeddedCsv.value(tag), qPrintable(tag));
            }
        }
        QCOMPARE(ui.messages.size(), 0);
    }

    void conditionsFromTheForm()
    {
        RunFixture f;
        PrintFormValues& v = f.form.values;
        v.optPrint = {false, false, true, true, false, false}; // the first set option wins
        v.cbDairiListIndex = 0;                                // entry 0 is "no choice"
        v.cbDairiItemData = 9;
        v.cbTiryoinListIndex = 2;
        v.cbTiryoinItemData = 7;
        v.imNum_ShisetuCD = {100, 101};
        v.imNum_CD = 1001;
        v.cmbKaishaKbnEnabled = {true, false};
        v.cmbKaishaKbnListIndex = {1, 1};
        v.cmbKaishaKbnText = {u"有料老人ホーム  "_s, u"ケアハウス"_s};
        v.optSelSisetsuType = {false, true};
        v.optSortShisetsu = {false, false, true, true};
        v.cbTantouListIndex = 1;
        v.cbTantouItemData = 44;
        f.run.data.jouken.iSort = 3; // no sort option set: kept

        QCOMPARE(f.run.iGetPrintJouken(f.form), 0);
        const PrintJouken& j = f.run.data.jouken;
        QCOMPARE(j.iPrintKind, qint16(3));
        QCOMPARE(j.sSeikyuYM, u"2024/10"_s);
        QCOMPARE(j.nSeikyuYM, 202410);
        QCOMPARE(j.sTeisyutuDate, u"2024/11/05"_s);
        QCOMPARE(j.nDairiCd, 0);
        QCOMPARE(j.nTiryoinCd, 7);
        QCOMPARE(j.nShisetuCdFrom, 100);
        QCOMPARE(j.nShisetuCdTo, 101);
        QCOMPARE(j.iSort, qint16(3));
        QCOMPARE(j.nKanjaCd, 1001);
        QCOMPARE(j.sSisetsuType1, u"有料老人ホーム"_s);
        QCOMPARE(j.sSisetsuType2, QString()); // disabled combo
        QVERIFY(j.bSelSisetsuType);
        QCOMPARE(j.iSortShisetsu, qint16(2));
        QCOMPARE(j.nTantouCd, 44);
        QCOMPARE(j.selectedDatabases.size(), 1);

        v.optPrint = {};
        v.optSort = {false, true, false};
        QCOMPARE(f.run.iGetPrintJouken(f.form), 0);
        QCOMPARE(j.iPrintKind, qint16(1)); // no form kind set: kind 1
        QCOMPARE(j.iSort, qint16(2));

        f.form.readable = false;
        f.run.PrintSisetsuSeikyu(0, f.form);
        QCOMPARE(f.texts(), QStringList({u"印刷条件の取得に失敗しました。"_s}));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::Information);
        QCOMPARE(f.run.outcome, PrintRun::Outcome::ConditionsFailed);
    }

    void nothingToPrint()
    {
        RunFixture f;
        f.form.values.imD_Out = QDate(2024, 9, 1);
        f.run.PrintSisetsuSeikyu(0, f.form.kind(1));
        // The query's own message only: no CSV, no engine.
        QCOMPARE(f.texts(), QStringList({u"該当する実績データがありません。"_s}));
        QCOMPARE(f.ui.busyDepth, 0);
        QVERIFY(f.ui.calls.contains(u"busy:on"_s));
        QVERIFY(!QFile::exists(f.tmp(u"施設請求データ.csv"_s)));
        QVERIFY(!QFile::exists(f.tmp(u"WfdCom.dat"_s)));
        QCOMPARE(f.run.outcome, PrintRun::Outcome::NothingToPrint);
    }

    void queryFailure()
    {
        RunFixture f;
        f.folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=\n"_s);
        f.run.PrintSisetsuSeikyu(1, f.form.kind(2));
        QStringList texts = f.texts();
        QCOMPARE(texts.size(), 3); // the query's error, the run's, the entry's
        QCOMPARE(texts.mid(1),
                 QStringList({u"請求データの取得に失敗しました。"_s, u"帳票の印刷に失敗しました。"_s}));

        f.ui.clear();
        f.run.PrintSisetsuSeikyu(2, f.form); // CSV output: its own final message
        texts = f.texts();
        QCOMPARE(texts.last(), u"CSVの出力に失敗しました。"_s);
        QCOMPARE(f.ui.busyDepth, 0);
        QCOMPARE(f.run.outcome, PrintRun::Outcome::Failed);
    }

    // A database of the list that is gone once the run has started: the sites were chosen from
    // it, the first database is read, then the run stops with the database's reason, no CSV and no
    // engine.
    void databaseGoneDuringAMultiSiteRun()
    {
        RunFixture f;
        f.folder.addDatabase(u"suite2"_s);
        f.folder.writeSettingsFile(u"DB.ini"_s, u"本店:本店,sqlite:db,suite\n支店:支店,sqlite:db,suite2\n"_s);
        f.facility(200, u"支店請求先"_s, {}, {}, u"suite2"_s);
        f.facility(201, u"支店施設"_s, 200, {}, u"suite2"_s);
        f.patient(5, 201, 4000, 400, 0, 0, 5, u"suite2"_s);
        f.form.sites = {{u"suite"_s, {{1, 1}}}, {u"suite2"_s, {{5, 1}}}};
        const QString second = f.folder.filePath(u"db/suite2.sqlite"_s);
        f.ui.onBusy = [&](bool busy) {
            if (busy) {
                QFile::remove(second);
                ConnectionPool::instance().clear(); // no idle connection keeps the old file open
            }
        };
        f.run.PrintSisetsuSeikyu(2, f.form.kind(6));
        const QStringList texts = f.texts();
        QCOMPARE(texts.size(), 3);
        QVERIFY2(texts.at(0).startsWith(u"iGetSeikyuData_ALLDB() でエラー\r\n"_s), qPrintable(texts.at(0)));
        QVERIFY2(texts.at(0).contains(second + u": the database file does not exist"_s),
                 qPrintable(texts.at(0)));
        QCOMPARE(texts.mid(1),
                 QStringList({u"請求データの取得に失敗しました。"_s, u"CSVの出力に失敗しました。"_s}));
        QCOMPARE(f.run.outcome, PrintRun::Outcome::Failed);
        QCOMPARE(f.ui.busyDepth, 0);
        QVERIFY(!QFile::exists(f.tmp(u"施設請求データ.csv"_s)));
        QVERIFY(!QFile::exists(second)); // nothing created in its place
    }

    void writerFailure()
    {
        RunFixture f;
        QVERIFY(QDir(f.folder.filePath(u"TMP"_s)).removeRecursively()); // no temporary folder
        f.run.PrintSisetsuSeikyu(0, f.form.kind(4));
        const QStringList texts = f.texts();
        QCOMPARE(texts.size(), 3);
        QVERIFY2(texts.at(0).startsWith(u"(76)パスが見つかりません。"_s), qPrintable(texts.at(0)));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::None);
        QCOMPARE(texts.mid(1),
                 QStringList({u"データの出力に失敗しました。"_s, u"帳票の印刷に失敗しました。"_s}));
        QCOMPARE(f.ui.busyDepth, 0);
    }

    void engineMissing()
    {
        RunFixture f; // no FORM_ENGINE: our engine beside the program, which a test folder lacks
        f.run.PrintSisetsuSeikyu(0, f.form.kind(1));
        const QString tried = QDir(QCoreApplication::applicationDirPath()).filePath(u"qelprn-engine"_s);
        QCOMPARE(f.texts(), QStringList({u"帳票の印刷に失敗しました。\r[帳票印刷エンジン "_s + tried +
                                         u" が見つかりません。]"_s}));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::Critical);
        QCOMPARE(f.run.outcome, PrintRun::Outcome::EngineFailed);
        QVERIFY(QFile::exists(f.tmp(u"施設請求データ.csv"_s))); // the data is there for a second try
        QCOMPARE(f.ui.busyDepth, 0);
    }

    void kindOutsideOneToSix()
    {
        RunFixture f;
        f.run.data.jouken.iPrintKind = 7;
        QCOMPARE(f.run.iExecPrint(0), qint16(0));
        QCOMPARE(f.texts(), QStringList({u"出力対象データが存在しません。"_s}));
        QCOMPARE(f.ui.busyDepth, 0);
        QVERIFY(!QFile::exists(f.tmp(u"WfdCom.dat"_s)));
    }

    // Each kind's layout, data name, CSV file and paper line reach the engine, started with /c.
    void engineJobPerKind()
    {
        RunFixture f;
        f.engine(u"d=$(dirname \"$0\"); cp \"$2\" \"$d/seen.tmp\" && mv \"$d/seen.tmp\" \"$d/seen.dat\""_s);
        struct Case
        {
            int kind;
            int mode;
            QString layout;
            QString data;
            QString csv;
            bool a4;
        };
        const QList<Case> cases = {
            {1, 0, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"施設請求データ.csv"_s, false},
            {2, 1, u"一部負担金一覧表_02.wfd"_s, u"施設請求データ"_s, u"施設請求データ.csv"_s, false},
            {3, 0, u"一部負担金一覧表_回数区分あり.wfd"_s, u"施設請求データ"_s, u"施設請求データ.csv"_s,
             false},
            {4, 0, u"請求書兼領収書_回数区分あり.wfd"_s, u"請求書兼領収書"_s, u"請求書兼領収書.csv"_s, true},
            {5, 2, u"請求書兼領収書_回数区分あり_自費.wfd"_s, u"請求書兼領収書"_s, u"請求書兼領収書.csv"_s,
             true},
            {6, 0, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"施設請求データ.csv"_s, false},
        };
        // The program folder's own layouts win; the invoice-receipts' are not there, so the copies
        // installed beside the program (share/qelprn/layouts) are used.
        const QString installed =
            QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../share/qelprn/layouts"_s);
        const auto fromInstalled = [](int kind) { return kind == 4 || kind == 5; };
        for (const Case& c : cases) {
            if (!fromInstalled(c.kind))
                f.folder.writeSettingsFile(u"SYS/"_s + c.layout, u"{}"_s);
        }
        const QString seen = f.folder.filePath(u"seen.dat"_s);
        for (const Case& c : cases) {
            QFile::remove(seen);
            f.ui.clear();
            f.run.PrintSisetsuSeikyu(qint16(c.mode), f.form.kind(c.kind));
            QVERIFY2(f.ui.messages.isEmpty(), qPrintable(f.ui.texts().join(u'\n')));
            QCOMPARE(f.run.outcome, PrintRun::Outcome::Done);
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(seen), 20000);
            const QString layout = fromInstalled(c.kind) ? installed + u"/"_s + c.layout
                                                         : f.folder.path() + u"\\SYS\\"_s + c.layout;
            const QString expected = u"FileName,\""_s + layout +
                                     u"\"\r\n"
                                     u"Title,\"施設請求書印刷\"\r\n"
                                     u"SetDataText,\""_s +
                                     c.data + u"\",\""_s + f.folder.path() + u"\\TMP\\"_s + c.csv +
                                     u"\"\r\n"_s + (c.a4 ? u"PrintPaper, A4\r\n"_s : QString()) +
                                     (c.mode == 0 ? u"ShowWindow,2"_s : u"PrintOutFromDialog"_s) + u"\r\n"_s;
            QCOMPARE(readAll(seen), toCp932(expected));
            QVERIFY(QFile::exists(f.tmp(c.csv)));
        }
    }

    // The data folder's seal wins (its path keeps the doubled separator), then the program folder's,
    // else "" in the last column.
    void sealImageSearch()
    {
        RunFixture f;
        f.engine(u"true"_s);
        const auto lastColumn = [&] {
            const QList<QByteArray> lines = readAll(f.tmp(u"施設請求データ.csv"_s)).split('\n');
            return fromCp932(lines.at(1).trimmed()).section(u',', -1);
        };
        f.run.PrintSisetsuSeikyu(0, f.form.kind(1));
        QCOMPARE(lastColumn(), u"\"\""_s);

        QFile base(f.folder.filePath(u"corpseal.bmp"_s));
        QVERIFY(base.open(QIODevice::WriteOnly));
        base.close();
        f.run.PrintSisetsuSeikyu(0, f.form);
        QCOMPARE(lastColumn(), u"\""_s + f.folder.path() + u"\\corpseal.bmp\""_s);

        QVERIFY(QFile::copy(base.fileName(), f.folder.filePath(u"DATA/corpseal.bmp"_s)));
        f.run.PrintSisetsuSeikyu(0, f.form);
        QCOMPARE(lastColumn(), u"\""_s + f.folder.path() + u"\\DATA\\\\corpseal.bmp\""_s);
        QCOMPARE(f.run.sealImagePath, f.folder.path() + u"\\DATA\\\\corpseal.bmp"_s);
    }
};

QTEST_GUILESS_MAIN(tst_PrintRun)
#include "tst_print_run.moc"
