// The preview window on Qt's offscreen platform: title, page count, navigation, zoom, PDF saving;
// its first paint, its place on the screen, what it remembers, one preview per form, and Qt's own
// dialogs in Japanese.

#include "EngineTestData.h"
#include "app/JapaneseTranslation.h"
#include "engine/BundledFonts.h"
#include "engine/CommandFile.h"
#include "engine/FormOutput.h"
#include "engine/PreviewWindow.h"
#include "engine/PreviewWindowSlot.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace enginetest;
using namespace qelprn::engine;

class tst_engine_preview : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    EngineJob m_job;
    FormDocument m_document;

    static qreal shownWidth(const PreviewWindow& window)
    {
        return window.pageImage().width() / window.pageImage().devicePixelRatio();
    }

private slots:
    // A facility invoice: 60 lines of billing facility 12 (25 a page: 25 + 25 + 10), then one page
    // of facility 13.
    void initTestCase()
    {
        // Settings and the documents folder go to a test location, not the user's. Nothing is kept
        // from an earlier run: the settings read back and the font copies are this run's own.
        QStandardPaths::setTestModeEnabled(true);
        QSettings(QSettings::NativeFormat, QSettings::UserScope, u"qelprn"_s, u"qelprn-engine"_s).clear();
        QDir(QStandardPaths::writableLocation(QStandardPaths::CacheLocation)).removeRecursively();
        QStringList lines = {header(facilityTitles)};
        for (int i = 1; i <= 60; ++i)
            lines << facilityRow(i, 12, u"さくら苑"_s, 0, u"棟%1"_s.arg(i), 1, 10000, 1000, {}, {});
        lines << facilityRow(1, 13, u"ひまわり"_s, 0, u"本館"_s, 1, 10000, 1000, {}, {});
        EngineError error;
        QVERIFY(writeCp932(m_dir.filePath(u"data.csv"_s), lines) &&
                writeCommandFile(m_dir.filePath(u"WfdCom.dat"_s), layoutPath(u"施設別請求書.wfd"_s),
                                 u"施設請求データ"_s, u"data.csv"_s));
        QVERIFY(readCommandFile(m_dir.filePath(u"WfdCom.dat"_s), m_job, &error) &&
                m_document.open(m_job, &error));
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
        qelprn::engine::useJapaneseUiFont(QString());
        const QRawFont raw = QRawFont::fromFont(QApplication::font());
        QVERIFY2(raw.supportsCharacter(u'施') && !raw.familyName().contains(u"Mincho"_s) &&
                     !raw.familyName().contains(u"明朝"_s),
                 qPrintable(raw.familyName()));
        QCOMPARE(QApplication::font().pointSize(), 11);
        // A face that draws Japanese stays.
        QCOMPARE(qelprn::engine::useJapaneseUiFont(QString()), QFontInfo(QApplication::font()).family());
    }

    void placementAndMemory()
    {
        // 1366×768 less a task bar: a remembered place off this screen is moved onto it; the
        // remembered zoom is used at once.
        const QRect screen(0, 0, 1366, 720);
        PreviewWindowSettings remembered;
        remembered.zoomIndex = 1; // whole page
        remembered.geometry = QRect(3000, 2000, 1200, 1500);
        PreviewWindow window(m_document, remembered);
        window.placeOn(screen);
        QVERIFY(screen.contains(window.geometry()));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QSize viewport = window.findChild<QScrollArea*>()->viewport()->size();
        QVERIFY(window.pageImage().height() / window.pageImage().devicePixelRatio() <= viewport.height());
        QVERIFY(shownWidth(window) < viewport.width() - 60);
        QCOMPARE(window.findChild<QComboBox*>()->currentText(), u"ページ全体"_s);

        // What is kept: zoom, place and the PDF folder, through the engine's settings.
        window.setZoom(PreviewWindow::Fit::Percent, 150);
        QCOMPARE(window.findChild<QComboBox*>()->currentText(), u"150%"_s);
        window.move(40, 30);
        PreviewWindowSettings kept = window.settings();
        kept.pdfFolder = m_dir.path();
        kept.save();
        const PreviewWindowSettings loaded = PreviewWindowSettings::load();
        QCOMPARE(loaded.zoomIndex, 7);
        QCOMPARE(loaded.geometry, window.normalGeometry());
        QCOMPARE(loaded.pdfFolder, m_dir.path());

        // The PDF is proposed as "<form>_<billing month>.pdf", in the last folder or the documents.
        window.setPdfBaseName(pdfBaseName(m_job));
        QCOMPARE(QFileInfo(window.proposedPdfPath()).fileName(), u"施設別請求書_202405.pdf"_s);
        QCOMPARE(QFileInfo(window.proposedPdfPath()).absolutePath(),
                 QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        PreviewWindow again(m_document, loaded);
        again.setPdfBaseName(pdfBaseName(m_job));
        QCOMPARE(again.proposedPdfPath(), QDir(m_dir.path()).filePath(u"施設別請求書_202405.pdf"_s));
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
        QVERIFY2(!qelprn::installJapaneseTranslation(*qApp).isEmpty(),
                 "qtbase_ja.qm not found (Debian package qt6-translations-l10n)");
        QCOMPARE(QLocale().toString(QDate(2026, 11, 23), u"dddd"_s), u"月曜日"_s);

        PreviewWindow window(m_document);
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
        QVERIFY2(buttons.contains(u"印刷(&P)"_s) && buttons.contains(u"キャンセル"_s) &&
                     !title.contains(u"Print"_s),
                 qPrintable(title + u": "_s + buttons.join(u", "_s)));
    }

    void navigatesZoomsAndSaves()
    {

        // 1366×768 less a task bar: the window opens inside and the first paint fits the width.
        const QRect screen(0, 0, 1366, 720);
        PreviewWindow window(m_document);
        window.placeOn(screen);
        QVERIFY(screen.contains(window.geometry()));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QSize viewport = window.findChild<QScrollArea*>()->viewport()->size();
        QVERIFY2(shownWidth(window) > viewport.width() - 60 && shownWidth(window) <= viewport.width(),
                 qPrintable(u"page %1 px in %2 px"_s.arg(shownWidth(window)).arg(viewport.width())));
        QCOMPARE(window.windowTitle(), u"施設請求書印刷"_s);
        QCOMPARE(window.pageText(),
                 u" / 4 ページ（この宛先 1 / 3）"_s); // of all pages, of the billing facility's

        // Keys: Page Down / End / Page Up / Home, bounded at both ends.
        QTest::keyClick(&window, Qt::Key_PageDown);
        QCOMPARE(window.currentPage(), 1);
        QTest::keyClick(&window, Qt::Key_End);
        QCOMPARE(window.currentPage(), 3);
        QVERIFY(window.pageText().contains(u"1 / 1"_s));
        // On the last page only the backward buttons are live.
        const auto live = [&window](const QString& text) {
            for (const QAction* a : window.findChildren<QAction*>()) {
                if (a->text() == text)
                    return a->isEnabled();
            }
            return false;
        };
        QVERIFY(!live(u"▶"_s) && !live(u"▶|"_s) && live(u"◀"_s) && live(u"|◀"_s));
        QTest::keyClick(&window, Qt::Key_PageDown);
        QCOMPARE(window.currentPage(), 3);
        QTest::keyClick(&window, Qt::Key_Home);
        QCOMPARE(window.currentPage(), 0);
        QVERIFY(live(u"▶"_s) && live(u"▶|"_s) && !live(u"◀"_s) && !live(u"|◀"_s));
        window.setPage(-5);
        QCOMPARE(window.currentPage(), 0);

        // Zoom, chosen in its box: 100 % is the paper's real size on the screen; fitting follows the
        // window.
        auto* zoom = window.findChild<QComboBox*>();
        const auto choose = [zoom](const QString& text) { emit zoom->activated(zoom->findText(text)); };
        choose(u"100%"_s);
        QCOMPARE(window.scale(), window.logicalDpiX() / FormDocument::kUnitsPerInch);
        choose(u"幅に合わせる"_s);
        const qreal wide = window.scale();
        window.resize(500, 600);
        QTRY_VERIFY(window.scale() < wide);
        choose(u"ページ全体"_s);
        QVERIFY(window.pageImage().height() / window.pageImage().devicePixelRatio() <= 600);
        choose(u"50%"_s);
        QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(qRound(window.scale() * FormDocument::kUnitsPerInch / window.logicalDpiX() * 100), 75);

        // Saving writes every page, as drawn.
        QVERIFY(window.saveAsPdf(m_dir.filePath(u"saved.pdf"_s)));
        QCOMPARE(pdfPages(m_dir.filePath(u"saved.pdf"_s)), 4);
        QVERIFY(pdfText(m_dir.filePath(u"saved.pdf"_s), 4).contains(u"ひまわり"_s));
        // A printer given a page range gets those pages, as saved; a range past the end stops at
        // the last page.
        for (const auto& [from, to, pages] : {std::tuple{2, 3, 2}, std::tuple{4, 9, 1}}) {
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(m_dir.filePath(u"range.pdf"_s));
            EngineError error;
            QVERIFY(printDocument(m_document, printer, &error, from, to));
            QCOMPARE(pdfPages(m_dir.filePath(u"range.pdf"_s)), pages);
            // The same letters: how pdftotext orders and splits words depends on the resolution.
            const auto letters = [](const QString& text) {
                QString all = text.simplified().remove(u' ');
                std::sort(all.begin(), all.end());
                return all;
            };
            QCOMPARE(letters(pdfText(m_dir.filePath(u"range.pdf"_s), pages)),
                     letters(pdfText(m_dir.filePath(u"saved.pdf"_s), from + pages - 1)));
        }
        QVERIFY(!window.failed());
        // A page past either end paints nothing and says so.
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        QVERIFY(!m_document.paintPage(-1, painter) && !m_document.paintPage(4, painter));
    }
};

QTEST_MAIN(tst_engine_preview)
#include "tst_engine_preview.moc"
