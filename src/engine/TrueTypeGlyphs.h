#pragma once

#include <QByteArray>
#include <vector>

namespace qelprn::engine {

// The TrueType font file font with the outlines of every glyph that keep does not mark removed:
// glyph indexes, metrics and every other table stay as they are, so text drawn with the kept glyphs
// refers to the same glyphs. Glyph 0 and the parts of kept composite glyphs are always kept.
// Empty when font is not a TrueType font with glyf and loca tables.
QByteArray keepTrueTypeGlyphs(const QByteArray& font, const std::vector<bool>& keep);

} // namespace qelprn::engine
