// The preview window on Qt's offscreen platform: title, page count, navigation, zoom, PDF saving.

#include "EngineTestData.h"
#include "engine/CommandFile.h"
#include "engine/FormDocument.h"
#include "engine/PreviewWindow.h"

#include <QAction>
#include <QApplication>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace enginetest;
using namespace qelprn::engine;

class tst_engine_preview : public QObject
{
    Q_OBJECT

private slots:
    void navigatesZoomsAndSaves()
    {
        QTemporaryDir dir;
        QStringList lines = {header(facilityTitles())};
        for (int i = 1; i <= 60; ++i) // 25 + 25 + 10 rows: three pages of one billing facility
            lines << facilityRow(i, 12, u"さくら苑"_s, 0, u"棟%1"_s.arg(i), 1, 10000, 1000, {}, {});
        lines << facilityRow(1, 13, u"ひまわり"_s, 0, u"本館"_s, 1, 10000, 1000, {}, {});
        QVERIFY(writeCp932(dir.filePath(u"data.csv"_s), lines));
        QVERIFY(writeCommandFile(dir.filePath(u"WfdCom.dat"_s), layoutPath(u"施設別請求書.wfd"_s),
                                 u"施設請求データ"_s, u"data.csv"_s));
        EngineJob job;
        EngineError error;
        QVERIFY(readCommandFile(dir.filePath(u"WfdCom.dat"_s), job, &error));
        FormDocument document;
        QVERIFY2(document.open(job, &error), qPrintable(error.text()));
        QCOMPARE(document.pageCount(), 4);

        PreviewWindow window(document);
        window.resize(800, 900);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.windowTitle(), u"施設請求書印刷"_s);
        QVERIFY(window.pageText().contains(u"4"_s));
        QVERIFY(window.pageText().contains(u"1 / 3"_s)); // page of the billing facility

        // Keys: Page Down / End / Page Up / Home, bounded at both ends.
        QTest::keyClick(&window, Qt::Key_PageDown);
        QCOMPARE(window.currentPage(), 1);
        QTest::keyClick(&window, Qt::Key_End);
        QCOMPARE(window.currentPage(), 3);
        QVERIFY(window.pageText().contains(u"1 / 1"_s));
        QTest::keyClick(&window, Qt::Key_PageDown);
        QCOMPARE(window.currentPage(), 3);
        QTest::keyClick(&window, Qt::Key_Home);
        QCOMPARE(window.currentPage(), 0);
        window.setPage(-5);
        QCOMPARE(window.currentPage(), 0);

        // Zoom: 100 % is the paper's real size on the screen; fitting follows the window.
        window.setZoom(PreviewWindow::Fit::Percent, 100);
        QCOMPARE(window.scale(), window.logicalDpiX() / FormDocument::kUnitsPerInch);
        window.setZoom(PreviewWindow::Fit::Width);
        const qreal wide = window.scale();
        window.resize(500, 900);
        QTRY_VERIFY(window.scale() < wide);
        window.setZoom(PreviewWindow::Fit::Page);
        QVERIFY(window.pageImage().height() / window.pageImage().devicePixelRatio() <= 900);
        window.setZoom(PreviewWindow::Fit::Percent, 50);
        QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(qRound(window.scale() * FormDocument::kUnitsPerInch / window.logicalDpiX() * 100), 75);

        // The page shows ink, and saving writes every page.
        const QImage page = window.pageImage();
        bool ink = false;
        for (int y = 0; y < page.height() && !ink; y += 3) {
            for (int x = 0; x < page.width() && !ink; x += 3)
                ink = qGray(page.pixel(x, y)) < 100;
        }
        QVERIFY(ink);
        QVERIFY(window.saveAsPdf(dir.filePath(u"saved.pdf"_s)));
        QCOMPARE(pdfPages(dir.filePath(u"saved.pdf"_s)), 4);
        QVERIFY(!window.failed());
    }
};

QTEST_MAIN(tst_engine_preview)
#include "tst_engine_preview.moc"
