// The preview window on Qt's offscreen platform: title, page count, navigation, zoom, PDF saving;
// its first paint, its place on the screen, what it remembers, one preview per form, and Qt's own
// dialogs in Japanese.

#include "EngineTestData.h"
#include "app/JapaneseTranslation.h"
#include "engine/BundledFonts.h"
#include "engine/CommandFile.h"
#include "engine/FormDocument.h"
#include "engine/FormOutput.h"
#include "engine/PreviewWindow.h"
#include "engine/PreviewWindowSlot.h"

#include <QAction>
#include <QApplication>
#include <QFontInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRawFont>
#include <QScopeGuard>
#include <QScrollArea>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace enginetest;
using namespace qelprn::engine;

namespace {

// A facility invoice job in dir: rows lines of billing facility 12 (25 a page), then one of 13.
bool openInvoice(const QTemporaryDir& dir, EngineJob& job, FormDocument& document, int rows = 1)
{
    QStringList lines = {header(facilityTitles())};
    for (int i = 1; i <= rows; ++i)
        lines << facilityRow(i, 12, u"さくら苑"_s, 0, u"棟%1"_s.arg(i), 1, 10000, 1000, {}, {});
    lines << facilityRow(1, 13, u"ひまわり"_s, 0, u"本館"_s, 1, 10000, 1000, {}, {});
    EngineError error;
    return writeCp932(dir.filePath(u"data.csv"_s), lines) &&
           writeCommandFile(dir.filePath(u"WfdCom.dat"_s), layoutPath(u"施設別請求書.wfd"_s),
                            u"施設請求データ"_s, u"data.csv"_s) &&
           readCommandFile(dir.filePath(u"WfdCom.dat"_s), job, &error) && document.open(job, &error);
}

qreal shownWidth(const PreviewWindow& window)
{
    return window.pageImage().width() / window.pageImage().devicePixelRatio();
}

} // namespace

class tst_engine_preview : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Settings and the documents folder go to a test location, not the user's.
        QStandardPaths::setTestModeEnabled(true);
    }

    // The UI font: a face without Japanese gives way to a Japanese Gothic face of the same size
    // (under Wine, Qt's fallback drew the form's Japanese in a Mincho face); one with it stays.
    void uiFontDrawsJapaneseInAGothicFace()
    {
        const QFont saved = QApplication::font();
        const auto restore = qScopeGuard([&] { QApplication::setFont(saved); });
        const QFont latin(u"DejaVu Sans"_s, 11);
        if (QFontInfo(latin).family() != u"DejaVu Sans"_s)
            QSKIP("DejaVu Sans is not installed");
        QApplication::setFont(latin);
        const QString family = qelprn::engine::useJapaneseUiFont(QString());
        const QRawFont raw = QRawFont::fromFont(QApplication::font());
        QVERIFY2(raw.supportsCharacter(u'施'), qPrintable(family));
        QVERIFY2(!raw.familyName().contains(u"Mincho"_s) && !raw.familyName().contains(u"明朝"_s),
                 qPrintable(raw.familyName()));
        QCOMPARE(QApplication::font().pointSize(), 11);
        // A face that draws Japanese stays.
        QCOMPARE(qelprn::engine::useJapaneseUiFont(QString()), QFontInfo(QApplication::font()).family());
    }

    void firstPaintPlacementAndMemory()
    {
        QTemporaryDir dir;
        EngineJob job;
        FormDocument document;
        QVERIFY(openInvoice(dir, job, document));

        // 1366×768 less a task bar: the window opens inside and the first paint fits the width.
        const QRect screen(0, 0, 1366, 720);
        {
            PreviewWindow window(document);
            window.placeOn(screen);
            QVERIFY(screen.contains(window.geometry()));
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            const int viewport = window.findChild<QScrollArea*>()->viewport()->width();
            QVERIFY2(shownWidth(window) > viewport - 60 && shownWidth(window) <= viewport,
                     qPrintable(u"page %1 px in %2 px"_s.arg(shownWidth(window)).arg(viewport)));
        }
        // A remembered place off this screen is moved onto it; the remembered zoom is used at once.
        PreviewWindowSettings remembered;
        remembered.zoomIndex = 1; // whole page
        remembered.geometry = QRect(3000, 2000, 1200, 1500);
        PreviewWindow window(document, remembered);
        window.placeOn(screen);
        QVERIFY(screen.contains(window.geometry()));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QSize viewport = window.findChild<QScrollArea*>()->viewport()->size();
        QVERIFY(window.pageImage().height() / window.pageImage().devicePixelRatio() <= viewport.height());
        QVERIFY(shownWidth(window) < viewport.width() - 60);

        // What is kept: zoom, place and the PDF folder, through the engine's settings.
        window.setZoom(PreviewWindow::Fit::Percent, 150);
        window.move(40, 30);
        PreviewWindowSettings kept = window.settings();
        kept.pdfFolder = dir.path();
        kept.save();
        const PreviewWindowSettings loaded = PreviewWindowSettings::load();
        QCOMPARE(loaded.zoomIndex, 7);
        QCOMPARE(loaded.geometry, window.normalGeometry());
        QCOMPARE(loaded.pdfFolder, dir.path());

        // The PDF is proposed as "<form>_<billing month>.pdf", in the last folder or the documents.
        window.setPdfBaseName(pdfBaseName(job));
        QCOMPARE(QFileInfo(window.proposedPdfPath()).fileName(), u"施設別請求書_202405.pdf"_s);
        QCOMPARE(QFileInfo(window.proposedPdfPath()).absolutePath(),
                 QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        PreviewWindow again(document, loaded);
        again.setPdfBaseName(pdfBaseName(job));
        QCOMPARE(again.proposedPdfPath(), QDir(dir.path()).filePath(u"施設別請求書_202405.pdf"_s));
    }

    void newerPreviewOfTheFormReplacesTheOlder()
    {
        const QString invoice = layoutPath(u"施設別請求書.wfd"_s);
        PreviewWindowSlot first(invoice);
        QVERIFY(first.claim(500));
        QSignalSpy firstClosed(&first, &PreviewWindowSlot::closeRequested);
        // Another form leaves it open.
        PreviewWindowSlot other(layoutPath(u"一部負担金一覧表_02.wfd"_s));
        QVERIFY(other.claim(500));
        QCOMPARE(firstClosed.count(), 0);
        // The same form closes it and takes its place, and is closed by the next one in turn.
        PreviewWindowSlot second(invoice);
        QVERIFY(second.claim(2000));
        QCOMPARE(firstClosed.count(), 1);
        QSignalSpy secondClosed(&second, &PreviewWindowSlot::closeRequested);
        PreviewWindowSlot third(invoice);
        QVERIFY(third.claim(2000));
        QCOMPARE(secondClosed.count(), 1);
        QCOMPARE(firstClosed.count(), 1);
    }

    void qtDialogsSpeakJapanese()
    {
        const QString loaded = qelprn::installJapaneseTranslation(*qApp);
        QVERIFY2(!loaded.isEmpty(), "qtbase_ja.qm not found (Debian package qt6-translations-l10n)");
        QCOMPARE(QLocale().toString(QDate(2026, 11, 23), u"dddd"_s), u"月曜日"_s);

        QTemporaryDir dir;
        EngineJob job;
        FormDocument document;
        QVERIFY(openInvoice(dir, job, document));
        PreviewWindow window(document);
        QStringList buttons;
        QString title;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            title = dialog->windowTitle();
            for (const QPushButton* b : dialog->findChildren<QPushButton*>())
                buttons.append(b->text());
            dialog->reject();
        });
        window.print();
        QVERIFY2(buttons.contains(u"印刷(&P)"_s), qPrintable(buttons.join(u", "_s)));
        QVERIFY2(buttons.contains(u"キャンセル"_s), qPrintable(buttons.join(u", "_s)));
        QVERIFY2(!title.contains(u"Print"_s), qPrintable(title));
    }

    void navigatesZoomsAndSaves()
    {
        QTemporaryDir dir;
        EngineJob job;
        FormDocument document;
        QVERIFY(openInvoice(dir, job, document, 60)); // 25 + 25 + 10 rows, then one page of 13
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
        // On the last page only the backward buttons are live.
        const auto live = [&window](const QString& text) {
            const QList<QAction*> actions = window.findChildren<QAction*>();
            const auto it =
                std::find_if(actions.begin(), actions.end(), [&](QAction* a) { return a->text() == text; });
            return it != actions.end() && (*it)->isEnabled();
        };
        QVERIFY(!live(u"▶"_s) && !live(u"▶|"_s) && live(u"◀"_s) && live(u"|◀"_s));
        QTest::keyClick(&window, Qt::Key_PageDown);
        QCOMPARE(window.currentPage(), 3);
        QTest::keyClick(&window, Qt::Key_Home);
        QCOMPARE(window.currentPage(), 0);
        QVERIFY(live(u"▶"_s) && live(u"▶|"_s) && !live(u"◀"_s) && !live(u"|◀"_s));
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

        // Saving writes every page, as drawn.
        QVERIFY(window.saveAsPdf(dir.filePath(u"saved.pdf"_s)));
        QCOMPARE(pdfPages(dir.filePath(u"saved.pdf"_s)), 4);
        QVERIFY(pdfText(dir.filePath(u"saved.pdf"_s), 4).contains(u"ひまわり"_s));
        // A printer given a page range gets those pages, as saved; a range past the end stops at
        // the last page.
        for (const auto& [from, to, pages] : {std::tuple{2, 3, 2}, std::tuple{4, 9, 1}}) {
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(dir.filePath(u"range.pdf"_s));
            EngineError error;
            QVERIFY(printDocument(document, printer, &error, from, to));
            QCOMPARE(pdfPages(dir.filePath(u"range.pdf"_s)), pages);
            // The same letters: how pdftotext orders and splits words depends on the resolution.
            const auto letters = [](const QString& text) {
                QString all = text.simplified().remove(u' ');
                std::sort(all.begin(), all.end());
                return all;
            };
            QCOMPARE(letters(pdfText(dir.filePath(u"range.pdf"_s), pages)),
                     letters(pdfText(dir.filePath(u"saved.pdf"_s), from + pages - 1)));
        }
        QVERIFY(!window.failed());
    }
};

QTEST_MAIN(tst_engine_preview)
#include "tst_engine_preview.moc"
