#pragma once

#include <QByteArray>
#include <QRawFont>
#include <QString>

namespace qelprn::engine {

// The copy of a font that the engine draws with, so that a PDF's text layer names the characters
// that were drawn. A PDF writer that maps each glyph back to the first code point using it finds a
// CJK radical (U+2E80-U+2FDF) before the ideograph when a font gives both one glyph, as IPAex does
// for 日, 月, 人 and others; the copy leaves such radicals out of its character map, so the
// ideograph is found. Glyph indexes, outlines and metrics are the font's own.
//
// Returns the copy at the font's pixel size (a family of its own, "QelprnTextLayer1", ...), or the
// font itself when it has no such radicals or its tables cannot be read.
QRawFont textLayerFont(const QRawFont& font);

// True for a code point that textLayerFont() may leave out of the character map.
constexpr bool isSharedRadical(char32_t c)
{
    return c >= 0x2E80 && c <= 0x2FDF;
}

// The font file rebuilt from the tables of font with a character map without the radicals that
// share a glyph with another code point, named family; empty when there is nothing to leave out or
// on a problem.
QByteArray fontWithoutSharedRadicals(const QRawFont& font, const QString& family);

} // namespace qelprn::engine
