#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_SYOUKAI.h"

namespace qelprn {

// The referrers: the shared pattern with gap-filling numbers, and carrying a referrer's
// telephone into the supplement rows of the patients it referred.
class cT_SYOUKAI : public MasterTableOf<cD_SYOUKAI>
{
public:
    const cD_SYOUKAI& clsSYOUKAI(int i) const { return record(i); }

    qint16 iDataUpdate_ToRiyousha(const cD_SYOUKAI* rec);
    static QStringList toRiyoushaStatements(const cD_SYOUKAI& rec);
};

} // namespace qelprn
