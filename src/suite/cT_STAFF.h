#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_STAFF.h"

namespace qelprn {

// The practitioners of the site: the shared pattern with numbers as facilities have them, the
// checks made before a practitioner is saved, and the search list over all sites.
class cT_STAFF : public MasterTableOf<cD_STAFF>
{
public:
    const cD_STAFF& clsSTAFF(int i) const { return record(i); }

    // How many other practitioners of the site carry the record's name.
    qint16 iChkStaffName(const cD_STAFF* rec, qint32& count);
    // Whether the record's number is taken in the site.
    qint16 iDataIdentChk(const cD_STAFF* rec, bool& exists);
    // Search list like iDataReadGrid, over every site.
    qint16 iDataReadGrid_AllKyoten(const cD_STAFF* cond);

private:
    QString siteWhere() const;
};

} // namespace qelprn
