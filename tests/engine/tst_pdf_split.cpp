// Pages copied out of a PDF that Qt's writer wrote: the copy shows those pages' text and nothing of
// the other pages (neither in its text layer nor in its fonts), says what it is, and a file that is
// not such a PDF is refused with a reason. The fonts keep exactly the drawn glyphs' outlines; the
// ToUnicode maps and the rebuilt font files the engine writes read back as they were made.
#include "engine/EngineTestData.h"
#include "engine/FontFile.h"
#include "engine/PdfPageSplitter.h"
#include "engine/PdfToUnicode.h"
#include "engine/TrueTypeGlyphs.h"
#include "support/FileBytes.h"

#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QRawFont>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;
using qelprn::test::readAll;
using qelprn::test::writeAll;
using namespace qelprn::engine;

namespace {

// A PDF of one page per text, painted by Qt's writer with IPAex Gothic.
bool paintPages(const QString& path, const QStringList& texts, bool pdfa)
{
    QPdfWriter writer(path);
    if (pdfa)
        writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    QPainter painter(&writer);
    painter.setFont(QFont(u"IPAexGothic"_s, 20));
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (i > 0)
            writer.newPage();
        painter.drawText(QPointF(500, 1000), texts[i]);
    }
    return painter.end();
}

// How many glyphs of the PDF's embedded font programs have an outline.
int drawnGlyphs(const QByteArray& pdf)
{
    int drawn = 0;
    for (qsizetype at = pdf.indexOf("/Length1"); at >= 0; at = pdf.indexOf("/Length1", at + 1)) {
        const qsizetype start = pdf.indexOf("stream\n", at) + 7;
        const QRawFont font(pdf.mid(start, pdf.indexOf("\nendstream", start) - start), 20);
        for (quint32 glyph = 0; font.isValid() && glyph < 1000; ++glyph)
            drawn += font.pathForGlyph(glyph).isEmpty() ? 0 : 1;
    }
    return drawn;
}

QByteArray ipaexGothic()
{
    return readAll(enginetest::runProgram(u"fc-match"_s, {u"-f"_s, u"%{file}"_s, u"IPAexGothic"_s}).err);
}

// The sum of a font file's big-endian words, which its checksum adjustment makes 0xB1B0AFBA.
quint32 fileChecksum(const QByteArray& font)
{
    quint32 sum = 0;
    for (qsizetype i = 0; i + 4 <= font.size(); i += 4)
        sum += qFromBigEndian<quint32>(font.constData() + i);
    return sum;
}

} // namespace

class tst_PdfSplit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
#ifdef Q_OS_WIN
        QSKIP("reading the PDFs back needs poppler, which Windows lacks");
#endif
    }

    // Pages 2 and 3 of three: their text in order, nothing of page 1 in the text layer, the
    // ToUnicode maps or the font programs' glyphs, and the information the caller gave.
    void pagesOfTheirOwn()
    {
        QTemporaryDir dir;
        const QString whole = dir.filePath(u"whole.pdf"_s);
        QVERIFY(paintPages(whole, {u"請求"_s, u"施術"_s, u"領収"_s}, true));
        PdfPageSplitter splitter;
        QString error;
        QVERIFY2(splitter.open(whole, &error), qPrintable(error));
        QCOMPARE(splitter.pageCount(), 3);

        PdfDocumentInfo info;
        info.title = u"請求書兼領収書　施術　様"_s;
        info.author = u"ほほえみ治療院"_s;
        const QString part = dir.filePath(u"part.pdf"_s);
        QVERIFY2(splitter.writePages(1, 2, info, true, part, &error), qPrintable(error));
        QCOMPARE(enginetest::pdfPages(part), 2);
        QCOMPARE(enginetest::pdfText(part).remove(u'\n'), u"施術\f領収\f"_s);
        const QString pdfinfo = enginetest::runProgram(u"pdfinfo"_s, {part}).err;
        QVERIFY2(pdfinfo.contains(u"Title:           請求書兼領収書　施術　様"_s), qPrintable(pdfinfo));
        QVERIFY2(pdfinfo.contains(u"Author:          ほほえみ治療院"_s), qPrintable(pdfinfo));

        // The ToUnicode maps are written anew, uncompressed: 施 is in them, 請 and 求 are not.
        const QByteArray bytes = readAll(part);
        QVERIFY(bytes.contains("<65BD>") && !bytes.contains("<8ACB>") && !bytes.contains("<6C42>"));

        // The first page alone, and the whole: the font programs hold the outlines of the glyphs drawn.
        const QString first = dir.filePath(u"first.pdf"_s);
        const QString all = dir.filePath(u"all.pdf"_s);
        QVERIFY(splitter.writePages(0, 1, info, false, first, &error));
        QVERIFY(splitter.writePages(0, 3, info, false, all, &error));
        QCOMPARE(enginetest::pdfText(first).remove(u'\n'), u"請求\f"_s);
        QCOMPARE(enginetest::pdfText(all).remove(u'\n'), u"請求\f施術\f領収\f"_s);
        QCOMPARE(drawnGlyphs(readAll(first)), drawnGlyphs(readAll(all)) - 4);
        QVERIFY(!readAll(first).contains("<65BD>")); // the glyph after the last one drawn here

        QVERIFY(!splitter.writePages(2, 2, info, false, first, &error) && !error.isEmpty());
        QVERIFY(!splitter.writePages(-1, 1, info, false, first, &error));
    }

    // A PDF written by hand with what a PDF may hold and Qt's writer does not write: a page tree of
    // two levels, a length kept in an object of its own, resources inside the page, CR LF after
    // "stream", and references in a comment and a literal string, which must not be followed.
    void handWrittenSyntax()
    {
        QTemporaryDir dir;
        PdfPageSplitter splitter;
        QString error;
        const QString source =
            qEnvironmentVariable("QELPRN_SOURCE_DIR") + u"/tests/engine/hand-written.pdf"_s;
        QVERIFY2(splitter.open(source, &error), qPrintable(error));
        QCOMPARE(splitter.pageCount(), 2);
        const QString one = dir.filePath(u"one.pdf"_s), two = dir.filePath(u"two.pdf"_s);
        QVERIFY2(splitter.writePages(0, 1, {}, false, one, &error), qPrintable(error));
        QVERIFY2(splitter.writePages(1, 1, {}, false, two, &error), qPrintable(error));
        QCOMPARE(enginetest::pdfPages(one), 1);
        QCOMPARE(enginetest::pdfPages(two), 1);
        QVERIFY(readAll(one).contains("stream\n(one) Tj\nendstream") && !readAll(one).contains("(two)"));
        QVERIFY(readAll(two).contains("stream\n(two) Tj\nendstream") && !readAll(two).contains("(one)"));
        QVERIFY(readAll(two).contains("(a \\) 6 0 R (b)) /Y <4142> /Z [-1 0 R]"));
        // A page missing from the file makes the file unreadable, not one page shorter.
        const QString broken = dir.filePath(u"broken.pdf"_s);
        QVERIFY(writeAll(broken, readAll(source).replace("[4 0 R 5 0 R]", "[4 0 R 9 0 R]")));
        QVERIFY(!PdfPageSplitter().open(broken, &error));
    }

    // What is not a PDF as Qt writes it is refused with a reason, not half read or half written.
    void refusesOtherFiles()
    {
        QTemporaryDir dir;
        const QString whole = dir.filePath(u"whole.pdf"_s);
        QVERIFY(paintPages(whole, {u"甲"_s}, false));
        const QByteArray good = readAll(whole);
        QList<QByteArray> bad = {
            "not a pdf",
            good.left(good.lastIndexOf("xref")),                      // no cross-reference table
            good + "\ntrailer\n<< /Prev 9 >>\nstartxref\n0\n%%EOF\n", // an incremental update
            QByteArray(good)
                .replace("/Type /Catalog", "/Type /Catalug") // no catalog with pages
                .replace("/Pages", "/Pagez"),
        };
        // The page's resources or contents, or its font's program or descendant, an object the file
        // lacks (as many digits, so no offset moves); a stream's length the information dictionary.
        const QString text = QString::fromLatin1(good);
        for (const QString& key :
             {u"/Resources"_s, u"/Contents"_s, u"/FontFile2"_s, u"/DescendantFonts \\["_s, u"/Length"_s}) {
            const QRegularExpressionMatch m = QRegularExpression(key + u" ?(\\d+) 0 R"_s).match(text);
            const qsizetype n = m.capturedLength(1);
            const QString to = key == u"/Length"_s ? QString(n - 1, u'0') + u'1' : QString(n, u'9');
            bad << QString(text).replace(m.capturedStart(1), n, to).toLatin1();
        }
        for (qsizetype i = 0; i < bad.size(); ++i) {
            QVERIFY(writeAll(dir.filePath(u"bad.pdf"_s), bad[i]));
            PdfPageSplitter splitter;
            QString error;
            const bool refused = !splitter.open(dir.filePath(u"bad.pdf"_s), &error) ||
                                 !splitter.writePages(0, 1, {}, false, dir.filePath(u"page.pdf"_s), &error);
            QVERIFY2(refused && !error.isEmpty(), qPrintable(QString::number(i)));
        }
    }

    // A font keeps the outlines of the glyphs asked for (and of glyph 0), loses the others, keeps
    // every glyph's index and advance, and stays a valid font file.
    void fontKeepsTheDrawnGlyphs()
    {
        const QByteArray original = ipaexGothic();
        if (original.isEmpty())
            QSKIP("IPAex Gothic is not installed");
        const QRawFont before(original, 20);
        const QList<quint32> ids = before.glyphIndexesForString(u"甲乙"_s);
        QCOMPARE(ids.size(), 2);
        std::vector<bool> keep(ids[0] + 1, false);
        keep[ids[0]] = true;
        const QByteArray kept = keepTrueTypeGlyphs(original, keep);
        QVERIFY(kept.size() < original.size() / 4);
        QCOMPARE(fileChecksum(kept), 0xB1B0AFBAu);

        const QRawFont after(kept, 20);
        QCOMPARE(after.glyphIndexesForString(u"甲乙"_s), ids);
        QCOMPARE(after.pathForGlyph(ids[0]), before.pathForGlyph(ids[0]));
        QVERIFY(after.pathForGlyph(ids[1]).isEmpty());
        QCOMPARE(after.advancesForGlyphIndexes(ids), before.advancesForGlyphIndexes(ids));

        QVERIFY(keepTrueTypeGlyphs(QByteArray("OTTO"), keep).isEmpty());
        QVERIFY(keepTrueTypeGlyphs(original.left(200), keep).isEmpty());
    }

    // A ToUnicode map as any writer may spell it: single codes, ranges counting on from a start
    // (in the last code unit), ranges listing their texts, lower-case digits, and codes beyond two
    // bytes, which are left out. Written back in blocks of at most 100, a map reads the same.
    void toUnicodeMaps()
    {
        const ToUnicodeMap read =
            parseToUnicode("2 beginbfchar <0001> <0041> <10000> <0042> endbfchar <0005> <0045>\n"
                           "3 beginbfrange <00fe> <0100> <d840dc0b> <0003> <0004> <0061>\n"
                           "<0010> <0012> [<0061> <0062>] endbfrange <0020> <0021> <0030>");
        QCOMPARE(read, (ToUnicodeMap{{1, "0041"},
                                     {3, "0061"},
                                     {4, "0062"},
                                     {0x10, "0061"},
                                     {0x11, "0062"},
                                     {0xFE, "D840DC0B"},
                                     {0xFF, "D840DC0C"},
                                     {0x100, "D840DC0D"}}));
        ToUnicodeMap many;
        for (quint32 c = 0; c < 250; ++c)
            many[c * 3] = QByteArray::number(0x4E00 + c, 16).toUpper();
        QCOMPARE(parseToUnicode(toUnicodeCMap(many)), many);
    }

    // A font file rebuilt with a character map of its own: both of its subtables give the map back
    // (the basic-plane one without what lies beyond that plane), and its names are the family given.
    void fontFileWithItsOwnMap()
    {
        const QRawFont font(ipaexGothic(), 20);
        if (!font.isValid())
            QSKIP("IPAex Gothic is not installed");
        const QList<quint32> g = font.glyphIndexesForString(u"ABDZあ叱"_s);
        const CharMap map = {{U'A', g[0]}, {U'B', g[1]},  {U'D', g[2]},
                             {U'Z', g[3]}, {U'あ', g[4]}, {U'\U00020B9F', g[5]}};
        QByteArray file = fontFileWith(font, map, u"QelprnCheck"_s);
        QCOMPARE(fileChecksum(file), 0xB1B0AFBAu);
        const QRawFont full(file, 20);
        QCOMPARE(full.familyName(), u"QelprnCheck"_s);
        QCOMPARE(readCharMap(full), map);

        // With the full-repertoire subtable marked as a symbol encoding, only the basic plane is read.
        for (qsizetype entry = 12; entry < 12 + 16 * qFromBigEndian<quint16>(file.constData() + 4);
             entry += 16) {
            if (file.mid(entry, 4) == "cmap")
                qToBigEndian<quint16>(0, file.data() + qFromBigEndian<quint32>(file.constData() + entry + 8) +
                                             14);
        }
        CharMap basic = map;
        basic.erase(U'\U00020B9F');
        QCOMPARE(readCharMap(QRawFont(file, 20)), basic);
    }
};

QTEST_MAIN(tst_PdfSplit)
#include "tst_pdf_split.moc"
