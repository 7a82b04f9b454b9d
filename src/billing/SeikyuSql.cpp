#include "billing/SeikyuSql.h"

#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString num(qint64 value)
{
    return QString::number(value);
}

// SEIKYU_ID ... SEJUTSU_NAME, common to every statement of the facility invoice.
QString facilityColumns()
{
    return u" ,(CASE WHEN ISNULL(SEIKYU_SISETSU.nIDNo,0) = 0 THEN -1 ELSE SEIKYU_SISETSU.nIDNo END) AS SEIKYU_ID"_s
           u" ,SEIKYU_SISETSU.cShamei1 AS SEIKYU_NAME"
           u" ,SEIKYU_SISETSU.cYubinNo AS SEIKYU_YUBIN"
           u" ,SEIKYU_SISETSU.cAddress1 AS SEIKYU_ADDRESS1"
           u" ,SEIKYU_SISETSU.cAddress2 AS SEIKYU_ADDRESS2"
           u" ,SEJUTSU_SISETSU.nIDNo AS SEJUTSU_ID"
           u" ,SEJUTSU_SISETSU.cShamei1 AS SEJUTSU_NAME"_s;
}

QString corpColumns()
{
    return u" ,CORP.cShamei1 AS CORP_NAME"_s
           u" ,CORP.cYubinNo AS CORP_YUBIN"
           u" ,CORP.cAddress1 AS CORP_ADDRESS1"
           u" ,TIRYOIN.cShamei1 AS TIRYOIN_NAME"
           u" ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN"
           u" ,TIRYOIN.cAddress1 AS TIRYOIN_ADDRESS1"_s;
}

QString type0Sums()
{
    return u" ,SUM(1) AS SEJUTSU_NINZU"_s
           u" ,SUM(月間実績.総合計) AS SEJUTSU_GOUKEI"
           u" ,SUM(月間実績.自己負担額2) AS SEJUTSU_KANJASEIKYU"
           u" ,0 AS ROOMNO"
           u" ,'施設' AS RIYOUSHA_NAME"_s;
}

QString type1Values()
{
    return u" ,0 AS SEJUTSU_NINZU"_s
           u" ,0 AS SEJUTSU_GOUKEI"
           u" ,月間実績.実費料金 AS SEJUTSU_KANJASEIKYU"
           u" ,RIYOUSHA.nRoomNo AS ROOMNO"
           u" ,RIYOUSHA.cName AS RIYOUSHA_NAME"_s;
}

QString riyoushaJoin()
{
    return u" LEFT JOIN RIYOUSHA ON 月間実績.患者IDNo = RIYOUSHA.nIDNo "_s
           u" AND 月間実績.iKyotenCd = RIYOUSHA.iKyotenCd"
           u" AND 月間実績.iKyotenEb = RIYOUSHA.iKyotenEb )"_s;
}

// RIYOUSHA_SUB and the treated facility; closes the statement's opening parentheses.
QString sejutsuJoins()
{
    return u" LEFT JOIN RIYOUSHA_SUB ON 月間実績.患者IDNo = RIYOUSHA_SUB.nIDNo "_s
           u" AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd"
           u" AND 月間実績.iKyotenEb = RIYOUSHA_SUB.iKyotenEb )"
           u" LEFT JOIN SISETSU AS SEJUTSU_SISETSU ON SEJUTSU_SISETSU.nIDNo = "_s +
           addressSetCaseSql() + u" )"_s;
}

QString seikyuJoin()
{
    return u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = SEJUTSU_SISETSU.nOyaSisetsuCd"_s;
}

// A facility without a parent bills itself.
QString seikyuJoinAllDb()
{
    return u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = (CASE WHEN "_s
           u"ISNULL(SEJUTSU_SISETSU.nOyaSisetsuCd,0) = 0 THEN SEJUTSU_SISETSU.nIDNo ELSE "
           u"SEJUTSU_SISETSU.nOyaSisetsuCd END)"_s;
}

} // namespace

QString corpJoinsSql(const PrintJouken& j, qint16 baseCd, qint16 baseEb)
{
    QString sql = u" LEFT JOIN CORP ON     CORP.iKyotenCd  = "_s + num(baseCd) +
                  u" AND CORP.iKyotenEb  = "_s + num(baseEb);
    sql += j.nDairiCd < 1 ? u" AND CORP.iType = 0"_s : u" AND CORP.nIDNo  = "_s + num(j.nDairiCd);
    sql += u" LEFT JOIN CORP AS TIRYOIN ON     TIRYOIN.iKyotenCd  = "_s + num(baseCd) +
           u" AND TIRYOIN.iKyotenEb  = "_s + num(baseEb);
    sql += j.nTiryoinCd < 1 ? u" AND TIRYOIN.iType = 0"_s : u" AND TIRYOIN.nIDNo = "_s + num(j.nTiryoinCd);
    return sql;
}

namespace {

QString monthCondition(const PrintJouken& j)
{
    return u" WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = "_s + num(j.nSeikyuYM);
}

QString siteCondition(qint16 baseCd, qint16 baseEb)
{
    return u" AND 月間実績.iKyotenCd  = "_s + num(baseCd) + u" AND 月間実績.iKyotenEb  = "_s + num(baseEb);
}

// Patients living in a facility, then the optional billing facility and its kind.
QString facilityConditions(const PrintJouken& j)
{
    QString sql = u" AND"_s + addressSetCaseSql() + u" > 0 "_s;
    if (j.nShisetuCdFrom > 0)
        sql += u" AND SEIKYU_SISETSU.nIDNo = "_s + num(j.nShisetuCdFrom);
    if (!j.sSisetsuType1.isEmpty())
        sql += u" AND SEIKYU_SISETSU.cSisetsuType = '"_s + sqlText(j.sSisetsuType1) + u"'"_s;
    return sql;
}

QString groupBy(bool withCorp)
{
    QString sql = u" GROUP BY  SEIKYU_SISETSU.nIDNo, SEIKYU_SISETSU.cShamei1, SEIKYU_SISETSU.cYubinNo"_s
                  u"     ,SEIKYU_SISETSU.cAddress1, SEIKYU_SISETSU.cAddress2, SEJUTSU_SISETSU.nIDNo "
                  u",SEJUTSU_SISETSU.cShamei1"_s;
    if (withCorp)
        sql += u"     ,CORP.cShamei1, CORP.cYubinNo, CORP.cAddress1"_s
               u"     ,TIRYOIN.cShamei1, TIRYOIN.cYubinNo, TIRYOIN.cAddress1"_s;
    return sql;
}

// One corporation row of the site as name, postcode and address under the given column prefix.
QString corpLookup(const QString& prefix, qint16 baseCd, qint16 baseEb, const QString& choice)
{
    return u"select "_s + u"  CORP.cShamei1 AS "_s + prefix + u"_NAME"_s + u" ,CORP.cYubinNo AS "_s + prefix +
           u"_YUBIN"_s + u" ,CORP.cAddress1 AS "_s + prefix + u"_ADDRESS1"_s + u" from CORP"_s +
           u" WHERE CORP.iKyotenCd  = "_s + num(baseCd) + u"   AND CORP.iKyotenEb  = "_s + num(baseEb) +
           choice;
}

QString orderBy()
{
    return u" ORDER BY SEIKYU_ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s;
}

} // namespace

QString addressSetCaseSql()
{
    return u" (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisetsuCd2 ELSE "_s
           u" (CASE WHEN RIYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END)"_s;
}

QString seikyuSql(const PrintJouken& j, qint16 baseCd, qint16 baseEb)
{
    QString sql = u"SELECT   0 as SINRYOU_TYPE"_s + facilityColumns() + corpColumns() + type0Sums();
    sql += u" FROM ((月間実績 "_s + sejutsuJoins() + seikyuJoin() + corpJoinsSql(j, baseCd, baseEb);
    sql += monthCondition(j) + siteCondition(baseCd, baseEb) + facilityConditions(j) + groupBy(true);

    sql += u" UNION SELECT   1 as SINRYOU_TYPE"_s + facilityColumns() + corpColumns() + type1Values();
    sql += u" FROM (((月間実績 "_s + riyoushaJoin() + sejutsuJoins() + seikyuJoin() +
           corpJoinsSql(j, baseCd, baseEb);
    sql += monthCondition(j) + u" AND 月間実績.実費料金 > 0"_s + siteCondition(baseCd, baseEb) +
           facilityConditions(j);
    return sql + orderBy();
}

QString seikyuAllDbSql(const PrintJouken& j, int sinryouType, const QString& kyotenCondition)
{
    QString sql;
    if (sinryouType == 0) {
        sql = u"SELECT   0 as SINRYOU_TYPE"_s + facilityColumns() + type0Sums();
        sql += u" FROM ((月間実績 "_s + sejutsuJoins() + seikyuJoinAllDb();
        sql += monthCondition(j) + u" AND 月間実績.自己負担額2 > 0"_s + facilityConditions(j) +
               kyotenCondition + groupBy(false);
    } else {
        sql = u"SELECT   1 as SINRYOU_TYPE"_s + facilityColumns() + type1Values();
        sql += u" FROM (((月間実績 "_s + riyoushaJoin() + sejutsuJoins() + seikyuJoinAllDb();
        sql += monthCondition(j) + u" AND 月間実績.実費料金 > 0"_s + facilityConditions(j) + kyotenCondition;
    }
    return sql + orderBy();
}

QString kyotenConditionSql(const QList<SiteKey>& sites)
{
    QString sql = u" AND ("_s;
    for (qsizetype i = 0; i < sites.size(); ++i) {
        if (i > 0)
            sql += u" OR "_s;
        sql += u"      ( 月間実績.iKyotenCd = "_s + num(sites.at(i).iKyotenCd) +
               u"    AND 月間実績.iKyotenEb = "_s + num(sites.at(i).iKyotenEb) + u" ) "_s;
    }
    return sql + u" ) "_s;
}

QString corpSql(const PrintJouken& j, qint16 baseCd, qint16 baseEb)
{
    return corpLookup(u"CORP"_s, baseCd, baseEb,
                      j.nDairiCd < 1 ? u" AND CORP.iType = 0"_s : u" AND CORP.nIDNo  = "_s + num(j.nDairiCd));
}

QString tiryoinSql(const PrintJouken& j, qint16 baseCd, qint16 baseEb)
{
    return corpLookup(u"TIRYOIN"_s, baseCd, baseEb,
                      j.nTiryoinCd < 1 ? u" AND CORP.iType = 0"_s
                                       : u" AND CORP.nIDNo = "_s + num(j.nTiryoinCd));
}

} // namespace qelprn
