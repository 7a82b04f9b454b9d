#include "suite/cT_CAREMANE.h"

#include "suite/PropagationSql.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QStringList cT_CAREMANE::toRiyoushaStatements(const cD_CAREMANE& rec)
{
    const QString ofManager = u" where"_s + u"    RIYOUSHA_SUB.iCareCd = "_s + QString::number(rec.nIDNo());
    return {u" update "_s + u"     RIYOUSHA_SUB"_s + u" set "_s + u"     cCareTelNo = '"_s +
                textEnd(rec.cTelNo()) + u" from RIYOUSHA_SUB"_s + ofManager,
            patientStampStatement(ofManager)};
}

qint16 cT_CAREMANE::iDataUpdate_ToRiyousha(const cD_CAREMANE* rec)
{
    return propagate(rec, def().word, [rec] { return toRiyoushaStatements(*rec); });
}

} // namespace qelprn
