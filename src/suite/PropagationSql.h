#pragma once

#include <QString>

namespace qelprn {

// Pieces of the statements that carry master data into the rows copying it.

// A text value closing its fragment's opening quote: quotes doubled, then "'".
QString textEnd(const QString& value);

// The patients' update time over the patient / supplement join, for the rows chosen by the
// further joins and the condition that follow.
QString patientStampStatement(const QString& joinsAndWhere);

// " left join RIYOUSHA_SUB on …" matching a patient with its supplement row.
QString patientSubJoin();

} // namespace qelprn
