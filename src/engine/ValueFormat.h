#pragma once

#include <QString>

namespace qelprn::engine {

// Turns a raw data value into the text a form prints:
//   text       as it is
//   number     1234567 -> "1,234,567" (a fraction keeps its digits: 1234.5 -> "1,234.5")
//   yen        "¥1,234,567"
//   date       "2024/05/03" -> "2024年5月3日"
//   month      "2024/05/01" -> "2024年5月分"
//   era-month  "2024/05/01" -> "令和6年5月分" (the first year of an era is "元年")
//   era-date   "2024/05/03" -> "令和6年5月3日"
//   md         "2024/05/03" -> "5/3"
// A value that does not read as the format needs is printed as it is, so nothing disappears.
// blankZero prints nothing for a number that is 0 (or empty).
QString formatValue(const QString& raw, const QString& format, bool blankZero = false);
QString formatNumber(double value);

} // namespace qelprn::engine
