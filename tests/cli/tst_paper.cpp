// What the paper says, from the built programs on a real database to the PDF read back: every yen
// billed once and in whole yen on the two invoice-receipts, and an invoice for facilities without a
// billing facility only after the clerk has heard of them, never addressed to nobody.
#include "cli/PrintFixture.h"
#include "engine/EngineTestData.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace qelprn::test;

namespace {

// Every "¥1,234-" a PDF prints, as numbers.
QList<qint64> amountsBilled(const QString& pdf)
{
    QList<qint64> amounts;
    static const QRegularExpression yen(u"¥([0-9,]+)-"_s);
    for (const QRegularExpressionMatch& m : yen.globalMatch(enginetest::pdfText(pdf)))
        amounts.append(m.captured(1).remove(u',').toLongLong());
    return amounts;
}

} // namespace

class tst_paper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QFileInfo(builtProgram(u"qelprn-engine"_s)).isExecutable())
            QSKIP("qelprn-engine is not built");
#ifdef Q_OS_WIN
        QSKIP("reading the PDFs back needs poppler, which Windows lacks");
#endif
    }

    // A patient with a 3割 share and days of co-payment only, self-pay only and both: the
    // co-payment receipt (kind 4) and the self-pay receipt (kind 5) together ask for the month's
    // co-payment, each day in whole yen, plus its self-pay, and each asks the same on both halves.
    void twoReceiptsBillEachYenOnce()
    {
        PrintFixture f;
        f.patient(2001, 101, 13110, 3933, 5000, 202, 1, u"suite"_s, {{u"iFutanritsu"_s, 4}});
        // Each day's start, fee and self-pay.
        const std::tuple<QString, int, int> days[] = {
            {u"2024/10/01 10:00:00"_s, 4555, 0},    // 1,366.5: co-payment only
            {u"2024/10/08 10:00:00"_s, 0, 3000},    // self-pay only
            {u"2024/10/15 10:00:00"_s, 4555, 2000}, // both
            {u"2024/10/22 10:00:00"_s, 4000, 0}};   // 1,200 exactly
        qint64 coPayment = 0;
        qint64 selfPay = 0;
        for (const auto& [start, fee, jippi] : days) {
            const int share = (fee * 3 + 9) / 10; // 3割, a fraction of a yen up
            f.day(2001, start, fee, share, jippi);
            coPayment += share;
            selfPay += jippi;
        }

        QList<qint64> billed;
        for (int kind : {4, 5}) {
            const QString pdf = f.folder.filePath(u"kind%1.pdf"_s.arg(kind));
            const CliRun r = runCli(f.args(kind, {u"--patient"_s, u"2001"_s, u"--pdf"_s, pdf}));
            QVERIFY2(r.exitCode == 0, qPrintable(r.err));
            const QList<qint64> amounts = amountsBilled(pdf);
            QCOMPARE(amounts.size(), 2); // the invoice and the receipt half
            QCOMPARE(amounts[0], amounts[1]);
            billed.append(amounts[0]);
            const QString text = enginetest::pdfText(pdf);
            QVERIFY2(!QRegularExpression(u"\\d\\.\\d"_s).match(text).hasMatch(), qPrintable(text));
            QCOMPARE(text.contains(u"3割"_s), kind == 4);
        }
        QCOMPARE(billed, (QList<qint64>{coPayment, selfPay}));
    }

    // Lines without a billing facility: the run names the facility and stops unless told to go on;
    // told so, it prints them under a marked addressee. The print data stays as it was.
    void invoiceWithoutBillingFacilityIsAsked()
    {
        PrintFixture f;
        f.facility(102, u"ひまわり荘"_s);
        f.patient(1002, 102, 8000, 800, 0, 301);
        f.day(1002, u"2024/10/04 10:00:00"_s, 8000, 800, 0);
        const QString pdf = f.folder.filePath(u"kind1.pdf"_s);
        CliRun r = runCli(f.args(1, {u"--pdf"_s, pdf}));
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains(u"請求先施設が設定されていない施設が 1 件あります。"_s) &&
                     r.err.contains(u"ひまわり荘"_s) && r.err.contains(u"--yes"_s),
                 qPrintable(r.err));
        QVERIFY(!QFile::exists(pdf));

        r = runCli(f.args(1, {u"--pdf"_s, pdf, u"--yes"_s}));
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(enginetest::pdfText(pdf, 1).contains(u"【請求先未設定】"_s));

        // The print data alone asks nothing.
        r = runCli(f.args(1, {u"--csv-only"_s}));
        QVERIFY2(r.exitCode == 0 && !r.err.contains(u"請求先"_s), qPrintable(r.err));
    }
};

QTEST_GUILESS_MAIN(tst_paper)
#include "tst_paper.moc"
