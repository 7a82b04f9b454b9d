// The command file "WfdCom.dat" and the layout: every rendering property of a layout and every
// command, read back from where the words land in the PDF, and every kind of bad input, which must
// end the engine with one message naming the file and line and status 2.

#include "EngineTestData.h"
#include "engine/CommandFile.h"
#include "engine/CsvLine.h"
#include "engine/ValueFormat.h"
#include "support/FileBytes.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace enginetest;
using namespace qelprn::engine;

class tst_engine_commands : public QObject
{
    Q_OBJECT

public:
    // How a word must sit in its item's box.
    enum Check { Left, Right, Center, Fits, Overflows, Wraps, Empty, Paper };
    Q_ENUM(Check)

private:
    QTemporaryDir m_dir;
    QString path(const QString& name) const { return m_dir.filePath(name); }

    // tests/engine/properties.wfd over five rows in two groups: A (4 rows, 3 slots a page: two
    // pages) and B (one page), with the extra command lines: the command file. The data file has no
    // title line (",,,1"): the layout names the columns by position.
    QString propsCommand(const QStringList& extra)
    {
        writeCp932(path(u"props.csv"_s),
                   {u"\"A\",\"Alpha\",1234,0,1"_s, u"\"A\",\"Beta\",0,101,0"_s, u"\"A\",\"\",5678,102,1"_s,
                    u"\"A\",\"Delta\",900,103,0"_s, u"\"B\",\"Echo\",42,0,1"_s});
        const QString command = path(u"props.dat"_s);
        const QString layout = qEnvironmentVariable("QELPRN_SOURCE_DIR") + u"/tests/engine/properties.wfd"_s;
        writeCp932(command,
                   QStringList{u"FileName,"_s + q(layout), u"SetDataText,\"props\",\"props.csv\",,,1"_s} +
                       extra + QStringList{u"PrintOut"_s});
        return command;
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void readsTheAction()
    {
        EngineJob job;
        EngineError error;
        for (const auto& [line, action] :
             {std::pair{u"ShowWindow,2"_s, EngineJob::Action::Preview},
              std::pair{u"PrintOut"_s, EngineJob::Action::PrintOut},
              std::pair{u"PrintOutFromDialog"_s, EngineJob::Action::PrintOutFromDialog}}) {
            QVERIFY(parseCommandFile(qelprn::toCp932(u"FileName,\"/a.wfd\"\r\n"_s + line + u"\r\n"_s),
                                     path(u"c.dat"_s), job, &error));
            QCOMPARE(job.action, action);
        }
    }

    void splitsFieldsAsTheWritersWriteThem()
    {
        QStringList f;
        QVERIFY(splitCsvLine(u"\"1\",25,\"a,b\",\"\",-1,\"say \"hi\" now\",1234.5"_s, f));
        QCOMPARE(f, (QStringList{u"1"_s, u"25"_s, u"a,b"_s, QString(), u"-1"_s, u"say \"hi\" now"_s,
                                 u"1234.5"_s}));
        // A quote followed by a comma closes the field, even inside what was meant as one text; a
        // comma at the end leaves an empty last field.
        QVERIFY(splitCsvLine(u"\"x\",y\",\"z\","_s, f));
        QCOMPARE(f, (QStringList{u"x"_s, u"y\""_s, u"z"_s, QString()}));
    }

    void formatsValues()
    {
        // Value, format and the text printed. Era boundaries with the first year as 元年; the share code
        // is the share in tenths plus one, never printed raw; unreadable values print as they are.
        const QStringList values = {u"-1234.5|number|-1,234.5"_s,
                                    u"2024/05/01|month|2024年5月分"_s,
                                    u"2019/04/30|era-date|平成31年4月30日"_s,
                                    u"2024/06/05 00:00:00|date|2024年6月5日"_s,
                                    u"2024/05/03|md|5/3"_s,
                                    u"未定|date|未定"_s,
                                    u"2019/05/01|era-date|令和元年5月1日"_s,
                                    u"2019/04|era-month|平成31年4月分"_s,
                                    u"2026-10-01|era-month|令和8年10月分"_s,
                                    u"1|share|0割"_s,
                                    u"0|share|"_s,
                                    u"x|share|x"_s,
                                    u"11|share|10割"_s,
                                    u"12|share|12"_s,
                                    u"100|number|100"_s,
                                    u"1234567|yen|¥1,234,567"_s,
                                    u"abc|yen|abc"_s,
                                    u" |number|"_s};
        for (const QString& v : values)
            QCOMPARE(formatValue(v.section(u'|', 0, 0), v.section(u'|', 1, 1)), v.section(u'|', 2));

        // Amounts in whole yen by a form's rule; whole values never move, text stays text.
        for (const auto& [value, rule, rounded] :
             {std::tuple{1366.1, YenRounding::Up, 1367.0}, std::tuple{1366.0, YenRounding::Up, 1366.0},
              std::tuple{1366.5, YenRounding::HalfUp, 1367.0},
              std::tuple{1366.49, YenRounding::HalfUp, 1366.0}, std::tuple{1366.9, YenRounding::Down, 1366.0},
              std::tuple{1366.5, YenRounding::None, 1366.5}})
            QCOMPARE(roundYen(value, rule), rounded);
        for (const auto& [raw, rule, rounded] : {std::tuple{u"1366.5"_s, YenRounding::Up, u"1367"_s},
                                                 std::tuple{u" 1366 "_s, YenRounding::Up, u" 1366 "_s},
                                                 std::tuple{u"1366.5"_s, YenRounding::None, u"1366.5"_s}})
            QCOMPARE(roundYenText(raw, rule), rounded);
    }

    void rendersEachProperty_data()
    {
        QTest::addColumn<QStringList>("commands"); // none: no command file // extra lines of the command file
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("text"); // the words whose centres lie in the box, joined
        QTest::addColumn<QRectF>("box");   // the item's box on the paper, mm
        QTest::addColumn<Check>("check");

        // Margins 10 mm; detail slots of 10 mm from 40 mm down the paper.
        const QRectF amount(30, 40, 40, 10), yen(80, 40, 40, 10), room(130, 40, 20, 10),
            name(155, 40, 30, 10);
        const QRectF kind(188, 40, 12, 10), number(10, 40, 10, 10), footer(30, 100, 40, 6);
        const QRectF firstOnly(10, 20, 40, 6), lastOnly(10, 90, 40, 6);
        auto slot = [](QRectF box, int n) { return box.translated(0, 10 * n); };
        auto row = [](const char* what, int page, const QString& text, QRectF box, Check check,
                      const QStringList& commands = {}) {
            QTest::newRow(what) << commands << page << text << box << check;
        };
        row("blank zero", 1, {}, slot(amount, 1), Empty);
        row("zero printed", 1, u"¥0"_s, slot(yen, 1), Center);
        row("right alignment", 1, u"1,234"_s, amount, Right);
        row("blank zero of a text column", 1, {}, room, Empty);
        row("prefix and suffix", 1, u"[Alpha]"_s, name, Left);
        row("no prefix without a value", 1, {}, slot(name, 2), Empty);
        row("condition met", 1, u"自費"_s, kind, Left);
        row("condition not met", 1, {}, slot(kind, 1), Empty);
        row("row number goes on over pages", 2, u"4"_s, number, Right);
        row("row number starts per group", 3, u"1"_s, number, Right);
        row("page of the group", 2, u"P2/2"_s, {10, 10, 30, 6}, Left);
        row("pages of the next group", 3, u"P1/1"_s, {10, 10, 30, 6}, Left);
        row("sheet of the job", 2, u"S2/3"_s, {50, 10, 30, 6}, Left);
        row("shrink to fit", 1, u"縮小して枠に収める長い見出し"_s, {90, 10, 25, 6}, Fits);
        row("no shrink", 1, u"はみ出したままの長い見出し"_s, {120, 10, 25, 6}, Overflows);
        row("wrap", 1, u"折り返して二行になる長い説明文"_s, {60, 20, 30, 12}, Wraps);
        // A radical beside its ideograph and both wave dashes, each pair one glyph in the font: the
        // text layer names each as drawn.
        row("characters as drawn", 1, u"⽇本日本〜～"_s, {110, 20, 40, 6}, Center);
        row("first-page band", 1, u"初頁だけ"_s, firstOnly, Left);
        row("first-page band later", 2, {}, firstOnly, Empty);
        row("last-page band", 2, u"最終頁だけ"_s, lastOnly, Left);
        row("last-page band earlier", 1, {}, lastOnly, Empty);
        row("continued", 1, u"次頁へ続く"_s, footer, Right);
        row("group sum on its last page", 2, u"7,812"_s, footer, Right);
        row("sum of the next group", 3, u"42"_s, footer, Right);

        row("SetItemValue on a text", 1, u"差替"_s, firstOnly, Left,
            {u"SetItemValue,\"groupHeader.見出し\",\"差替\""_s});
        row("SetItemValue on a field", 2, u"[固,定]"_s, name, Left, {u"SetItemValue,\"名前\",\"固,定\""_s});
        row("PrintOffsetX and Y", 1, u"1,234"_s, amount.translated(10, -5), Right,
            {u"PrintOffsetX, 100"_s, u"PrintOffsetY, -50"_s});
        row("PrintZoom", 1, u"1,234"_s, {15, 20, 20, 5}, Right, {u"PrintZoom, 50"_s});
        row("PrintPaper", 1, {}, {0, 0, 182, 257}, Paper, {u"PrintPaper, B5"_s});
        const qreal b5 = 257.0 / 297; // the A4 form scaled as a whole to fit B5
        row("PrintPaper scales", 1, u"1,234"_s, {30 * b5, 40 * b5, 40 * b5, 10 * b5}, Right,
            {u"PrintPaper, B5"_s});
        row("SectionRepeatStart", 1, u"1,234"_s, slot(amount, 1), Right, {u"SectionRepeatStart, 2"_s});
        row("SectionRepeatStart next page", 2, u"[Delta]"_s, slot(name, 1), Left,
            {u"SectionRepeatStart, 2"_s});
    }

    void rendersEachProperty()
    {
        QFETCH(QStringList, commands);
        QFETCH(int, page);
        QFETCH(QString, text);
        QFETCH(QRectF, box);
        QFETCH(Check, check);
        QCOMPARE(runEngine({u"--pdf"_s, path(u"props.pdf"_s), u"/c"_s, propsCommand(commands)}).exitCode, 0);
        const PdfPage on = pdfWords(path(u"props.pdf"_s)).value(page - 1);
        if (check == Paper) {
            QVERIFY2(qAbs(on.size.width() - box.width()) < 1 && qAbs(on.size.height() - box.height()) < 1,
                     qPrintable(u"%1 x %2 mm"_s.arg(on.size.width()).arg(on.size.height())));
            return;
        }
        QStringList words;
        QRectF ink;
        for (const PdfWord& w : on.words) {
            if (box.contains(w.box.center())) {
                words << w.text;
                ink |= w.box;
            }
        }
        const QString seen = u"%1 at %2-%3 mm"_s.arg(words.join(u' ')).arg(ink.left()).arg(ink.right());
        QVERIFY2(words.join(QString()) == text, qPrintable(seen));
        constexpr qreal near = 0.3; // mm: whole engine units and the PDF's rounding
        const bool left = qAbs(ink.left() - box.left()) < near;
        const bool right = qAbs(ink.right() - box.right()) < near;
        // Wraps: two lines (of 3.5 mm) from the box's top ("valign": "top"), neither past its edge.
        const bool wraps = words.size() == 2 && ink.height() > 6 && qAbs(ink.top() - box.top()) < 1 &&
                           ink.right() <= box.right() + near;
        const bool holds[] = {left,
                              right,
                              qAbs(ink.center().x() - box.center().x()) < near,
                              left && right,
                              left && ink.right() > box.right() + 5,
                              left && wraps,
                              true}; // by Check
        QVERIFY2(holds[check], qPrintable(seen));
    }

    // One PDF per addressee, with the amount the layout names: here the group's last row number,
    // which is not the first row of its last page. The pages painted are told every hundred and
    // at the last.
    void addresseeFilesCarryTheNamedAmount()
    {
        const Run r = runEngine({u"--pdf-dir"_s, path(u"each"_s), u"--file-date"_s, u"20240605"_s, u"/c"_s,
                                 propsCommand({u"SectionRepeatStart, 2"_s})});
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(r.err.contains(u"\t2\t4\tA\tA\n"_s) && r.err.contains(u"\t1\t1\tB\tB\n"_s) &&
                     r.err.contains(u"pages\t3\t3\n"_s) && !r.err.contains(u"pages\t1\t"_s),
                 qPrintable(r.err));
    }

    void badInputEndsWithOneMessage_data()
    {
        QTest::addColumn<QStringList>("commands"); // none: no command file
        QTest::addColumn<QByteArrayList>("edit");  // made in the invoice layout, SYS/form.wfd
        QTest::addColumn<QString>("csv");          // the data file's text, lines separated by \n
        QTest::addColumn<QString>("where");        // file name and line the message must name
        QTest::addColumn<QString>("message");

        const QString facility = facilityRow(1, 1, u"さくら苑"_s, 0, u"本館"_s, 1, 100, 10, {}, {});
        const QString good = header(facilityTitles) + u'\n' + facility;
        // The layout named in Windows style, relative to the command file.
        const QStringList ok = {u"FileName,\"SYS\\form.wfd\""_s,
                                u"SetDataText,\"施設請求データ\",\"data.csv\""_s, u"ShowWindow,2"_s};
        auto with = [&](int at, const QString& line, int replaced = 0) {
            QStringList c = ok;
            c.insert(at, line);
            c.erase(c.begin() + at + 1, c.begin() + at + 1 + replaced);
            return c;
        };
        auto row = [](const char* what, const QStringList& commands, const QString& csv, const QString& where,
                      const QString& message, const QByteArrayList& edit = {}) {
            QTest::newRow(what) << commands << edit << csv << where << message;
        };
        row("no command file", {}, good, u"WfdCom.dat"_s, u"コマンドファイルを開けません"_s);
        row("unknown command", with(1, u"PrintColor, 3"_s), good, u"WfdCom.dat:2"_s, u"PrintColor"_s);
        row("bad number", with(2, u"PrintOffsetX, abc"_s), good, u"WfdCom.dat:3"_s, u"PrintOffsetX"_s);
        row("bad zoom", with(2, u"PrintZoom, 5"_s), good, u"WfdCom.dat:3"_s, u"PrintZoom"_s);
        row("bad paper", with(2, u"PrintPaper, Letter"_s), good, u"WfdCom.dat:3"_s, u"PrintPaper"_s);
        row("unclosed quote", with(1, u"Title,\"施設"_s), good, u"WfdCom.dat:2"_s, u"\""_s);
        row("command after action", with(3, u"Title,\"x\""_s), good, u"WfdCom.dat:4"_s, u"ShowWindow"_s);
        row("no action", ok.mid(0, 2), good, u"WfdCom.dat"_s, u"ShowWindow,2"_s);
        row("no layout", ok.mid(1), good, u"WfdCom.dat"_s, u"FileName"_s);
        row("missing layout", with(0, u"FileName,\"nowhere.wfd\""_s, 1), good, u"WfdCom.dat:1"_s,
            u"nowhere.wfd"_s);
        row("layout is a folder", with(0, u"FileName,\"SYS\""_s, 1), good, u"SYS"_s, u"を開けません"_s);
        row("broken layout", ok, good, u"form.wfd:6"_s, u"JSON"_s, {"\"size\": \"A4\",", "\"size\": ,"});
        row("unreadable colour", ok, good, u"form.wfd"_s, u"の色が読めません"_s, {"#e6e6e6", "blau"});
        row("unknown rounding", ok, good, u"form.wfd:5"_s, u"round"_s,
            {"\"round\": \"up\"", "\"round\": \"nearest\""});
        // Layout faults: what, where, a word of the message, the text changed in the layout and to what.
        const QList<std::array<const char*, 5>> layoutFaults = {
            {"unknown paper", "form.wfd:6", "B4", "\"size\": \"A4\"", "\"size\": \"B4\""},
            {"unknown orientation", "form.wfd:6", "orientation", "portrait", "upright"},
            {"unknown date style", "form.wfd:4", "dates", "\"dates\": \"era\"", "\"dates\": \"reiwa\""},
            {"font too small", "form.wfd", "size", "\"size\": 24", "\"size\": 2"},
            {"unknown band print", "form.wfd", "print", "\"everyPage\"", "\"always\""},
            {"unknown item type", "form.wfd", "circle", "\"type\": \"box\"", "\"type\": \"circle\""},
            {"item without height", "form.wfd", "w と h", "\"w\": 186, \"h\": 12", "\"w\": 186, \"h\": 0"},
            {"unknown format", "form.wfd", "iso", "\"format\": \"date\"", "\"format\": \"iso\""},
            {"field without a source", "form.wfd", "rowNumber", "\"column\": \"提出年月\"",
             "\"col\": \"提出年月\""},
            {"image without a column", "form.wfd", "image", "\"column\": \"社印保存先\"",
             "\"sum\": \"社印保存先\""},
            {"follow of no text", "form.wfd", "follow", "\"follow\": \"本社名\"", "\"follow\": \"社印\""},
            {"too many detail rows", "form.wfd", "rows", "\"rows\": 25", "\"rows\": 1001"},
            {"item font not in fonts", "form.wfd", "金額体", "\"font\": \"金額\"", "\"font\": \"金額体\""},
            {"group key not in the data", "data.csv:1", "請求先ID", "[\"請求先施設ID\"", "[\"請求先ID\""},
            {"addressee not in the data", "data.csv:1", "本社名称", "\"issuer\": \"本社名\"",
             "\"issuer\": \"本社名称\""},
            {"frame column not in the data", "data.csv:1", "枠線", "\"枠線描画\"", "\"枠線\""},
            {"condition not in the data", "data.csv:1", "宛先名", "{ \"column\": \"請求先施設名\"",
             "{ \"column\": \"宛先名\""}};
        for (const auto& [what, where, message, from, to] : layoutFaults)
            row(what, ok, good, QString::fromUtf8(where), QString::fromUtf8(message), {from, to});
        row("sum of no columns", ok, good, u"form.wfd"_s, u"sum"_s,
            {"\"sum\": \"施術施設負担額\"", "\"sum\": []"});
        row("font not found", ok, good, u"form.wfd"_s, u"存在しない明朝"_s,
            {"IPAexMincho", u"存在しない明朝"_s.toUtf8()});
        row("missing data file", with(1, u"SetDataText,\"施設請求データ\",\"none.csv\""_s, 1), good,
            u"WfdCom.dat:2"_s, u"none.csv"_s);
        row("data name the layout lacks", with(1, u"SetDataText,\"別データ\",\"data.csv\""_s, 1), good,
            u"WfdCom.dat"_s, u"施設請求データ"_s);
        row("unknown item", with(2, u"SetItemValue,\"detail.なし\",\"1\""_s), good, u"WfdCom.dat:3"_s,
            u"detail.なし"_s);
        row("column missing", ok, header(facilityTitles.section(u',', 0, 20)) + u"\n\"1\",1"_s,
            u"data.csv:1"_s, u"社印保存先"_s);
        row("malformed title line", ok, u"\"施設ID,施設名\n"_s + facility, u"data.csv:1"_s, u"\""_s);
        row("malformed data line", ok, good + u"\n\"1\",2,\"2024/05/01"_s, u"data.csv:3"_s, u"\""_s);
        row("no data rows", ok, header(facilityTitles), u"data.csv"_s, u"データ行"_s);
    }

    void badInputEndsWithOneMessage()
    {
        QFETCH(QStringList, commands);
        QFETCH(QByteArrayList, edit);
        QFETCH(QString, csv);
        QFETCH(QString, where);
        QFETCH(QString, message);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(u"SYS"_s));
        const QByteArray layout = qelprn::test::readAll(layoutPath(u"施設別請求書.wfd"_s));
        QVERIFY(
            qelprn::test::writeAll(dir.filePath(u"SYS/form.wfd"_s),
                                   edit.isEmpty() ? layout : QByteArray(layout).replace(edit[0], edit[1])));
        QVERIFY(writeCp932(dir.filePath(u"data.csv"_s), csv.split(u'\n')));
        const QString command = dir.filePath(u"WfdCom.dat"_s);
        QVERIFY(commands.isEmpty() || writeCp932(command, commands));

        const Run r = runEngine({u"--pdf"_s, dir.filePath(u"out.pdf"_s), u"/c"_s, command});
        QCOMPARE(r.exitCode, 2);
        QVERIFY(!QFileInfo::exists(dir.filePath(u"out.pdf"_s)));
        const QStringList lines = r.err.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines[0].contains(where + (where.contains(u':') ? u":"_s : u""_s)), qPrintable(lines[0]));
        QVERIFY2(lines[0].contains(message), qPrintable(lines[0]));
    }

    // No command file, an option without its value, output that cannot be written: status 2 and a
    // message naming it.
    void commandLineFaults()
    {
        const Run r = runEngine({u"--pdf"_s, path(u"x.pdf"_s)});
        QCOMPARE(r.exitCode, 2);
        QVERIFY(r.err.contains(u"/c"_s));
        for (const QString& option : {u"/c"_s, u"--pdf"_s, u"--pdf-dir"_s, u"--file-date"_s, u"--author"_s,
                                      u"--subject"_s, u"--cancel-file"_s, u"--png"_s, u"--dpi"_s}) {
            const Run bare = runEngine({u"/c"_s, path(u"WfdCom.dat"_s), option});
            QCOMPARE(bare.exitCode, 2);
            QVERIFY2(bare.err.contains(option + u" の後に値がありません"_s), qPrintable(bare.err));
        }
        // A PDF onto a folder, PNGs into a file or onto a folder (the file or folder is named); a
        // resolution out of range, files per addressee without a valid date, an unknown argument.
        QVERIFY(QDir().mkpath(path(u"png/page-0001.png"_s)));
        const QString each = path(u"each"_s);
        for (const auto& [args, named] :
             {std::pair{QStringList{u"--pdf"_s, path(u"png"_s)}, path(u"png"_s)},
              std::pair{QStringList{u"--png"_s, path(u"props.dat"_s)}, path(u"props.dat"_s)},
              std::pair{QStringList{u"--png"_s, path(u"png"_s)}, path(u"png"_s)},
              std::pair{QStringList{u"--png"_s, path(u"png"_s), u"--dpi"_s, u"10"_s}, u"--dpi は"_s},
              std::pair{QStringList{u"--pdf-dir"_s, each}, u"発行日"_s},
              std::pair{QStringList{u"--pdf-dir"_s, each, u"--file-date"_s, u"20240231"_s}, u"発行日"_s},
              std::pair{QStringList{u"--pdf-dir"_s, each, u"--file-date"_s, u"2024065"_s}, u"発行日"_s},
              std::pair{QStringList{u"--pdfx"_s}, u"不明な引数です: --pdfx"_s}}) {
            const Run r = runEngine(args + QStringList{u"/c"_s, propsCommand({})});
            QVERIFY2(r.exitCode == 2 && r.err.contains(named), qPrintable(r.err));
        }
    }
};

QTEST_GUILESS_MAIN(tst_engine_commands)
#include "tst_engine_commands.moc"
