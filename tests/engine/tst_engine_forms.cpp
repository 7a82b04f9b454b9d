// The five forms rendered by the engine program from print data in the writers' format, read back
// from the PDF with poppler-utils.

#include "EngineTestData.h"

#include <QImage>
#include <QPainter>
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

    QStringList m_pdfs; // by print kind, 1 ... 5, then the three without addressee names

    // The layout rendered over csv to name.pdf (or PNG pages of 100 dpi in the folder name): the
    // output's path, or empty after the engine's message.
    QString render(const QString& name, const QString& layout, const QString& dataName, const QString& csv,
                   bool png = false)
    {
        const QString command = path(name + u".dat"_s), out = path(png ? name : name + u".pdf"_s);
        const Run r =
            writeCommandFile(command, layoutPath(layout), dataName, csv)
                ? runEngine({png ? u"--png"_s : u"--pdf"_s, out, u"--dpi"_s, u"100"_s, u"/c"_s, command})
                : Run();
        if (r.exitCode != 0)
            qWarning().noquote() << r.err;
        return r.exitCode == 0 ? out : QString();
    }

    // Billing facility 12: 3 facility lines, 2 fillers, a self-pay line, fillers to 25 (one page).
    // Billing facility 15: 30 facility lines as the all-sites writer leaves them (two pages).
    // Billing facility 20: 50 lines of the single-site paging (two pages, the second all fillers).
    QStringList facilityLines(const QString& seal) const
    {
        QStringList lines = {header(facilityTitles)};
        const QString sakura = u"特別養護老人ホーム さくら苑"_s;
        int no = 1;
        for (int i = 0; i < 3; ++i)
            lines << facilityRow(no++, 12, sakura, 0, u"さくら苑 %1号館"_s.arg(i + 1), 12, 1234567, 123456,
                                 {}, seal);
        for (; no <= 25; ++no) // fillers but the sixth line
            lines << (no == 6 ? facilityRow(no, 12, sakura, 1, u"さくら苑(自費)"_s, 0, 0, 5000,
                                            u"山田 太郎 様"_s, seal)
                              : facilityRow(no, 12, sakura, -1, {}, 0, 0, 0, {}, seal));
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
        // The company seal as the print run finds it: a BMP in the data folder.
        QImage seal(120, 120, QImage::Format_RGB32);
        seal.fill(Qt::white);
        QPainter(&seal).fillRect(20, 20, 80, 80, Qt::red);
        m_seal = path(u"corpseal.bmp"_s);
        QVERIFY(seal.save(m_seal, "BMP"));

        QVERIFY(writeCp932(path(u"施設請求データ.csv"_s), facilityLines(m_seal)));
        // 20 patients in one facility (18 rows a page: two pages) and 5 in another (one page).
        QStringList patients = {header(patientTitles)};
        for (int i = 1; i <= 25; ++i)
            patients << patientRow(i, i <= 20 ? 3 : 4,
                                   i <= 20 ? u"介護付き有料老人ホーム あおば"_s : u"ケアハウス みどり"_s,
                                   u"佐藤 花子%1"_s.arg(i), 45600, 4560 + i, i <= 20 ? m_seal : QString());
        QVERIFY(writeCp932(path(u"patients.csv"_s), patients));
        // Two patients of 8 days, one of 13 (days 1-11 on its first line, 12-13 on its second).
        QVERIFY(writeCp932(path(u"請求書兼領収書.csv"_s),
                           {header(receiptTitles()), receiptRow(7000, u"田中 一郎0"_s, 8, m_seal),
                            receiptRow(7001, u"田中 一郎1"_s, 11, m_seal, 1, 13),
                            receiptRow(7001, u"田中 一郎1"_s, 2, m_seal, 12, 13),
                            receiptRow(7002, u"田中 一郎2"_s, 8, m_seal)}));
        // Addressees without a name: lines without a billing facility (ID -1, no name) with a seal file
        // that is not there, then a facility without a seal; a patient without a name in a
        // facility without one; an invoice-receipt without a name.
        const QString missing = path(u"missing/corpseal.bmp"_s);
        QVERIFY(writeCp932(
            path(u"unbilled.csv"_s),
            {header(facilityTitles), facilityRow(1, -1, {}, 0, u"ひまわり荘"_s, 2, 20000, 2000, {}, missing),
             facilityRow(2, -1, {}, 0, u"あさがお荘 β棟"_s, 1, 10000, 1000, {}, missing),
             facilityRow(1, 12, u"さくら苑"_s, 0, u"さくら苑 1号館"_s, 3, 30000, 3000, {}, {})}));
        QVERIFY(writeCp932(path(u"nameless.csv"_s),
                           {header(patientTitles), patientRow(1, 0, {}, u"佐藤 花子"_s, 45600, 4560, m_seal),
                            patientRow(2, 0, {}, {}, 45600, 4560, m_seal)}));
        QVERIFY(writeCp932(path(u"noname.csv"_s), {header(receiptTitles()), receiptRow(7, {}, 2, m_seal)}));
        const QString facility = u"施設請求データ"_s, receipt = u"請求書兼領収書"_s;
        m_pdfs = {
            render(u"kind1"_s, u"施設別請求書.wfd"_s, facility, u"施設請求データ.csv"_s),
            render(u"kind2"_s, u"一部負担金一覧表_02.wfd"_s, facility, u"patients.csv"_s),
            render(u"kind3"_s, u"一部負担金一覧表_回数区分あり.wfd"_s, facility, u"patients.csv"_s),
            render(u"kind4"_s, u"請求書兼領収書_回数区分あり.wfd"_s, receipt, u"請求書兼領収書.csv"_s),
            render(u"kind5"_s, u"請求書兼領収書_回数区分あり_自費.wfd"_s, receipt, u"請求書兼領収書.csv"_s),
            render(u"kind6"_s, u"施設別請求書.wfd"_s, facility, u"unbilled.csv"_s),
            render(u"kind7"_s, u"一部負担金一覧表_02.wfd"_s, facility, u"nameless.csv"_s),
            render(u"kind8"_s, u"請求書兼領収書_回数区分あり.wfd"_s, receipt, u"noname.csv"_s)};
    }

    // Pages per group, the seal on every page that has one, and a text layer that names the
    // characters drawn: 日, 月, 人, 老, 行 ... share a glyph with a radical in the font, and must not
    // come out as the radical. Everything Japanese is in an embedded font.
    void everyForm_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("pages");
        QTest::addColumn<int>("images");
        QTest::newRow("1") << 1 << 5 << 5; // billing facilities of 1, 2 and 2 pages
        QTest::newRow("2") << 2 << 3 << 2; // facilities of 2 and 1 pages, the second without seal
        QTest::newRow("3") << 3 << 3 << 2;
        QTest::newRow("4") << 4 << 4 << 8; // a sheet per patient and 11 days; both halves sealed
        QTest::newRow("5") << 5 << 4 << 8;
        QTest::newRow("6") << 6 << 2 << 0; // seal files missing or not named
    }

    void everyForm()
    {
        QFETCH(int, kind);
        QFETCH(int, pages);
        QFETCH(int, images);
        const QString pdf = m_pdfs.value(kind - 1);
        QCOMPARE(pdfPages(pdf), pages);
        QCOMPARE(pdfImages(pdf), images);
        const QString all = pdfText(pdf);
        const QRegularExpressionMatch radical = QRegularExpression(u"[\u2E80-\u2FDF]"_s).match(all);
        QVERIFY2(!radical.hasMatch(), qPrintable(radical.captured()));
        QVERIFY(!all.contains(u"2024"_s)); // every date of the form in the era style
        const Run fonts = runProgram(u"pdffonts"_s, {pdf});
        QVERIFY(fonts.err.contains(u"QelprnTextLayer"_s));
        for (const QString& line : fonts.err.split(u'\n').mid(2)) {
            if (!line.trimmed().isEmpty())
                QVERIFY2(line.contains(u" yes "_s), qPrintable(line));
        }
    }

    // What a page shows. Each check is a text the page holds, "!text" for one it must not hold,
    // "2×text" for a text it holds twice, "p/n" for the page number of the group (with or without blanks, as
    // pdftotext gives it) and "word: start" for the table row holding word, read left to right.
    void pagesShow_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("page");
        QTest::addColumn<QStringList>("checks");
        auto row = [](const char* what, int kind, int page, const QStringList& checks) {
            QTest::newRow(what) << kind << page << checks;
        };
        // Facility invoice: a billing facility per invoice; line numbers count from 1 on every
        // invoice, whatever the file's 項番; zero people and amounts blank; 3 x 123,456 + 5,000
        // boxed as the amount billed.
        row("1: first invoice", 1, 1,
            {u"特別養護老人ホーム さくら苑"_s, u"御中"_s, u"令和6年5月分"_s, u"令和6年6月5日"_s,
             u"1,234,567"_s, u"¥375,368"_s, u"1/1"_s, u"山田: 6 さくら苑(自費) 5,000 山田 太郎 様"_s,
             u"発行日"_s, u"人数"_s, u"施術合計"_s, u"下記のとおりご請求申し上げます。"_s, u"!ひまわり"_s});
        row("1: next facility", 1, 2,
            {u"グループホーム ひまわり"_s, u"1/2"_s, u"ひまわり棟1: 1 ひまわり棟1 3 30,000 3,000"_s});
        row("1: its last page", 1, 3, {u"2/2"_s, u"ひまわり棟30: 30 "_s, u"¥90,000"_s});
        row("1: a page of fillers", 1, 5, {u"2/2"_s});
        // Co-payment lists: the share code 2 printed as the share, 1割; the footer on the last page.
        for (const auto& [kind, title] : {std::pair{2, u"ご請求額"_s}, std::pair{3, u"5回以上請求額"_s}}) {
            row(qPrintable(u"%1: first page"_s.arg(kind)), kind, 1,
                {u"介護付き有料老人ホーム あおば"_s, u"御中"_s, u"令和6年5月分"_s, u"令和6年5月1日"_s,
                 u"令和6年5月31日"_s, u"令和6年6月5日"_s, title, u"1/2"_s,
                 u"花子1: 1 101 佐藤 花子1 様 後期高齢 1割 8回 45,600 4,561 "_s, u"!2割"_s, u"!お振込先"_s});
            row(qPrintable(u"%1: last page"_s.arg(kind)), kind, 2,
                {u"2/2"_s, u"912,000"_s, u"お振込先"_s, u"ホホエミシンキュウイン"_s}); // 20 x 45,600
            row(qPrintable(u"%1: next facility"_s.arg(kind)), kind, 3,
                {u"ケアハウス みどり"_s, u"1/1"_s, u"花子21: 1 "_s});
        }
        // Invoice-receipts: invoice and receipt halves; the month totals only on a patient's last
        // sheet, "次頁へ続く" in the amount billed and the total row before. Kind 4 bills the
        // co-payment in whole yen (570.5 a day prints as 571, eight days as 4,568, thirteen as
        // 7,423) and shows no self-pay; kind 5 bills the self-pay (1,000 a day) and shows no share,
        // insured amount or co-payment.
        row("4: eight days", 4, 1,
            {u"2×田中 一郎0"_s, u"2×¥4,568-"_s, u"2×1割負担"_s, u"令和6年5月分"_s, u"令和6年6月5日"_s,
             u"領収日"_s, u"5/16"_s, u"!5/18"_s, u"45,600"_s, u"16×571"_s, u"4×4,568"_s, u"後期高齢"_s,
             u"1/1"_s, u"!次頁へ続く"_s, u"!570.5"_s, u"!自費"_s, u"!1,000"_s, u"!8,000"_s});
        row("4: goes on", 4, 2, {u"1/2"_s, u"5/22"_s, u"4×次頁へ続く"_s, u"!74,100"_s, u"!¥"_s});
        row("4: last sheet", 4, 3,
            {u"2/2"_s, u"5/24"_s, u"5/26"_s, u"!5/22"_s, u"!次頁へ続く"_s, u"2×74,100"_s, u"2×¥7,423-"_s,
             u"4×7,423"_s, u"!7,416"_s});
        row("5: eight days", 5, 1,
            {u"2×田中 一郎0"_s, u"2×¥8,000-"_s, u"令和6年5月分"_s, u"領収日"_s, u"5/16"_s, u"16×1,000"_s,
             u"4×8,000"_s, u"自費金額"_s, u"!負担"_s, u"!保険内金額"_s, u"!45,600"_s, u"!5,700"_s, u"!571"_s,
             u"!後期高齢"_s, u"1/1"_s});
        row("5: goes on", 5, 2, {u"1/2"_s, u"5/22"_s, u"4×次頁へ続く"_s, u"!13,000"_s, u"!¥"_s});
        row("5: last sheet", 5, 3, {u"2/2"_s, u"5/26"_s, u"!次頁へ続く"_s, u"4×13,000"_s, u"2×¥13,000-"_s});
        // An invoice always names whom it goes to: a marked addressee for lines without a billing
        // facility, and a facility or a patient without a name gets no bare 御中 or 様. A Greek letter
        // (JIS has them) prints with the rest of its line.
        row("1: unbilled", 6, 1,
            {u"【請求先未設定】"_s, u"ひまわり荘"_s, u"あさがお荘 β棟"_s, u"¥3,000-"_s, u"!御中"_s});
        row("1: billed after unbilled", 6, 2, {u"さくら苑"_s, u"御中"_s, u"!未設定"_s});
        row("2: no facility name", 7, 1, {u"【施設名未設定】"_s, u"1×様"_s}); // the named patient's
        row("4: no patient name", 8, 1, {u"0×様"_s});
    }

    void pagesShow()
    {
        QFETCH(int, kind);
        QFETCH(int, page);
        QFETCH(QStringList, checks);
        const QString pdf = m_pdfs.value(kind - 1);
        const QString text = pdfText(pdf, page);
        const PdfPage words = pdfWords(pdf).value(page - 1);
        static const QRegularExpression count(u"^(\\d+)×(.*)"_s), pageNumber(u"^(\\d+)/(\\d+)$"_s);
        for (const QString& check : checks) {
            QRegularExpressionMatch m;
            QString row;
            bool ok = false;
            if (check.startsWith(u'!'))
                ok = !text.contains(check.mid(1));
            else if ((m = count.match(check)).hasMatch())
                ok = text.count(m.captured(2)) == m.captured(1).toInt();
            else if ((m = pageNumber.match(check)).hasMatch())
                ok = text.contains(
                    QRegularExpression(u"(^|\\s)%1\\s*/\\s*%2(\\s|$)"_s.arg(m.captured(1), m.captured(2))));
            else if (check.contains(u": "_s))
                ok =
                    (row = lineOf(words, check.section(u": "_s, 0, 0))).startsWith(check.section(u": "_s, 1));
            else
                ok = text.contains(check);
            QVERIFY2(ok, qPrintable(check + u" ("_s + row + u')'));
        }
    }

    // A Japanese desktop lists the IPAex fonts under their Japanese names ("IPAexゴシック"); the
    // layouts' English family names must still find them.
    void japaneseLocaleFindsTheFonts()
    {
        if (!runProgram(u"locale"_s, {u"-a"_s}).err.contains(u"ja_JP.utf8"_s))
            QSKIP("the ja_JP.UTF-8 locale is not installed (scripts/setup.sh adds it)");
        const QByteArray saved = qgetenv("LC_ALL");
        qputenv("LC_ALL", "ja_JP.UTF-8");
        const auto restore = qScopeGuard([&] { qputenv("LC_ALL", saved); });
        QVERIFY(
            !render(u"ja"_s, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"施設請求データ.csv"_s).isEmpty());
    }

    void sealOverTheEndOfTheName()
    {
        auto sealBox = [this](const QString& name, const QString& corp) {
            QStringList lines = facilityLines(m_seal);
            for (QString& line : lines)
                line.replace(u"\"株式会社ほほえみ\""_s, q(corp));
            if (!writeCp932(path(name + u".csv"_s), lines) ||
                render(name, u"施設別請求書.wfd"_s, u"施設請求データ"_s, name + u".csv"_s, true).isEmpty())
                return QRect();
            const QImage page(path(name + u"/page-0001.png"_s));
            QRect box; // of the seal's red
            for (int i = 0; i < page.width() * page.height(); ++i) {
                if (page.pixel(i % page.width(), i / page.width()) == qRgb(255, 0, 0))
                    box |= QRect(i % page.width(), i / page.width(), 1, 1);
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
};

QTEST_GUILESS_MAIN(tst_engine_forms)
#include "tst_engine_forms.moc"
