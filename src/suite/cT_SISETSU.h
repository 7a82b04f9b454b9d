#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_SISETSU.h"

namespace qelprn {

// The facility table: reads, number allocation and writes of the shared pattern, and the
// propagation of a changed facility into the rows that copy its data (patients' referrer
// telephone, care managers, consultation contacts, consenting doctors and their patients).
class cT_SISETSU : public MasterTableOf<cD_SISETSU>
{
public:
    const cD_SISETSU& clsSisetsu(int i) const { return record(i); }

    qint16 iDataUpdate_ToRiyousha(const cD_SISETSU* rec);
    qint16 iDataUpdate_ToCareMane(const cD_SISETSU* rec);
    qint16 iDataUpdate_ToSoudan(const cD_SISETSU* rec);
    qint16 iDataUpdate_ToRiyousha_Iryou(const cD_SISETSU* rec);

    // The statements of the propagation operations, in the order they run.
    static QStringList toRiyoushaStatements(const cD_SISETSU& rec);
    static QStringList toCareManeStatements(const cD_SISETSU& rec);
    static QStringList toSoudanStatements(const cD_SISETSU& rec);
    static QStringList toRiyoushaIryouStatements(const cD_SISETSU& rec);
};

} // namespace qelprn
