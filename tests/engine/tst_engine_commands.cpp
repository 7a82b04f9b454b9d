// The command file "WfdCom.dat": every command, what each does to the output, and every kind of
// bad input, which must end the engine with one message naming the file and line and status 2.

#include "EngineTestData.h"
#include "engine/CommandFile.h"
#include "engine/CsvLine.h"
#include "engine/LayoutReader.h"
#include "engine/ValueFormat.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace enginetest;
using qelprn::engine::EngineError;
using qelprn::engine::EngineJob;

namespace {

// Left and right edge of the ink on a rendered page.
std::pair<int, int> inkColumns(const QString& png)
{
    const QImage image(png);
    int left = image.width();
    int right = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 200) {
                left = qMin(left, x);
                right = qMax(right, x);
            }
        }
    }
    return {left, right};
}

} // namespace

class tst_engine_commands : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }

    QString facilityData(int rows)
    {
        QStringList lines = {header(facilityTitles())};
        for (int i = 1; i <= rows; ++i)
            lines << facilityRow(i, 12, u"さくら苑"_s, 0, u"さくら苑 %1号館"_s.arg(i), 1, 10000, 1000, {},
                                 {});
        const QString file = u"data%1.csv"_s.arg(rows);
        return writeCp932(path(file), lines) ? file : QString();
    }

    // Runs the facility invoice with extra command lines into name.pdf (and PNGs at 60 dpi).
    Run renderWith(const QString& name, const QStringList& extra, int rows = 10, bool png = false)
    {
        const QString command = path(name + u".dat"_s);
        writeCommandFile(command, layoutPath(u"施設別請求書.wfd"_s), u"施設請求データ"_s, facilityData(rows),
                         extra);
        QStringList args = {u"--pdf"_s, path(name + u".pdf"_s)};
        if (png)
            args << u"--png"_s << path(name) << u"--dpi"_s << u"60"_s;
        return runEngine(args << u"/c"_s << command);
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void readsEveryCommand()
    {
        const QString folder = path(u"job"_s);
        const QString text = u"FileName,\"SYS\\施設別請求書.wfd\"\r\n"
                             u"Title,\"施設請求書印刷\"\r\n"
                             u"SetDataText,\"施設請求データ\",\"施設請求データ.csv\"\r\n"
                             u"SetDataText,\"明細\",\"/data/明細.csv\",,,1\r\n"
                             u"PrintOffsetX, 15\r\n"
                             u"PrintOffsetY, -20\r\n"
                             u"PrintZoom, 90\r\n"
                             u"SectionRepeatStart, 3\r\n"
                             u"PrintPaper, B5\r\n"
                             u"SetItemValue,\"pageHeader.表題\",\"御請求書\"\r\n"
                             u"SetItemValue,\"宛名\",\"A,B\"\r\n"
                             u"PrintOutFromDialog\r\n"_s;
        EngineJob job;
        EngineError error;
        QVERIFY2(
            qelprn::engine::parseCommandFile(qelprn::toCp932(text), folder + u"/WfdCom.dat"_s, job, &error),
            qPrintable(error.text()));
        QCOMPARE(job.layoutPath, folder + u"/SYS/施設別請求書.wfd"_s); // relative to the command file
        QCOMPARE(job.title, u"施設請求書印刷"_s);
        QCOMPARE(job.data.size(), 2);
        QCOMPARE(job.data[0].name, u"施設請求データ"_s);
        QCOMPARE(job.data[0].path, folder + u"/施設請求データ.csv"_s);
        QVERIFY(!job.data[0].noTitle);
        QCOMPARE(job.data[1].path, u"/data/明細.csv"_s);
        QVERIFY(job.data[1].noTitle);
        QCOMPARE(job.offsetX, 15);
        QCOMPARE(job.offsetY, -20);
        QCOMPARE(job.zoom, 90);
        QCOMPARE(job.repeatStart, 3);
        QCOMPARE(job.paper, u"B5"_s);
        QCOMPARE(job.items.size(), 2);
        QCOMPARE(job.items[0].item, u"pageHeader.表題"_s);
        QCOMPARE(job.items[1].value, u"A,B"_s);
        QCOMPARE(job.action, EngineJob::Action::PrintOutFromDialog);

        for (const auto& [line, action] : {std::pair{u"ShowWindow,2"_s, EngineJob::Action::Preview},
                                           std::pair{u"PrintOut"_s, EngineJob::Action::PrintOut}}) {
            QVERIFY(qelprn::engine::parseCommandFile(
                qelprn::toCp932(u"FileName,\"/a.wfd\"\r\n"_s + line + u"\r\n"_s), path(u"c.dat"_s), job,
                &error));
            QCOMPARE(job.action, action);
            QCOMPARE(job.zoom, 2); // unchanged unless given
        }
    }

    void splitsFieldsAsTheWritersWriteThem()
    {
        QStringList f;
        QVERIFY(qelprn::engine::splitCsvLine(u"\"1\",25,\"a,b\",\"\",-1,\"say \"hi\" now\",1234.5"_s, f));
        QCOMPARE(f, (QStringList{u"1"_s, u"25"_s, u"a,b"_s, QString(), u"-1"_s, u"say \"hi\" now"_s,
                                 u"1234.5"_s}));
        // A quote followed by a comma closes the field, even inside what was meant as one text.
        QVERIFY(qelprn::engine::splitCsvLine(u"\"x\",y\",\"z\""_s, f));
        QCOMPARE(f, (QStringList{u"x"_s, u"y\""_s, u"z"_s}));
        QString problem;
        QVERIFY(!qelprn::engine::splitCsvLine(u"\"1\",\"open"_s, f, &problem));
        QVERIFY(!problem.isEmpty());
    }

    void formatsValues()
    {
        using qelprn::engine::formatValue;
        QCOMPARE(formatValue(u"1234567"_s, u"number"_s), u"1,234,567"_s);
        QCOMPARE(formatValue(u"-1234.5"_s, u"number"_s), u"-1,234.5"_s);
        QCOMPARE(formatValue(u"375368"_s, u"yen"_s), u"¥375,368"_s);
        QCOMPARE(formatValue(u"0"_s, u"number"_s, true), QString());
        QCOMPARE(formatValue(u"0"_s, u"number"_s), u"0"_s);
        QCOMPARE(formatValue(u"2024/05/01"_s, u"month"_s), u"2024年5月分"_s);
        QCOMPARE(formatValue(u"2024/05/01"_s, u"era-month"_s), u"令和6年5月分"_s);
        QCOMPARE(formatValue(u"2019/05/01"_s, u"era-month"_s), u"令和元年5月分"_s);
        QCOMPARE(formatValue(u"2019/04/30"_s, u"era-date"_s), u"平成31年4月30日"_s);
        QCOMPARE(formatValue(u"2024/06/05 00:00:00"_s, u"date"_s), u"2024年6月5日"_s);
        QCOMPARE(formatValue(u"2024/05/03"_s, u"md"_s), u"5/3"_s);
        QCOMPARE(formatValue(u"未定"_s, u"date"_s), u"未定"_s); // unreadable values print as they are

        // Era boundaries, the first year as 元年.
        QCOMPARE(formatValue(u"2019/05/01"_s, u"era-date"_s), u"令和元年5月1日"_s);
        QCOMPARE(formatValue(u"2020/01/01"_s, u"era-date"_s), u"令和2年1月1日"_s);
        QCOMPARE(formatValue(u"1989/01/07"_s, u"era-date"_s), u"昭和64年1月7日"_s);
        QCOMPARE(formatValue(u"1989/01/08"_s, u"era-date"_s), u"平成元年1月8日"_s);
        QCOMPARE(formatValue(u"1926/12/25"_s, u"era-date"_s), u"昭和元年12月25日"_s);
        QCOMPARE(formatValue(u"2019/04"_s, u"era-month"_s), u"平成31年4月分"_s);
        QCOMPARE(formatValue(u"2026-10-01"_s, u"era-month"_s), u"令和8年10月分"_s);

        // The share code is the share in tenths plus one: never printed raw.
        QCOMPARE(formatValue(u"1"_s, u"share"_s), u"0割"_s);
        QCOMPARE(formatValue(u"2"_s, u"share"_s), u"1割"_s);
        QCOMPARE(formatValue(u"4"_s, u"share"_s), u"3割"_s);
        QCOMPARE(formatValue(u"0"_s, u"share"_s), QString());
        QCOMPARE(formatValue(QString(), u"share"_s), QString());
        QCOMPARE(formatValue(u"x"_s, u"share"_s), u"x"_s);

        // One date style per form: the form's setting wins over the format an item names.
        using qelprn::engine::DateStyle;
        using qelprn::engine::formatForDateStyle;
        QCOMPARE(formatForDateStyle(u"date"_s, DateStyle::Era), u"era-date"_s);
        QCOMPARE(formatForDateStyle(u"month"_s, DateStyle::Era), u"era-month"_s);
        QCOMPARE(formatForDateStyle(u"era-date"_s, DateStyle::Western), u"date"_s);
        QCOMPARE(formatForDateStyle(u"md"_s, DateStyle::Era), u"md"_s);
        for (const QString& name :
             {u"施設別請求書.wfd"_s, u"一部負担金一覧表_02.wfd"_s, u"一部負担金一覧表_回数区分あり.wfd"_s,
              u"請求書兼領収書_回数区分あり.wfd"_s, u"請求書兼領収書_回数区分あり_自費.wfd"_s}) {
            qelprn::engine::Layout layout;
            qelprn::engine::EngineError error;
            QVERIFY2(qelprn::engine::readLayout(layoutPath(name), layout, &error), qPrintable(error.message));
            QVERIFY(layout.dateStyle == DateStyle::Era);
            for (const auto& band : layout.bands + QList<qelprn::engine::LayoutBand>{layout.detail}) {
                for (const auto& item : band.items)
                    QVERIFY2(item.format != u"date"_s && item.format != u"month"_s, qPrintable(name));
            }
        }
    }

    void commandsChangeTheOutput()
    {
        // SetItemValue on a fixed text (with its section) and on a field.
        Run r = renderWith(u"items"_s, {u"SetItemValue,\"pageHeader.表題\",\"御請求書\""_s,
                                        u"SetItemValue,\"宛名\",\"テスト施設\""_s});
        QCOMPARE(r.exitCode, 0);
        const QString text = pdfText(path(u"items.pdf"_s));
        QVERIFY(text.contains(u"御請求書"_s));
        QVERIFY(text.contains(u"テスト施設"_s));
        QVERIFY(!text.contains(u"さくら苑\n"_s));

        // PrintPaper: the pages are B5 (182 x 257 mm).
        QCOMPARE(renderWith(u"b5"_s, {u"PrintPaper, B5"_s}).exitCode, 0);
        const Run info = runProgram(u"pdfinfo"_s, {path(u"b5.pdf"_s)});
        QVERIFY2(info.err.contains(QRegularExpression(u"Page size:\\s+51[56]\\.?\\d* x 72[89]"_s)),
                 qPrintable(info.err));

        // SectionRepeatStart: ten rows starting at slot 20 of 25 run onto a second page.
        QCOMPARE(renderWith(u"one"_s, {}).exitCode, 0);
        QCOMPARE(pdfPages(path(u"one.pdf"_s)), 1);
        QCOMPARE(renderWith(u"repeat"_s, {u"SectionRepeatStart, 20"_s}).exitCode, 0);
        QCOMPARE(pdfPages(path(u"repeat.pdf"_s)), 2);

        // PrintOffsetX moves the ink right (10 mm = 24 px at 60 dpi); PrintZoom shrinks it.
        QCOMPARE(renderWith(u"plain"_s, {}, 10, true).exitCode, 0);
        QCOMPARE(renderWith(u"offset"_s, {u"PrintOffsetX, 100"_s}, 10, true).exitCode, 0);
        QCOMPARE(renderWith(u"zoom"_s, {u"PrintZoom, 50"_s}, 10, true).exitCode, 0);
        const auto plain = inkColumns(path(u"plain/page-0001.png"_s));
        const auto offset = inkColumns(path(u"offset/page-0001.png"_s));
        const auto zoom = inkColumns(path(u"zoom/page-0001.png"_s));
        QVERIFY(qAbs(offset.first - plain.first - 24) <= 1);
        QVERIFY2(
            qAbs((zoom.second - zoom.first) * 2 - (plain.second - plain.first)) <= 4,
            qPrintable(u"%1-%2 %3-%4"_s.arg(zoom.first).arg(zoom.second).arg(plain.first).arg(plain.second)));
    }

    void dataWithoutTitleLine()
    {
        // ",,,1": the file has no title line; a layout names its columns by position.
        QVERIFY(writeCp932(path(u"notitle.csv"_s), {u"\"A社\",1200"_s, u"\"B社\",3400"_s}));
        QFile layout(path(u"list.wfd"_s));
        QVERIFY(layout.open(QIODevice::WriteOnly));
        layout.write("{ \"data\": \"一覧\", \"groupBy\": \"#1\",\n"
                     "  \"pageHeader\": { \"items\": [ { \"type\": \"text\", \"text\": \"一覧表 ⽇本日本〜～ "
                     "{page}/{pages}\", \"x\": 0, \"y\": 0, \"w\": 100, \"h\": 8 } ] },\n"
                     "  \"detail\": { \"top\": 10, \"rows\": 5, \"rowHeight\": 6, \"items\": [\n"
                     "    { \"type\": \"field\", \"column\": \"#1\", \"suffix\": \" 御中\", \"x\": 0, \"y\": "
                     "0, \"w\": 60, \"h\": 6 },\n"
                     "    { \"type\": \"field\", \"column\": \"#2\", \"format\": \"yen\", \"x\": 60, \"y\": "
                     "0, \"w\": 40, \"h\": 6, \"align\": \"right\" } ] } }\n");
        layout.close();
        QVERIFY(writeCp932(
            path(u"notitle.dat"_s),
            {u"FileName,\"list.wfd\""_s, u"SetDataText,\"一覧\",\"notitle.csv\",,,1"_s, u"PrintOut"_s}));
        const Run r = runEngine({u"--pdf"_s, path(u"notitle.pdf"_s), u"/c"_s, path(u"notitle.dat"_s)});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(pdfPages(path(u"notitle.pdf"_s)), 2);
        const QString text = pdfText(path(u"notitle.pdf"_s));
        QVERIFY(text.contains(u"A社 御中"_s));
        // The title holds a radical beside its ideograph and both wave dashes: the text layer names
        // each as drawn, though each pair shares one glyph in the font.
        QVERIFY2(text.contains(u"一覧表 ⽇本日本〜～ 1/1"_s), qPrintable(text));
        QVERIFY(text.contains(u"¥3,400"_s));
    }

    void badInputEndsWithOneMessage_data()
    {
        QTest::addColumn<QStringList>("commands"); // {layout} and {data} are replaced
        QTest::addColumn<QString>("csv");          // the data file's text, lines separated by \n
        QTest::addColumn<QString>("where");        // file name and line the message must name
        QTest::addColumn<QString>("message");

        const QString good = header(facilityTitles()) + u'\n' +
                             facilityRow(1, 1, u"さくら苑"_s, 0, u"本館"_s, 1, 100, 10, {}, {});
        const QStringList ok = {u"FileName,\"{layout}\""_s, u"SetDataText,\"施設請求データ\",\"{data}\""_s,
                                u"ShowWindow,2"_s};
        auto with = [&](int at, const QString& line) {
            QStringList c = ok;
            c.insert(at, line);
            return c;
        };
        QTest::newRow("unknown command")
            << with(1, u"PrintColor, 3"_s) << good << u"WfdCom.dat:2"_s << u"PrintColor"_s;
        QTest::newRow("bad number") << with(2, u"PrintOffsetX, abc"_s) << good << u"WfdCom.dat:3"_s
                                    << u"PrintOffsetX"_s;
        QTest::newRow("bad zoom") << with(2, u"PrintZoom, 5"_s) << good << u"WfdCom.dat:3"_s
                                  << u"PrintZoom"_s;
        QTest::newRow("bad paper") << with(2, u"PrintPaper, Letter"_s) << good << u"WfdCom.dat:3"_s
                                   << u"PrintPaper"_s;
        QTest::newRow("unclosed quote") << with(1, u"Title,\"施設"_s) << good << u"WfdCom.dat:2"_s << u"\""_s;
        QTest::newRow("command after action")
            << (QStringList(ok) << u"Title,\"x\""_s) << good << u"WfdCom.dat:4"_s << u"ShowWindow"_s;
        QTest::newRow("no action") << ok.mid(0, 2) << good << u"WfdCom.dat"_s << u"ShowWindow,2"_s;
        QTest::newRow("no layout") << ok.mid(1) << good << u"WfdCom.dat"_s << u"FileName"_s;
        QTest::newRow("missing layout") << QStringList{u"FileName,\"nowhere.wfd\""_s, ok[1], ok[2]} << good
                                        << u"WfdCom.dat:1"_s << u"nowhere.wfd"_s;
        QTest::newRow("broken layout") << QStringList{u"FileName,\"broken.wfd\""_s, ok[1], ok[2]} << good
                                       << u"broken.wfd:3"_s << u"JSON"_s;
        QTest::newRow("font not found") << QStringList{u"FileName,\"nofont.wfd\""_s, ok[1], ok[2]} << good
                                        << u"nofont.wfd"_s << u"存在しない明朝"_s;
        QTest::newRow("missing data file")
            << QStringList{ok[0], u"SetDataText,\"施設請求データ\",\"none.csv\""_s, ok[2]} << good
            << u"WfdCom.dat:2"_s << u"none.csv"_s;
        QTest::newRow("data name the layout lacks")
            << QStringList{ok[0], u"SetDataText,\"別データ\",\"{data}\""_s, ok[2]} << good << u"WfdCom.dat"_s
            << u"施設請求データ"_s;
        QTest::newRow("unknown item") << with(2, u"SetItemValue,\"detail.なし\",\"1\""_s) << good
                                      << u"WfdCom.dat:3"_s << u"detail.なし"_s;
        QTest::newRow("column missing")
            << ok << QString(header(facilityTitles().mid(0, 21)) + u'\n' + u"\"1\",1"_s) << u"data.csv:1"_s
            << u"社印保存先"_s;
        QTest::newRow("malformed data line")
            << ok << QString(good + u'\n' + u"\"1\",2,\"2024/05/01"_s) << u"data.csv:3"_s << u"\""_s;
        QTest::newRow("no data rows") << ok << header(facilityTitles()) << u"data.csv"_s << u"データ行"_s;
    }

    void badInputEndsWithOneMessage()
    {
        QFETCH(QStringList, commands);
        QFETCH(QString, csv);
        QFETCH(QString, where);
        QFETCH(QString, message);
        QTemporaryDir dir;
        QFile broken(dir.filePath(u"broken.wfd"_s));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("{\n  \"name\": \"x\",\n  \"paper\": { \"size\": }\n}\n");
        broken.close();
        // The invoice layout with a font family no machine has.
        QFile invoice(layoutPath(u"施設別請求書.wfd"_s));
        QVERIFY(invoice.open(QIODevice::ReadOnly));
        QFile noFont(dir.filePath(u"nofont.wfd"_s));
        QVERIFY(noFont.open(QIODevice::WriteOnly));
        noFont.write(invoice.readAll().replace("IPAexMincho", u"存在しない明朝"_s.toUtf8()));
        noFont.close();
        QVERIFY(writeCp932(dir.filePath(u"data.csv"_s), csv.split(u'\n')));
        for (QString& c : commands)
            c.replace(u"{layout}"_s, layoutPath(u"施設別請求書.wfd"_s)).replace(u"{data}"_s, u"data.csv"_s);
        const QString command = dir.filePath(u"WfdCom.dat"_s);
        QVERIFY(writeCp932(command, commands));

        const Run r = runEngine({u"--pdf"_s, dir.filePath(u"out.pdf"_s), u"/c"_s, command});
        QCOMPARE(r.exitCode, 2);
        const QStringList lines = r.err.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines[0].contains(where + (where.contains(u':') ? u":"_s : u""_s)), qPrintable(lines[0]));
        QVERIFY2(lines[0].contains(message), qPrintable(lines[0]));
    }

    void badArgumentsAndMissingCommandFile()
    {
        Run r = runEngine({u"--pdf"_s, path(u"x.pdf"_s)});
        QCOMPARE(r.exitCode, 2);
        QVERIFY(r.err.contains(u"/c"_s));
        r = runEngine({u"/c"_s, path(u"nowhere/WfdCom.dat"_s), u"--pdf"_s, path(u"x.pdf"_s)});
        QCOMPARE(r.exitCode, 2);
        QCOMPARE(r.err.split(u'\n', Qt::SkipEmptyParts).size(), 1);
        QVERIFY(r.err.contains(path(u"nowhere/WfdCom.dat"_s)));
        QVERIFY(!QFileInfo::exists(path(u"x.pdf"_s)));
    }
};

QTEST_GUILESS_MAIN(tst_engine_commands)
#include "tst_engine_commands.moc"
