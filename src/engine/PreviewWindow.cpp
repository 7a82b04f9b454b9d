#include "engine/PreviewWindow.h"

#include "engine/FormOutput.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStandardPaths>
#include <QStyle>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

const QList<int> kPercents = {25, 50, 75, 100, 125, 150, 200, 300};
// Room around the page inside the scroll area.
constexpr int kPageMargin = 24;
// The size of a new preview window before the screen is taken into account.
const QSize kPreferredSize(900, 1000);

} // namespace

PreviewWindow::PreviewWindow(FormDocument& document, const PreviewWindowSettings& settings, QWidget* parent)
    : QMainWindow(parent), m_document(document), m_settings(settings), m_pdfBaseName(document.title())
{
    setWindowTitle(document.title());
    resize(kPreferredSize);

    m_view = new QLabel;
    m_view->setAlignment(Qt::AlignCenter);
    m_scroll = new QScrollArea(this);
    m_scroll->setWidget(m_view);
    m_scroll->setWidgetResizable(true);
    m_scroll->setBackgroundRole(QPalette::Dark);
    setCentralWidget(m_scroll);
    // The fitted zooms follow the scroll area's size once it is laid out, not the window's.
    m_scroll->installEventFilter(this);

    QToolBar* bar = addToolBar(u"表示"_s);
    bar->setMovable(false);
    QAction* printAction = bar->addAction(u"印刷..."_s, this, &PreviewWindow::print);
    printAction->setShortcut(QKeySequence::Print);
    QAction* pdfAction = bar->addAction(u"PDF保存..."_s, this, &PreviewWindow::saveAsPdfInteractive);
    pdfAction->setShortcut(QKeySequence::Save);
    bar->addSeparator();
    m_first = bar->addAction(u"|◀"_s, this, [this] { setPage(0); });
    m_first->setShortcut(Qt::Key_Home);
    m_first->setToolTip(u"最初のページ (Home)"_s);
    m_prev = bar->addAction(u"◀"_s, this, [this] { setPage(m_page - 1); });
    m_prev->setShortcut(Qt::Key_PageUp);
    m_prev->setToolTip(u"前のページ (Page Up)"_s);
    m_pageBox = new QSpinBox;
    m_pageBox->setRange(1, qMax(1, document.pageCount()));
    bar->addWidget(m_pageBox);
    connect(m_pageBox, &QSpinBox::valueChanged, this, [this](int v) { setPage(v - 1); });
    m_countLabel = new QLabel;
    bar->addWidget(m_countLabel);
    m_next = bar->addAction(u"▶"_s, this, [this] { setPage(m_page + 1); });
    m_next->setShortcut(Qt::Key_PageDown);
    m_next->setToolTip(u"次のページ (Page Down)"_s);
    m_last = bar->addAction(u"▶|"_s, this, [this] { setPage(m_document.pageCount() - 1); });
    m_last->setShortcut(Qt::Key_End);
    m_last->setToolTip(u"最後のページ (End)"_s);
    bar->addSeparator();
    m_zoomBox = new QComboBox;
    m_zoomBox->addItem(u"幅に合わせる"_s);
    m_zoomBox->addItem(u"ページ全体"_s);
    for (int p : kPercents)
        m_zoomBox->addItem(QString::number(p) + u'%');
    bar->addWidget(m_zoomBox);
    const auto applyZoomIndex = [this](int index) {
        if (index == 0)
            setZoom(Fit::Width);
        else if (index == 1)
            setZoom(Fit::Page);
        else
            setZoom(Fit::Percent, kPercents.value(index - 2, 100));
    };
    connect(m_zoomBox, &QComboBox::activated, this, applyZoomIndex);
    QAction* zoomIn = new QAction(this);
    zoomIn->setShortcuts({QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    connect(zoomIn, &QAction::triggered, this, [this] { zoomStep(1); });
    QAction* zoomOut = new QAction(this);
    zoomOut->setShortcut(QKeySequence::ZoomOut);
    connect(zoomOut, &QAction::triggered, this, [this] { zoomStep(-1); });
    QAction* close = new QAction(this);
    close->setShortcuts({QKeySequence::Close, QKeySequence(Qt::Key_Escape)});
    connect(close, &QAction::triggered, this, &QWidget::close);
    addActions({zoomIn, zoomOut, close});

    // The remembered zoom; the page is painted once the window is shown at its real size.
    const int zoom = qBound(0, m_settings.zoomIndex, int(kPercents.size()) + 1);
    m_fit = zoom == 0 ? Fit::Width : zoom == 1 ? Fit::Page : Fit::Percent;
    m_percent = zoom >= 2 ? kPercents.at(zoom - 2) : 100;
    const QScreen* screen =
        m_settings.geometry.isValid() ? QGuiApplication::screenAt(m_settings.geometry.center()) : nullptr;
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen)
        placeOn(screen->availableGeometry());
}

void PreviewWindow::placeOn(const QRect& available)
{
    // Room for the window manager's title bar and borders, which the inner geometry leaves out.
    const int border = style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 4;
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight) + 8;
    const QRect placed = placeInside(m_settings.geometry, kPreferredSize, available,
                                     QMargins(border, titleBar, border, border));
    resize(placed.size());
    move(placed.topLeft() - QPoint(border, titleBar)); // move() places the frame
}

PreviewWindowSettings PreviewWindow::settings() const
{
    PreviewWindowSettings out = m_settings;
    out.zoomIndex = m_fit == Fit::Width  ? 0
                    : m_fit == Fit::Page ? 1
                                         : int(qMax(qsizetype(0), kPercents.indexOf(m_percent))) + 2;
    out.geometry = isVisible() ? normalGeometry() : m_settings.geometry;
    return out;
}

void PreviewWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // The layout has given the scroll area its size by now; paint at the chosen zoom.
    render();
}

void PreviewWindow::closeEvent(QCloseEvent* event)
{
    m_settings = settings();
    if (m_remember)
        m_settings.save();
    QMainWindow::closeEvent(event);
}

bool PreviewWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_scroll && event->type() == QEvent::Resize && m_fit != Fit::Percent && isVisible())
        render();
    return QMainWindow::eventFilter(watched, event);
}

QString PreviewWindow::pageText() const
{
    const auto [n, m] = m_document.groupPageNumber(m_page);
    return u" / %1 ページ（この宛先 %2 / %3）"_s.arg(m_document.pageCount()).arg(n).arg(m);
}

void PreviewWindow::setPage(int page)
{
    page = qBound(0, page, m_document.pageCount() - 1);
    if (page == m_page && !m_image.isNull())
        return;
    m_page = page;
    render();
    m_scroll->verticalScrollBar()->setValue(0);
}

void PreviewWindow::setZoom(Fit fit, int percent)
{
    m_fit = fit;
    m_percent = qBound(10, percent, 800);
    render();
}

void PreviewWindow::zoomStep(int direction)
{
    const int current = qRound(m_scale * FormDocument::kUnitsPerInch / logicalDpiX() * 100);
    // The next step of the list above the current scale, or below it.
    if (direction > 0) {
        auto it = std::upper_bound(kPercents.cbegin(), kPercents.cend(), current);
        setZoom(Fit::Percent, it == kPercents.cend() ? kPercents.last() : *it);
    } else {
        auto it = std::lower_bound(kPercents.cbegin(), kPercents.cend(), current);
        setZoom(Fit::Percent, it == kPercents.cbegin() ? kPercents.first() : *(it - 1));
    }
}

void PreviewWindow::render()
{
    if (m_document.pageCount() == 0)
        return;
    const QSizeF page = m_document.pageSizeUnits();
    // The area without scroll bars, so fitting does not flip between two widths as a bar comes
    // and goes; fitting the width leaves room for the vertical bar a tall page needs.
    const QSize area = m_scroll->maximumViewportSize() - QSize(kPageMargin, kPageMargin);
    const int bar = m_scroll->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_scroll);
    const qreal dpr = devicePixelRatioF();
    switch (m_fit) {
    case Fit::Width:
        m_scale = (area.width() - bar) / page.width();
        break;
    case Fit::Page:
        m_scale = qMin(area.width() / page.width(), area.height() / page.height());
        break;
    case Fit::Percent:
        m_scale = m_percent / 100.0 * logicalDpiX() / FormDocument::kUnitsPerInch;
        break;
    }
    m_scale = qMax(m_scale, 0.02);
    m_image = QImage((page * m_scale * dpr).toSize(), QImage::Format_RGB32);
    m_image.setDevicePixelRatio(dpr);
    m_image.fill(Qt::white);
    QPainter painter(&m_image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(m_scale, m_scale);
    EngineError error;
    if (!m_document.paintPage(m_page, painter, &error) && !m_failed) {
        m_failed = true;
        painter.end();
        QMessageBox::critical(this, windowTitle(), error.text());
    }
    painter.end();
    m_view->setPixmap(QPixmap::fromImage(m_image));
    updateControls();
}

void PreviewWindow::updateControls()
{
    const QSignalBlocker block(m_pageBox);
    m_pageBox->setValue(m_page + 1);
    m_countLabel->setText(pageText());
    m_first->setEnabled(m_page > 0);
    m_prev->setEnabled(m_page > 0);
    m_next->setEnabled(m_page < m_document.pageCount() - 1);
    m_last->setEnabled(m_page < m_document.pageCount() - 1);
    const QSignalBlocker blockZoom(m_zoomBox);
    if (m_fit == Fit::Width)
        m_zoomBox->setCurrentIndex(0);
    else if (m_fit == Fit::Page)
        m_zoomBox->setCurrentIndex(1);
    else if (const qsizetype i = kPercents.indexOf(m_percent); i >= 0)
        m_zoomBox->setCurrentIndex(int(i) + 2);
}

void PreviewWindow::print()
{
    if (const QString blocker = printDialogBlocker(); !blocker.isEmpty()) {
        QMessageBox::warning(this, windowTitle(), blocker);
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(m_document.pageLayout());
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_document.pageCount());
    printer.setFromTo(1, m_document.pageCount()); // a chosen range starts as every page
    if (dialog.exec() != QDialog::Accepted)
        return;
    const bool range = printer.printRange() == QPrinter::PageRange;
    EngineError error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = printDocument(m_document, printer, &error, range ? printer.fromPage() : 0,
                                  range ? printer.toPage() : 0);
    QApplication::restoreOverrideCursor();
    if (!ok)
        QMessageBox::critical(this, windowTitle(), error.text());
}

bool PreviewWindow::saveAsPdf(const QString& file)
{
    EngineError error;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool ok = writePdf(m_document, file, &error);
    QApplication::restoreOverrideCursor();
    if (!ok)
        QMessageBox::critical(this, windowTitle(), error.text());
    render(); // the data reader moved on; paint the shown page again from its place
    return ok;
}

QString PreviewWindow::proposedPdfPath() const
{
    QString folder = m_settings.pdfFolder;
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(folder).filePath(m_pdfBaseName + u".pdf"_s);
}

void PreviewWindow::saveAsPdfInteractive()
{
    const QString file =
        QFileDialog::getSaveFileName(this, u"PDF保存"_s, proposedPdfPath(), u"PDF (*.pdf)"_s);
    if (file.isEmpty())
        return;
    m_settings.pdfFolder = QFileInfo(file).absolutePath();
    saveAsPdf(file);
}

} // namespace qelprn::engine
