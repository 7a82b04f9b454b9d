#include "suite/cT_RIYOUSHA.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString cT_RIYOUSHA::r75PreviousStatement(const cD_RIYOUSHA& rec, const QString& pcName) const
{
    const QString day = rec.tIDKirikaeDate().isEmpty() ? u"NULL"_s : quoted(rec.tIDKirikaeDate());
    return u" update "_s + u"     RIYOUSHA"_s + u" set "_s + u"      nAfterIDNo =  "_s +
           QString::number(rec.nIDNo()) + u"     ,tIDKirikaeDate = "_s + day + u"     ,cPcName = "_s +
           quoted(pcName) + u"     ,tUpDateTime = GetDate()"_s + u" where"_s + u"    nIDNo = "_s +
           QString::number(rec.nBeforeIDNo()) + u" and iKyotenCd = "_s + QString::number(site().iKyotenCd) +
           u" and iKyotenEb = "_s + QString::number(site().iKyotenEb);
}

qint16 cT_RIYOUSHA::iDataInsert_R75(const cD_RIYOUSHA* rec, bool inTransaction)
{
    return guarded([&]() -> qint16 {
        QString pcName;
        if (prepareWrite(rec, pcName) != 0)
            return -1;
        QStringList statements{insertStatement(*rec, pcName)};
        if (rec->nBeforeIDNo() > 0)
            statements << r75PreviousStatement(*rec, pcName);
        return execute(statements, inTransaction);
    });
}

} // namespace qelprn
