#pragma once

#include "app/AddresseeFileName.h"
#include "engine/CsvFile.h"
#include "engine/EngineError.h"
#include "engine/EngineJob.h"
#include "engine/Layout.h"
#include "engine/TextCache.h"

#include <QHash>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPainterPath>
#include <memory>

namespace qelprn::engine {

// One print job: a layout filled from its data file, split into pages. Rows are grouped by the
// layout's group key (a new page when the key changes), laid into the detail band's fixed slots,
// and page numbers restart with every group. Only the plan (a few numbers per group) stays in
// memory; the rows of a page are read back from the data file when the page is painted.
//
// paintPage() is the one painting path for the preview, the printer, PDF and PNG. It paints in
// engine units (1/720 inch) from the paper's top-left corner; the caller scales the painter to its
// device (identity for a 720 dpi PDF writer).
class FormDocument
{
public:
    static constexpr qreal kUnitsPerInch = 720;
    static constexpr qreal kUnitsPerMm = kUnitsPerInch / 25.4;

    FormDocument();
    ~FormDocument();
    FormDocument(const FormDocument&) = delete;
    FormDocument& operator=(const FormDocument&) = delete;

    // Reads the layout and the data of the job and plans the pages; false with a message on any
    // problem (missing file, unknown column, malformed line, no data).
    bool open(const EngineJob& job, EngineError* error);

    QString title() const { return m_title; }
    int pageCount() const { return m_pageCount; }
    // The paper of every page (the layout's, or the command file's PrintPaper) at zero margins.
    QPageLayout pageLayout() const;
    QSizeF pageSizeUnits() const;
    // Page numbers within the page's group: {page, pages}.
    std::pair<int, int> groupPageNumber(int page) const;

    // Paints page (0-based). False when the data file cannot be read back (it changed on disk).
    bool paintPage(int page, QPainter& painter, EngineError* error = nullptr);

    // The groups (one per addressee) and their pages: {first page (0-based), page count}.
    QString formName() const { return m_layout.name; }
    int groupCount() const { return int(m_groups.size()); }
    std::pair<int, int> groupPages(int group) const;
    // The addressee of a group (FormDocumentAddressee.cpp): ID and name from its first row, the
    // amount as the layout's amount item prints it on the group's last page. False when the data
    // file cannot be read back.
    bool addressee(int group, AddresseeKey& key, EngineError* error = nullptr);

private:
    struct Group
    {
        qint64 offset = 0;   // byte offset of the group's first row
        qint64 firstRow = 0; // its row index
        qint64 rowCount = 0;
        int firstPage = 0;
        int pageCount = 0;
        int startSlot = 0; // the detail slot of its first row
    };
    struct Context
    {
        const QStringList* row = nullptr;
        const Group* group = nullptr;
        int groupIndex = 0;
        int page = 0; // 1-based within the group
        int pages = 0;
        int sheet = 0;        // 1-based over the job
        qint64 rowNumber = 0; // 1-based within the group
    };

    bool plan(const EngineJob& job, EngineError* error);
    void recordBackdrop();
    bool readRows(const Group& group, qint64 first, qint64 count, EngineError* error);
    void drawShape(QPainter& painter, const LayoutItem& item, qreal top) const;
    static QPen shapePen(const LayoutItem& item);
    void drawItem(QPainter& painter, const LayoutItem& item, qreal top, const Context& context,
                  const QList<LayoutItem>& band);
    void drawImage(QPainter& painter, const LayoutItem& item, QRectF box, const QString& path);
    QRectF imageBox(const LayoutItem& item, qreal top, const Context& context, const QList<LayoutItem>& band);
    QString itemText(const LayoutItem& item, const Context& context) const;
    bool visible(const LayoutItem& item, const Context& context) const;
    QRectF toUnits(const QRectF& mm, qreal topMm) const;

    // The recorded backdrop of a band: its frames and rules as runs of lines and boxes that share a
    // pen and brush (in drawing order), its fixed texts as (item, top) pairs drawn from the text
    // cache.
    struct ShapeRun
    {
        QPen pen;
        QBrush brush;
        QList<QLineF> lines;
        QList<QRectF> rects;
    };
    struct Recorded
    {
        QList<ShapeRun> shapes;
        QList<const LayoutItem*> texts;
        QList<qreal> tops;
    };
    void replay(QPainter& painter, const Recorded& recorded, QPointF offset);

    Layout m_layout;
    CsvFile m_data;
    QString m_title;
    QList<Group> m_groups;
    QList<double> m_sums; // per group, one value per sum column
    int m_pageCount = 0;
    QPageSize m_paper;
    qreal m_scale = 1; // zoom and fitting to another paper
    QPointF m_offset;  // PrintOffsetX/Y in units
    std::unique_ptr<TextCache> m_text;
    QList<Recorded> m_bandBackdrops; // one per layout band
    Recorded m_detailBackdrop;       // fixed parts of one row slot
    Recorded m_rowFrame;             // frame of one slot
    Recorded m_allFrames;            // frames of every slot of a page
    QList<QStringList> m_rows;       // the rows of the page being painted
    // A loaded image (the seal); a null image = no file. With its white made transparent, opaque is
    // the same on white and ink outlines the pixels left, in the image's pixels.
    struct LoadedImage
    {
        QImage image;
        QImage opaque;
        QPainterPath ink;
    };
    QHash<QString, LoadedImage> m_images; // by path

    // The addressee's amount item, found on first use.
    const LayoutItem* m_amountItem = nullptr;
    bool m_amountInDetail = false;
    bool m_amountLooked = false;
};

} // namespace qelprn::engine
