#include "suite/cT_SYOUKAI.h"

#include "suite/PropagationSql.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QStringList cT_SYOUKAI::toRiyoushaStatements(const cD_SYOUKAI& rec)
{
    const QString ofReferrer =
        u" where"_s + u"    RIYOUSHA_SUB.iSyoukaiSisetsuCd = "_s + QString::number(rec.nIDNo());
    return {u" update "_s + u"     RIYOUSHA_SUB"_s + u" set "_s + u"      cSyoukaiTelNo = '"_s +
                textEnd(rec.cTelNo()) + u" from RIYOUSHA_SUB"_s + ofReferrer,
            patientStampStatement(ofReferrer)};
}

qint16 cT_SYOUKAI::iDataUpdate_ToRiyousha(const cD_SYOUKAI* rec)
{
    return propagate(rec, def().word, [rec] { return toRiyoushaStatements(*rec); });
}

} // namespace qelprn
