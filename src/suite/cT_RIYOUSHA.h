#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_RIYOUSHA.h"

namespace qelprn {

// The patients of the site: the shared pattern over the patient record's columns, and the insert
// of the row that continues a patient under a new number when the patient changes to the
// late-elderly insurance at 75.
class cT_RIYOUSHA : public MasterTableOf<cD_RIYOUSHA>
{
public:
    const cD_RIYOUSHA& clsRIYOUSHA(int i) const { return record(i); }

    // Inserts rec (its nBeforeIDNo names the patient's previous number) and marks the previous
    // row with the new number (nAfterIDNo) and the switch date (rec's tIDKirikaeDate), both in
    // one transaction when asked.
    qint16 iDataInsert_R75(const cD_RIYOUSHA* rec, bool inTransaction);
    QString r75PreviousStatement(const cD_RIYOUSHA& rec, const QString& pcName) const;
};

} // namespace qelprn
