#include "suite/cT_DOCTOR.h"

#include "suite/PropagationSql.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QStringList cT_DOCTOR::toRiyoushaStatements(const cD_DOCTOR& rec)
{
    const QString id = QString::number(rec.cIDNo().trimmed().toLongLong());
    const auto consent = [&](const QString& n, const QString& doctorColumn) {
        return u" update "_s + u"     RIYOUSHA"_s + u" set "_s + u"     cDouiIsiName"_s + n + u" = '"_s +
               textEnd(rec.cName()) + u"     ,cDouiIsiKikan"_s + n + u" = '"_s + textEnd(rec.cKikan()) +
               u"     ,cDouiIsiAdd"_s + n + u" = '"_s + textEnd(rec.cAddress1() + rec.cAddress2()) + u","_s +
               u"      RIYOUSHA.tUpdateTime = getdate()"_s + u" from RIYOUSHA"_s + patientSubJoin() +
               u" where"_s + u"    RIYOUSHA_SUB."_s + doctorColumn + u" = "_s + id;
    };
    return {consent(u"1"_s, u"iIsiCd"_s), consent(u"2"_s, u"iIsiCd2"_s)};
}

qint16 cT_DOCTOR::iDataUpdate_ToRiyousha(const cD_DOCTOR* rec)
{
    return propagate(rec, def().word, [rec] { return toRiyoushaStatements(*rec); });
}

} // namespace qelprn
