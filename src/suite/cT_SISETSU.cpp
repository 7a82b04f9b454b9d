#include "suite/cT_SISETSU.h"

#include "suite/PropagationSql.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kWord = u"SISETU"_s; // the propagation operations' own spelling

QString number(const cD_SISETSU& rec)
{
    return QString::number(rec.nIDNo());
}

} // namespace

QStringList cT_SISETSU::toRiyoushaStatements(const cD_SISETSU& rec)
{
    return {u" update "_s + u"     RIYOUSHA_SUB"_s + u" set "_s + u"      cSyoukaiTelNo = '"_s +
                textEnd(rec.cTelNo()) + u" from RIYOUSHA_SUB"_s + u" where"_s +
                u"    RIYOUSHA_SUB.iSyoukaiSisetsuCd = "_s + number(rec),
            patientStampStatement(u" where"_s + u"    iSyoukaiSisetsuCd = "_s + number(rec))};
}

QStringList cT_SISETSU::toCareManeStatements(const cD_SISETSU& rec)
{
    const QString ofFacility = u" where"_s + u"    CAREMANE.iSisetsuCode = "_s + number(rec);
    return {u" update "_s + u"     CAREMANE"_s + u" set "_s + u"      cYubinNo = '"_s +
                textEnd(rec.cYubinNo()) + u"      ,cAdress1 = '"_s + textEnd(rec.cAddress1()) +
                u"      ,cAdress2 = '"_s + textEnd(rec.cAddress2()) + u"      ,cTelNo = '"_s +
                textEnd(rec.cTelNo()) + u"      ,cFaxNo = '"_s + textEnd(rec.cFaxNo()) +
                u"      ,tUpdateTime = getdate()"_s + u" from CAREMANE"_s + ofFacility,
            u" update "_s + u"     RIYOUSHA_SUB"_s + u" set "_s + u"     cCareTelNo = '"_s +
                textEnd(rec.cTelNo()) + u" from RIYOUSHA_SUB"_s + u" left join CAREMANE"_s +
                u" on RIYOUSHA_SUB.iCareCd = CAREMANE.nIDNo"_s + ofFacility,
            patientStampStatement(u" left join CAREMANE"_s + u" on RIYOUSHA_SUB.iCareCd = CAREMANE.nIDNo"_s +
                                  ofFacility)};
}

QStringList cT_SISETSU::toSoudanStatements(const cD_SISETSU& rec)
{
    // The time stamp follows the last assignment, so the fax value closes with the comma.
    return {u" update "_s + u"     SOUDAN"_s + u" set "_s + u"      cKikan = '"_s + textEnd(rec.cShamei1()) +
            u"      ,cKikankana = '"_s + textEnd(rec.cShameiKana1()) + u"      ,cYubinNo = '"_s +
            textEnd(rec.cYubinNo()) + u"      ,cAdress1 = '"_s + textEnd(rec.cAddress1()) +
            u"      ,cAdress2 = '"_s + textEnd(rec.cAddress2()) + u"      ,cTelNo = '"_s +
            textEnd(rec.cTelNo()) + u"      ,cFaxNo = '"_s + textEnd(rec.cFaxNo()) + u","_s +
            u"      SOUDAN.tUpdateTime = getdate()"_s + u" from SOUDAN"_s + u" where"_s +
            u"    SOUDAN.iSisetsuCode = "_s + number(rec)};
}

QStringList cT_SISETSU::toRiyoushaIryouStatements(const cD_SISETSU& rec)
{
    const QString address = rec.cAddress1() + rec.cAddress2();
    const auto consent = [&](const QString& n, const QString& doctorColumn) {
        return u" update "_s + u"     RIYOUSHA"_s + u" set "_s + u"     cDouiIsiKikan"_s + n + u" = '"_s +
               textEnd(rec.cShamei1()) + u"     ,cDouiIsiAdd"_s + n + u" = '"_s + textEnd(address) + u","_s +
               u"      RIYOUSHA.tUpdateTime = getdate()"_s + u" from RIYOUSHA"_s + patientSubJoin() +
               u" where"_s + u"    "_s + doctorColumn + u" in ("_s + u" SELECT DOCTOR.cIDNo"_s +
               u" FROM DOCTOR"_s + u" where DOCTOR.iSisetsuCode ="_s + number(rec) + u" )"_s;
    };
    return {u" update "_s + u"     DOCTOR"_s + u" set "_s + u"       cKikan = '"_s + textEnd(rec.cShamei1()) +
                u"      ,cKikanKana = '"_s + textEnd(rec.cShameiKana1()) + u"      ,cYubinNo = '"_s +
                textEnd(rec.cYubinNo()) + u"      ,cAddress1 = '"_s + textEnd(rec.cAddress1()) +
                u"      ,cAddress2 = '"_s + textEnd(rec.cAddress2()) + u"      ,cTelNo = '"_s +
                textEnd(rec.cTelNo()) + u"      ,cFaxNo = '"_s + textEnd(rec.cFaxNo()) +
                u"      ,tUpdateTime = getdate()"_s + u" from DOCTOR"_s + u" where"_s +
                u"    DOCTOR.iSisetsuCode = "_s + number(rec),
            consent(u"1"_s, u"iIsiCd"_s), consent(u"2"_s, u"iIsiCd2"_s)};
}

qint16 cT_SISETSU::iDataUpdate_ToRiyousha(const cD_SISETSU* rec)
{
    return propagate(rec, kWord, [rec] { return toRiyoushaStatements(*rec); });
}

qint16 cT_SISETSU::iDataUpdate_ToCareMane(const cD_SISETSU* rec)
{
    return propagate(rec, kWord, [rec] { return toCareManeStatements(*rec); });
}

qint16 cT_SISETSU::iDataUpdate_ToSoudan(const cD_SISETSU* rec)
{
    return propagate(rec, kWord, [rec] { return toSoudanStatements(*rec); });
}

qint16 cT_SISETSU::iDataUpdate_ToRiyousha_Iryou(const cD_SISETSU* rec)
{
    return propagate(rec, kWord, [rec] { return toRiyoushaIryouStatements(*rec); });
}

} // namespace qelprn
