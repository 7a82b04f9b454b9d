#include "suite/cT_STAFF.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString cT_STAFF::siteWhere() const
{
    return u"  where iKyotenCd = "_s + QString::number(site().iKyotenCd) + u"  and iKyotenEb = "_s +
           QString::number(site().iKyotenEb);
}

qint16 cT_STAFF::iChkStaffName(const cD_STAFF* rec, qint32& count)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(rec, def().word))
            return -1;
        const std::optional<qint32> n =
            readNumber(u"  select count(*) as nCount from STAFF"_s + siteWhere() + u"  and cName = "_s +
                       quoted(rec->cName()) + u"  and nIDNo <> "_s + QString::number(rec->nIDNo()));
        if (!n)
            return -1;
        count = *n;
        return 0;
    });
}

qint16 cT_STAFF::iDataIdentChk(const cD_STAFF* rec, bool& exists)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(rec, def().word))
            return -1;
        const std::optional<qint32> n = readNumber(u"  select count(*) as nCount from STAFF"_s + siteWhere() +
                                                   u"  and nIDNo = "_s + QString::number(rec->nIDNo()));
        if (!n)
            return -1;
        exists = *n > 0;
        return 0;
    });
}

qint16 cT_STAFF::iDataReadGrid_AllKyoten(const cD_STAFF* cond)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(cond, def().word))
            return -1;
        const QString where = cond->nIDNo() > 0
                                  ? u" where"_s + u"    STAFF.nIDNo = "_s + QString::number(cond->nIDNo())
                                  : QString();
        return readRows(selectStatement(def().readColumns(), where), def().readColumns());
    });
}

} // namespace qelprn
