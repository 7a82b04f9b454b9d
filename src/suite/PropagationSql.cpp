#include "suite/PropagationSql.h"

#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString textEnd(const QString& value)
{
    return sqlText(value) + u"'"_s;
}

QString patientSubJoin()
{
    return u" left join RIYOUSHA_SUB"_s + u" on RIYOUSHA.iKyotenCd = RIYOUSHA_SUB.iKyotenCd"_s +
           u" and RIYOUSHA.iKyotenEb = RIYOUSHA_SUB.iKyotenEb"_s +
           u" and RIYOUSHA.nIDNo = RIYOUSHA_SUB.nIDNo"_s;
}

QString patientStampStatement(const QString& joinsAndWhere)
{
    return u" update "_s + u"     RIYOUSHA"_s + u" set "_s + u"      RIYOUSHA.tUpdateTime = getdate()"_s +
           u" from RIYOUSHA"_s + patientSubJoin() + joinsAndWhere;
}

} // namespace qelprn
