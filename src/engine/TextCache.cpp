#include "engine/TextCache.h"

#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

TextCache::TextCache(QList<QFont> fonts, int maxEntries) : m_fonts(std::move(fonts)), m_cache(maxEntries) {}

const TextCache::Block& TextCache::block(int font, const QString& text, qreal wrapWidth)
{
    QString key = QString::number(font);
    key += u'\x1f';
    if (wrapWidth > 0)
        key += QString::number(qRound(wrapWidth));
    key += u'\x1f';
    key += text;
    if (const Block* cached = m_cache.object(key))
        return *cached;

    QTextLayout layout(text, m_fonts.value(font));
    QTextOption option;
    option.setWrapMode(wrapWidth > 0 ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setCacheEnabled(false);
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
    block->size = QSizeF(width, y);
    Block* raw = block.get();
    if (m_cache.insert(key, block.release()))
        return *raw;
    m_uncached = {layout.glyphRuns(), QSizeF(width, y)};
    return m_uncached;
}

void TextCache::draw(QPainter& painter, const QRectF& box, int font, const QString& text, Qt::Alignment align,
                     bool wrap, bool shrink)
{
    if (text.isEmpty())
        return;
    const Block& b = block(font, text, wrap ? box.width() : 0);
    qreal sx = 1;
    qreal width = b.size.width();
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
        y += (box.height() - b.size.height()) / 2;
    else if (align & Qt::AlignBottom)
        y = box.bottom() - b.size.height();

    if (sx != 1) {
        painter.save();
        painter.translate(x, y);
        painter.scale(sx, 1);
        for (const QGlyphRun& run : b.runs)
            painter.drawGlyphRun(QPointF(0, 0), run);
        painter.restore();
        return;
    }
    for (const QGlyphRun& run : b.runs)
        painter.drawGlyphRun(QPointF(x, y), run);
}

} // namespace qelprn::engine
