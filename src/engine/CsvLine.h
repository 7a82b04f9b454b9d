#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace qelprn::engine {

// Splits one line of our CSV dialect into its fields. A field that starts with a double quote is a
// text; the writers do not escape a double quote inside a text, so a quote closes the field only
// when a comma or the end of the line follows it. Blanks around an unquoted field are dropped.
// Returns false (fields unspecified) when a quoted field never closes; problem then says why.
bool splitCsvLine(QStringView line, QStringList& fields, QString* problem = nullptr);

} // namespace qelprn::engine
