// The five forms rendered by the engine program from print data in the writers' format, read back
// from the PDF with poppler-utils.

#include "EngineTestData.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace enginetest;

class tst_engine_forms : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString m_seal;

    QString path(const QString& name) const { return m_dir.filePath(name); }

    QString render(const QString& name, const QString& layout, const QString& dataName, const QString& csv)
    {
        return renderPdf(m_dir, name, layoutPath(layout), dataName, csv);
    }

    // Billing facility 12: 3 facility lines, 2 fillers, a self-pay line, fillers to 25 (one page).
    // Billing facility 15: 30 facility lines as the all-sites writer leaves them (two pages).
    // Billing facility 20: 50 lines of the single-site paging (two pages, the second all fillers).
    QStringList facilityLines(const QString& seal) const
    {
        QStringList lines = {header(facilityTitles())};
        const QString sakura = u"特別養護老人ホーム さくら苑"_s;
        int no = 1;
        for (int i = 0; i < 3; ++i)
            lines << facilityRow(no++, 12, sakura, 0, u"さくら苑 %1号館"_s.arg(i + 1), 12, 1234567, 123456,
                                 {}, seal);
        for (int i = 0; i < 2; ++i)
            lines << facilityRow(no++, 12, sakura, -1, {}, 0, 0, 0, {}, seal);
        lines << facilityRow(no++, 12, sakura, 1, u"さくら苑(自費)"_s, 0, 0, 5000, u"山田 太郎 様"_s, seal);
        while (no <= 25)
            lines << facilityRow(no++, 12, sakura, -1, {}, 0, 0, 0, {}, seal);
        // 項番 runs on over the file, as the all-sites writer numbers it.
        for (int i = 1; i <= 30; ++i)
            lines << facilityRow(no++, 15, u"グループホーム ひまわり"_s, 0, u"ひまわり棟%1"_s.arg(i), 3,
                                 30000, 3000, {}, seal);
        lines << facilityRow(1, 20, u"ケアハウス みどり"_s, 0, u"みどり館"_s, 2, 20000, 2000, {}, seal);
        for (int i = 2; i <= 50; ++i)
            lines << facilityRow(i, 20, u"ケアハウス みどり"_s, -1, {}, 0, 0, 0, {}, seal);
        return lines;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY2(QFileInfo::exists(enginePath()), "the engine program is built");
        // The company seal as the print run finds it: a BMP in the data folder.
        QImage seal(120, 120, QImage::Format_RGB32);
        seal.fill(Qt::white);
        QPainter p(&seal);
        p.setPen(QPen(Qt::red, 8));
        p.drawEllipse(10, 10, 100, 100);
        p.end();
        m_seal = path(u"corpseal.bmp"_s);
        QVERIFY(seal.save(m_seal, "BMP"));
    }

    void facilityInvoicePagesPerBillingFacility()
    {
        QVERIFY(writeCp932(path(u"施設請求データ.csv"_s), facilityLines(m_seal)));
        const QString pdf =
            render(u"kind1"_s, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"施設請求データ.csv"_s);
        QVERIFY(!pdf.isEmpty());
        QCOMPARE(pdfPages(pdf), 5); // 1 + 2 + 2

        const QString first = pdfText(pdf, 1);
        for (const QString& word : {u"特別養護老人ホーム さくら苑"_s, u"御中"_s, u"令和6年5月分"_s,
                                    u"令和6年6月5日"_s, u"1,234,567"_s, u"山田 太郎 様"_s})
            QVERIFY2(first.contains(word), qPrintable(word));
        QVERIFY(!first.contains(u"2024"_s));    // every date of the form in the era style
        QVERIFY(first.contains(u"¥375,368"_s)); // 3 x 123,456 + 5,000 boxed as the amount billed
        QVERIFY(hasPageNumber(first, 1, 1));

        // A new billing facility starts a new page, and its page numbers start again; line numbers
        // count from 1 on every invoice, whatever the file's 項番.
        const QList<PdfPage> words = pdfWords(pdf);
        QVERIFY(pdfText(pdf, 2).contains(u"グループホーム ひまわり"_s));
        QVERIFY(hasPageNumber(pdfText(pdf, 2), 1, 2));
        QVERIFY(lineOf(words[1], u"ひまわり棟1"_s).startsWith(u"1 ひまわり棟1 3 30,000 3,000"_s));
        QVERIFY(lineOf(words[0], u"山田"_s).startsWith(u"6 "_s));
        QVERIFY(pdfText(pdf, 3).contains(u"¥90,000"_s)); // the group's total on its last page
        QVERIFY(hasPageNumber(pdfText(pdf, 5), 2, 2));

        // The text layer names the characters drawn: 日, 月, 人, 老, 行 ... share a glyph with a
        // radical in the font, and must not come out as the radical.
        const QString all = pdfText(pdf);
        QVERIFY2(radicalsIn(all).isEmpty(), qPrintable(radicalsIn(all)));
        for (const QString& word :
             {u"発行日"_s, u"人数"_s, u"施術合計"_s, u"下記のとおりご請求申し上げます。"_s})
            QVERIFY2(all.contains(word), qPrintable(word));

        // Everything Japanese is in an embedded font: the text-layer copy of IPAex.
        const Run fonts = runProgram(u"pdffonts"_s, {pdf});
        QVERIFY(fonts.err.contains(u"QelprnTextLayer"_s));
        for (const QString& line : fonts.err.split(u'\n').mid(2)) {
            if (!line.trimmed().isEmpty())
                QVERIFY2(line.contains(u" yes "_s), qPrintable(line));
        }
    }

    void sealImageOnlyWhenTheFileExists()
    {
        QVERIFY(pdfImages(path(u"kind1.pdf"_s)) >= 1);
        for (const QString& seal : {QString(), path(u"missing/corpseal.bmp"_s)}) {
            QVERIFY(writeCp932(path(u"noseal.csv"_s), facilityLines(seal)));
            const QString pdf =
                render(u"noseal"_s, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"noseal.csv"_s);
            QVERIFY(!pdf.isEmpty());
            QCOMPARE(pdfImages(pdf), 0);
        }
    }

    // The seal lies over the end of the company name, wherever the name ends, and never over the
    // address lines below it.
    void sealOverTheEndOfTheName()
    {
        auto sealBox = [this](const QString& name, const QString& corp) {
            QStringList lines = facilityLines(m_seal);
            for (QString& line : lines)
                line.replace(u"\"株式会社ほほえみ\""_s, q(corp));
            const QString command = path(name + u".dat"_s);
            if (!writeCp932(path(name + u".csv"_s), lines) ||
                !writeCommandFile(command, layoutPath(u"施設別請求書.wfd"_s), u"施設請求データ"_s,
                                  name + u".csv"_s) ||
                runEngine({u"--png"_s, path(name), u"--dpi"_s, u"100"_s, u"/c"_s, command}).exitCode != 0)
                return QRect();
            const QImage page(path(name + u"/page-0001.png"_s));
            QRect box;
            for (int y = 0; y < page.height(); ++y) {
                for (int x = 0; x < page.width(); ++x) {
                    const QColor c = page.pixelColor(x, y);
                    if (c.red() > 150 && c.green() < 100 && c.blue() < 100)
                        box |= QRect(x, y, 1, 1);
                }
            }
            return box;
        };
        const double mm = 100 / 25.4;
        const QRect shortName = sealBox(u"short"_s, u"ほほえみ"_s);
        const QRect longName = sealBox(u"long"_s, u"株式会社ほほえみ在宅ケア　訪問マッサージ部"_s);
        QVERIFY(!shortName.isNull() && !longName.isNull());
        // 4 characters of 11 pt end about 54 mm before the 21 of the long name (squeezed to its box).
        QVERIFY2(longName.left() - shortName.left() > 40 * mm,
                 qPrintable(u"%1 %2"_s.arg(shortName.left()).arg(longName.left())));
        for (const QRect& seal : {shortName, longName}) {
            // Page margin 12 mm, band 20 mm: the name's line is 8-14 mm into the band, the postcode's
            // line begins at 14 mm.
            QVERIFY2(seal.bottom() < (12 + 20 + 14) * mm, qPrintable(QString::number(seal.bottom() / mm)));
            QVERIFY(seal.bottom() > (12 + 20 + 8) * mm);
        }
    }

    void coPaymentListsPerFacility_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("extraTitle");
        QTest::newRow("kind 2") << u"一部負担金一覧表_02.wfd"_s << u"ご請求額"_s;
        QTest::newRow("kind 3") << u"一部負担金一覧表_回数区分あり.wfd"_s << u"5回以上請求額"_s;
    }

    void coPaymentListsPerFacility()
    {
        QFETCH(QString, layout);
        QFETCH(QString, extraTitle);
        // 20 patients in one facility (18 rows a page: two pages) and 5 in another (one page).
        QStringList lines = {header(patientTitles())};
        for (int i = 1; i <= 25; ++i)
            lines << patientRow(i, i <= 20 ? 3 : 4,
                                i <= 20 ? u"介護付き有料老人ホーム あおば"_s : u"ケアハウス みどり"_s,
                                u"佐藤 花子%1"_s.arg(i), 45600, 4560 + i, i <= 20 ? m_seal : QString());
        QVERIFY(writeCp932(path(u"patients.csv"_s), lines));
        const QString pdf = render(u"kind23"_s, layout, u"施設請求データ"_s, u"patients.csv"_s);
        QVERIFY(!pdf.isEmpty());
        QCOMPARE(pdfPages(pdf), 3);
        const QString first = pdfText(pdf, 1);
        for (const QString& word : {u"介護付き有料老人ホーム あおば"_s, u"御中"_s, u"令和6年5月分"_s,
                                    extraTitle, u"令和6年5月1日"_s, u"令和6年5月31日"_s, u"令和6年6月5日"_s})
            QVERIFY2(first.contains(word), qPrintable(word));
        // The share code 2 is printed as the share, 1割; the facility's page numbers, its row numbers.
        const QList<PdfPage> words = pdfWords(pdf);
        const QString row = lineOf(words[0], u"花子1"_s);
        QVERIFY2(row.startsWith(u"1 "_s) && row.contains(u" 様 後期高齢 1割 8回 45,600 4,561 "_s),
                 qPrintable(row));
        QVERIFY(!first.contains(u"2割"_s));
        QVERIFY(hasPageNumber(first, 1, 2));
        QVERIFY(radicalsIn(pdfText(pdf)).isEmpty());
        QVERIFY(!first.contains(u"お振込先"_s)); // the group footer is on the group's last page
        const QString second = pdfText(pdf, 2);
        QVERIFY(hasPageNumber(second, 2, 2));
        QVERIFY(second.contains(u"912,000"_s)); // 20 x 45,600
        QVERIFY(second.contains(u"お振込先"_s));
        QVERIFY(second.contains(u"ホホエミシンキュウイン"_s));
        QVERIFY(pdfText(pdf, 3).contains(u"ケアハウス みどり"_s));
        QVERIFY(hasPageNumber(pdfText(pdf, 3), 1, 1));
        QVERIFY(lineOf(words[2], u"花子21"_s).startsWith(u"1 "_s));
    }

    void invoiceReceiptSheetsPerPatient_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("amount");
        QTest::newRow("kind 4") << u"請求書兼領収書_回数区分あり.wfd"_s
                                << u"¥12,564-"_s; // 4,564 co-payment + 8,000 self-pay
        QTest::newRow("kind 5") << u"請求書兼領収書_回数区分あり_自費.wfd"_s << u"¥8,000-"_s;
    }

    void invoiceReceiptSheetsPerPatient()
    {
        QFETCH(QString, layout);
        QFETCH(QString, amount);
        // Two patients of 8 days, one of 13 (days 1-11 on its first line, 12-13 on its second).
        QStringList lines = {header(receiptTitles())};
        lines << receiptRow(7000, u"田中 一郎0"_s, 8, m_seal);
        lines << receiptRow(7001, u"田中 一郎1"_s, 11, m_seal, 1, 13)
              << receiptRow(7001, u"田中 一郎1"_s, 2, m_seal, 12, 13);
        lines << receiptRow(7002, u"田中 一郎2"_s, 8, m_seal);
        QVERIFY(writeCp932(path(u"請求書兼領収書.csv"_s), lines));
        const QString pdf = render(u"kind45"_s, layout, u"請求書兼領収書"_s, u"請求書兼領収書.csv"_s);
        QVERIFY(!pdf.isEmpty());
        QCOMPARE(pdfPages(pdf), 4);
        const QString first = pdfText(pdf, 1);
        QCOMPARE(first.count(u"田中 一郎0"_s), 2); // invoice half and receipt half
        QCOMPARE(first.count(amount), 2);
        QCOMPARE(first.count(u"1割負担"_s), 2); // share code 2
        for (const QString& word :
             {u"令和6年5月分"_s, u"令和6年6月5日"_s, u"領収日"_s, u"5/16"_s, u"45,600"_s, u"4,564"_s,
              u"後期高齢"_s}) // the eighth day; a fractional total
            QVERIFY2(first.contains(word), qPrintable(word));
        QVERIFY(!first.contains(u"5/18"_s)); // no ninth day on this sheet
        QVERIFY(hasPageNumber(first, 1, 1));
        QVERIFY(!first.contains(u"次頁へ続く"_s));

        // The 13-day patient: page numbers of the patient, the month totals only on the last sheet.
        const QString goesOn = pdfText(pdf, 2);
        QVERIFY(hasPageNumber(goesOn, 1, 2));
        QVERIFY(goesOn.contains(u"5/22"_s));        // the eleventh day
        QCOMPARE(goesOn.count(u"次頁へ続く"_s), 4); // amount billed and total row, on both halves
        QVERIFY(!goesOn.contains(u"74,100"_s));     // 13 x 5,700
        QVERIFY(!goesOn.contains(u"¥"_s));
        const QString last = pdfText(pdf, 3);
        QVERIFY(hasPageNumber(last, 2, 2));
        QVERIFY(last.contains(u"5/24"_s) && last.contains(u"5/26"_s) && !last.contains(u"5/22"_s));
        QVERIFY(!last.contains(u"次頁へ続く"_s));
        QCOMPARE(last.count(u"74,100"_s), 2);
        QVERIFY(last.contains(u"7,416.5"_s)); // 13 x 570.5
        QVERIFY(hasPageNumber(pdfText(pdf, 4), 1, 1));
        QVERIFY(radicalsIn(pdfText(pdf)).isEmpty());
        QCOMPARE(pdfImages(pdf), 8); // the seal on both halves of four sheets
    }
};

QTEST_GUILESS_MAIN(tst_engine_forms)
#include "tst_engine_forms.moc"
