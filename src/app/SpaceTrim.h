#pragma once

#include <QString>
#include <QStringView>

namespace qelprn {

// The suite's RTrim and Trim: only the space U+0020 is removed. Tabs and the ideographic space
// U+3000 are part of the text (a name padded with full-width blanks keeps them), unlike
// QString::trimmed, which removes every kind of white space.
QString trimRightSpaces(QStringView text);
QString trimSpaces(QStringView text);

} // namespace qelprn
