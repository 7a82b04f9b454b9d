#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <map>

namespace qelprn::engine {

// A PDF font's ToUnicode map: for each character code (here a glyph's CID) the text it stands for,
// kept as the hex digits of its UTF-16BE code units.
using ToUnicodeMap = std::map<quint32, QByteArray>;

// The entries of a ToUnicode CMap stream (bfchar and bfrange, ranges with a start value or with a
// list) for two-byte codes; what it does not understand it leaves out.
ToUnicodeMap parseToUnicode(QByteArrayView cmap);

// A ToUnicode CMap stream with exactly the entries of map, two-byte codes.
QByteArray toUnicodeCMap(const ToUnicodeMap& map);

} // namespace qelprn::engine
