#include "engine/TextCache.h"

#include "engine/TextLayerFont.h"

#include <QTextLayout>
#include <cmath>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

TextCache::TextCache(QList<QFont> fonts, int maxEntries) : m_fonts(std::move(fonts)), m_cache(maxEntries)
{
    for (const QFont& font : m_fonts) {
        FontGlyphs g;
        g.original = QRawFont::fromFont(font);
        g.raw = textLayerFont(g.original);
        g.ascent = g.raw.ascent();
        g.height = g.raw.ascent() + g.raw.descent();
        m_glyphs.append(g);
    }
}

bool TextCache::simpleLine(int font, QStringView text, qreal& width)
{
    FontGlyphs& f = m_glyphs[font];
    if (!f.raw.isValid())
        return false;
    m_line.resize(0);
    width = 0;
    for (QChar ch : text) {
        const char16_t c = ch.unicode();
        // Scripts that need shaping (right-to-left, Indic, combining marks) and characters outside
        // the basic plane take the full layout.
        if ((c >= 0x0300 && c < 0x2000) || ch.isSurrogate() || ch.isMark())
            return false;
        auto it = f.glyphs.find(c);
        if (it == f.glyphs.end()) {
            Glyph g;
            quint32 index = 0;
            int count = 1;
            if (!f.raw.glyphIndexesForChars(&ch, 1, &index, &count) || count != 1)
                return false;
            // A code point the text-layer copy leaves out is drawn with the original font.
            g.original = index == 0 && f.raw != f.original;
            const QRawFont& raw = g.original ? f.original : f.raw;
            // A character the original lacks too gives glyph 0 there: the full layout takes it.
            if (g.original)
                raw.glyphIndexesForChars(&ch, 1, &index, &count);
            g.index = index;
            if (index != 0) {
                QPointF advance;
                raw.advancesForGlyphIndexes(&index, &advance, 1);
                g.advance = advance.x();
            }
            it = f.glyphs.insert(c, g);
        }
        if (it->index == 0)
            return false; // not in this font: the full layout finds a fallback font
        m_line.append(*it);
        width += it->advance;
    }
    return true;
}

TextCache::Pending& TextCache::pendingFor(const QRawFont& font, QRgb color)
{
    for (Pending& p : m_pending) {
        if (p.color == color && p.font == font)
            return p;
    }
    m_pending.append({font, color, {}, {}});
    return m_pending.last();
}

const TextCache::Block& TextCache::block(int font, const QString& text, qreal wrapWidth)
{
    Key key{font, wrapWidth > 0 ? qRound(wrapWidth) : 0, text};
    if (const Block* cached = m_cache.object(key))
        return *cached;

    QTextLayout layout(text, m_fonts.value(font));
    QTextOption option;
    option.setWrapMode(wrapWidth > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    layout.setTextOption(option);
    auto block = std::make_unique<Block>();
    qreal y = 0;
    qreal width = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(wrapWidth > 0 ? wrapWidth : 1e7);
        line.setPosition(QPointF(0, y));
        y += line.height();
        width = qMax(width, line.naturalTextWidth());
    }
    layout.endLayout();
    block->runs = layout.glyphRuns();
    useTextLayerFont(font, text, block->runs);
    block->size = QSizeF(width, y);
    const QList<QGlyphRun> runs = block->runs;
    Block* raw = block.get();
    if (m_cache.insert(key, block.release())) // the cache deletes a block it cannot hold
        return *raw;
    m_uncached = {runs, QSizeF(width, y)};
    return m_uncached;
}

void TextCache::useTextLayerFont(int font, const QString& text, QList<QGlyphRun>& runs) const
{
    // Runs in the layout's own font take its text-layer copy (same glyphs). A text holding a code
    // point the copy leaves out (a radical) keeps the original font, which names it.
    if (font < 0 || font >= m_glyphs.size() || m_glyphs[font].raw == m_glyphs[font].original)
        return;
    const FontGlyphs& f = m_glyphs[font];
    for (QChar ch : text) {
        if (!f.raw.supportsCharacter(ch) && f.original.supportsCharacter(ch))
            return;
    }
    for (QGlyphRun& run : runs) {
        const QRawFont used = run.rawFont();
        if (used.familyName() != f.original.familyName() || used.styleName() != f.original.styleName())
            continue;
        QRawFont copy = f.raw;
        if (used.pixelSize() != copy.pixelSize())
            copy.setPixelSize(used.pixelSize());
        run.setRawFont(copy);
    }
}

qreal TextCache::width(int font, const QString& text)
{
    qreal w = 0;
    if (font >= 0 && font < m_glyphs.size() && simpleLine(font, text, w))
        return w;
    return text.isEmpty() ? 0 : block(font, text, 0).size.width();
}

void TextCache::draw(QPainter& painter, const QRectF& box, int font, const QString& text, Qt::Alignment align,
                     const QColor& color, bool wrap, bool shrink)
{
    if (text.isEmpty())
        return;
    qreal width = 0;
    bool simple = !wrap && font >= 0 && font < m_glyphs.size() && simpleLine(font, text, width);
    // A line squeezed into its box takes the full layout, which narrows the glyphs themselves:
    // moving full-width glyphs closer would overlap them and run the last one past the box.
    if (simple && shrink && width > box.width())
        simple = false;
    const Block* b = simple ? nullptr : &block(font, text, wrap ? box.width() : 0);
    const qreal height = simple ? m_glyphs[font].height : b->size.height();
    if (!simple)
        width = b->size.width();
    qreal sx = 1;
    if (!wrap && shrink && width > box.width() && width > 0) {
        sx = box.width() / width;
        width = box.width();
    }
    qreal x = box.left();
    if (align & Qt::AlignHCenter)
        x += (box.width() - width) / 2;
    else if (align & Qt::AlignRight)
        x = box.right() - width;
    qreal y = box.top();
    if (align & Qt::AlignVCenter)
        y += (box.height() - height) / 2;
    else if (align & Qt::AlignBottom)
        y = box.bottom() - height;

    if (simple) {
        const FontGlyphs& f = m_glyphs[font];
        const qreal baseline = std::round(y + f.ascent);
        qreal pen = 0;
        for (const Glyph& g : std::as_const(m_line)) {
            Pending& pending = pendingFor(g.original ? f.original : f.raw, color.rgba());
            pending.glyphs.append(g.index);
            pending.positions.append(QPointF(std::round(x + pen * sx), baseline));
            pen += g.advance;
        }
        return;
    }
    if (sx != 1) {
        painter.save();
        painter.setPen(color);
        painter.translate(x, y);
        painter.scale(sx, 1);
        for (const QGlyphRun& run : b->runs)
            painter.drawGlyphRun(QPointF(0, 0), run);
        painter.restore();
        return;
    }
    const QRgb rgb = color.rgba();
    for (const QGlyphRun& run : b->runs) {
        Pending& pending = pendingFor(run.rawFont(), rgb);
        pending.glyphs.append(run.glyphIndexes());
        for (const QPointF& p : run.positions())
            pending.positions.append(QPointF(std::round(x + p.x()), std::round(y + p.y())));
    }
}

void TextCache::flush(QPainter& painter)
{
    for (Pending& p : m_pending) {
        if (p.glyphs.isEmpty())
            continue;
        QGlyphRun run;
        run.setRawFont(p.font);
        run.setGlyphIndexes(p.glyphs);
        run.setPositions(p.positions);
        painter.setPen(QColor::fromRgba(p.color));
        painter.drawGlyphRun(QPointF(0, 0), run);
        // The lists keep their capacity for the next page.
        p.glyphs.clear();
        p.positions.clear();
    }
}

} // namespace qelprn::engine
