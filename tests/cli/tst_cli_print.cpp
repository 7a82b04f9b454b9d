// `qelprn-cli print` end to end on a small database built by the test: the CSV bytes of every
// print kind, the exit statuses, the engine missing, the PDF hand-off to the real engine, options;
// and every kind of the demo month from the writer through the layout to a PDF read back.
#include "app/Cp932.h"
#include "billing/BillingFixture.h"
#include "engine/EngineTestData.h"
#include "support/CliRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Run = qelprn::test::CliRun;
using enginetest::hasPageNumber;
using enginetest::numberedRow;
using enginetest::squeezed;
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

// A print-data CSV file as the writers write it: titles, then rows (texts unquoted).
struct PrintData
{
    QStringList titles;
    QList<QStringList> rows;

    qsizetype col(const QString& title) const { return titles.indexOf(title); }
    QString at(qsizetype row, const QString& title) const { return rows.at(row).at(col(title)); }

    static QStringList split(const QString& line)
    {
        QStringList fields;
        QString field;
        bool quoted = false;
        for (QChar c : line) {
            if (c == u'"')
                quoted = !quoted;
            else if (c == u',' && !quoted)
                fields.append(std::exchange(field, QString()));
            else
                field += c;
        }
        fields.append(field);
        return fields;
    }

    static PrintData read(const QString& path)
    {
        PrintData data;
        const QStringList lines = qelprn::fromCp932(readAll(path)).split(u"\r\n"_s, Qt::SkipEmptyParts);
        data.titles = split(lines.value(0));
        for (const QString& line : lines.mid(1))
            data.rows.append(split(line));
        return data;
    }
};

// The text layer of a PDF, page by page, each table row on one line.
QStringList pdfPages(const QString& pdf)
{
    QStringList pages = enginetest::pdfText(pdf, 0, true).split(u'\f');
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    return pages;
}

QString grouped(qint64 value)
{
    QString digits = QString::number(value);
    for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, u',');
    return digits;
}

// "2026/10/01" in the era style: "令和8年10月1日" (no era boundary falls in the demo month).
QString eraDate(const QString& date, bool monthOnly)
{
    const QStringList p = date.left(10).split(u'/');
    const QString year = u"令和"_s + QString::number(p.value(0).toInt() - 2018) + u'年';
    const QString month = QString::number(p.value(1).toInt()) + u'月';
    return monthOnly ? year + month + u'分' : year + month + QString::number(p.value(2).toInt()) + u'日';
}

// The fixed texts of a layout (page numbers aside).
QStringList fixedTexts(const QString& layoutFile)
{
    QStringList texts;
    const QJsonObject root = QJsonDocument::fromJson(readAll(layoutFile)).object();
    for (const QString& band :
         {u"pageHeader"_s, u"groupHeader"_s, u"detail"_s, u"groupFooter"_s, u"pageFooter"_s}) {
        for (const QJsonValue& item : root.value(band).toObject().value(u"items"_s).toArray()) {
            const QString text = item.toObject().value(u"text"_s).toString();
            if (item.toObject().value(u"type"_s).toString() == u"text"_s && !text.contains(u'{'))
                texts.append(text);
        }
    }
    return texts;
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

    // Every print kind of the demo month, from the writer through the shipped layout to a PDF,
    // read back against the CSV the writer wrote: the share, line and page numbers counting within
    // their invoice, totals only where a patient's days end, one date style, and a text layer
    // that names every character drawn.
    void formsOfEveryKindMatchTheirData()
    {
        const QString engine = QDir(binDir()).filePath(u"qelprn-engine"_s);
        if (!QFileInfo(engine).isExecutable())
            QSKIP("qelprn-engine is not built");
        QTemporaryDir dir;
        const QString demo = dir.filePath(u"demo"_s);
        const Run init = cli({u"init-demo"_s, demo, u"--month"_s, u"2026/10"_s, u"--seed"_s, u"1"_s});
        QVERIFY2(init.exitCode == 0, qPrintable(init.err));
        const QDir layouts(qEnvironmentVariable("QELPRN_SOURCE_DIR") + u"/layouts"_s);
        for (const QString& name : layouts.entryList({u"*.wfd"_s}, QDir::Files)) {
            QFile::remove(demo + u"/SYS/"_s + name);
            QVERIFY(QFile::copy(layouts.filePath(name), demo + u"/SYS/"_s + name));
        }
        const QStringList layoutOf = {u"施設別請求書.wfd"_s,
                                      u"一部負担金一覧表_02.wfd"_s,
                                      u"一部負担金一覧表_回数区分あり.wfd"_s,
                                      u"請求書兼領収書_回数区分あり.wfd"_s,
                                      u"請求書兼領収書_回数区分あり_自費.wfd"_s,
                                      u"施設別請求書.wfd"_s};
        bool continuedSeen = false;
        for (int kind = 1; kind <= 6; ++kind) {
            const QStringList args = {u"print"_s,   u"--app-dir"_s,        demo,
                                      u"--kind"_s,  QString::number(kind), u"--month"_s,
                                      u"2026/10"_s, u"--issue-date"_s,     u"2026/11/05"_s};
            const Run csvRun = cli(args + QStringList{u"--csv-only"_s});
            QVERIFY2(csvRun.exitCode == 0, qPrintable(csvRun.err));
            const PrintData data = PrintData::read(csvRun.out.trimmed());
            QVERIFY(!data.rows.isEmpty());
            const QString pdf = dir.filePath(u"kind%1.pdf"_s.arg(kind));
            const Run pdfRun = cli(args + QStringList{u"--pdf"_s, pdf});
            QVERIFY2(pdfRun.exitCode == 0, qPrintable(pdfRun.err));
            const QStringList pages = pdfPages(pdf);
            const QString text = squeezed(pages.join(u'\n'));
            const QString where = u"kind %1"_s.arg(kind);

            // The text layer: no radical stands for an ideograph; every name and every fixed word
            // of the form is there, character for character.
            for (QChar c : text)
                QVERIFY2(c.unicode() < 0x2E80 || c.unicode() > 0x2FDF, qPrintable(where + u": "_s + c));
            for (const QString& title :
                 {u"請求先施設名"_s, u"施術施設名"_s, u"施設名"_s, u"利用者名"_s, u"治療院名"_s, u"本社名"_s,
                  u"請求元社名"_s, u"本社住所"_s, u"治療院住所"_s}) {
                if (data.col(title) < 0)
                    continue;
                for (qsizetype r = 0; r < data.rows.size(); ++r)
                    QVERIFY2(text.contains(squeezed(data.at(r, title))),
                             qPrintable(where + u": "_s + data.at(r, title)));
            }
            for (const QString& word : fixedTexts(layouts.filePath(layoutOf[kind - 1])))
                QVERIFY2(text.contains(squeezed(word)), qPrintable(where + u": "_s + word));

            // Groups as the layout names them, each starting on a new page.
            const bool invoice = kind == 1 || kind == 6;
            const bool list = kind == 2 || kind == 3;
            const int perPage = invoice ? 25 : list ? 18 : 1;
            const QStringList key = invoice ? QStringList{u"請求先施設ID"_s, u"請求先施設名"_s}
                                    : list  ? QStringList{u"施設ID"_s}
                                            : QStringList{u"利用者ID"_s, u"利用者名"_s};
            auto keyOf = [&](qsizetype r) {
                QStringList k;
                for (const QString& c : key)
                    k.append(data.at(r, c));
                return k;
            };
            int page = 0;
            for (qsizetype first = 0; first < data.rows.size();) {
                qsizetype end = first;
                while (end < data.rows.size() && keyOf(end) == keyOf(first))
                    ++end;
                const int count = int(end - first);
                const int groupPages = (count + perPage - 1) / perPage;
                for (int k = 0; k < groupPages; ++k) {
                    QVERIFY2(page + k < pages.size(), qPrintable(where));
                    const QString& p = pages[page + k];
                    const QString at = where + u" page "_s + QString::number(page + k + 1);
                    QVERIFY2(hasPageNumber(p, k + 1, groupPages), qPrintable(at));
                    QVERIFY2(!p.contains(u"2026"_s), qPrintable(at)); // one date style: era
                    QVERIFY2(p.contains(eraDate(data.at(first, u"施術年月"_s), true)), qPrintable(at));
                    QVERIFY2(p.contains(eraDate(data.at(first, u"提出年月"_s), false)), qPrintable(at));
                    if (list) {
                        QVERIFY2(p.contains(eraDate(data.at(first, u"施術日From"_s), false)), qPrintable(at));
                        QVERIFY2(p.contains(eraDate(data.at(first, u"施術日To"_s), false)), qPrintable(at));
                    }
                    for (int slot = 0; slot < perPage && k * perPage + slot < count; ++slot) {
                        const qsizetype r = first + k * perPage + slot;
                        const int number = k * perPage + slot + 1; // within the invoice
                        if (invoice && !data.at(r, u"施術施設名"_s).isEmpty())
                            QVERIFY2(numberedRow(p, data.at(r, u"施術施設名"_s), number), qPrintable(at));
                        if (list) {
                            const int code = data.at(r, u"利用者負担割合"_s).toInt();
                            QVERIFY2(
                                numberedRow(p, data.at(r, u"利用者名"_s), number, u" %1割 "_s.arg(code - 1)),
                                qPrintable(at + u" "_s + data.at(r, u"利用者名"_s)));
                        }
                        if (!invoice && !list) {
                            const int code = data.at(r, u"負担割合"_s).toInt();
                            QCOMPARE(p.count(u"%1割負担"_s.arg(code - 1)), 2);
                            // The amount requested and the totals only where the patient's days end.
                            const bool last = k == groupPages - 1;
                            const double requested =
                                data.at(r, u"自費合計"_s).toDouble() +
                                (kind == 4 ? data.at(r, u"一部負担金合計"_s).toDouble() : 0);
                            const QString amount = u"¥"_s + grouped(qint64(requested));
                            QCOMPARE(p.count(u"次頁へ続く"_s), last ? 0 : 4);
                            QCOMPARE(p.count(amount + (requested == qint64(requested) ? u"-"_s : u""_s)) > 0,
                                     last);
                            QCOMPARE(p.contains(u"¥"_s), last);
                            // The month's insured total in the total row of both halves, on the last sheet.
                            const QString insured = grouped(data.at(r, u"保険内金額合計"_s).toLongLong());
                            int totals = 0;
                            for (const QString& line : p.split(u'\n'))
                                totals += line.contains(u"合計"_s) && line.contains(insured) ? 1 : 0;
                            QCOMPARE(totals, last ? 2 : 0);
                            continuedSeen = continuedSeen || !last;
                        }
                    }
                }
                if (invoice) {
                    qint64 billed = 0;
                    for (qsizetype r = first; r < end; ++r)
                        billed += data.at(r, u"施術施設負担額"_s).toLongLong();
                    QVERIFY2(pages[page].contains(u"¥"_s + grouped(billed) + u'-'), qPrintable(where));
                }
                page += groupPages;
                first = end;
            }
            QCOMPARE(pages.size(), page);
        }
        QVERIFY(continuedSeen); // the demo month has patients with more than eleven days
    }
};

QTEST_GUILESS_MAIN(tst_CliPrint)
#include "tst_cli_print.moc"
