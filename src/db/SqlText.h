#pragma once

#include <QString>

namespace qelprn {

// A text value for a statement: single quotes doubled, nothing else changed. Every text value the
// program puts between the quotes of a statement fragment passes through here, so a name such as
// "O'Neil" neither breaks the statement nor changes its meaning.
QString sqlText(const QString& value);

} // namespace qelprn
