#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_HOKENJA.h"

namespace qelprn {

// The insurers: the shared pattern, the search list of the insurers patients use (by
// prefecture), and the delegation of the late-elderly insurers of a prefecture.
class cT_HOKENJA : public MasterTableOf<cD_HOKENJA>
{
public:
    const cD_HOKENJA& clsHOKENJA(int i) const { return record(i); }

    // Gives every late-elderly insurer of the record's prefecture (8-digit numbers "39" + the
    // prefecture's two digits + 4) the record's delegation flag and date.
    qint16 iIninDataUpdate_Kouki(const cD_HOKENJA* rec, bool inTransaction);
    static QString ininKoukiStatement(const cD_HOKENJA& rec, const QString& pcName);
};

} // namespace qelprn
