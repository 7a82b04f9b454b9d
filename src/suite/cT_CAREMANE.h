#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_CAREMANE.h"

namespace qelprn {

// The care managers: the shared pattern, and carrying a care manager's telephone into the
// supplement rows of the patients in the manager's care.
class cT_CAREMANE : public MasterTableOf<cD_CAREMANE>
{
public:
    const cD_CAREMANE& clsCAREMANE(int i) const { return record(i); }

    qint16 iDataUpdate_ToRiyousha(const cD_CAREMANE* rec);
    static QStringList toRiyoushaStatements(const cD_CAREMANE& rec);
};

} // namespace qelprn
