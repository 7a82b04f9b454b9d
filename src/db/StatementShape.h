#pragma once

#include <QString>
#include <QVariantList>
#include <optional>

namespace qelprn {

// A SELECT for the embedded database with its per-call literals taken out: the shape, with "?" where
// the literals stood, and the literals in order. The per-patient look-ups of a month's run differ
// only in such literals, so one prepared statement of the shape serves them all.
struct StatementShape
{
    QString text;
    QVariantList values;
};

// The shape of a SELECT, or nullopt when the statement is not one this can take apart safely
// (comments, placeholders of its own, not a SELECT). Literals stay where they name or number
// something: in select lists (they would change the column names), after AS, and from the first
// ORDER BY or GROUP BY on (a number there is a column position).
std::optional<StatementShape> shapeOfSelect(const QString& sql);

} // namespace qelprn
