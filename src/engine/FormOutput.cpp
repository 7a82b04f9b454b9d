#include "engine/FormOutput.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

bool writePdf(FormDocument& document, const QString& file, EngineError* error, const PageProgress& progress,
              bool pdfa)
{
    QPdfWriter writer(file);
    writer.setResolution(int(FormDocument::kUnitsPerInch)); // engine units are device units
    writer.setPageLayout(document.pageLayout());
    writer.setTitle(document.title());
    writer.setCreator(u"qelprn-engine"_s);
    if (pdfa)
        writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    QPainter painter;
    if (!painter.begin(&writer)) {
        *error = {file, 0, u"PDF ファイルを書き込めません"_s};
        return false;
    }
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0)
            writer.newPage();
        if (!document.paintPage(page, painter, error)) {
            painter.end();
            return false;
        }
        if (progress && !progress(page + 1, document.pageCount())) {
            painter.end();
            *error = {file, 0, u"中止しました"_s};
            return false;
        }
    }
    if (!painter.end()) {
        *error = {file, 0, u"PDF ファイルを書き込めません"_s};
        return false;
    }
    if (QFileInfo(file).size() == 0) {
        *error = {file, 0, u"PDF ファイルを書き込めません"_s};
        return false;
    }
    return true;
}

bool writePngs(FormDocument& document, const QString& folder, int dpi, EngineError* error, int maxPages)
{
    if (!QDir().mkpath(folder)) {
        *error = {folder, 0, u"フォルダを作成できません"_s};
        return false;
    }
    const qreal scale = dpi / FormDocument::kUnitsPerInch;
    const QSize size = (document.pageSizeUnits() * scale).toSize();
    const int pages = maxPages < 0 ? document.pageCount() : qMin(maxPages, document.pageCount());
    for (int page = 0; page < pages; ++page) {
        QImage image(size, QImage::Format_RGB32);
        image.setDotsPerMeterX(qRound(dpi / 0.0254));
        image.setDotsPerMeterY(qRound(dpi / 0.0254));
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.scale(scale, scale);
        if (!document.paintPage(page, painter, error))
            return false;
        painter.end();
        const QString file = QDir(folder).filePath(u"page-%1.png"_s.arg(page + 1, 4, 10, QChar(u'0')));
        if (!image.save(file, "PNG")) {
            *error = {file, 0, u"PNG ファイルを書き込めません"_s};
            return false;
        }
    }
    return true;
}

bool printDocument(FormDocument& document, QPrinter& printer, EngineError* error, int fromPage, int toPage)
{
    printer.setFullPage(true);
    printer.setPageLayout(document.pageLayout());
    printer.setDocName(document.title());
    const int first = fromPage > 0 ? fromPage - 1 : 0;
    const int last = toPage > 0 ? qMin(toPage, document.pageCount()) - 1 : document.pageCount() - 1;
    QPainter painter;
    if (!painter.begin(&printer)) {
        *error = {printer.printerName(), 0, u"プリンターに出力できません"_s};
        return false;
    }
    const qreal scale = printer.resolution() / FormDocument::kUnitsPerInch;
    for (int page = first; page <= last; ++page) {
        if (page > first)
            printer.newPage();
        painter.save();
        painter.scale(scale, scale);
        const bool ok = document.paintPage(page, painter, error);
        painter.restore();
        if (!ok) {
            painter.end();
            return false;
        }
    }
    return painter.end();
}

QString printDialogBlocker()
{
#ifdef Q_OS_WIN
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        return u"プリンターがありません。Windows の設定でプリンターを追加してください。"
               u"PDF保存はプリンターがなくても使えます。"_s;
#endif
    return {};
}

} // namespace qelprn::engine
