#include "suite/cT_HOKENJA.h"

#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString cT_HOKENJA::ininKoukiStatement(const cD_HOKENJA& rec, const QString& pcName)
{
    const QString id = rec.cIDNo().trimmed();
    const QString pref = sqlText(id.size() == 8 ? id.mid(2, 2) : id.left(2));
    const QString day = rec.tIninDay().isEmpty() ? u"NULL"_s : quoted(rec.tIninDay());
    return u" update "_s + u"     HOKENJA"_s + u" set "_s + u"      iIninFlg =  "_s +
           QString::number(rec.iIninFlg()) + u"     ,tIninDay = "_s + day + u"     ,cPcName = "_s +
           quoted(pcName) + u"     ,tUpDateTime = GetDate()"_s + u" where"_s +
           u"    left(HOKENJA.cIDno,2) = '39' and right(left(HOKENJA.cIDno,4),2) = '"_s + pref +
           u"' and len(HOKENJA.cIDno)=8"_s;
}

qint16 cT_HOKENJA::iIninDataUpdate_Kouki(const cD_HOKENJA* rec, bool inTransaction)
{
    return guarded([&]() -> qint16 {
        QString pcName;
        if (prepareWrite(rec, pcName) != 0)
            return -1;
        return execute({ininKoukiStatement(*rec, pcName)}, inTransaction);
    });
}

} // namespace qelprn
