// The command-line program: its commands run in this process (help, usage errors, the print run's
// outcomes and files on a small database), and the built program once per command, end to end.
#include "app/Cp932.h"
#include "cli/PrintFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Run = qelprn::test::CliRun;
using namespace qelprn::test;

} // namespace

class tst_Cli : public QObject
{
    Q_OBJECT

private slots:
    void helpAndVersion()
    {
        Run r = callCli({u"--help"_s});
        QCOMPARE(r.exitCode, 0);
        for (const QString& name : {u"init-demo"_s, u"sites"_s, u"check"_s, u"print"_s, u"month-end"_s})
            QVERIFY2(r.out.contains(u"  "_s + name), qPrintable(r.out));
        r = callCli({u"help"_s, u"init-demo"_s});
        QCOMPARE(r.exitCode, 0);
        QVERIFY(r.out.contains(u"--patients"_s));
        QCOMPARE(callCli({u"init-demo"_s, u"--help"_s}).out, r.out);
        r = callCli({u"--version"_s});
        QVERIFY2(QRegularExpression(u"^qelprn-cli \\d+\\.\\d+\\.\\d+\\S*\n$"_s).match(r.out).hasMatch(),
                 qPrintable(r.out));

        // The generated help of a command: usage line, options, Japanese headings.
        r = callCli({u"help"_s, u"print"_s});
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(r.out.startsWith(u"使い方: qelprn-cli print --kind 1..6 --month"_s), qPrintable(r.out));
        for (const QString& text : {u"オプション:"_s, u"例:"_s, u"--address-facility"_s, u"--timings"_s,
                                    u"請求書(施設請求先別・拠点選択)"_s})
            QVERIFY2(r.out.contains(text), qPrintable(text));
        QVERIFY(!r.out.contains(u"Options:"_s));
        // Each condition's help names the kinds whose query reads it.
        const auto helpOf = [&](const QString& option) {
            const qsizetype at = r.out.indexOf(u"--"_s + option);
            return r.out.mid(at, r.out.indexOf(u"\n  -"_s, at) - at).simplified();
        };
        QVERIFY(helpOf(u"service-kind"_s).contains(u"（種類 2 から 5）"_s));
        QVERIFY(helpOf(u"billing-kind"_s).contains(u"（種類 1, 4, 5, 6）"_s));
    }

    // Usage errors: exit status 2, the message in Japanese, the usage line; "--opt=value" is read
    // like "--opt value".
    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        // The arguments separated by blanks; "D" is a folder that does not exist, "P" the print
        // run's kind-independent start.
        const QString dir = QDir::temp().filePath(u"qelprn-no-such-folder"_s);
        const QString print = u"print --month 2024/10 --csv-only --kind"_s;
        const QList<std::pair<QString, QString>> rows = {
            {u""_s, u"使い方: qelprn-cli <コマンド>"_s},
            {u"frobnicate"_s, u"qelprn-cli: 不明なコマンドです：frobnicate"_s},
            {u"help frobnicate"_s, u"qelprn-cli: 不明なコマンドです：frobnicate"_s},
            {u"init-demo"_s, u"qelprn-cli init-demo: "_s},
            {u"init-demo D --month 2026-10"_s, u"qelprn-cli init-demo: "_s},
            {u"init-demo D --patients many"_s, u"qelprn-cli init-demo: "_s},
            {u"init-demo D --sites 0"_s, u"qelprn-cli init-demo: "_s},
            {u"init-demo D D2"_s, u"qelprn-cli init-demo: "_s},
            {u"print --kind 7"_s, u"--kind には 1 から 6 までの整数を指定してください（指定値：'7'）"_s},
            {u"print --kind=0 --month 2024/10"_s, u"--kind には 1 から 6 までの整数"_s},
            {u"print --kind 1 --csv-only"_s, u"--month を指定してください"_s},
            {u"print --kind 1 --month=2024/13"_s, u"--month は yyyy/mm の形で指定してください"_s},
            {u"print --kind 1 --month 2024/10"_s, u"何をするかを指定してください"_s},
            {u"P 1 --preview"_s, u"--csv-only、--preview、--print、--pdf、--pdf-dir はどれか一つだけ"_s},
            {u"P 1 --replace"_s, u"--replace は --pdf-dir と一緒に使います"_s},
            {u"month-end --out D"_s, u"qelprn-cli month-end: --month を指定してください"_s},
            {u"month-end --month 2026/10"_s, u"qelprn-cli month-end: --out を指定してください"_s},
            {u"month-end --month 2026/10 --out D --kinds 1,7"_s,
             u"qelprn-cli month-end: --kinds には 1,2,4,5"_s},
            {u"month-end --month 2026/10 --pdf-dir --print"_s,
             u"qelprn-cli month-end: --pdf-dir と --print"_s},
            {u"P 6 --sites=1-x"_s, u"--sites には 1-1,2-1 のように"_s},
            {u"P 1 --frobnicate"_s, u"不明なオプションです：frobnicate"_s},
            {u"print --kind 1 --month"_s, u"--month の後に値がありません。"_s},
            {u"P 1 --yes=1"_s, u"--yes は値をとりません。"_s},
            {u"P 1 extra"_s, u"余分な引数があります：extra"_s},
            // A condition the kind's query does not read is refused, not ignored.
            {u"P 1 --sites 1-1"_s, u"--sites は種類 1 には使えません（種類 6 だけ）"_s},
            {u"P 4 --service-facility 3"_s,
             u"--service-facility は種類 4 には使えません（種類 2 と 3 だけ）"_s},
        };
        for (const auto& [line, message] : rows) {
            QStringList args = QString(line).replace(u"P "_s, print + u' ').split(u' ', Qt::SkipEmptyParts);
            args.replaceInStrings(QRegularExpression(u"^D"_s), dir);
            const bool printRun = args.value(0) == u"print"_s;
            QTest::newRow(qPrintable(line))
                << args << (printRun ? u"qelprn-cli print: "_s + message : message);
        }
    }

    void usageErrors()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        const Run r = callCli(args);
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.startsWith(message), qPrintable(r.err));
        if (args.size() > 1 && args.first() != u"help"_s)
            QVERIFY2(r.err.contains(u"\n使い方: qelprn-cli "_s + args.first()), qPrintable(r.err));
        for (const QString& english : {u"Unknown"_s, u"Missing"_s, u"must be"_s, u"usage"_s})
            QVERIFY2(!r.err.contains(english), qPrintable(r.err));
    }

    // Each kind writes its file into the temporary folder and prints its path; no engine starts. A
    // print unconfirmed writes nothing; --timings reports the run's parts.
    void csvOnlyOfEveryKind()
    {
        PrintFixture f;
        const QList<int> dataLines = {25, 1, 1, 1, 1, 4}; // kind 1 fills its 25-line page
        for (int kind = 1; kind <= 6; ++kind) {
            const Run r = f.print(kind, {u"--csv-only"_s});
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
            QVERIFY2(r.err.isEmpty(), qPrintable(r.err));
            const QString csv = r.out.trimmed();
            QCOMPARE(QFileInfo(csv).fileName(),
                     kind == 4 || kind == 5 ? u"請求書兼領収書.csv"_s : u"施設請求データ.csv"_s);
            QCOMPARE(QFileInfo(csv).absolutePath(), f.folder.filePath(u"TMP"_s));
            QCOMPARE(readAll(csv).count("\r\n"), dataLines.at(kind - 1) + 1);
        }
        QVERIFY(!QFile::exists(f.folder.filePath(u"TMP/WfdCom.dat"_s)));

        // Kind 6 with the site named gives the same file; a site outside the list is refused.
        const QByteArray all = readAll(f.folder.filePath(u"TMP/施設請求データ.csv"_s));
        QCOMPARE(f.print(6, {u"--sites"_s, u"1-1"_s, u"--csv-only"_s}).exitCode, 0);
        QCOMPARE(readAll(f.folder.filePath(u"TMP/施設請求データ.csv"_s)), all);
        Run r = f.print(6, {u"--sites"_s, u"1-1,9-9"_s, u"--csv-only"_s});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(u"事業所 9-9 は事業所一覧にありません"_s), qPrintable(r.err));

        // The chosen conditions reach the query: another billing facility finds nothing.
        QCOMPARE(f.print(1, {u"--billing-facility"_s, u"999"_s, u"--csv-only"_s}).exitCode, 1);

        QVERIFY(QFile::remove(f.folder.filePath(u"TMP/施設請求データ.csv"_s)));
        r = f.print(1, {u"--print"_s}); // the confirmation is answered no without --yes
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith(u"印刷確認: 印刷処理を実行します。よろしいですか？\n"_s),
                 qPrintable(r.err));
        QVERIFY(!QFile::exists(f.folder.filePath(u"TMP/施設請求データ.csv"_s)));

        r = f.print(1, {u"--csv-only"_s, u"--timings"_s});
        QVERIFY2(
            QRegularExpression(u"^timings: query \\d+\\.\\d{3} s \\(\\d+ statements, \\d+ connections\\), "
                               u"csv \\d+\\.\\d{3} s \\(\\d+ bytes\\)\n$"_s)
                .match(r.err)
                .hasMatch(),
            qPrintable(r.err));
    }

    // The built program, once per command: a demo folder, its sites, its check, and a PDF through
    // the engine and the layouts installed beside the program (a suite folder has neither).
    void builtProgramEndToEnd()
    {
        QVERIFY2(QFileInfo(builtProgram(u"qelprn-cli"_s)).isExecutable(),
                 "qelprn-cli is not built in QELPRN_BIN_DIR");
        QTemporaryDir dir;
        const QString demo = dir.filePath(u"demo"_s);
        Run r = runCli(
            {u"init-demo"_s, demo, u"--patients=40"_s, u"--month"_s, u"2026/10"_s, u"--sites"_s, u"2"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY2(r.out.contains(u"請求月: 2026/10"_s), qPrintable(r.out));
        QVERIFY(!QFile::exists(QDir(demo).filePath(u"db/suite2.sqlite"_s))); // both sites share one
        // No engine is named: the programs start the engine installed beside them.
        QVERIFY(qelprn::fromCp932(readAll(demo + u"/Tovara.ini"_s)).contains(u"FORM_ENGINE=\r\n"_s));
        // A second run keeps the folder unless told to replace it.
        r = runCli({u"init-demo"_s, demo, u"--patients"_s, u"5"_s});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(u"--replace"_s), qPrintable(r.err));

        r = runCli({u"sites"_s, u"--app-dir"_s, demo, u"--all-databases"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(!r.out.isEmpty());
        r = runCli({u"check"_s, u"--app-dir"_s, demo});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));

        if (!QFileInfo(builtProgram(u"qelprn-engine"_s)).isExecutable())
            QSKIP("qelprn-engine is not built");
        PrintFixture suite;
        const QString pdf = suite.folder.filePath(u"suite.pdf"_s);
        r = runCli(suite.args(1, {u"--pdf="_s + pdf}));
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QCOMPARE(r.out.trimmed(), QDir::toNativeSeparators(pdf));
        QVERIFY(readAll(pdf).startsWith("%PDF"));
        const QString command = qelprn::fromCp932(readAll(suite.folder.filePath(u"TMP/WfdCom.dat"_s)));
#ifdef Q_OS_WIN
        const QString installed = binDir() + u"/SYS"_s;
#else
        const QString installed = QDir::cleanPath(binDir() + u"/../share/qelprn/layouts"_s);
#endif
        QVERIFY2(command.startsWith(u"FileName,\""_s +
                                    QDir::toNativeSeparators(installed + u"/施設別請求書.wfd\""_s)),
                 qPrintable(command));
        r = runCli(suite.args(1, {u"--pdf"_s, suite.folder.filePath(u"no/such/folder/x.pdf"_s)}));
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.startsWith(u"施設請求書印刷: 帳票の印刷に失敗しました。\n["_s), qPrintable(r.err));
    }
};

QTEST_MAIN(tst_Cli)
#include "tst_cli.moc"
