#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_CORP.h"

#include <QStringList>

namespace qelprn {

// The clinics / corporations of the site: the shared pattern (reads and writes scoped to the
// site), an existence check, the search by number, and the map addresses of a corporation kept
// in RIYOUSHA_MAP (three address texts as the map service matched them).
class cT_CORP : public MasterTableOf<cD_CORP>
{
public:
    const cD_CORP& clsCORP(int i) const { return record(i); }

    // Reads the site's row with the record's number, whatever its type: nデータ数 is 1 when the
    // number is taken, 0 when it is free.
    qint16 iDataReadChk(const cD_CORP* rec);
    // Search list: the site's corporations, by number (" CORP.nIDNo = ") when the condition's
    // number is above 0 and by name part when it has one.
    qint16 iDataReadGrid_Jouken(const cD_CORP* cond);
    QString gridJoukenStatement(const cD_CORP& cond) const;

    // The three map addresses of corporation nIDNo of the site; "" each when it has none.
    qint16 iMapDataRead(qint32 nIDNo, QStringList& addresses);
    qint16 iMapDataInsert(qint32 nIDNo, const QStringList& addresses);
    qint16 iMapDataUpdate(qint32 nIDNo, const QStringList& addresses);

private:
    QString mapWhere(qint32 nIDNo) const;
};

} // namespace qelprn
