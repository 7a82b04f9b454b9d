#include "suite/cT_Address.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString cT_Address::byDateStatement(const cD_Address& cond, const QString& day) const
{
    // The latest start day first, and only it.
    return selectStatement(def().readColumns(),
                           u" where"_s + u"    ADDRESS.nKanjaCD = "_s + QString::number(cond.nKanjaCD()) +
                               u" and    ADDRESS.iKyotenCd = "_s + QString::number(site().iKyotenCd) +
                               u" and    ADDRESS.iKyotenEb = "_s + QString::number(site().iKyotenEb) +
                               u" and    ADDRESS.tStartDay <= "_s + quoted(day),
                           u"  order by      tStartDay desc"_s, 1);
}

qint16 cT_Address::iDataReadByDate(const cD_Address* cond, const QString& day)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(cond, def().word))
            return -1;
        return readRows(byDateStatement(*cond, day), def().readColumns());
    });
}

qint16 cT_Address::iDataDelete(const cD_Address* rec)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(rec, def().word))
            return -1;
        return execute({u" delete from "_s + u"     ADDRESS"_s + u" where"_s + u"    nKanjaCD = "_s +
                        QString::number(rec->nKanjaCD()) + u" and iKyotenCd = "_s +
                        QString::number(site().iKyotenCd) + u" and iKyotenEb = "_s +
                        QString::number(site().iKyotenEb)},
                       false);
    });
}

} // namespace qelprn
