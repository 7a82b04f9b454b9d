#pragma once

#include <QString>

namespace qelprn {

// Rewrites the T-SQL the program writes into SQLite's dialect, on tokens: string literals, quoted
// and Japanese identifiers pass through untouched. Handled: ISNULL(a,b), LEFT(x,n) and RIGHT(x,n)
// as functions (LEFT JOIN stays), LEN, SUBSTRING, GetDate() in any case (local time as text
// "yyyy/mm/dd hh:mm:ss"), CONVERT(VARCHAR, x, style) (the text of x), '+' between text
// expressions, SELECT TOP n, [bracketed] names, and UPDATE t SET [t.]col = ... FROM t JOIN ...
// WHERE ... (an UPDATE of t whose rows are chosen by a subquery over the join). Results are
// cached per statement text.
QString translateTsqlToSqlite(const QString& tsql);

} // namespace qelprn
