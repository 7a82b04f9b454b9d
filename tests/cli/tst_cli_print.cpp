// `qelprn-cli print` end to end on a small database built by the test: the CSV bytes of every
// print kind, the exit statuses, the engine missing, the PDF hand-off to the real engine, options.
#include "app/Cp932.h"
#include "billing/BillingFixture.h"
#include "support/CliRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Run = qelprn::test::CliRun;
using qelprn::test::binDir;

Run cli(const QStringList& args)
{
    return qelprn::test::runCli(args);
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// One billing facility with one treated facility (a comma in its name) and one patient with two
// treatment days, one of them with a self-pay fee; the site 1/1 in the site list.
struct PrintFixture : BillingFixture
{
    PrintFixture()
    {
        corp(1, 0, u"ほほえみ治療院"_s,
             {{u"cTelNo"_s, u"03-1111-2222"_s},
              {u"cFaxNo"_s, u"03-1111-3333"_s},
              {u"iKinSyubetsu"_s, 1},
              {u"cKinyuName"_s, u"みずほ"_s},
              {u"iKinSiten"_s, 2},
              {u"cKinyuSiten"_s, u"神田"_s},
              {u"iKozaType"_s, 1},
              {u"cKozaBangou"_s, u"1234567"_s},
              {u"cKozaMeigi1"_s, u"ﾎﾎｴﾐ"_s}});
        facility(100, u"さくら会"_s);
        facility(101, u"さくら館, 本館"_s, 100);
        patient(1001, 101, 10000, 1000, 500, 201);
        day(1001, u"2024/10/03 10:00:00"_s, 5000, 500, 500);
        day(1001, u"2024/10/10 10:00:00"_s, 5000, 500, 0);
        insert(u"HOKEN"_s,
               {{u"iType"_s, 1}, {u"iKyotenCd"_s, 1}, {u"iKyotenEb"_s, 1}, {u"cRyaku"_s, u"後期"_s}});
        insert(u"療養費単価"_s, {{u"iTankaKbn"_s, 2},
                                 {u"nTankaCode"_s, 1},
                                 {u"cStartDate"_s, u"2024/04/01"_s},
                                 {u"cEndDate"_s, u"2026/03/31"_s},
                                 {u"nTanka"_s, 2300}});
        insert(u"KYOTEN"_s,
               {{u"iKyotenCd"_s, 1}, {u"iKyotenEb"_s, 1}, {u"cKyotenName"_s, u"本店"_s}, {u"iUsedFlg"_s, 1}});
    }

    Run print(int kind, QStringList more)
    {
        return cli(QStringList{u"print"_s, u"--app-dir"_s, folder.path(), u"--kind"_s, QString::number(kind),
                               u"--month"_s, u"2024/10"_s, u"--issue-date"_s, u"2024/11/05"_s} +
                   more);
    }
};

} // namespace

class tst_CliPrint : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(QDir(binDir()).filePath(u"qelprn-cli"_s)).isExecutable(),
                 "qelprn-cli is not built in QELPRN_BIN_DIR");
    }

    // The data lines of every kind (the headers are checked with the writers), byte for byte.
    void csvOfEveryKind()
    {
        PrintFixture f;
        const QString clinic = u"\"ほほえみ治療院\",\"200-0001\",\"ほほえみ治療院所在地\""_s;
        const QString billing = u"100,\"さくら会\",\"100-0000\",\"さくら会住所1\",\"さくら会住所2\","_s;
        const QString line1 = u"\"1\",1,\"2024/10/01\",\"2024/11/05\","_s + billing + clinic + u",0,"_s +
                              clinic + u",\"さくら館, 本館\",1,10000,1000,\"\",\"\""_s;
        const QString selfPay = u"\"1\",4,\"2024/10/01\",\"2024/11/05\","_s + billing + clinic + u",1,"_s +
                                clinic + u",\"さくら館, 本館(自費)\",0,0,500,\"患者1001 様\",\"\""_s;
        // Kind 1: fillers as the query paged them, to the end of the 25-line page.
        QStringList kind1 = {line1};
        const QString filler1 =
            u"\"1\",%1,\"\",\"\",100,\"さくら会\",\"\",\"\",\"\",\"\",\"\",\"\",-1,\"\",\"\",\"\",\"\",0,0,0,"
            u"\"\",\"\""_s;
        for (int n = 2; n <= 25; ++n)
            kind1 << (n == 4 ? selfPay : filler1.arg(n));
        // Kind 6: its own two fillers, all texts.
        const QString filler6 = u"\"1\",%1,\"\",\"\",100,\"さくら会\""_s + QString(u",\"\""_s).repeated(16);
        const QStringList kind6 = {line1, filler6.arg(2), filler6.arg(3), selfPay};
        const QString kanja =
            u"\"1\",1,\"2024/10/01\",\"2024/11/05\",\"2024/10/01\",\"2024/10/31\",101,\"さくら館, 本館\","
            u"\"ほほえみ治療院\",201,1001,\"患者1001\",0,2,10000,2,1500,1,1000,0,\"後期\",1000,500,\"200-"
            u"0001\","
            u"\"ほほえみ治療院所在地\",\"03-1111-2222\",\"03-1111-3333\",\"みずほ銀行 "
            u"神田支店\",\"普通預金\","
            u"\"1234567\",\"ﾎﾎｴﾐ\",1,\"\""_s;
        const QString receiptHead =
            u"\"1\",\"2024/10/01\",\"2024/11/05\",\"2024/10/01\",\"2024/10/31\",1001,\"患者1001\",1,2,"_s;
        const QString receiptTail =
            u"\"\",\"\",\"\",\"\",\"温あんなし、電気なし\",\"200-0001\",\"ほほえみ治療院所在地\","
            u"\"ほほえみ治療院\",\"ほほえみ治療院\",\"03-1111-2222\",\"03-1111-3333\",\"後期\",\"\""_s;
        const QString emptyDay = u"\"\",0,0,0,"_s;
        const QString kind4 = receiptHead + u"2,\"2024/10/03\",5000,500,500,\"2024/10/10\",5000,500,0,"_s +
                              emptyDay.repeated(9) + u"10000,1000,500,"_s + receiptTail;
        const QString kind5 = receiptHead + u"1,\"2024/10/03\",5000,500,500,"_s + emptyDay.repeated(10) +
                              u"5000,500,500,"_s + receiptTail;

        const QList<QStringList> expected = {kind1, {kanja}, {kanja}, {kind4}, {kind5}, kind6};
        for (int kind = 1; kind <= 6; ++kind) {
            const Run r = f.print(kind, {u"--csv-only"_s});
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
            QVERIFY2(r.err.isEmpty(), qPrintable(r.err));
            const QString csv = r.out.trimmed();
            QCOMPARE(QFileInfo(csv).fileName(),
                     kind == 4 || kind == 5 ? u"請求書兼領収書.csv"_s : u"施設請求データ.csv"_s);
            QCOMPARE(QFileInfo(csv).absolutePath(), f.folder.filePath(u"TMP"_s));
            const QByteArray bytes = readAll(csv);
            const QByteArray data = bytes.mid(bytes.indexOf("\r\n") + 2);
            QCOMPARE(data, qelprn::toCp932(expected.at(kind - 1).join(u"\r\n"_s) + u"\r\n"_s));
        }
        QVERIFY(!QFile::exists(f.folder.filePath(u"TMP/WfdCom.dat"_s))); // --csv-only starts no engine

        // Kind 6 with the site named gives the same file; a site outside the list is refused.
        Run r = f.print(6, {u"--sites"_s, u"1-1"_s, u"--csv-only"_s});
        QCOMPARE(r.exitCode, 0);
        r = f.print(6, {u"--sites"_s, u"1-1,9-9"_s, u"--csv-only"_s});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(u"事業所 9-9 は事業所一覧にありません"_s), qPrintable(r.err));
    }

    void exitStatusAndMessages()
    {
        PrintFixture f;
        Run r = cli({u"print"_s, u"--app-dir"_s, f.folder.path(), u"--kind"_s, u"1"_s, u"--month"_s,
                     u"2024/09"_s, u"--csv-only"_s});
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.err, u"施設請求書印刷: 該当する実績データがありません。\n"_s);
        QVERIFY(r.out.isEmpty());

        // FORM_ENGINE names the suite's engine, which is not installed here.
        f.folder.writeSettingsFile(u"Tovara.ini"_s,
                                   u"SYSTEM_SYS=\\SYS\nSYSTEM_TMP=\\TMP\nSYSTEM_ICON=\\ICON\n"
                                   u"SYSTEM_DATA=\\DATA\nBASEID=0101\nFORM_ENGINE=wfrfv10.exe\n"_s);
        r = f.print(1, {u"--preview"_s});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.startsWith(u"施設請求書印刷: 帳票の印刷に失敗しました。\n[帳票印刷エンジン "
                                  u"wfrfv10.exe が見つかりません。"
                                  u"（PATH のフォルダと "_s +
                                  binDir()),
                 qPrintable(r.err));

        QVERIFY(QFile::remove(f.folder.filePath(u"TMP/施設請求データ.csv"_s)));
        r = f.print(1, {u"--print"_s}); // the confirmation is answered no without --yes
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith(u"印刷確認: 印刷処理を実行します。よろしいですか？\n"_s),
                 qPrintable(r.err));
        QVERIFY(!QFile::exists(f.folder.filePath(u"TMP/施設請求データ.csv"_s)));

        // Usage errors, in Japanese, with the usage line; "--opt=value" is read like "--opt value".
        const QList<QPair<QStringList, QString>> bad = {
            {{u"--kind"_s, u"7"_s}, u"--kind には 1 から 6 までの整数を指定してください（指定値：'7'）"_s},
            {{u"--kind=0"_s, u"--month"_s, u"2024/10"_s}, u"--kind には 1 から 6 までの整数"_s},
            {{u"--kind"_s, u"1"_s, u"--csv-only"_s}, u"--month を指定してください"_s},
            {{u"--kind"_s, u"1"_s, u"--month=2024/13"_s}, u"--month は yyyy/mm の形で指定してください"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s, u"2024/10"_s}, u"何をするかを指定してください"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s, u"2024/10"_s, u"--preview"_s, u"--csv-only"_s},
             u"--csv-only、--preview、--print、--pdf はどれか一つだけ"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s, u"2024/10"_s, u"--csv-only"_s, u"--sites"_s, u"1-1"_s},
             u"--sites は種類 6 だけに指定できます"_s},
            {{u"--kind"_s, u"6"_s, u"--month"_s, u"2024/10"_s, u"--csv-only"_s, u"--sites=1-x"_s},
             u"--sites には 1-1,2-1 のように"_s},
            {{u"--kind"_s, u"2"_s, u"--month"_s, u"2024/10"_s, u"--csv-only"_s, u"--billing-kind"_s, u"x"_s},
             u"--billing-kind は種類 2 には使えません"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s, u"2024/10"_s, u"--frobnicate"_s},
             u"不明なオプションです：frobnicate"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s}, u"--month の後に値がありません。"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s, u"2024/10"_s, u"--yes=1"_s, u"--csv-only"_s},
             u"--yes は値をとりません。"_s},
            {{u"--kind"_s, u"1"_s, u"--month"_s, u"2024/10"_s, u"--csv-only"_s, u"extra"_s},
             u"余分な引数があります：extra"_s},
        };
        for (const auto& [args, message] : bad) {
            r = cli(QStringList{u"print"_s} + args);
            QCOMPARE(r.exitCode, 2);
            QVERIFY2(r.err.startsWith(u"qelprn-cli print: "_s + message), qPrintable(r.err));
            QVERIFY2(r.err.contains(u"\n使い方: qelprn-cli print --kind 1..6"_s), qPrintable(r.err));
        }

        r = cli({u"help"_s, u"print"_s});
        QCOMPARE(r.exitCode, 0);
        for (const QString& option : {u"--kind"_s,
                                      u"--month"_s,
                                      u"--app-dir"_s,
                                      u"--issue-date"_s,
                                      u"--billing-facility"_s,
                                      u"--service-facility"_s,
                                      u"--billing-kind"_s,
                                      u"--service-kind"_s,
                                      u"--corp"_s,
                                      u"--clinic"_s,
                                      u"--practitioner"_s,
                                      u"--patient"_s,
                                      u"--sort"_s,
                                      u"--list-sort"_s,
                                      u"--address-facility"_s,
                                      u"--sites"_s,
                                      u"--yes"_s,
                                      u"--csv-only"_s,
                                      u"--preview"_s,
                                      u"--print"_s,
                                      u"--pdf"_s,
                                      u"使い方: qelprn-cli print"_s,
                                      u"オプション:"_s,
                                      u"例:"_s})
            QVERIFY2(r.out.contains(option), qPrintable(option));
    }

    // The PDF hand-off to the real engine program with the project's layouts.
    void pdfThroughTheEngine()
    {
        const QString engine = QDir(binDir()).filePath(u"qelprn-engine"_s);
        if (!QFileInfo(engine).isExecutable())
            QSKIP("qelprn-engine is not built");
        {
            // As a suite folder is: no FORM_ENGINE and none of our layouts in SYSTEM_SYS. Our engine
            // beside the program and the layouts installed beside it (share/qelprn) are used.
            PrintFixture suite;
            const QString pdf = suite.folder.filePath(u"suite.pdf"_s);
            const Run r = suite.print(1, {u"--pdf="_s + pdf});
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
            QVERIFY(readAll(pdf).startsWith("%PDF"));
            const QString command = qelprn::fromCp932(readAll(suite.folder.filePath(u"TMP/WfdCom.dat"_s)));
            QVERIFY2(command.startsWith(u"FileName,\""_s +
                                        QDir::cleanPath(binDir() + u"/../share/qelprn/layouts"_s) +
                                        u"/施設別請求書.wfd\""_s),
                     qPrintable(command));
        }
        PrintFixture f;
        const QDir layouts(qEnvironmentVariable("QELPRN_SOURCE_DIR") + u"/layouts"_s);
        for (const QString& name : layouts.entryList({u"*.wfd"_s}, QDir::Files))
            QVERIFY(QFile::copy(layouts.filePath(name), f.folder.filePath(u"SYS/"_s + name)));
        f.folder.writeSettingsFile(u"Tovara.ini"_s,
                                   u"SYSTEM_SYS=\\SYS\nSYSTEM_TMP=\\TMP\nSYSTEM_ICON=\\ICON\n"
                                   u"SYSTEM_DATA=\\DATA\nBASEID=0101\nFORM_ENGINE="_s +
                                       engine + u"\n"_s);
        const QString pdf = f.folder.filePath(u"invoice.pdf"_s);
        const Run r = f.print(1, {u"--pdf"_s, pdf});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out.trimmed(), pdf);
        QVERIFY(readAll(pdf).startsWith("%PDF"));

        const Run missing = f.print(1, {u"--pdf"_s, f.folder.filePath(u"no/such/folder/x.pdf"_s)});
        QCOMPARE(missing.exitCode, 2);
        QVERIFY2(missing.err.startsWith(u"施設請求書印刷: 帳票の印刷に失敗しました。\n["_s),
                 qPrintable(missing.err));
    }
};

QTEST_GUILESS_MAIN(tst_CliPrint)
#include "tst_cli_print.moc"
