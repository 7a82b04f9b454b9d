#pragma once

#include <QCache>
#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace qelprn::engine {

// Lays out texts once and keeps the glyph runs, so a string that appears on many pages (a facility
// name, a column title, a fixed label) is shaped only the first time; drawing a cached text is a
// plain glyph run, which a PDF writes without laying it out again. Sizes are in the engine's units
// (1/720 inch), independent of the device. The cache is bounded, so memory stays flat over a long job.
class TextCache
{
public:
    explicit TextCache(QList<QFont> fonts, int maxEntries = 20000);

    struct Block
    {
        QList<QGlyphRun> runs;
        QSizeF size;
    };

    // Draws text into box with the alignment; wrap breaks lines at the box width, shrink squeezes a
    // single line that is too wide into the box.
    void draw(QPainter& painter, const QRectF& box, int font, const QString& text, Qt::Alignment align,
              bool wrap, bool shrink);
    const Block& block(int font, const QString& text, qreal wrapWidth);

    int size() const { return int(m_cache.size()); }

private:
    QList<QFont> m_fonts;
    QCache<QString, Block> m_cache;
    Block m_uncached; // holds a block too large for the cache while it is drawn
};

} // namespace qelprn::engine
