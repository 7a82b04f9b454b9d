#pragma once

#include <QCache>
#include <QColor>
#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <QPainter>
#include <QRawFont>
#include <QRectF>
#include <QString>

namespace qelprn::engine {

// Lays out texts once and keeps the glyph runs, so a string that appears on many pages (a facility
// name, a column title, a fixed label) is shaped only the first time. Drawn texts are collected per
// font and colour and written with flush() as one glyph run each, at whole-unit positions: a PDF
// then gets one text object per font instead of one per text, with short numbers. Sizes are in the
// engine's units (1/720 inch), independent of the device. The cache is bounded, so memory stays
// flat over a long job.
class TextCache
{
public:
    explicit TextCache(QList<QFont> fonts, int maxEntries = 20000);

    struct Block
    {
        QList<QGlyphRun> runs;
        QSizeF size;
    };

    // Adds text in box with the alignment to the pending glyphs; wrap breaks lines at the box
    // width, shrink squeezes a single line that is too wide into the box (drawn at once, since it
    // needs its own transformation).
    void draw(QPainter& painter, const QRectF& box, int font, const QString& text, Qt::Alignment align,
              const QColor& color, bool wrap, bool shrink);
    // Draws the pending glyphs; call before anything that must lie over them and at the page end.
    void flush(QPainter& painter);
    const Block& block(int font, const QString& text, qreal wrapWidth);
    // The width of text on one line in font, as draw() lays it out before any squeezing.
    qreal width(int font, const QString& text);

    int size() const { return int(m_cache.size()); }

private:
    struct Key
    {
        int font;
        int wrap;
        QString text;
        bool operator==(const Key&) const = default;
        friend size_t qHash(const Key& k, size_t seed = 0)
        {
            return qHashMulti(seed, k.font, k.wrap, k.text);
        }
    };
    struct Pending
    {
        QRawFont font;
        QRgb color;
        QList<quint32> glyphs;
        QList<QPointF> positions;
    };
    // The glyph and advance of every character met so far, per font: a single line of Japanese,
    // Latin letters and digits needs no shaping, only these lookups.
    struct Glyph
    {
        quint32 index = 0;
        qreal advance = 0;
        bool original = false; // left out of the text-layer copy (a radical): the original font
    };
    struct FontGlyphs
    {
        QRawFont raw;      // the text-layer copy of the font (see TextLayerFont.h)
        QRawFont original; // the font as the system gives it
        qreal ascent = 0;
        qreal height = 0;
        QHash<char16_t, Glyph> glyphs;
    };

    bool simpleLine(int font, QStringView text, qreal& width);
    void useTextLayerFont(int font, const QString& text, QList<QGlyphRun>& runs) const;
    Pending& pendingFor(const QRawFont& font, QRgb color);

    QList<QFont> m_fonts;
    QCache<Key, Block> m_cache;
    Block m_uncached; // holds a block too large for the cache while it is drawn
    QList<Pending> m_pending;
    QList<FontGlyphs> m_glyphs;
    QList<Glyph> m_line; // the glyphs of the line being drawn
};

} // namespace qelprn::engine
