// The statements of the invoice queries: the exact text for the main combinations of conditions,
// and every variant run on SQLite through the connection wrapper's translation.
#include "billing/KanjaSql.h"
#include "billing/KenRyousyuuSql.h"
#include "billing/SeikyuSql.h"
#include "db/RecordSet.h"
#include "db/cT_ADODB.h"
#include "support/TestProgramFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

QString joined(const QStringList& fragments)
{
    return fragments.join(QString());
}

PrintJouken baseJouken()
{
    PrintJouken j;
    j.sSeikyuYM = u"2024/10"_s;
    j.nSeikyuYM = 202410;
    j.sTeisyutuDate = u"2024/11/05"_s;
    return j;
}

const QString kSeikyuColumns = joined(
    {u" ,(CASE WHEN ISNULL(SEIKYU_SISETSU.nIDNo,0) = 0 THEN -1 ELSE SEIKYU_SISETSU.nIDNo END) AS SEIKYU_ID"_s,
     u" ,SEIKYU_SISETSU.cShamei1 AS SEIKYU_NAME"_s, u" ,SEIKYU_SISETSU.cYubinNo AS SEIKYU_YUBIN"_s,
     u" ,SEIKYU_SISETSU.cAddress1 AS SEIKYU_ADDRESS1"_s, u" ,SEIKYU_SISETSU.cAddress2 AS SEIKYU_ADDRESS2"_s,
     u" ,SEJUTSU_SISETSU.nIDNo AS SEJUTSU_ID"_s, u" ,SEJUTSU_SISETSU.cShamei1 AS SEJUTSU_NAME"_s});
const QString kCorpColumns =
    joined({u" ,CORP.cShamei1 AS CORP_NAME"_s, u" ,CORP.cYubinNo AS CORP_YUBIN"_s,
            u" ,CORP.cAddress1 AS CORP_ADDRESS1"_s, u" ,TIRYOIN.cShamei1 AS TIRYOIN_NAME"_s,
            u" ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN"_s, u" ,TIRYOIN.cAddress1 AS TIRYOIN_ADDRESS1"_s});
const QString kType0Sums =
    joined({u" ,SUM(1) AS SEJUTSU_NINZU"_s, u" ,SUM(月間実績.総合計) AS SEJUTSU_GOUKEI"_s,
            u" ,SUM(月間実績.自己負担額2) AS SEJUTSU_KANJASEIKYU"_s, u" ,0 AS ROOMNO"_s,
            u" ,'施設' AS RIYOUSHA_NAME"_s});
const QString kType1Values = joined(
    {u" ,0 AS SEJUTSU_NINZU"_s, u" ,0 AS SEJUTSU_GOUKEI"_s, u" ,月間実績.実費料金 AS SEJUTSU_KANJASEIKYU"_s,
     u" ,RIYOUSHA.nRoomNo AS ROOMNO"_s, u" ,RIYOUSHA.cName AS RIYOUSHA_NAME"_s});
const QString kRiyoushaJoin = joined({u" LEFT JOIN RIYOUSHA ON 月間実績.患者IDNo = RIYOUSHA.nIDNo "_s,
                                      u" AND 月間実績.iKyotenCd = RIYOUSHA.iKyotenCd"_s,
                                      u" AND 月間実績.iKyotenEb = RIYOUSHA.iKyotenEb )"_s});
const QString kSubAndSejutsuJoins = joined(
    {u" LEFT JOIN RIYOUSHA_SUB ON 月間実績.患者IDNo = RIYOUSHA_SUB.nIDNo "_s,
     u" AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd"_s,
     u" AND 月間実績.iKyotenEb = RIYOUSHA_SUB.iKyotenEb )"_s,
     u" LEFT JOIN SISETSU AS SEJUTSU_SISETSU ON SEJUTSU_SISETSU.nIDNo = "_s,
     u" (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisetsuCd2 ELSE "_s,
     u" (CASE WHEN RIYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END) )"_s});
const QString kSeikyuJoin =
    u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = SEJUTSU_SISETSU.nOyaSisetsuCd"_s;
const QString kCorpJoins =
    joined({u" LEFT JOIN CORP ON     CORP.iKyotenCd  = 1 AND CORP.iKyotenEb  = 2"_s, u" AND CORP.iType = 0"_s,
            u" LEFT JOIN CORP AS TIRYOIN ON     TIRYOIN.iKyotenCd  = 1 AND TIRYOIN.iKyotenEb  = 2"_s,
            u" AND TIRYOIN.iType = 0"_s});
const QString kFacilityCondition = joined(
    {u" AND (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisetsuCd2 ELSE "_s,
     u"     (CASE WHEN RIYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END) > 0 "_s});
const QString kGroupBy = joined(
    {u" GROUP BY  SEIKYU_SISETSU.nIDNo, SEIKYU_SISETSU.cShamei1, SEIKYU_SISETSU.cYubinNo"_s,
     u"     ,SEIKYU_SISETSU.cAddress1, SEIKYU_SISETSU.cAddress2, SEJUTSU_SISETSU.nIDNo ,SEJUTSU_SISETSU.cShamei1"_s});
const QString kGroupByCorp = joined({u"     ,CORP.cShamei1, CORP.cYubinNo, CORP.cAddress1"_s,
                                     u"     ,TIRYOIN.cShamei1, TIRYOIN.cYubinNo, TIRYOIN.cAddress1"_s});
const QString kMonth = u" WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = 202410"_s;
const QString kSite = u" AND 月間実績.iKyotenCd  = 1 AND 月間実績.iKyotenEb  = 2"_s;
const QString kOrder = u" ORDER BY SEIKYU_ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s;

// The single-database statement with the optional fragments given.
QString seikyuStatement(const QString& corp, const QString& tiryoin, const QString& filters)
{
    QString joins = kCorpJoins;
    joins.replace(u" AND CORP.iType = 0"_s, corp).replace(u" AND TIRYOIN.iType = 0"_s, tiryoin);
    return joined({u"SELECT   0 as SINRYOU_TYPE"_s,
                   kSeikyuColumns,
                   kCorpColumns,
                   kType0Sums,
                   u" FROM ((月間実績 "_s,
                   kSubAndSejutsuJoins,
                   kSeikyuJoin,
                   joins,
                   kMonth,
                   kSite,
                   kFacilityCondition,
                   filters,
                   kGroupBy,
                   kGroupByCorp,
                   u" UNION SELECT   1 as SINRYOU_TYPE"_s,
                   kSeikyuColumns,
                   kCorpColumns,
                   kType1Values,
                   u" FROM (((月間実績 "_s,
                   kRiyoushaJoin,
                   kSubAndSejutsuJoins,
                   kSeikyuJoin,
                   joins,
                   kMonth,
                   u" AND 月間実績.実費料金 > 0"_s,
                   kSite,
                   kFacilityCondition,
                   filters,
                   kOrder});
}

const QString kAllDbSeikyuJoin = u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = (CASE WHEN "
                                 u"ISNULL(SEJUTSU_SISETSU.nOyaSisetsuCd,0) "
                                 u"= 0 THEN SEJUTSU_SISETSU.nIDNo ELSE SEJUTSU_SISETSU.nOyaSisetsuCd END)"_s;

const QString kKanjaHead = joined(
    {u"SELECT    0 as SINRYOU_TYPE ,RIYOUSHA.nIDNo AS RIYOUSHA_ID ,RIYOUSHA.cName AS RIYOUSHA_NAME"_s,
     u" ,RIYOUSHA.cNameKana AS RIYOUSHA_NAMEKANA ,RIYOUSHA.nRoomNo AS RIYOUSHA_ROOMNO"_s,
     u" ,(CASE WHEN iFutanritsu > 0 THEN iFutanritsu ELSE iKaigoLevel END) AS RIYOUSHA_FUTANWARIAI"_s,
     u" ,月間実績.施術回数 ,月間実績.総合計 ,月間実績.自己負担額2 ,月間実績.実費料金 ,月間実績.患者請求額"_s,
     u" ,(CASE WHEN ISNULL(SISETSU.nIDNo, 0) = 0 THEN -1 ELSE SISETSU.nIDNo END) AS SISETSU_ID"_s,
     u" ,SISETSU.cShamei1 AS SISETSU_NAME ,SISETSU.iPaymentType  ,HOKEN_NAME.cRyaku AS HOKEN_RYAKU"_s,
     u" ,RIYOUSHA.iSyogai ,RIYOUSHA_SUB.iRiyouJoseiUmu"_s,
     u" ,TIRYOIN.cShamei1 AS TIRYOIN_NAME ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN ,TIRYOIN.cAddress1 AS TIRYOIN_ADDRESS1"_s,
     u" ,TIRYOIN.cTelNo AS TIRYOIN_TELNO ,TIRYOIN.cFaxNo AS TIRYOIN_FAXNO ,TIRYOIN.cKinyuName AS TIRYOIN_BANKNAME"_s,
     u" ,TIRYOIN.cKinyuSiten AS TIRYOIN_SHITENNAME ,TIRYOIN.iKozaType AS TIRYOIN_KOUZATYPE"_s,
     u" ,TIRYOIN.cKozaBangou AS TIRYOIN_KOUZANO ,TIRYOIN.cKozaMeigi1 AS TIRYOIN_KOUZAMEIGI"_s,
     u" ,TIRYOIN.iKinSyubetsu ,TIRYOIN.iKinSiten"_s,
     u" FROM ((月間実績  LEFT JOIN RIYOUSHA ON 月間実績.患者IDNo = RIYOUSHA.nIDNo "_s,
     u" AND 月間実績.iKyotenCd = RIYOUSHA.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA.iKyotenEb )"_s,
     u" LEFT JOIN RIYOUSHA_SUB ON 月間実績.患者IDNo = RIYOUSHA_SUB.nIDNo "_s,
     u" AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA_SUB.iKyotenEb )"_s});

QString kanjaStatement(const QString& sisetsuJoin, const QString& tiryoin, const QString& filters,
                       const QString& order)
{
    return joined({kKanjaHead, sisetsuJoin,
                   u" LEFT JOIN HOKEN AS HOKEN_NAME ON HOKEN_NAME.iType = RIYOUSHA.iHoken"_s,
                   u" LEFT JOIN CORP AS TIRYOIN ON     TIRYOIN.iKyotenCd  = 1 AND TIRYOIN.iKyotenEb  = 2"_s,
                   tiryoin, kMonth, kSite, u" AND (月間実績.総合計 > 0 or 月間実績.実費料金 > 0)"_s,
                   u" AND SISETSU.nIDNo > 0 "_s, filters, order});
}

} // namespace

class tst_billing_sql : public QObject
{
    Q_OBJECT

    // Every statement compared here also runs on the embedded engine (last test).
    QStringList m_statements;

    void keep(const QString& statement) { m_statements.append(statement); }

private slots:
    void seikyuSingleDatabase_data()
    {
        QTest::addColumn<qint32>("dairi");
        QTest::addColumn<qint32>("tiryoin");
        QTest::addColumn<qint32>("seikyuSisetsu");
        QTest::addColumn<QString>("sisetsuType");
        QTest::addColumn<QString>("corpFragment");
        QTest::addColumn<QString>("tiryoinFragment");
        QTest::addColumn<QString>("filters");
        QTest::newRow("main corporation, all facilities")
            << 0 << 0 << 0 << QString() << u" AND CORP.iType = 0"_s << u" AND TIRYOIN.iType = 0"_s
            << QString();
        QTest::newRow("chosen corporation and clinic")
            << 7 << 8 << 0 << QString() << u" AND CORP.nIDNo  = 7"_s << u" AND TIRYOIN.nIDNo = 8"_s
            << QString();
        QTest::newRow("billing facility")
            << 0 << 0 << 12 << QString() << u" AND CORP.iType = 0"_s << u" AND TIRYOIN.iType = 0"_s
            << u" AND SEIKYU_SISETSU.nIDNo = 12"_s;
        QTest::newRow("facility kind with a quote")
            << -1 << -1 << 0 << u"グループ'ホーム"_s << u" AND CORP.iType = 0"_s
            << u" AND TIRYOIN.iType = 0"_s << u" AND SEIKYU_SISETSU.cSisetsuType = 'グループ''ホーム'"_s;
        QTest::newRow("both filters")
            << 3 << 0 << 4 << u"特養"_s << u" AND CORP.nIDNo  = 3"_s << u" AND TIRYOIN.iType = 0"_s
            << u" AND SEIKYU_SISETSU.nIDNo = 4 AND SEIKYU_SISETSU.cSisetsuType = '特養'"_s;
    }
    void seikyuSingleDatabase()
    {
        QFETCH(qint32, dairi);
        QFETCH(qint32, tiryoin);
        QFETCH(qint32, seikyuSisetsu);
        QFETCH(QString, sisetsuType);
        QFETCH(QString, corpFragment);
        QFETCH(QString, tiryoinFragment);
        QFETCH(QString, filters);
        PrintJouken j = baseJouken();
        j.nDairiCd = dairi;
        j.nTiryoinCd = tiryoin;
        j.nShisetuCdFrom = seikyuSisetsu;
        j.sSisetsuType1 = sisetsuType;
        const QString sql = csSeikyuSql(j, 1, 2);
        QCOMPARE(sql, seikyuStatement(corpFragment, tiryoinFragment, filters));
        keep(sql);
    }

    void seikyuAllDatabases()
    {
        const QString sites = csKyotenCondition({{1, 1}, {2, 3}});
        QCOMPARE(sites, u" AND (      ( 月間実績.iKyotenCd = 1    AND 月間実績.iKyotenEb = 1 )  OR       ( "
                        u"月間実績.iKyotenCd = 2    AND 月間実績.iKyotenEb = 3 )  ) "_s);
        QCOMPARE(csKyotenCondition({{4, 1}}),
                 u" AND (      ( 月間実績.iKyotenCd = 4    AND 月間実績.iKyotenEb = 1 )  ) "_s);

        PrintJouken j = baseJouken();
        j.nDairiCd = 9; // the corporation is looked up apart: no CORP join in these statements
        j.nShisetuCdFrom = 5;
        const QString type0 = csSeikyuAllDbSql(j, 0, sites);
        QCOMPARE(type0,
                 joined({u"SELECT   0 as SINRYOU_TYPE"_s, kSeikyuColumns, kType0Sums, u" FROM ((月間実績 "_s,
                         kSubAndSejutsuJoins, kAllDbSeikyuJoin, kMonth, u" AND 月間実績.自己負担額2 > 0"_s,
                         kFacilityCondition, u" AND SEIKYU_SISETSU.nIDNo = 5"_s, sites, kGroupBy, kOrder}));
        const QString type1 = csSeikyuAllDbSql(j, 1, sites);
        QCOMPARE(type1, joined({u"SELECT   1 as SINRYOU_TYPE"_s, kSeikyuColumns, kType1Values,
                                u" FROM (((月間実績 "_s, kRiyoushaJoin, kSubAndSejutsuJoins, kAllDbSeikyuJoin,
                                kMonth, u" AND 月間実績.実費料金 > 0"_s, kFacilityCondition,
                                u" AND SEIKYU_SISETSU.nIDNo = 5"_s, sites, kOrder}));
        keep(type0);
        keep(type1);
    }

    void corporationLookups()
    {
        PrintJouken j = baseJouken();
        const QString corpHead =
            u"select   CORP.cShamei1 AS CORP_NAME ,CORP.cYubinNo AS CORP_YUBIN ,CORP.cAddress1 AS "
            u"CORP_ADDRESS1 from CORP WHERE CORP.iKyotenCd  = 1   AND CORP.iKyotenEb  = 2"_s;
        const QString tiryoinHead =
            u"select   CORP.cShamei1 AS TIRYOIN_NAME ,CORP.cYubinNo AS TIRYOIN_YUBIN "
            u",CORP.cAddress1 AS TIRYOIN_ADDRESS1 from CORP WHERE CORP.iKyotenCd  = 1   AND "
            u"CORP.iKyotenEb  = 2"_s;
        QCOMPARE(csCorpSql(j, 1, 2), corpHead + u" AND CORP.iType = 0"_s);
        QCOMPARE(csTiryoinSql(j, 1, 2), tiryoinHead + u" AND CORP.iType = 0"_s);
        j.nDairiCd = 5;
        j.nTiryoinCd = 6;
        QCOMPARE(csCorpSql(j, 1, 2), corpHead + u" AND CORP.nIDNo  = 5"_s);
        QCOMPARE(csTiryoinSql(j, 1, 2), tiryoinHead + u" AND CORP.nIDNo = 6"_s);
        keep(csCorpSql(j, 1, 2));
        keep(csTiryoinSql(j, 1, 2));
    }

    void kanja_data()
    {
        QTest::addColumn<bool>("addressFacility");
        QTest::addColumn<qint32>("tiryoin");
        QTest::addColumn<qint32>("sisetsu");
        QTest::addColumn<QString>("sisetsuType");
        QTest::addColumn<qint32>("tantou");
        QTest::addColumn<qint16>("sort");
        QTest::addColumn<QString>("sisetsuJoin");
        QTest::addColumn<QString>("tiryoinFragment");
        QTest::addColumn<QString>("filters");
        QTest::addColumn<QString>("order");
        const QString care = u" LEFT JOIN SISETSU ON SISETSU.nIDNo = RIYOUSHA_SUB.iCareSisetsuCd"_s;
        const QString address =
            u" LEFT JOIN SISETSU ON SISETSU.nIDNo =  (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN "
            u"iAddressSisetsuCd2 ELSE  (CASE WHEN RIYOUSHA_SUB.iAddressSet = 2 THEN "
            u"iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END)"_s;
        const QString main = u" AND TIRYOIN.iType = 0"_s;
        QTest::newRow("care facility, sort 0")
            << false << 0 << 0 << QString() << 0 << qint16(0) << care << main << QString()
            << u" ORDER BY SISETSU_ID, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s;
        QTest::newRow("address facility, sort 1")
            << true << 0 << 0 << QString() << 0 << qint16(1) << address << main << QString()
            << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("all filters, sort 2")
            << false << 4 << 30 << u"有料'老人"_s << 6 << qint16(2) << care << u" AND TIRYOIN.nIDNo = 4"_s
            << u" AND SISETSU.nIDNo = 30 AND SISETSU.cSisetsuType = '有料''老人' AND RIYOUSHA.nTantou = 6"_s
            << u" ORDER BY SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s;
        QTest::newRow("facility code 1, sort 3")
            << true << 0 << 1 << QString() << 0 << qint16(3) << address << main << u" AND SISETSU.nIDNo = 1"_s
            << u" ORDER BY SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("sort outside 0-3")
            << false << 0 << 0 << QString() << 0 << qint16(7) << care << main << QString()
            << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, RIYOUSHA.cNameKana, RIYOUSHA.nRoomNo, SINRYOU_TYPE"_s;
    }
    void kanja()
    {
        QFETCH(bool, addressFacility);
        QFETCH(qint32, tiryoin);
        QFETCH(qint32, sisetsu);
        QFETCH(QString, sisetsuType);
        QFETCH(qint32, tantou);
        QFETCH(qint16, sort);
        QFETCH(QString, sisetsuJoin);
        QFETCH(QString, tiryoinFragment);
        QFETCH(QString, filters);
        QFETCH(QString, order);
        PrintJouken j = baseJouken();
        j.bSelSisetsuType = addressFacility;
        j.nTiryoinCd = tiryoin;
        j.nShisetuCdTo = sisetsu;
        j.sSisetsuType2 = sisetsuType;
        j.nTantouCd = tantou;
        j.iSortShisetsu = sort;
        const QString sql = csKanjaSql(j, 1, 2);
        QCOMPARE(sql, kanjaStatement(sisetsuJoin, tiryoinFragment, filters, order));
        keep(sql);
    }

    void treatmentDayStatements()
    {
        QCOMPARE(csSejyutuCntSql(42, 202412, 1, 2),
                 u"SELECT count(*) as J_CNT  FROM JISSEKI  WHERE     JISSEKI.iKyotenCd  = 1 AND "
                 u"JISSEKI.iKyotenEb  = 2"
                 u" AND JISSEKI.nRiyoushaIDNo  = 42 AND JISSEKI.tServicyDayStart  >= '2024/12/01' AND "
                 u"JISSEKI.tServicyDayStart  < '2025/01/01'"_s);
        QCOMPARE(
            cs4Down5UpSql(42, u"2024/12"_s, 1, 2),
            joined(
                {u"SELECT    JISSEKI.nRiyoushaIDNo ,JISSEKI.tServicyDayStart ,JISSEKI.nKanjaSeikyu"_s,
                 u" ,(CASE WHEN RIYOUSHA.iFutanritsu > 0 THEN RIYOUSHA.iFutanritsu ELSE RIYOUSHA.iKaigoLevel "
                 u"END) AS RIYOUSHA_FUTANWARIAI"_s,
                 u" ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nGokeiKinAnbun ELSE JISSEKI.nGokeiKin "
                 u"END) "
                 u"AS DAY_GOKEIKIN"_s,
                 u" FROM JISSEKI LEFT JOIN RIYOUSHA ON        JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo "_s,
                 u"   AND JISSEKI.iKyotenCd = RIYOUSHA.iKyotenCd    AND JISSEKI.iKyotenEb = RIYOUSHA.iKyotenEb "_s,
                 u" WHERE nRiyoushaIDNo = 42   AND tServicyDayStart >= '2024/12/01'   AND tServicyDayStart < "
                 u"'2025/01/01'"_s,
                 u"   AND JISSEKI.iKyotenCd = 1   AND JISSEKI.iKyotenEb = 2"_s,
                 u" ORDER BY  tServicyDayStart"_s}));
        keep(csSejyutuCntSql(42, 202412, 1, 2));
        keep(cs4Down5UpSql(42, u"2024/12"_s, 1, 2));

        // The same for every patient at once: the patient condition becomes the key.
        QCOMPARE(csSejyutuCntAllSql(202412, 1, 2),
                 u"SELECT JISSEKI.nRiyoushaIDNo ,count(*) as J_CNT  FROM JISSEKI  WHERE     "
                 u"JISSEKI.iKyotenCd  = 1 "
                 u"AND JISSEKI.iKyotenEb  = 2 AND JISSEKI.tServicyDayStart  >= '2024/12/01' AND "
                 u"JISSEKI.tServicyDayStart  < '2025/01/01' GROUP BY JISSEKI.nRiyoushaIDNo"_s);
        QCOMPARE(
            cs4Down5UpAllSql(u"2024/12"_s, 1, 2),
            joined({u"SELECT    JISSEKI.nRiyoushaIDNo"_s,
                    u" ,(CASE WHEN RIYOUSHA.iFutanritsu > 0 THEN RIYOUSHA.iFutanritsu ELSE "
                    u"RIYOUSHA.iKaigoLevel END) AS RIYOUSHA_FUTANWARIAI"_s,
                    u" ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nGokeiKinAnbun ELSE "
                    u"JISSEKI.nGokeiKin END) AS DAY_GOKEIKIN"_s,
                    u" FROM JISSEKI LEFT JOIN RIYOUSHA ON        JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo "_s,
                    u"   AND JISSEKI.iKyotenCd = RIYOUSHA.iKyotenCd    AND JISSEKI.iKyotenEb = "
                    u"RIYOUSHA.iKyotenEb "_s,
                    u" WHERE JISSEKI.iKyotenCd = 1   AND JISSEKI.iKyotenEb = 2"_s,
                    u"   AND JISSEKI.tServicyDayStart >= '2024/12/01'   AND JISSEKI.tServicyDayStart < "
                    u"'2025/01/01'"_s,
                    u" ORDER BY  JISSEKI.nRiyoushaIDNo, JISSEKI.tServicyDayStart"_s}));
        keep(csSejyutuCntAllSql(202412, 1, 2));
        keep(cs4Down5UpAllSql(u"2024/12"_s, 1, 2));
    }

    void kenRyousyuu_data()
    {
        QTest::addColumn<qint16>("kind");
        QTest::addColumn<qint16>("sort");
        QTest::addColumn<bool>("filtered");
        QTest::addColumn<QString>("order");
        QTest::newRow("kind 4, sort 1") << qint16(4) << qint16(1) << false
                                        << u" ORDER BY JISSEKI.nRiyoushaIDNo, JISSEKI.tServicyDayStart"_s;
        QTest::newRow("kind 5, sort 2, filtered")
            << qint16(5) << qint16(2) << true << u" ORDER BY RIYOUSHA.cNameKana, JISSEKI.tServicyDayStart"_s;
        QTest::newRow("kind 4, sort 3, filtered")
            << qint16(4) << qint16(3) << true
            << u" ORDER BY RIYOUSHA.nRoomNo, RIYOUSHA.cNameKana, JISSEKI.tServicyDayStart"_s;
    }
    void kenRyousyuu()
    {
        QFETCH(qint16, kind);
        QFETCH(qint16, sort);
        QFETCH(bool, filtered);
        QFETCH(QString, order);
        PrintJouken j = baseJouken();
        j.iPrintKind = kind;
        j.iSort = sort;
        if (filtered) {
            j.sSisetsuType2 = u"施'術"_s;
            j.nShisetuCdFrom = 8;
            j.sSisetsuType1 = u"請求"_s;
            j.nKanjaCd = 77;
        }
        const QString sql = csKenRyousyuuSql(j, 1, 2);
        const QString kind4 =
            u" AND (CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nFutankinAnbun ELSE JISSEKI.nFutankin END) > 0"_s;
        const QString kind5 = u" AND JISSEKI.nJippiSejutu > 0"_s;
        QVERIFY(sql.contains(u" AND JISSEKI.tServicyDayStart >= '2024/10/01' AND JISSEKI.tServicyDayStart < "
                             u"'2024/11/01' AND JISSEKI.nKanjaSeikyu > 0"_s +
                             (kind == 4 ? kind4 : kind5)));
        QCOMPARE(sql.contains(kind == 4 ? kind5 : kind4), false);
        const QStringList narrowing = {
            u" AND SEJUTSU_SISETSU.cSisetsuType = '施''術'"_s, u" AND SEIKYU_SISETSU.nIDNo = 8"_s,
            u" AND SEIKYU_SISETSU.cSisetsuType = '請求'"_s, u" AND JISSEKI.nRiyoushaIDNo = 77"_s};
        for (const QString& fragment : narrowing)
            QCOMPARE(sql.contains(fragment), filtered);
        QVERIFY(sql.endsWith((filtered ? narrowing.join(QString()) : QString()) + order));
        QVERIFY(sql.contains(u"HOKEN_NAME.cRyaku AS HOKEN_RYAKU"_s));
        QVERIFY(sql.contains(
            u"(CASE WHEN RIYOUSHA.tDouiDay2 is Not NULL and RIYOUSHA.tDouiDay2 >= RIYOUSHA.tDouiDay1"_s));
        keep(sql);
    }

    // The translation of the connection wrapper takes every statement above, on an empty schema.
    void statementsRunOnSqlite()
    {
        QVERIFY(m_statements.size() > 15);
        test::TestProgramFolder folder;
        QVERIFY(folder.isValid());
        cT_ADODB ado;
        QCOMPARE(ado.iInit(folder.connectionString().replace(u"sqlite:db"_s,
                                                             u"sqlite:"_s + folder.filePath(u"db"_s))),
                 0);
        QCOMPARE(ado.iConnect(), 0);
        for (const QString& sql : std::as_const(m_statements)) {
            RecordSet rs;
            if (ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0)
                QFAIL(qPrintable(ado.sErrMsg + u"\n"_s + sql));
            QVERIFY(rs.isEOF() || sql.contains(u"count(*)"_s));
            ado.iCloseRecSet(rs);
        }
        ado.iDisConnect();
    }
};

QTEST_GUILESS_MAIN(tst_billing_sql)
#include "tst_billing_sql.moc"
