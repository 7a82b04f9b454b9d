#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_Address.h"

namespace qelprn {

// The visit addresses of the site's patients, one row per patient and start day: the shared
// pattern, the address valid on a day, and the removal of all of a patient's rows.
class cT_Address : public MasterTableOf<cD_Address>
{
public:
    const cD_Address& clsAddress(int i) const { return record(i); }

    // Reads the row of the condition's patient valid on day ("yyyy/mm/dd"): the one with the
    // latest start day not after it. nデータ数 is 0 when the patient has none yet.
    qint16 iDataReadByDate(const cD_Address* cond, const QString& day);
    QString byDateStatement(const cD_Address& cond, const QString& day) const;
    // Deletes every row of the record's patient in the site (iData削除 deletes one start day).
    qint16 iDataDelete(const cD_Address* rec);
};

} // namespace qelprn
