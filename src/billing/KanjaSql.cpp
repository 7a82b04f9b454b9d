#include "billing/KanjaSql.h"

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

QString kanjaOrderBy(qint16 iSortShisetsu)
{
    switch (iSortShisetsu) {
    case 0:
        return u" ORDER BY SISETSU_ID, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s;
    case 1:
        return u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
    case 2:
        return u" ORDER BY SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s;
    case 3:
        return u" ORDER BY SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
    default:
        return u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, RIYOUSHA.cNameKana, RIYOUSHA.nRoomNo, SINRYOU_TYPE"_s;
    }
}

} // namespace

QString kanjaSql(const PrintJouken& j, qint16 baseCd, qint16 baseEb)
{
    QString sql =
        u"SELECT    0 as SINRYOU_TYPE ,RIYOUSHA.nIDNo AS RIYOUSHA_ID ,RIYOUSHA.cName AS RIYOUSHA_NAME"_s
        u" ,RIYOUSHA.cNameKana AS RIYOUSHA_NAMEKANA ,RIYOUSHA.nRoomNo AS RIYOUSHA_ROOMNO"
        u" ,(CASE WHEN iFutanritsu > 0 THEN iFutanritsu ELSE iKaigoLevel END) AS RIYOUSHA_FUTANWARIAI"
        u" ,月間実績.施術回数 ,月間実績.総合計 ,月間実績.自己負担額2 ,月間実績.実費料金 ,月間実績.患者請求額"
        u" ,(CASE WHEN ISNULL(SISETSU.nIDNo, 0) = 0 THEN -1 ELSE SISETSU.nIDNo END) AS SISETSU_ID"
        u" ,SISETSU.cShamei1 AS SISETSU_NAME ,SISETSU.iPaymentType  ,HOKEN_NAME.cRyaku AS HOKEN_RYAKU"
        u" ,RIYOUSHA.iSyogai ,RIYOUSHA_SUB.iRiyouJoseiUmu"
        u" ,TIRYOIN.cShamei1 AS TIRYOIN_NAME ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN ,TIRYOIN.cAddress1 AS "
        u"TIRYOIN_ADDRESS1"
        u" ,TIRYOIN.cTelNo AS TIRYOIN_TELNO ,TIRYOIN.cFaxNo AS TIRYOIN_FAXNO ,TIRYOIN.cKinyuName AS "
        u"TIRYOIN_BANKNAME"
        u" ,TIRYOIN.cKinyuSiten AS TIRYOIN_SHITENNAME ,TIRYOIN.iKozaType AS TIRYOIN_KOUZATYPE"
        u" ,TIRYOIN.cKozaBangou AS TIRYOIN_KOUZANO ,TIRYOIN.cKozaMeigi1 AS TIRYOIN_KOUZAMEIGI"
        u" ,TIRYOIN.iKinSyubetsu ,TIRYOIN.iKinSiten"
        u" FROM ((月間実績  LEFT JOIN RIYOUSHA ON 月間実績.患者IDNo = RIYOUSHA.nIDNo "
        u" AND 月間実績.iKyotenCd = RIYOUSHA.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA.iKyotenEb )"
        u" LEFT JOIN RIYOUSHA_SUB ON 月間実績.患者IDNo = RIYOUSHA_SUB.nIDNo "
        u" AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA_SUB.iKyotenEb )"_s;
    // The facility a patient belongs to: that of the visit address, or the care facility.
    if (j.bSelSisetsuType)
        sql += u" LEFT JOIN SISETSU ON SISETSU.nIDNo = "_s + addressSetCaseSql();
    else
        sql += u" LEFT JOIN SISETSU ON SISETSU.nIDNo = RIYOUSHA_SUB.iCareSisetsuCd"_s;
    sql += u" LEFT JOIN HOKEN AS HOKEN_NAME ON HOKEN_NAME.iType = RIYOUSHA.iHoken"_s
           u" LEFT JOIN CORP AS TIRYOIN ON     TIRYOIN.iKyotenCd  = "_s +
           num(baseCd) + u" AND TIRYOIN.iKyotenEb  = "_s + num(baseEb);
    sql += j.nTiryoinCd < 1 ? u" AND TIRYOIN.iType = 0"_s : u" AND TIRYOIN.nIDNo = "_s + num(j.nTiryoinCd);
    sql += u" WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = "_s + num(j.nSeikyuYM);
    sql += u" AND 月間実績.iKyotenCd  = "_s + num(baseCd) + u" AND 月間実績.iKyotenEb  = "_s + num(baseEb);
    sql += u" AND (月間実績.総合計 > 0 or 月間実績.実費料金 > 0)"_s
           u" AND SISETSU.nIDNo > 0 "_s;
    if (j.nShisetuCdTo >= 1)
        sql += u" AND SISETSU.nIDNo = "_s + num(j.nShisetuCdTo);
    if (!j.sSisetsuType2.isEmpty())
        sql += u" AND SISETSU.cSisetsuType = '"_s + sqlText(j.sSisetsuType2) + u"'"_s;
    if (j.nTantouCd > 0)
        sql += u" AND RIYOUSHA.nTantou = "_s + num(j.nTantouCd);
    return sql + kanjaOrderBy(j.iSortShisetsu);
}

QString sejyutuCntSql(qint32 nRiyoushaIDNo, qint32 nSeikyuYM, qint16 baseCd, qint16 baseEb)
{
    const QString from = monthFirstDay(nSeikyuYM);
    const QString to = nextMonthFirstDay(from.left(7));
    return u"SELECT count(*) as J_CNT  FROM JISSEKI  WHERE     JISSEKI.iKyotenCd  = "_s + num(baseCd) +
           u" AND JISSEKI.iKyotenEb  = "_s + num(baseEb) + u" AND JISSEKI.nRiyoushaIDNo  = "_s +
           num(nRiyoushaIDNo) + u" AND JISSEKI.tServicyDayStart  >= '"_s + sqlText(from) +
           u"' AND JISSEKI.tServicyDayStart  < '"_s + sqlText(to) + u"'"_s;
}

QString cs4Down5UpSql(qint32 nRiyoushaIDNo, const QString& sSeikyuYM, qint16 baseCd, qint16 baseEb)
{
    return u"SELECT    JISSEKI.nRiyoushaIDNo ,JISSEKI.tServicyDayStart ,JISSEKI.nKanjaSeikyu"_s
           u" ,(CASE WHEN RIYOUSHA.iFutanritsu > 0 THEN RIYOUSHA.iFutanritsu ELSE RIYOUSHA.iKaigoLevel END) "
           u"AS "
           u"RIYOUSHA_FUTANWARIAI"
           u" ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nGokeiKinAnbun ELSE JISSEKI.nGokeiKin END) AS "
           u"DAY_GOKEIKIN"
           u" FROM JISSEKI LEFT JOIN RIYOUSHA ON        JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo "
           u"   AND JISSEKI.iKyotenCd = RIYOUSHA.iKyotenCd    AND JISSEKI.iKyotenEb = RIYOUSHA.iKyotenEb "
           u" WHERE nRiyoushaIDNo = "_s +
           num(nRiyoushaIDNo) + u"   AND tServicyDayStart >= '"_s + sqlText(monthFirstDay(sSeikyuYM)) +
           u"'   AND tServicyDayStart < '"_s + sqlText(nextMonthFirstDay(sSeikyuYM)) + u"'"_s +
           u"   AND JISSEKI.iKyotenCd = "_s + num(baseCd) + u"   AND JISSEKI.iKyotenEb = "_s + num(baseEb) +
           u" ORDER BY  tServicyDayStart"_s;
}

QString sejyutuCntAllSql(qint32 nSeikyuYM, qint16 baseCd, qint16 baseEb)
{
    const QString from = monthFirstDay(nSeikyuYM);
    const QString to = nextMonthFirstDay(from.left(7));
    return u"SELECT JISSEKI.nRiyoushaIDNo ,count(*) as J_CNT  FROM JISSEKI  WHERE     JISSEKI.iKyotenCd  = "_s +
           num(baseCd) + u" AND JISSEKI.iKyotenEb  = "_s + num(baseEb) +
           u" AND JISSEKI.tServicyDayStart  >= '"_s + sqlText(from) +
           u"' AND JISSEKI.tServicyDayStart  < '"_s + sqlText(to) + u"'"_s +
           u" GROUP BY JISSEKI.nRiyoushaIDNo"_s;
}

QString cs4Down5UpAllSql(const QString& sSeikyuYM, qint16 baseCd, qint16 baseEb)
{
    return u"SELECT    JISSEKI.nRiyoushaIDNo"_s
           u" ,(CASE WHEN RIYOUSHA.iFutanritsu > 0 THEN RIYOUSHA.iFutanritsu ELSE RIYOUSHA.iKaigoLevel END) "
           u"AS RIYOUSHA_FUTANWARIAI"
           u" ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nGokeiKinAnbun ELSE JISSEKI.nGokeiKin END) AS "
           u"DAY_GOKEIKIN"
           u" FROM JISSEKI LEFT JOIN RIYOUSHA ON        JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo "
           u"   AND JISSEKI.iKyotenCd = RIYOUSHA.iKyotenCd    AND JISSEKI.iKyotenEb = RIYOUSHA.iKyotenEb "
           u" WHERE JISSEKI.iKyotenCd = "_s +
           num(baseCd) + u"   AND JISSEKI.iKyotenEb = "_s + num(baseEb) +
           u"   AND JISSEKI.tServicyDayStart >= '"_s + sqlText(monthFirstDay(sSeikyuYM)) +
           u"'   AND JISSEKI.tServicyDayStart < '"_s + sqlText(nextMonthFirstDay(sSeikyuYM)) + u"'"_s +
           u" ORDER BY  JISSEKI.nRiyoushaIDNo, JISSEKI.tServicyDayStart"_s;
}

double dayFutan(qint32 dayGokeikin, qint32 futanCode)
{
    return double(dayGokeikin) * double(futanCode - 1) / 10.0;
}

} // namespace qelprn
