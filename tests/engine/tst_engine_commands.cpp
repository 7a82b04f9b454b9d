// The command file "WfdCom.dat" and the layout: every rendering property of a layout and every
// command, read back from where the words land in the PDF, and every kind of bad input, which must
// end the engine with one message naming the file and line and status 2.

#include "EngineTestData.h"
#include "engine/CommandFile.h"
#include "engine/CsvLine.h"
#include "engine/ValueFormat.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace enginetest;
using qelprn::engine::EngineError;
using qelprn::engine::EngineJob;

class tst_engine_commands : public QObject
{
    Q_OBJECT

public:
    // How a word must sit in its item's box.
    enum Check { Left, Right, Center, Fits, Overflows, Wraps, Empty, Paper };
    Q_ENUM(Check)

private:
    QTemporaryDir m_dir;
    QHash<QString, QList<PdfPage>> m_rendered; // by the extra command lines
    QString path(const QString& name) const { return m_dir.filePath(name); }

    // tests/engine/properties.wfd over five rows in two groups: A (4 rows, 3 slots a page: two
    // pages) and B (one page), with the extra command lines. The data file has no title line
    // (",,,1"): the layout names the columns by position.
    const QList<PdfPage>& rendered(const QStringList& extra)
    {
        const QString key = extra.join(u'|');
        if (!m_rendered.contains(key)) {
            writeCp932(path(u"props.csv"_s), {u"\"A\",\"Alpha\",1234,0,1"_s, u"\"A\",\"Beta\",0,101,0"_s,
                                              u"\"A\",\"\",5678,102,1"_s, u"\"A\",\"Delta\",900,103,0"_s,
                                              u"\"B\",\"Echo\",42,0,1"_s});
            const QString name = path(u"props%1"_s.arg(m_rendered.size()));
            const QString layout =
                qEnvironmentVariable("QELPRN_SOURCE_DIR") + u"/tests/engine/properties.wfd"_s;
            writeCp932(name + u".dat"_s,
                       QStringList{u"FileName,"_s + q(layout), u"SetDataText,\"props\",\"props.csv\",,,1"_s} +
                           extra + QStringList{u"PrintOut"_s});
            runEngine({u"--pdf"_s, name + u".pdf"_s, u"/c"_s, name + u".dat"_s});
            m_rendered.insert(key, pdfWords(name + u".pdf"_s));
        }
        return m_rendered[key];
    }

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }

    void readsEveryCommand()
    {
        // Paths relative to the command file, a data file without titles, a value holding a comma.
        const QString text = u"FileName,\"SYS\\施設別請求書.wfd\"\r\nTitle,\"施設請求書印刷\"\r\n"
                             u"SetDataText,\"明細\",\"明細.csv\",,,1\r\nSetItemValue,\"宛名\",\"A,B\"\r\n"
                             u"PrintOutFromDialog\r\n"_s;
        EngineJob job;
        EngineError error;
        QVERIFY2(qelprn::engine::parseCommandFile(qelprn::toCp932(text), path(u"WfdCom.dat"_s), job, &error),
                 qPrintable(error.text()));
        QCOMPARE(job.layoutPath, path(u"SYS/施設別請求書.wfd"_s));
        QCOMPARE(job.title, u"施設請求書印刷"_s);
        QCOMPARE(job.data.value(0).path, path(u"明細.csv"_s));
        QVERIFY(job.data.value(0).noTitle);
        QCOMPARE(job.items.value(0).value, u"A,B"_s);
        QCOMPARE(job.action, EngineJob::Action::PrintOutFromDialog);
        for (const auto& [line, action] : {std::pair{u"ShowWindow,2"_s, EngineJob::Action::Preview},
                                           std::pair{u"PrintOut"_s, EngineJob::Action::PrintOut}}) {
            QVERIFY(qelprn::engine::parseCommandFile(
                qelprn::toCp932(u"FileName,\"/a.wfd\"\r\n"_s + line + u"\r\n"_s), path(u"c.dat"_s), job,
                &error));
            QCOMPARE(job.action, action);
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
        QCOMPARE(formatValue(u"-1234.5"_s, u"number"_s), u"-1,234.5"_s);
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

        // Amounts in whole yen by a form's rule; whole values never move, text stays text.
        using qelprn::engine::roundYen;
        using qelprn::engine::roundYenText;
        using qelprn::engine::YenRounding;
        QCOMPARE(roundYen(1366.5, YenRounding::Up), 1367.0);
        QCOMPARE(roundYen(1366.1, YenRounding::Up), 1367.0);
        QCOMPARE(roundYen(1366.0, YenRounding::Up), 1366.0);
        QCOMPARE(roundYen(1366.5, YenRounding::HalfUp), 1367.0);
        QCOMPARE(roundYen(1366.49, YenRounding::HalfUp), 1366.0);
        QCOMPARE(roundYen(1366.9, YenRounding::Down), 1366.0);
        QCOMPARE(roundYen(1366.5, YenRounding::None), 1366.5);
        QCOMPARE(roundYenText(u"1366.5"_s, YenRounding::Up), u"1367"_s);
        QCOMPARE(roundYenText(u" 1366 "_s, YenRounding::Up), u" 1366 "_s);
        QCOMPARE(roundYenText(u"未定"_s, YenRounding::Up), u"未定"_s);
        QCOMPARE(roundYenText(u"1366.5"_s, YenRounding::None), u"1366.5"_s);
    }

    void rendersEachProperty_data()
    {
        QTest::addColumn<QStringList>("commands"); // extra lines of the command file
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
        row("centre alignment", 1, u"¥1,234"_s, yen, Center);
        row("left alignment", 1, u"101"_s, slot(room, 1), Left);
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
        row("SetItemValue on a field", 2, u"[固定]"_s, name, Left, {u"SetItemValue,\"名前\",\"固定\""_s});
        row("PrintOffsetX and Y", 1, u"1,234"_s, amount.translated(10, -5), Right,
            {u"PrintOffsetX, 100"_s, u"PrintOffsetY, -50"_s});
        row("PrintZoom", 1, u"1,234"_s, {15, 20, 20, 5}, Right, {u"PrintZoom, 50"_s});
        row("PrintPaper", 1, {}, {0, 0, 182, 257}, Paper, {u"PrintPaper, B5"_s});
        const qreal b5 = 257.0 / 297; // the A4 form scaled as a whole to fit B5
        row("PrintPaper scales", 1, u"1,234"_s, {30 * b5, 40 * b5, 40 * b5, 10 * b5}, Right,
            {u"PrintPaper, B5"_s});
        row("SectionRepeatStart", 1, u"1,234"_s, slot(amount, 2), Right, {u"SectionRepeatStart, 3"_s});
        row("SectionRepeatStart next page", 2, u"[Beta]"_s, name, Left, {u"SectionRepeatStart, 3"_s});
    }

    void rendersEachProperty()
    {
        QFETCH(QStringList, commands);
        QFETCH(int, page);
        QFETCH(QString, text);
        QFETCH(QRectF, box);
        QFETCH(Check, check);
        const QList<PdfPage>& pages = rendered(commands);
        QVERIFY(pages.size() >= page);
        const PdfPage& on = pages[page - 1];
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
        const QHash<Check, bool> holds = {{Left, left},
                                          {Right, right},
                                          {Center, qAbs(ink.center().x() - box.center().x()) < near},
                                          {Fits, left && right},
                                          {Overflows, left && ink.right() > box.right() + 5},
                                          {Wraps, left && wraps},
                                          {Empty, true}};
        QVERIFY2(holds.value(check), qPrintable(seen));
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
        QTest::newRow("unknown rounding") << QStringList{u"FileName,\"badround.wfd\""_s, ok[1], ok[2]} << good
                                          << u"badround.wfd:5"_s << u"round"_s;
        QTest::newRow("sum of no columns") << QStringList{u"FileName,\"emptysum.wfd\""_s, ok[1], ok[2]}
                                           << good << u"emptysum.wfd"_s << u"sum"_s;
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
            << ok << QString(header(facilityTitles().section(u',', 0, 20)) + u'\n' + u"\"1\",1"_s)
            << u"data.csv:1"_s << u"社印保存先"_s;
        QTest::newRow("malformed title line")
            << ok
            << QString(u"\"施設ID,施設名\n"_s +
                       facilityRow(1, 1, u"さくら苑"_s, 0, u"本館"_s, 1, 100, 10, {}, {}))
            << u"data.csv:1"_s << u"\""_s;
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
        const QByteArray invoiceLayout = invoice.readAll();
        noFont.write(QByteArray(invoiceLayout).replace("IPAexMincho", u"存在しない明朝"_s.toUtf8()));
        noFont.close();
        QFile badRound(dir.filePath(u"badround.wfd"_s));
        QVERIFY(badRound.open(QIODevice::WriteOnly));
        badRound.write(QByteArray(invoiceLayout).replace("\"round\": \"up\"", "\"round\": \"nearest\""));
        badRound.close();
        QFile emptySum(dir.filePath(u"emptysum.wfd"_s));
        QVERIFY(emptySum.open(QIODevice::WriteOnly));
        emptySum.write(QByteArray(invoiceLayout).replace("\"sum\": \"施術施設負担額\"", "\"sum\": []"));
        emptySum.close();
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
