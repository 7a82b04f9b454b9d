#pragma once

#include "engine/FormDocument.h"
#include "engine/PreviewWindowSettings.h"

#include <QImage>
#include <QMainWindow>

class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;
class QAction;

namespace qelprn::engine {

// Shows one page of the document at a time: scroll with the wheel, page with Page Up / Page Down
// (Home / End for the first and last page), zoom to the page width, the whole page or a
// percentage (Ctrl++ / Ctrl+-), print through the print dialog (Ctrl+P) or save as PDF (Ctrl+S).
// The window title is the job's title. The first paint is at the chosen zoom; the window opens
// inside the screen's free area, and the zoom, the window's place and the PDF folder are kept for
// the next preview (PreviewWindowSettings).
class PreviewWindow : public QMainWindow
{
    Q_OBJECT

public:
    enum class Fit { Width, Page, Percent };

    // settings: what earlier previews left (PreviewWindowSettings::load() for the real program).
    explicit PreviewWindow(FormDocument& document, const PreviewWindowSettings& settings = {},
                           QWidget* parent = nullptr);

    int currentPage() const { return m_page; } // 0-based
    void setPage(int page);
    void setZoom(Fit fit, int percent = 100);
    qreal scale() const { return m_scale; } // device pixels per engine unit
    QString pageText() const;
    QImage pageImage() const { return m_image; }
    bool failed() const { return m_failed; }
    // The zoom, geometry and PDF folder to keep.
    PreviewWindowSettings settings() const;
    // Saves settings() when the window closes (the real program; tests leave it off).
    void setRemembered(bool remember) { m_remember = remember; }
    // Places the window inside available (a screen's free area), at the remembered or default size.
    void placeOn(const QRect& available);
    // The file name the PDF dialog proposes, without ".pdf" (default: the title).
    void setPdfBaseName(const QString& name) { m_pdfBaseName = name; }
    QString proposedPdfPath() const;

    // Writes the whole document to file; shows a message box on failure.
    bool saveAsPdf(const QString& file);

public slots:
    void print();
    void saveAsPdfInteractive();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void render();
    void updateControls();
    void zoomStep(int direction);

    FormDocument& m_document;
    int m_page = 0;
    Fit m_fit = Fit::Width;
    int m_percent = 100;
    qreal m_scale = 1;
    bool m_failed = false;
    bool m_remember = false;
    PreviewWindowSettings m_settings;
    QString m_pdfBaseName;
    QImage m_image;
    QScrollArea* m_scroll = nullptr;
    QLabel* m_view = nullptr;
    QSpinBox* m_pageBox = nullptr;
    QLabel* m_countLabel = nullptr;
    QComboBox* m_zoomBox = nullptr;
    QAction* m_first = nullptr;
    QAction* m_prev = nullptr;
    QAction* m_next = nullptr;
    QAction* m_last = nullptr;
};

} // namespace qelprn::engine
