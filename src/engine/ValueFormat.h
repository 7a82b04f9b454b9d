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
//   share      the co-payment share code (share in tenths + 1) -> "0割" .. "3割"; 0 or empty -> ""
// A value that does not read as the format needs is printed as it is, so nothing disappears.
// blankZero prints nothing for a value that reads as 0, whatever the format (and, for numbers,
// nothing for an empty or unreadable value).
QString formatValue(const QString& raw, const QString& format, bool blankZero = false);
QString formatNumber(double value);

// The date formats of a form in one style: with era dates "date" and "month" become "era-date" and
// "era-month"; with western dates the era formats become "date" and "month". Others are unchanged.
enum class DateStyle { Western, Era };
QString formatForDateStyle(const QString& format, DateStyle style);

// How a form turns an amount with a fraction of a yen into whole yen: not at all (the value prints
// as written), up (切り上げ), half up (四捨五入) or down (切り捨て).
enum class YenRounding { None, Up, HalfUp, Down };
// The value in whole yen by the rule; values already whole stay as they are. Up adds 0.999999999
// before taking the floor, as the program's own rounding does, so a whole value never moves.
double roundYen(double value, YenRounding rounding);
// A raw data value read as a number and rounded; "" or unreadable text stays as it is.
QString roundYenText(const QString& raw, YenRounding rounding);

} // namespace qelprn::engine
