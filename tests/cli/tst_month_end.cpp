// One PDF per addressee and the month end: every kind of the demo month split into files whose
// pages are the single PDF's pages of that addressee, the list beside them, names with forbidden
// characters and twin addressees, a second run into a used folder, and an interrupted run.
#include "app/AddresseeFileName.h"
#include "app/Cp932.h"
#include "app/CsvRecord.h"
#include "cli/PrintFixture.h"
#include "engine/EngineTestData.h"
#include "report/AddresseeFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Run = qelprn::test::CliRun;
using namespace qelprn::test;

// A CP932 CSV file's records as fields, the title line first.
QList<QStringList> csvRecords(const QString& path)
{
    QList<QStringList> records;
    for (const QString& line : qelprn::fromCp932(readAll(path)).split(u"\r\n"_s, Qt::SkipEmptyParts))
        records.append(qelprn::splitCsvRecord(line));
    return records;
}

// The list's rows, without the title line.
QList<QStringList> listRows(const QString& folder)
{
    return csvRecords(QDir(folder).filePath(u"送付一覧.csv"_s)).mid(1);
}

// The pages of a PDF's text layer, each without blanks.
QStringList pagesOf(const QString& pdf)
{
    QStringList pages =
        enginetest::squeezed(enginetest::pdfText(pdf, 0, true).replace(u'\f', u'\x01')).split(u'\x01');
    pages.removeLast(); // after the last page's form feed
    return pages;
}

// A folder a run wrote (or a stopped run left): its list names exactly the PDFs there, each whole
// with the pages listed, and nothing else is beside them.
void checkListedFiles(const QString& folder)
{
    const QList<QStringList> rows = listRows(folder);
    QStringList listed;
    for (const QStringList& row : rows) {
        listed << row.value(7);
        QCOMPARE(enginetest::pdfPages(QDir(folder).filePath(row.value(7))), row.value(6).toInt());
    }
    listed.sort();
    QCOMPARE(QDir(folder).entryList({u"*.pdf"_s}, QDir::Files, QDir::Name), listed);
    QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), rows.size() + 1);
}

// Names the built engine first in the folder's "Tovara.ini", before any FORM_ENGINE the file has
// (in this process the engine beside the program would be the test's folder).
void useBuiltEngine(const QString& tovaraPath)
{
    QVERIFY(writeAll(tovaraPath, "FORM_ENGINE=" + QFile::encodeName(builtProgram(u"qelprn-engine"_s)) +
                                     "\r\n" + readAll(tovaraPath)));
}

struct Demo
{
    QTemporaryDir dir;
    QString folder = dir.filePath(u"demo"_s);

    bool init()
    {
        const Run r = callCli({u"init-demo"_s, folder, u"--month"_s, u"2026/10"_s});
        if (r.exitCode != 0)
            qWarning().noquote() << r.err;
        useBuiltEngine(folder + u"/Tovara.ini"_s);
        return r.exitCode == 0;
    }
    Run print(int kind, const QStringList& more) const
    {
        return callCli(QStringList{u"print"_s, u"--app-dir"_s, folder, u"--kind"_s, QString::number(kind),
                                   u"--month"_s, u"2026/10"_s, u"--issue-date"_s, u"2026/11/05"_s,
                                   u"--yes"_s} +
                       more);
    }
};

} // namespace

class tst_MonthEnd : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        if (!QFileInfo(builtProgram(u"qelprn-engine"_s)).isExecutable())
            QSKIP("qelprn-engine is not built");
#ifdef Q_OS_WIN
        QSKIP("reading the PDFs back needs poppler, which Windows lacks");
#endif
    }

    // Every kind of the demo month through the shipped layouts: the print data, the text of the
    // single PDF's pages (blanks collapsed) and the list of the files split from it are those read
    // by hand once and kept in tests/cli/data, so any change to what a facility or patient is asked
    // to pay shows here. Split, one file per addressee holds exactly that addressee's pages of the
    // single PDF in order, and the amount the list gives is printed on the file's last page.
    void everyKindSplitsAsTheSinglePdf()
    {
        Demo demo;
        QVERIFY(demo.init());
        const QLocale locale(QLocale::Japanese, QLocale::Japan);
        static const QRegularExpression blanks(u" +(?=\n)| (?= )"_s);
        for (int kind = 1; kind <= 6; ++kind) {
            const QString single = demo.dir.filePath(u"kind%1.pdf"_s.arg(kind));
            Run r = demo.print(kind, {u"--pdf"_s, single});
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
            QCOMPARE(r.out.trimmed(), QDir::toNativeSeparators(single));
            const QString csv = kind == 4 || kind == 5 ? u"請求書兼領収書.csv"_s : u"施設請求データ.csv"_s;
            QVERIFY(matchesExpected(
                readAll(demo.folder + u"/TMP/"_s + csv).replace(qelprn::toCp932(demo.folder), "<demo>"),
                u"cli/data/demo-kind%1.csv"_s.arg(kind)));
            QVERIFY(matchesExpected(enginetest::pdfText(single, 0, true).remove(blanks).toUtf8(),
                                    u"cli/data/demo-kind%1.txt"_s.arg(kind)));
            for (int page : {1, 2})
                QVERIFY(matchesExpected(enginetest::pdfPicture(single, page),
                                        u"cli/data/demo-kind%1-%2.png"_s.arg(kind).arg(page)));
            const QStringList all = pagesOf(single);

            const QString folder = demo.dir.filePath(u"kind%1"_s.arg(kind));
            r = demo.print(kind, {u"--pdf-dir"_s, folder});
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
            QCOMPARE(r.out.trimmed(), QDir::toNativeSeparators(QDir(folder).filePath(u"送付一覧.csv"_s)));

            checkListedFiles(folder);
            QVERIFY(matchesExpected(readAll(QDir(folder).filePath(u"送付一覧.csv"_s)),
                                    u"cli/data/demo-kind%1-list.csv"_s.arg(kind)));
            qsizetype at = 0;
            for (const QStringList& row : listRows(folder)) {
                const QString file = QDir(folder).filePath(row[7]);
                const QStringList pages = pagesOf(file);
                QCOMPARE(pages, all.mid(at, pages.size()));
                // Drawn alike, though only these files are archival: the seal hides nothing, and the
                // fonts cut down to the file's own glyphs miss none of them.
                for (int page = 1; page <= pages.size(); ++page)
                    QVERIFY2(enginetest::pdfPicture(file, page) == enginetest::pdfPicture(single, at + page),
                             qPrintable(u"%1, page %2"_s.arg(row[7]).arg(page)));
                at += pages.size();
                // The amount the list gives is the one printed on the addressee's last page.
                QVERIFY2(pages.last().contains(locale.toString(row[5].toLongLong())),
                         qPrintable(u"kind %1, %2: %3"_s.arg(kind).arg(row[7], row[5])));
            }
            QCOMPARE(at, all.size());
        }
    }

    // Names keep what Windows allows, and two addressees of one name stay apart: by their IDs, and
    // by a number when even the IDs meet.
    void namesAndTwins()
    {
        using qelprn::AddresseeKey;
        const QStringList names = qelprn::addresseeFileNames(
            u"20241105"_s,
            {AddresseeKey{u"7"_s, u"寿/ホーム:本館?*"_s, u"100"_s, {}},
             AddresseeKey{u"8"_s, u" さくら<館>|\"東\" . "_s, u"0"_s, {}},
             AddresseeKey{u"10"_s, u"さくら"_s, u"5"_s, {}}, AddresseeKey{u"11"_s, u"さくら"_s, u"5"_s, {}},
             AddresseeKey{u"11"_s, u"さくら"_s, u"5"_s, {}}, AddresseeKey{u"12"_s, u"Abc"_s, u"1"_s, {}},
             AddresseeKey{u"13"_s, u"ABC"_s, u"1"_s, {}}, AddresseeKey{u"14"_s, u"a\\b\tc"_s, u""_s, {}},
             AddresseeKey{u"15"_s, u""_s, u"3"_s, {}}});
        QCOMPARE(names, (QStringList{u"20241105_寿／ホーム：本館？＊_100.pdf"_s,
                                     u"20241105_さくら＜館＞｜”東”_0.pdf"_s, u"20241105_さくら(10)_5.pdf"_s,
                                     u"20241105_さくら(11)_5.pdf"_s, u"20241105_さくら(11)(2)_5.pdf"_s,
                                     u"20241105_Abc(12)_1.pdf"_s, u"20241105_ABC(13)_1.pdf"_s,
                                     u"20241105_a＼b c_0.pdf"_s, u"20241105_宛名なし_3.pdf"_s}));
        QCOMPARE(qelprn::fileNamePart(QString(80, u'長')).size(), 60);
        QCOMPARE(qelprn::plainAmount(u"¥1,234,567-"_s), u"1234567"_s);
        QCOMPARE(qelprn::plainAmount(u"-1,200"_s), u"-1200"_s);
        QCOMPARE(qelprn::plainAmount(u"1,234.50"_s), u"1234.5"_s);
        QCOMPARE(qelprn::plainAmount(u"次頁へ続く"_s), QString());
        // The progress of a run: the pages while they are painted, then the files written.
        QCOMPARE((qelprn::FolderProgress{200, 7043, 0, 5996}.text()),
                 u"帳票を作成しています 200 / 7043 ページ"_s);
        QCOMPARE((qelprn::FolderProgress{7043, 7043, 0, 5996}.text()), u"0 / 5996 件"_s);
        QCOMPARE((qelprn::FolderProgress{7043, 7043, 12, 5996}.text()), u"12 / 5996 件"_s);

        // Through the engine: two billing facilities of one name with a slash in it.
        qelprn::test::PrintFixture suite;
        useBuiltEngine(suite.folder.filePath(u"Tovara.ini"_s));
        suite.facility(200, u"さくら会/東"_s);
        suite.facility(201, u"さくら別館"_s, 200);
        suite.patient(2001, 201, 10000, 700, 0);
        suite.day(2001, u"2024/10/04 10:00:00"_s, 5000, 700, 0);
        suite.folder.exec(u"UPDATE SISETSU SET cShamei1 = 'さくら会/東' WHERE nIDNo = 100"_s);
        const QString out = suite.folder.filePath(u"out"_s);
        const Run r = suite.print(1, {u"--pdf-dir"_s, out});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QList<QStringList> rows = listRows(out);
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0][7], u"20241105_さくら会／東(100)_"_s + rows[0][5] + u".pdf"_s);
        QCOMPARE(rows[1][7], u"20241105_さくら会／東(200)_"_s + rows[1][5] + u".pdf"_s);
        QCOMPARE(rows[0][4], u"100"_s);
        QVERIFY(QFile::exists(QDir(out).filePath(rows[1][7])));
    }

    // The month end on the command line: a folder per kind with its list and a summary; a second
    // run into the same folder needs --replace and until then leaves the files alone; a run stopped
    // by a signal leaves whole files; the files are archival PDF.
    void monthEndAndReplace()
    {
        Demo demo;
        QVERIFY(demo.init());
        const QString out = demo.dir.filePath(u"2026-10"_s);
        const QStringList args = {u"month-end"_s,    u"--app-dir"_s,  demo.folder, u"--month"_s, u"2026/10"_s,
                                  u"--issue-date"_s, u"2026/11/05"_s, u"--out"_s,  out,          u"--kinds"_s,
                                  u"1,4"_s,          u"--yes"_s};
        Run r = callCli(args);
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        const QString kind1 = QDir(out).filePath(u"1_請求書(施設請求先別)"_s);
        const QString kind4 = QDir(out).filePath(u"4_請求書兼領収書"_s);
        QCOMPARE(QDir(out).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
                 (QStringList{QFileInfo(kind1).fileName(), QFileInfo(kind4).fileName()}));
        const QList<QStringList> rows = listRows(kind4);
        qint64 total = 0;
        for (const QStringList& row : rows)
            total += row[5].toLongLong();
        const QLocale locale(QLocale::Japanese, QLocale::Japan);
        QVERIFY2(r.out.contains(u"4 請求書兼領収書: 宛先 %1 件、67 枚、請求金額合計 %2 円"_s.arg(rows.size())
                                    .arg(locale.toString(total))),
                 qPrintable(r.out));

        const QDateTime written = QFileInfo(QDir(kind4).filePath(rows[0][7])).lastModified();
        r = callCli(args);
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains(u"--replace"_s), qPrintable(r.err));
        QCOMPARE(QFileInfo(QDir(kind4).filePath(rows[0][7])).lastModified(), written);
        // A file of the earlier run that the new one does not write goes with its list.
        const QString first = listRows(kind1)[0][7];
        const QString list = QDir(kind1).filePath(u"送付一覧.csv"_s);
        QVERIFY(QFile::rename(QDir(kind1).filePath(first), QDir(kind1).filePath(u"20261105_旧_1.pdf"_s)));
        QVERIFY(writeAll(
            list, readAll(list).replace(qelprn::toCp932(first), qelprn::toCp932(u"20261105_旧_1.pdf"_s))));
        r = callCli(args + QStringList{u"--replace"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(!QFile::exists(QDir(kind1).filePath(u"20261105_旧_1.pdf"_s)));
        QCOMPARE(listRows(kind4).size(), rows.size());

        // Ctrl+C (here SIGTERM, which the command line treats alike) stops a month end after the file
        // being written: the built program ends with status 2, leaving whole files and a list naming
        // exactly them.
        const QString stopped = demo.dir.filePath(u"stopped"_s);
        const QString stopped4 = QDir(stopped).filePath(u"4_請求書兼領収書"_s);
        QProcess cli;
        cli.start(builtProgram(u"qelprn-cli"_s),
                  {u"month-end"_s, u"--app-dir"_s, demo.folder, u"--month"_s, u"2026/10"_s, u"--out"_s,
                   stopped, u"--kinds"_s, u"4,5"_s, u"--yes"_s});
        QVERIFY(cli.waitForStarted());
        QElapsedTimer clock;
        clock.start();
        while (QDir(stopped4).entryList({u"*.pdf"_s}, QDir::Files).size() < 2 && clock.elapsed() < 60000)
            QTest::qWait(5);
        cli.terminate();
        QVERIFY(cli.waitForFinished(60000));
        const QString err = QString::fromUtf8(cli.readAllStandardError());
        QCOMPARE(cli.exitStatus(), QProcess::NormalExit);
        QCOMPARE(cli.exitCode(), 2);
        QVERIFY2(QString::fromUtf8(cli.readAllStandardOutput()).contains(u"中止しました"_s), qPrintable(err));
        checkListedFiles(stopped4);
        const qsizetype count = listRows(stopped4).size();
        QVERIFY2(count >= 2 && count < 59, qPrintable(QString::number(count)));
        QVERIFY(!QFileInfo::exists(QDir(stopped).filePath(u"5_請求書兼領収書(自費分)"_s)));

        // The files are archival PDF with the metadata a search finds them by: pdfinfo reads title,
        // author, subject and creation date, and PDFBox's PDF/A-1b validator (Debian's
        // libpdfbox2-java) accepts an invoice and an invoice-receipt.
        QStringList classPath;
        for (const QString& jar : {u"preflight"_s, u"pdfbox2"_s, u"fontbox2"_s, u"xmpbox"_s,
                                   u"commons-logging"_s, u"javax.activation"_s, u"jaxb-api"_s})
            classPath << u"/usr/share/java/"_s + jar + u".jar"_s;
        for (const QString& folder : {kind1, kind4}) {
            const QStringList row = listRows(folder).last();
            const QString file = QDir(folder).filePath(row[7]);
            const QString info = enginetest::runProgram(u"pdfinfo"_s, {file}).err;
            for (const QString& field :
                 {u"Subject: +2026年10月分"_s, u"Author: +\\S"_s, u"CreationDate: +\\S"_s,
                  u"Title: +\\S+　"_s + QRegularExpression::escape(row[3])})
                QVERIFY2(info.contains(QRegularExpression(field)), qPrintable(field + u'\n' + info));
            if (!QFileInfo::exists(classPath.first()) || QStandardPaths::findExecutable(u"java"_s).isEmpty())
                QSKIP("the PDF/A validator (libpdfbox2-java and a Java runtime) is not installed");
            const auto check =
                enginetest::runProgram(u"java"_s, {u"-cp"_s, classPath.join(u':'),
                                                   u"org.apache.pdfbox.preflight.Validator_A1b"_s, file});
            QVERIFY2(check.exitCode == 0 && check.err.contains(u"is a valid PDF/A-1b file"_s),
                     qPrintable(check.err));
        }
    }
};

QTEST_MAIN(tst_MonthEnd)
#include "tst_month_end.moc"
