#pragma once

#include <QString>

namespace qelprn {

// The form of a reading (フリガナ) that the search dialogs compare: hiragana and katakana, half- and
// full-width kana and letters, and blanks do not matter ("やまだ たろう", "ﾔﾏﾀﾞﾀﾛｳ" and "ヤマダタロウ" give
// the same key). Readings are compared in the program over the fetched rows, so the match is the same on
// every database, whatever its collation.
QString readingKey(const QString& reading);

// Whether reading contains the typed text once both are keyed (an empty text matches every row).
bool readingMatches(const QString& reading, const QString& typed);

} // namespace qelprn
