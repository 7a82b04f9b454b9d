#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_DOCTOR.h"

namespace qelprn {

// The consenting doctors: the shared pattern with gap-filling numbers (the key is text), reads
// joined with the doctor's facility, and carrying a doctor's data into the consent columns of
// the patients who name the doctor first or second.
class cT_DOCTOR : public MasterTableOf<cD_DOCTOR>
{
public:
    const cD_DOCTOR& clsDOCTOR(int i) const { return record(i); }

    qint16 iDataUpdate_ToRiyousha(const cD_DOCTOR* rec);
    static QStringList toRiyoushaStatements(const cD_DOCTOR& rec);
};

} // namespace qelprn
