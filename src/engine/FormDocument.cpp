#include "engine/FormDocument.h"

#include "app/Paths.h"
#include "engine/BundledFonts.h"
#include "engine/LayoutReader.h"
#include "engine/ValueFormat.h"

#include <QDir>
#include <QFileInfo>
#include <QPaintEngine>
#include <algorithm>
#include <cmath>
#include <span>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

QFont makeFont(const LayoutFont& f)
{
    QFont font(f.family);
    // Sizes are in engine units (1/720 inch), so a 9 pt font is 90 units on every device.
    font.setPixelSize(qMax(1, qRound(f.size * 10)));
    font.setBold(f.bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferOutline);
    return font;
}

QImage withTransparentWhite(QImage image)
{
    image = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (QRgb& c : std::span(reinterpret_cast<QRgb*>(image.scanLine(y)), size_t(image.width()))) {
            if (qRed(c) > 235 && qGreen(c) > 235 && qBlue(c) > 235)
                c = qRgba(255, 255, 255, 0);
        }
    }
    return image;
}

// Marks the points between from and to that lie farther than tolerance from the line through the
// points kept around them (Douglas-Peucker): the stairs of a pixel outline become slopes.
void keepFarthest(const QPolygonF& points, qsizetype from, qsizetype to, qreal tolerance, QList<bool>& keep)
{
    const QLineF chord(points[from], points[to]);
    const qreal length = chord.length();
    qreal farthest = tolerance;
    qsizetype at = -1;
    for (qsizetype i = from + 1; i < to; ++i) {
        const QPointF d = points[i] - chord.p1();
        const qreal distance = length > 0 ? std::abs(chord.dx() * d.y() - chord.dy() * d.x()) / length
                                          : std::hypot(d.x(), d.y());
        if (distance > farthest) {
            farthest = distance;
            at = i;
        }
    }
    if (at < 0)
        return;
    keep[at] = true;
    keepFarthest(points, from, at, tolerance, keep);
    keepFarthest(points, at, to, tolerance, keep);
}

// The outline of an image's pixels that are not fully transparent: one rectangle per run of such
// pixels in a row, merged, then thinned to 1/160 of the image's side (a seal spans some 25 mm, so
// about 0.15 mm), which keeps the clip to some 2 KB on each page that shows it, at any resolution.
QPainterPath inkOutline(const QImage& image)
{
    QPainterPath runs;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width();) {
            if (qAlpha(line[x]) == 0) {
                ++x;
                continue;
            }
            const int start = x;
            while (x < image.width() && qAlpha(line[x]) != 0)
                ++x;
            runs.addRect(start, y, x - start, 1);
        }
    }
    const qreal tolerance = qMax(1.5, qMax(image.width(), image.height()) / 160.0);
    QPainterPath outline;
    for (const QPolygonF& polygon : runs.simplified().toSubpathPolygons()) {
        QList<bool> keep(polygon.size(), false);
        keep.first() = keep.last() = true;
        keepFarthest(polygon, 0, polygon.size() - 1, tolerance, keep);
        QPolygonF kept;
        for (qsizetype i = 0; i < polygon.size(); ++i) {
            if (keep[i])
                kept.append(polygon[i]);
        }
        outline.addPolygon(kept);
        outline.closeSubpath();
    }
    return outline;
}

} // namespace

FormDocument::FormDocument() = default;
FormDocument::~FormDocument() = default;

bool FormDocument::open(const EngineJob& job, EngineError* error)
{
    EngineError ignored;
    EngineError* err = error ? error : &ignored;
    if (!readLayout(job.layoutPath, m_layout, err)) {
        if (err->line == 0 && !QFileInfo::exists(job.layoutPath))
            *err = {job.commandFile, job.layoutLine,
                    u"レイアウトファイル %1 がありません"_s.arg(job.layoutPath)};
        return false;
    }
    if (!applyItemValues(m_layout, job.items, job.commandFile, err))
        return false;

    const DataSource* source = nullptr;
    for (const DataSource& d : job.data) {
        if (m_layout.dataName.isEmpty() || d.name == m_layout.dataName) {
            source = &d;
            break;
        }
    }
    if (!source) {
        *err = {job.commandFile, 0,
                u"レイアウト %1 が使うデータ「%2」の SetDataText がありません"_s.arg(job.layoutPath,
                                                                                     m_layout.dataName)};
        return false;
    }
    if (!QFileInfo::exists(source->path)) {
        *err = {job.commandFile, source->line, u"データファイル %1 がありません"_s.arg(source->path)};
        return false;
    }
    if (!m_data.open(source->path, source->noTitle, err) || !bindLayout(m_layout, m_data, err))
        return false;

    m_title = job.title.isEmpty() ? m_layout.name : job.title;
    m_paper = m_layout.pageSize;
    m_scale = job.zoom == 2 ? 1.0 : job.zoom / 100.0;
    if (!job.paper.isEmpty()) {
        const QPageSize::PageSizeId id = job.paper == u"A5"_s   ? QPageSize::A5
                                         : job.paper == u"B5"_s ? QPageSize::JisB5
                                                                : QPageSize::A4;
        m_paper = QPageSize(id);
        // The form is scaled to the other paper as a whole, keeping its proportions.
        QSizeF from = m_layout.paperSizeMm();
        QSizeF to = m_paper.size(QPageSize::Millimeter);
        if (m_layout.orientation == QPageLayout::Landscape)
            to.transpose();
        m_scale *= qMin(to.width() / from.width(), to.height() / from.height());
    }
    m_offset =
        QPointF(std::round(job.offsetX * kUnitsPerMm / 10), std::round(job.offsetY * kUnitsPerMm / 10));

    QList<QFont> fonts;
    for (const LayoutFont& f : m_layout.fonts) {
        // Another font standing in would change every line break and total on the form.
        if (!fontFamilyAvailable(f.family)) {
            *err = {
                job.layoutPath, 0,
                u"フォント「%1」（%2）が見つかりません。プログラムの fonts フォルダーにフォントファイルを置くか、フォントをインストールしてください"_s
                    .arg(f.family, f.name)};
            return false;
        }
        fonts.append(makeFont(f));
    }
    m_text = std::make_unique<TextCache>(fonts);
    if (!plan(job, err))
        return false;
    recordBackdrop();
    return true;
}

bool FormDocument::plan(const EngineJob& job, EngineError* error)
{
    const int rows = m_layout.detail.rows;
    const int sumCount = int(m_layout.sumIndexes.size());
    QStringList fields;
    QStringList key;
    QStringList lastKey;
    m_groups.clear();
    m_sums.clear();
    m_pageCount = 0;
    auto closeGroup = [&] {
        Group& g = m_groups.last();
        g.pageCount = int((g.startSlot + g.rowCount + rows - 1) / rows);
        g.firstPage = m_pageCount;
        m_pageCount += g.pageCount;
    };
    while (true) {
        const qint64 offset = m_data.position();
        const qint64 index = m_data.nextRowIndex();
        if (!m_data.next(fields, error)) {
            if (error && error->isSet())
                return false;
            break;
        }
        key.clear();
        for (int i : std::as_const(m_layout.groupKeyIndexes))
            key.append(fields[i]);
        if (m_groups.isEmpty() || key != lastKey) {
            if (!m_groups.isEmpty())
                closeGroup();
            Group g;
            g.offset = offset;
            g.firstRow = index;
            // SectionRepeatStart: the first page continues a sheet whose first slots are used.
            g.startSlot = m_groups.isEmpty() && job.repeatStart > 1 ? qMin(job.repeatStart - 1, rows - 1) : 0;
            m_groups.append(g);
            m_sums.resize(m_sums.size() + sumCount, 0.0);
            lastKey = key;
        }
        ++m_groups.last().rowCount;
        double* sums = m_sums.data() + (m_groups.size() - 1) * sumCount;
        for (int s = 0; s < sumCount; ++s)
            sums[s] += roundYen(fields[m_layout.sumIndexes[s]].toDouble(), m_layout.rounding);
    }
    if (m_groups.isEmpty()) {
        if (error)
            *error = {m_data.path(), 0, u"印刷するデータ行がありません"_s};
        return false;
    }
    closeGroup();
    return true;
}

QPageLayout FormDocument::pageLayout() const
{
    return QPageLayout(m_paper, m_layout.orientation, QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
}

QSizeF FormDocument::pageSizeUnits() const
{
    QSizeF mm = m_paper.size(QPageSize::Millimeter);
    if (m_layout.orientation == QPageLayout::Landscape)
        mm.transpose();
    return mm * kUnitsPerMm;
}

std::pair<int, int> FormDocument::groupPageNumber(int page) const
{
    auto it = std::upper_bound(m_groups.cbegin(), m_groups.cend(), page,
                               [](int p, const Group& g) { return p < g.firstPage; });
    const Group& g = *(it - 1);
    return {page - g.firstPage + 1, g.pageCount};
}

QRectF FormDocument::toUnits(const QRectF& mm, qreal topMm) const
{
    // Whole units (1/720 inch): invisible on paper, and a PDF writes them as short integers.
    const qreal x = std::round(mm.x() * kUnitsPerMm);
    const qreal y = std::round((mm.y() + topMm) * kUnitsPerMm);
    return QRectF(x, y, std::round((mm.x() + mm.width()) * kUnitsPerMm) - x,
                  std::round((mm.y() + topMm + mm.height()) * kUnitsPerMm) - y);
}

QPen FormDocument::shapePen(const LayoutItem& item)
{
    if (item.kind == LayoutItem::Kind::Box && item.lineWidth <= 0)
        return QPen(Qt::NoPen);
    QPen pen(item.color, qMax(1.0, std::round(item.lineWidth * kUnitsPerMm)));
    pen.setCapStyle(Qt::SquareCap);
    pen.setJoinStyle(Qt::MiterJoin);
    if (item.dashed)
        pen.setStyle(Qt::DashLine);
    return pen;
}

void FormDocument::drawShape(QPainter& painter, const LayoutItem& item, qreal top) const
{
    painter.setPen(shapePen(item));
    const QRectF r = toUnits(item.rect, top);
    if (item.kind == LayoutItem::Kind::Line) {
        painter.drawLine(r.topLeft(), r.bottomRight());
    } else if (item.kind == LayoutItem::Kind::Box) {
        painter.setBrush(item.fill.isValid() ? QBrush(item.fill) : QBrush(Qt::NoBrush));
        painter.drawRect(r);
        painter.setBrush(Qt::NoBrush);
    }
}

void FormDocument::recordBackdrop()
{
    // Frames, rules and fixed texts are the same on every page: they are recorded once per layout
    // (the shapes as runs sharing a pen, the texts laid out once in the text cache) and every page
    // replays them.
    auto record = [this](const QList<LayoutItem>& items, const QList<qreal>& tops, Recorded& out) {
        for (qreal top : tops) {
            for (const LayoutItem& item : items) {
                if (!item.isStatic())
                    continue;
                if (item.kind == LayoutItem::Kind::Text) {
                    out.texts.append(&item);
                    out.tops.append(top);
                    continue;
                }
                const QPen pen = shapePen(item);
                const QBrush brush = item.kind == LayoutItem::Kind::Box && item.fill.isValid()
                                         ? QBrush(item.fill)
                                         : QBrush(Qt::NoBrush);
                if (out.shapes.isEmpty() || out.shapes.last().pen != pen || out.shapes.last().brush != brush)
                    out.shapes.append({pen, brush, {}, {}});
                const QRectF r = toUnits(item.rect, top);
                if (item.kind == LayoutItem::Kind::Line)
                    out.shapes.last().lines.append(QLineF(r.topLeft(), r.bottomRight()));
                else
                    out.shapes.last().rects.append(r);
            }
        }
    };
    m_bandBackdrops.clear();
    m_bandBackdrops.resize(m_layout.bands.size());
    for (qsizetype i = 0; i < m_layout.bands.size(); ++i)
        record(m_layout.bands[i].items, {m_layout.bands[i].top}, m_bandBackdrops[i]);
    const DetailBand& d = m_layout.detail;
    record(d.items, {0.0}, m_detailBackdrop);
    record(d.frame, {0.0}, m_rowFrame);
    QList<qreal> tops;
    for (int slot = 0; slot < d.rows; ++slot)
        tops.append(d.top + slot * d.rowHeight);
    record(d.frame, tops, m_allFrames);
}

void FormDocument::replay(QPainter& painter, const Recorded& recorded, QPointF offset)
{
    offset = QPointF(std::round(offset.x()), std::round(offset.y()));
    if (!recorded.shapes.isEmpty()) {
        painter.translate(offset);
        for (const ShapeRun& run : recorded.shapes) {
            painter.setPen(run.pen);
            painter.setBrush(run.brush);
            if (!run.rects.isEmpty())
                painter.drawRects(run.rects.constData(), int(run.rects.size()));
            if (!run.lines.isEmpty())
                painter.drawLines(run.lines.constData(), int(run.lines.size()));
        }
        painter.setBrush(Qt::NoBrush);
        painter.translate(-offset);
    }
    for (qsizetype i = 0; i < recorded.texts.size(); ++i) {
        const LayoutItem& item = *recorded.texts[i];
        const QRectF box = toUnits(item.rect, recorded.tops[i]).translated(offset);
        m_text->draw(painter, box, item.font, item.text, item.align, item.color, item.wrap, item.shrink);
    }
}

bool FormDocument::readRows(const Group& group, qint64 first, qint64 count, EngineError* error)
{
    // Pages are usually painted in order, so the reader just goes on; otherwise it goes back to
    // the start of the group.
    const qint64 wanted = group.firstRow + first;
    if (m_data.nextRowIndex() > wanted || m_data.nextRowIndex() < group.firstRow) {
        if (!m_data.seek(group.offset, group.firstRow)) {
            if (error)
                *error = {m_data.path(), 0, u"データファイルを読み直せません"_s};
            return false;
        }
    }
    QStringList skip;
    while (m_data.nextRowIndex() < wanted) {
        if (!m_data.next(skip, error))
            return false;
    }
    m_rows.resize(count);
    for (qint64 i = 0; i < count; ++i) {
        if (!m_data.next(m_rows[i], error)) {
            if (error && !error->isSet())
                *error = {m_data.path(), 0, u"データファイルが印刷中に変わりました"_s};
            return false;
        }
    }
    return true;
}

bool FormDocument::visible(const LayoutItem& item, const Context& context) const
{
    if (item.when.index < 0)
        return true;
    if (!context.row)
        return false;
    return (context.row->at(item.when.index) == item.when.value) != item.when.negate;
}

QString FormDocument::itemText(const LayoutItem& item, const Context& context) const
{
    if (item.hasContinued && context.page < context.pages)
        return item.continued;
    if (item.kind == LayoutItem::Kind::Text) {
        QString text = item.text;
        text.replace(u"{page}"_s, QString::number(context.page));
        text.replace(u"{pages}"_s, QString::number(context.pages));
        text.replace(u"{sheet}"_s, QString::number(context.sheet));
        text.replace(u"{sheets}"_s, QString::number(m_pageCount));
        return text;
    }
    QString raw;
    if (item.hasSetValue) {
        raw = item.setValue;
    } else if (item.source == LayoutItem::Source::Column) {
        raw = context.row ? context.row->at(item.indexes[0]) : QString();
        if (item.format == u"number"_s || item.format == u"yen"_s)
            raw = roundYenText(raw, m_layout.rounding);
    } else if (item.source == LayoutItem::Source::Sum) {
        // The sums were taken over values already in whole yen, so a printed total is the sum of
        // the printed lines.
        const qsizetype stride = m_layout.sumIndexes.size();
        double total = 0;
        for (int slot : item.indexes)
            total += m_sums[context.groupIndex * stride + slot];
        raw = QString::number(total, 'f', 6);
    } else if (item.source == LayoutItem::Source::RowNumber) {
        raw = QString::number(context.rowNumber);
    } else if (item.source == LayoutItem::Source::Columns) {
        double total = 0;
        for (int i : item.indexes)
            total += context.row ? roundYen(context.row->at(i).toDouble(), m_layout.rounding) : 0;
        raw = QString::number(total, 'f', 6);
    }
    const QString value = formatValue(raw, item.format, item.blankZero);
    return value.isEmpty() ? QString() : item.prefix + value + item.suffix;
}

QRectF FormDocument::imageBox(const LayoutItem& item, qreal top, const Context& context,
                              const QList<LayoutItem>& band)
{
    QRectF box = toUnits(item.rect, top);
    if (item.followIndex < 0)
        return box;
    // Half the image lies over the end of the followed text, never left of that text's box and
    // never right of the layout's place for it.
    const LayoutItem& text = band[item.followIndex];
    const QRectF textBox = toUnits(text.rect, top);
    const qreal width = qMin(m_text->width(text.font, itemText(text, context)), textBox.width());
    qreal end = textBox.left() + width;
    if (text.align & Qt::AlignRight)
        end = textBox.right();
    else if (text.align & Qt::AlignHCenter)
        end = textBox.center().x() + width / 2;
    const qreal left =
        std::clamp(std::round(end - box.width() / 2), qMin(textBox.left(), box.left()), box.left());
    box.moveLeft(left);
    return box;
}

void FormDocument::drawImage(QPainter& painter, const LayoutItem& item, QRectF box, const QString& written)
{
    if (written.trimmed().isEmpty())
        return;
    QString path = toLocalPath(written.trimmed());
    if (QFileInfo(path).isRelative())
        path = QFileInfo(m_data.path()).dir().filePath(path);
    auto it = m_images.find(path);
    if (it == m_images.end()) {
        if (m_images.size() > 32)
            m_images.clear();
        LoadedImage loaded;
        loaded.image = QImage(path); // a missing or unreadable file stays null: nothing is drawn
        if (!loaded.image.isNull() && item.transparentWhite) {
            loaded.image = withTransparentWhite(loaded.image);
            loaded.opaque = loaded.image.convertToFormat(QImage::Format_RGB32);
            loaded.ink = inkOutline(loaded.image);
        }
        it = m_images.insert(path, loaded);
    }
    const QImage& image = it->image;
    if (image.isNull())
        return;
    const QSizeF size = QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatio);
    const QRectF target(box.center() - QPointF(size.width() / 2, size.height() / 2), size);
    if (item.transparentWhite && painter.paintEngine()->type() == QPaintEngine::Pdf) {
        // An archival PDF may hold no transparency (Qt's writer would lay the image on white and
        // hide what lies below), so a PDF gets the image on white, clipped to its ink: archival or
        // not, the pages look the same.
        painter.save();
        QTransform toTarget = QTransform::fromTranslate(target.x(), target.y());
        toTarget.scale(target.width() / image.width(), target.height() / image.height());
        // The clip goes in whole device units (1/720 inch): their short figures keep the page small.
        QPainterPath clip = (toTarget * painter.deviceTransform()).map(it->ink);
        for (int i = 0; i < clip.elementCount(); ++i)
            clip.setElementPositionAt(i, std::round(clip.elementAt(i).x), std::round(clip.elementAt(i).y));
        const QTransform world = painter.worldTransform();
        painter.resetTransform();
        painter.setClipPath(clip, Qt::IntersectClip);
        painter.setWorldTransform(world);
        painter.drawImage(target, it->opaque);
        painter.restore();
        return;
    }
    painter.drawImage(target, image);
}

void FormDocument::drawItem(QPainter& painter, const LayoutItem& item, qreal top, const Context& context,
                            const QList<LayoutItem>& band)
{
    if (!visible(item, context))
        return;
    switch (item.kind) {
    case LayoutItem::Kind::Line:
    case LayoutItem::Kind::Box:
        drawShape(painter, item, top);
        return;
    case LayoutItem::Kind::Image:
        if (context.row) {
            m_text->flush(painter); // the image lies over the texts drawn so far (the seal)
            drawImage(painter, item, imageBox(item, top, context, band), context.row->at(item.indexes[0]));
        }
        return;
    case LayoutItem::Kind::Text:
    case LayoutItem::Kind::Field:
        m_text->draw(painter, toUnits(item.rect, top), item.font, itemText(item, context), item.align,
                     item.color, item.wrap, item.shrink);
        return;
    }
}

bool FormDocument::paintPage(int page, QPainter& painter, EngineError* error)
{
    if (page < 0 || page >= m_pageCount)
        return false;
    auto it = std::upper_bound(m_groups.cbegin(), m_groups.cend(), page,
                               [](int p, const Group& g) { return p < g.firstPage; });
    const int groupIndex = int(it - m_groups.cbegin()) - 1;
    const Group& group = m_groups[groupIndex];
    const int k = page - group.firstPage;
    const DetailBand& d = m_layout.detail;
    const qint64 firstRow = qMax<qint64>(0, qint64(k) * d.rows - group.startSlot);
    const qint64 lastRow = qMin<qint64>(group.rowCount, qint64(k + 1) * d.rows - group.startSlot);
    if (!readRows(group, firstRow, lastRow - firstRow, error))
        return false;

    painter.save();
    painter.translate(m_offset);
    painter.scale(m_scale, m_scale);
    painter.translate(std::round(m_layout.margins.left() * kUnitsPerMm),
                      std::round(m_layout.margins.top() * kUnitsPerMm));

    Context context;
    context.row = m_rows.isEmpty() ? nullptr : &m_rows.first();
    context.group = &group;
    context.groupIndex = groupIndex;
    context.page = k + 1;
    context.pages = group.pageCount;
    context.sheet = page + 1;
    context.rowNumber = firstRow + 1;

    for (qsizetype b = 0; b < m_layout.bands.size(); ++b) {
        const LayoutBand& band = m_layout.bands[b];
        if ((band.print == LayoutBand::Print::FirstPage && k != 0) ||
            (band.print == LayoutBand::Print::LastPage && k != group.pageCount - 1))
            continue;
        replay(painter, m_bandBackdrops[b], QPointF());
        for (const LayoutItem& item : band.items) {
            if (!item.isStatic())
                drawItem(painter, item, band.top, context, band.items);
        }
    }

    // Frames: one replay of the whole table when every slot is framed (the usual page).
    QList<bool> framed(d.rows);
    bool all = true;
    for (int slot = 0; slot < d.rows; ++slot) {
        const qint64 r = qint64(k) * d.rows + slot - group.startSlot - firstRow;
        if (r >= 0 && r < m_rows.size())
            framed[slot] = d.frameIndex < 0 || m_rows[r].at(d.frameIndex) == u"1"_s;
        else
            framed[slot] = d.frameEmptySlots;
        all = all && framed[slot];
    }
    if (all) {
        replay(painter, m_allFrames, QPointF());
    } else {
        for (int slot = 0; slot < d.rows; ++slot) {
            if (framed[slot])
                replay(painter, m_rowFrame, QPointF(0, (d.top + slot * d.rowHeight) * kUnitsPerMm));
        }
    }
    for (int slot = 0; slot < d.rows; ++slot) {
        const qint64 r = qint64(k) * d.rows + slot - group.startSlot - firstRow;
        if (r < 0 || r >= m_rows.size())
            continue;
        const qreal top = d.top + slot * d.rowHeight;
        replay(painter, m_detailBackdrop, QPointF(0, top * kUnitsPerMm));
        context.row = &m_rows[r];
        context.rowNumber = firstRow + r + 1;
        for (const LayoutItem& item : d.items) {
            if (!item.isStatic())
                drawItem(painter, item, top, context, d.items);
        }
    }
    m_text->flush(painter);
    painter.restore();
    return true;
}

} // namespace qelprn::engine
