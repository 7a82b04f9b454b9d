#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QRawFont>
#include <QString>
#include <map>

namespace qelprn::engine {

// Reading and rebuilding TrueType/OpenType font files from a font's tables.

using CharMap = std::map<char32_t, quint32>; // code point -> glyph

// The font's Unicode character map: its full-repertoire subtable (format 12) when it has one, else
// its basic-plane subtable (format 4).
CharMap readCharMap(const QRawFont& font);

// The font file rebuilt from the tables of font with map as its character map (formats 4 and 12)
// and family as its family, full and PostScript name; the other tables as they are.
QByteArray fontFileWith(const QRawFont& font, const CharMap& map, const QString& family);

// A table's (or a whole font file's) checksum: the sum of its big-endian 32-bit words, the last one
// padded with zeros.
quint32 tableChecksum(QByteArrayView data);

} // namespace qelprn::engine
