#include "support/CliRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Run = qelprn::test::CliRun;
using qelprn::test::binDir;

Run cli(const QStringList& args)
{
    return qelprn::test::runCli(args);
}

} // namespace

class tst_CliMain : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(QDir(binDir()).filePath(u"qelprn-cli"_s)).isExecutable(),
                 "qelprn-cli is not built in QELPRN_BIN_DIR");
    }

    void helpAndUnknownCommands()
    {
        Run r = cli({u"--help"_s});
        QCOMPARE(r.exitCode, 0);
        for (const QString& name : {u"init-demo"_s, u"sites"_s, u"print"_s})
            QVERIFY2(r.out.contains(u"  "_s + name), qPrintable(r.out));

        r = cli({u"help"_s, u"init-demo"_s});
        QCOMPARE(r.exitCode, 0);
        QVERIFY(r.out.contains(u"--patients"_s));
        QCOMPARE(cli({u"init-demo"_s, u"--help"_s}).out, r.out);

        r = cli({});
        QCOMPARE(r.exitCode, 2);
        QVERIFY(r.err.startsWith(u"使い方: qelprn-cli <コマンド>"_s));

        r = cli({u"frobnicate"_s});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.startsWith(u"qelprn-cli: 不明なコマンドです：frobnicate"_s), qPrintable(r.err));
        QCOMPARE(cli({u"help"_s, u"frobnicate"_s}).exitCode, 2);

        r = cli({u"--version"_s});
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(QRegularExpression(u"^qelprn-cli \\d+\\.\\d+\\.\\d+\\S*\n$"_s).match(r.out).hasMatch(),
                 qPrintable(r.out));

        // The generated help of a command: its usage line, every option, Japanese headings.
        r = cli({u"sites"_s, u"--help"_s});
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(r.out.startsWith(u"使い方: qelprn-cli sites [--app-dir DIR]"_s), qPrintable(r.out));
        for (const QString& text :
             {u"オプション:"_s, u"--app-dir <DIR>"_s, u"--all-databases"_s, u"--all "_s, u"例:"_s})
            QVERIFY2(r.out.contains(text), qPrintable(text));
        QVERIFY(!r.out.contains(u"Options:"_s));
    }

    void initDemoWritesAFolder()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"demo"_s);
        Run r = cli(
            {u"init-demo"_s, folder, u"--patients=40"_s, u"--month"_s, u"2026/10"_s, u"--sites"_s, u"2"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY2(r.out.contains(u"請求月: 2026/10"_s), qPrintable(r.out));
        for (const QString& f : {u"Tovara.ini"_s, u"adodb.ini"_s, u"DB.ini"_s, u"ServerName.zkt"_s,
                                 u"Halvex.Ver"_s, u"DATA/施設種類List.txt"_s, u"DATA/Version.ini"_s,
                                 u"DATA/corpseal.bmp"_s, u"ICON/wallpaper.png"_s, u"db/suite.sqlite"_s})
            QVERIFY2(QFile::exists(QDir(folder).filePath(f)), qPrintable(f));
        // Two sites of code 1 share the one database.
        QVERIFY(!QFile::exists(QDir(folder).filePath(u"db/suite2.sqlite"_s)));

        // No engine is named: the programs start the engine installed beside them.
        QFile tovara(QDir(folder).filePath(u"Tovara.ini"_s));
        QVERIFY(tovara.open(QIODevice::ReadOnly));
        const QString text = QStringDecoder("CP932").decode(tovara.readAll());
        QVERIFY2(text.contains(u"FORM_ENGINE=\r\n"_s), qPrintable(text));

        // A second run keeps the folder unless told to replace it.
        r = cli({u"init-demo"_s, folder, u"--patients"_s, u"5"_s});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(u"--replace"_s), qPrintable(r.err));
        r = cli({u"init-demo"_s, folder, u"--patients"_s, u"5"_s, u"--replace"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
    }

    void initDemoRejectsBadOptions()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"x"_s);
        for (const QStringList& args :
             QList<QStringList>{{u"init-demo"_s},
                                {u"init-demo"_s, folder, u"--month"_s, u"2026-10"_s},
                                {u"init-demo"_s, folder, u"--patients"_s, u"many"_s},
                                {u"init-demo"_s, folder, u"--sites"_s, u"0"_s},
                                {u"init-demo"_s, folder, u"--seed"_s},
                                {u"init-demo"_s, folder, folder + u"2"_s},
                                {u"init-demo"_s, folder, u"--colour"_s}}) {
            const Run r = cli(args);
            QVERIFY2(r.exitCode == 2, qPrintable(args.join(u' ')));
            QVERIFY2(r.err.startsWith(u"qelprn-cli init-demo: "_s), qPrintable(r.err));
            QVERIFY2(r.err.contains(u"\n使い方: qelprn-cli init-demo DIR"_s), qPrintable(r.err));
            // Japanese throughout: nothing of Qt's English texts.
            for (const QString& english : {u"Unknown"_s, u"Missing"_s, u"must be"_s, u"usage"_s})
                QVERIFY2(!r.err.contains(english), qPrintable(r.err));
        }
        QVERIFY(!QFile::exists(folder));
    }
};

QTEST_GUILESS_MAIN(tst_CliMain)
#include "tst_cli_main.moc"
