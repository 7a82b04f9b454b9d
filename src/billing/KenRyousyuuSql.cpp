#include "billing/KenRyousyuuSql.h"

#include "billing/BillingMonth.h"
#include "billing/SeikyuSql.h"
#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString num(qint64 value)
{
    return QString::number(value);
}

// A consent setting taken from the second consent when it is the later one, else from the first.
QString consentColumn(const QString& second, const QString& first, const QString& alias)
{
    return u" ,(CASE WHEN RIYOUSHA.tDouiDay2 is Not NULL and RIYOUSHA.tDouiDay2 >= RIYOUSHA.tDouiDay1 THEN "_s
           u"RIYOUSHA."_s +
           second + u" ELSE RIYOUSHA."_s + first + u" END) AS "_s + alias;
}

QString orderBy(qint16 iSort)
{
    switch (iSort) {
    case 1:
        return u" ORDER BY JISSEKI.nRiyoushaIDNo, JISSEKI.tServicyDayStart"_s;
    case 2:
        return u" ORDER BY RIYOUSHA.cNameKana, JISSEKI.tServicyDayStart"_s;
    default:
        return u" ORDER BY RIYOUSHA.nRoomNo, RIYOUSHA.cNameKana, JISSEKI.tServicyDayStart"_s;
    }
}

} // namespace

QString kenRyousyuuSql(const PrintJouken& j, ReceiptDays days, qint16 baseCd, qint16 baseEb)
{
    QString sql =
        u"SELECT   JISSEKI.nRiyoushaIDNo"_s
        u" ,RIYOUSHA.cName AS RIYOUSHA_NAME ,RIYOUSHA.iHoken"
        u" ,(CASE WHEN RIYOUSHA.iFutanritsu > 0 THEN RIYOUSHA.iFutanritsu ELSE RIYOUSHA.iKaigoLevel END)"
        u" AS RIYOUSHA_FUTANWARIAI"
        u" ,JISSEKI.tServicyDayStart"
        u" ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nGokeiKinAnbun ELSE JISSEKI.nGokeiKin END)"
        u" AS DAY_GOKEIKIN"
        u" ,JISSEKI.nKanjaSeikyu"
        u" ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nOuryouKinAnbun ELSE JISSEKI.nOuryouKin END)"
        u" AS DAY_OURYOUKIN"
        u" ,JISSEKI.nJippiSejutu"_s;
    sql += consentColumn(u"iSejutuBui11"_s, u"iSejutuBui1"_s, u"SEJUTU_BUI1"_s);
    sql += consentColumn(u"iSejutuBui12"_s, u"iSejutuBui2"_s, u"SEJUTU_BUI2"_s);
    sql += consentColumn(u"iSejutuBui13"_s, u"iSejutuBui3"_s, u"SEJUTU_BUI3"_s);
    sql += consentColumn(u"iSejutuBui14"_s, u"iSejutuBui4"_s, u"SEJUTU_BUI4"_s);
    sql += consentColumn(u"iSejutuBui15"_s, u"iSejutuBui5"_s, u"SEJUTU_BUI5"_s);
    sql += consentColumn(u"iOnan1"_s, u"iOnan"_s, u"SEJUTU_ONAN"_s);
    sql += consentColumn(u"iDenki1"_s, u"iDenki"_s, u"SEJUTU_DENKI"_s);
    sql += u" ,RIYOUSHA.iHenke ,RIYOUSHA.iHKHariUmu ,RIYOUSHA.iHKKyuUmu ,RIYOUSHA.iHKDekiUmu"_s
           u" ,HOKEN_NAME.cRyaku AS HOKEN_RYAKU"
           u" ,CORP.cShamei1 AS CORP_NAME"
           u" ,TIRYOIN.cShamei1 AS TIRYOIN_NAME ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN"
           u" ,TIRYOIN.cAddress1 AS TIRYOIN_ADDRESS1 ,TIRYOIN.cTelNo AS TIRYOIN_TELNO"
           u" ,TIRYOIN.cFaxNo AS TIRYOIN_FAXNO"
           // The month result row limits the days to patients with results in the billing month.
           u" FROM (((((JISSEKI "
           u" INNER JOIN 月間実績 ON 月間実績.患者IDNo = JISSEKI.nRiyoushaIDNo "
           u" AND 月間実績.iKyotenCd = JISSEKI.iKyotenCd AND 月間実績.iKyotenEb = JISSEKI.iKyotenEb"
           u" AND 月間実績.実績年 * 100 + 月間実績.実績月 = "_s +
           num(j.nSeikyuYM) + u" )"_s;
    sql += u" LEFT JOIN RIYOUSHA ON JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo "_s
           u" AND JISSEKI.iKyotenCd = RIYOUSHA.iKyotenCd AND JISSEKI.iKyotenEb = RIYOUSHA.iKyotenEb )"
           u" LEFT JOIN RIYOUSHA_SUB ON JISSEKI.nRiyoushaIDNo = RIYOUSHA_SUB.nIDNo "
           u" AND JISSEKI.iKyotenCd = RIYOUSHA_SUB.iKyotenCd AND JISSEKI.iKyotenEb = RIYOUSHA_SUB.iKyotenEb )"
           u" LEFT JOIN SISETSU AS SEJUTSU_SISETSU ON SEJUTSU_SISETSU.nIDNo = "_s +
           addressSetCaseSql() + u" )"_s;
    sql += u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = SEJUTSU_SISETSU.nOyaSisetsuCd )"_s
           u" LEFT JOIN HOKEN AS HOKEN_NAME ON HOKEN_NAME.iType = RIYOUSHA.iHoken"_s +
           corpJoinsSql(j, baseCd, baseEb);
    sql += u" WHERE JISSEKI.iKyotenCd = "_s + num(baseCd) + u" AND JISSEKI.iKyotenEb = "_s + num(baseEb);
    sql += u" AND JISSEKI.tServicyDayStart >= '"_s + sqlText(monthFirstDay(j.sSeikyuYM)) +
           u"' AND JISSEKI.tServicyDayStart < '"_s + sqlText(nextMonthFirstDay(j.sSeikyuYM)) + u"'"_s;
    sql += u" AND JISSEKI.nKanjaSeikyu > 0"_s;
    if (days == ReceiptDays::CoPayment)
        sql +=
            u" AND (CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nFutankinAnbun ELSE JISSEKI.nFutankin END) > 0"_s;
    else if (days == ReceiptDays::SelfPay)
        sql += u" AND JISSEKI.nJippiSejutu > 0"_s;
    if (!j.sSisetsuType2.isEmpty())
        sql += u" AND SEJUTSU_SISETSU.cSisetsuType = '"_s + sqlText(j.sSisetsuType2) + u"'"_s;
    if (j.nShisetuCdFrom > 0)
        sql += u" AND SEIKYU_SISETSU.nIDNo = "_s + num(j.nShisetuCdFrom);
    if (!j.sSisetsuType1.isEmpty())
        sql += u" AND SEIKYU_SISETSU.cSisetsuType = '"_s + sqlText(j.sSisetsuType1) + u"'"_s;
    if (j.nKanjaCd > 0)
        sql += u" AND JISSEKI.nRiyoushaIDNo = "_s + num(j.nKanjaCd);
    return sql + orderBy(j.iSort);
}

} // namespace qelprn
