#pragma once

#include <QByteArray>
#include <QRawFont>
#include <QString>

namespace qelprn::engine {

// The copy of a font that the engine draws with, so that a PDF's text layer names the characters
// that were drawn. The PDF writer names each glyph by the lowest code point that uses it, and IPAex
// gives one glyph to a radical and its ideograph (U+2F47 and 日, 261 pairs) and to a few symbols
// (〜 U+301C and ～ U+FF5E, the form's own): 日 would come out as U+2F47. The copy's character map
// keeps for such a glyph one code point other than the lowest (日), so the copy names it right;
// the lowest (U+2F47, U+301C) is drawn with the original font, which names it right too. Glyph
// indexes, outlines and metrics are the font's own.
//
// Returns the copy at the font's pixel size (a family of its own, "QelprnTextLayer" and a digest
// of the face, kept in the user's cache folder), or the font itself when no glyph has two code
// points or the tables cannot be read.
QRawFont textLayerFont(const QRawFont& font);

// The font file rebuilt from the tables of font, named family, with one code point per glyph;
// empty when there is nothing to leave out or on a problem.
QByteArray textLayerFontFile(const QRawFont& font, const QString& family);

} // namespace qelprn::engine
