#pragma once

#include <QStringView>
#include <QtGlobal>

namespace qelprn {

// The whole number a text begins with, as the suite's Val and the platform's INI integer read take
// it: leading blanks, tabs, line feeds and ideographic spaces (U+3000) skipped, an optional sign, then the
// decimal digits up to the first other character ("1X" gives 1, "X1" gives 0). Clamped to the 32-bit range.
qint32 leadingNumber(QStringView text);

} // namespace qelprn
