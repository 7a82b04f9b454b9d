// The statements of the invoice queries as SQL Server receives them: one whole text per statement
// family, the fragments that the conditions change, and every statement run on SQLite through the
// connection wrapper's translation.
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

PrintJouken baseJouken()
{
    PrintJouken j;
    j.sSeikyuYM = u"2024/10"_s;
    j.nSeikyuYM = 202410;
    j.sTeisyutuDate = u"2024/11/05"_s;
    return j;
}

} // namespace

class tst_billing_sql : public QObject
{
    Q_OBJECT

    // Every statement built here also runs on the embedded engine (last test).
    QStringList m_statements;

    void keep(const QString& statement) { m_statements.append(statement); }

private slots:
    void seikyuWholeText()
    {
        PrintJouken j = baseJouken();
        j.nDairiCd = 3;
        j.nShisetuCdFrom = 4;
        j.sSisetsuType1 = u"特養"_s;
        QCOMPARE(csSeikyuSql(j, 1, 2),
                 u"SELECT   0 as SINRYOU_TYPE ,(CASE WHEN ISNULL(SEIKYU_SISETSU.nIDNo,0) = 0 THEN -1 ELSE S"
                 u"EIKYU_SISETSU.nIDNo END) AS SEIKYU_ID ,SEIKYU_SISETSU.cShamei1 AS SEIKYU_NAME ,SEIKYU_SI"
                 u"SETSU.cYubinNo AS SEIKYU_YUBIN ,SEIKYU_SISETSU.cAddress1 AS SEIKYU_ADDRESS1 ,SEIKYU_SISE"
                 u"TSU.cAddress2 AS SEIKYU_ADDRESS2 ,SEJUTSU_SISETSU.nIDNo AS SEJUTSU_ID ,SEJUTSU_SISETSU.c"
                 u"Shamei1 AS SEJUTSU_NAME ,CORP.cShamei1 AS CORP_NAME ,CORP.cYubinNo AS CORP_YUBIN ,CORP.c"
                 u"Address1 AS CORP_ADDRESS1 ,TIRYOIN.cShamei1 AS TIRYOIN_NAME ,TIRYOIN.cYubinNo AS TIRYOIN"
                 u"_YUBIN ,TIRYOIN.cAddress1 AS TIRYOIN_ADDRESS1 ,SUM(1) AS SEJUTSU_NINZU ,SUM(月間実績.総"
                 u"合計) AS SEJUTSU_GOUKEI ,SUM(月間実績.自己負担額2) AS SEJUTSU_KANJASEIKYU ,0 AS ROOMNO ,"
                 u"'施設' AS RIYOUSHA_NAME FROM ((月間実績  LEFT JOIN RIYOUSHA_SUB ON 月間実績.患者IDNo = R"
                 u"IYOUSHA_SUB.nIDNo  AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd AND 月間実績.iKyotenE"
                 u"b = RIYOUSHA_SUB.iKyotenEb ) LEFT JOIN SISETSU AS SEJUTSU_SISETSU ON SEJUTSU_SISETSU.nID"
                 u"No =  (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisetsuCd2 ELSE  (CASE WHEN R"
                 u"IYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END) ) L"
                 u"EFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = SEJUTSU_SISETSU.nOyaSisetsu"
                 u"Cd LEFT JOIN CORP ON     CORP.iKyotenCd  = 1 AND CORP.iKyotenEb  = 2 AND CORP.nIDNo  = 3"
                 u" LEFT JOIN CORP AS TIRYOIN ON     TIRYOIN.iKyotenCd  = 1 AND TIRYOIN.iKyotenEb  = 2 AND "
                 u"TIRYOIN.iType = 0 WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = 202410 AND 月間実績.iK"
                 u"yotenCd  = 1 AND 月間実績.iKyotenEb  = 2 AND (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THE"
                 u"N iAddressSisetsuCd2 ELSE  (CASE WHEN RIYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuC"
                 u"d3 ELSE iAddressSisetsuCd END) END) > 0  AND SEIKYU_SISETSU.nIDNo = 4 AND SEIKYU_SISETSU"
                 u".cSisetsuType = '特養' GROUP BY  SEIKYU_SISETSU.nIDNo, SEIKYU_SISETSU.cShamei1, SEIKYU_S"
                 u"ISETSU.cYubinNo     ,SEIKYU_SISETSU.cAddress1, SEIKYU_SISETSU.cAddress2, SEJUTSU_SISETSU"
                 u".nIDNo ,SEJUTSU_SISETSU.cShamei1     ,CORP.cShamei1, CORP.cYubinNo, CORP.cAddress1     ,"
                 u"TIRYOIN.cShamei1, TIRYOIN.cYubinNo, TIRYOIN.cAddress1 UNION SELECT   1 as SINRYOU_TYPE ,"
                 u"(CASE WHEN ISNULL(SEIKYU_SISETSU.nIDNo,0) = 0 THEN -1 ELSE SEIKYU_SISETSU.nIDNo END) AS "
                 u"SEIKYU_ID ,SEIKYU_SISETSU.cShamei1 AS SEIKYU_NAME ,SEIKYU_SISETSU.cYubinNo AS SEIKYU_YUB"
                 u"IN ,SEIKYU_SISETSU.cAddress1 AS SEIKYU_ADDRESS1 ,SEIKYU_SISETSU.cAddress2 AS SEIKYU_ADDR"
                 u"ESS2 ,SEJUTSU_SISETSU.nIDNo AS SEJUTSU_ID ,SEJUTSU_SISETSU.cShamei1 AS SEJUTSU_NAME ,COR"
                 u"P.cShamei1 AS CORP_NAME ,CORP.cYubinNo AS CORP_YUBIN ,CORP.cAddress1 AS CORP_ADDRESS1 ,T"
                 u"IRYOIN.cShamei1 AS TIRYOIN_NAME ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN ,TIRYOIN.cAddress1 AS"
                 u" TIRYOIN_ADDRESS1 ,0 AS SEJUTSU_NINZU ,0 AS SEJUTSU_GOUKEI ,月間実績.実費料金 AS SEJUTSU"
                 u"_KANJASEIKYU ,RIYOUSHA.nRoomNo AS ROOMNO ,RIYOUSHA.cName AS RIYOUSHA_NAME FROM (((月間実"
                 u"績  LEFT JOIN RIYOUSHA ON 月間実績.患者IDNo = RIYOUSHA.nIDNo  AND 月間実績.iKyotenCd = R"
                 u"IYOUSHA.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA.iKyotenEb ) LEFT JOIN RIYOUSHA_SUB O"
                 u"N 月間実績.患者IDNo = RIYOUSHA_SUB.nIDNo  AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenC"
                 u"d AND 月間実績.iKyotenEb = RIYOUSHA_SUB.iKyotenEb ) LEFT JOIN SISETSU AS SEJUTSU_SISETSU"
                 u" ON SEJUTSU_SISETSU.nIDNo =  (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisets"
                 u"uCd2 ELSE  (CASE WHEN RIYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuCd3 ELSE iAddress"
                 u"SisetsuCd END) END) ) LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = SEJU"
                 u"TSU_SISETSU.nOyaSisetsuCd LEFT JOIN CORP ON     CORP.iKyotenCd  = 1 AND CORP.iKyotenEb  "
                 u"= 2 AND CORP.nIDNo  = 3 LEFT JOIN CORP AS TIRYOIN ON     TIRYOIN.iKyotenCd  = 1 AND TIRY"
                 u"OIN.iKyotenEb  = 2 AND TIRYOIN.iType = 0 WHERE 月間実績.実績年 * 100 + 月間実績.実績月 ="
                 u" 202410 AND 月間実績.実費料金 > 0 AND 月間実績.iKyotenCd  = 1 AND 月間実績.iKyotenEb  = "
                 u"2 AND (CASE WHEN RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisetsuCd2 ELSE  (CASE WHEN R"
                 u"IYOUSHA_SUB.iAddressSet = 2 THEN iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END) > 0"
                 u"  AND SEIKYU_SISETSU.nIDNo = 4 AND SEIKYU_SISETSU.cSisetsuType = '特養' ORDER BY SEIKYU_"
                 u"ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s);
    }

    // Each condition changes its own fragment, in both halves of the union.
    void seikyuConditions_data()
    {
        QTest::addColumn<qint32>("dairi");
        QTest::addColumn<qint32>("tiryoin");
        QTest::addColumn<qint32>("seikyuSisetsu");
        QTest::addColumn<QString>("sisetsuType");
        QTest::addColumn<QStringList>("fragments");
        QTest::newRow("main corporation")
            << 0 << -1 << 0 << QString()
            << QStringList{u" AND CORP.iType = 0"_s, u" AND TIRYOIN.iType = 0"_s};
        QTest::newRow("chosen corporation and clinic")
            << 7 << 8 << 0 << QString()
            << QStringList{u" AND CORP.nIDNo  = 7"_s, u" AND TIRYOIN.nIDNo = 8"_s};
        QTest::newRow("facility kind with a quote")
            << 0 << 0 << 12 << u"グループ'ホーム"_s
            << QStringList{
                   u" AND SEIKYU_SISETSU.nIDNo = 12 AND SEIKYU_SISETSU.cSisetsuType = 'グループ''ホーム'"_s};
    }
    void seikyuConditions()
    {
        QFETCH(qint32, dairi);
        QFETCH(qint32, tiryoin);
        QFETCH(qint32, seikyuSisetsu);
        QFETCH(QString, sisetsuType);
        QFETCH(QStringList, fragments);
        PrintJouken j = baseJouken();
        j.nDairiCd = dairi;
        j.nTiryoinCd = tiryoin;
        j.nShisetuCdFrom = seikyuSisetsu;
        j.sSisetsuType1 = sisetsuType;
        const QString sql = csSeikyuSql(j, 1, 2);
        for (const QString& fragment : fragments)
            QCOMPARE(sql.count(fragment), 2);
        keep(sql);
    }

    void seikyuAllDatabases()
    {
        const QString sites = csKyotenCondition({{1, 1}, {2, 3}});
        QCOMPARE(sites, u" AND (      ( 月間実績.iKyotenCd = 1    AND 月間実績.iKyotenEb = 1 )  OR       ( "
                        u"月間実績.iKyotenCd = 2    AND 月間実績.iKyotenEb = 3 )  ) "_s);
        PrintJouken j = baseJouken();
        j.nDairiCd = 9; // the corporation is looked up apart: no CORP join in these statements
        j.nShisetuCdFrom = 5;
        const QString type0 = csSeikyuAllDbSql(j, 0, sites);
        QVERIFY(type0.contains(u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = (CASE WHEN "
                               u"ISNULL(SEJUTSU_SISETSU.nOyaSisetsuCd,0) = 0 THEN SEJUTSU_SISETSU.nIDNo ELSE "
                               u"SEJUTSU_SISETSU.nOyaSisetsuCd END) WHERE "_s));
        QVERIFY(type0.contains(u" AND 月間実績.自己負担額2 > 0"_s) && !type0.contains(u"CORP"_s));
        const QString type1 = csSeikyuAllDbSql(j, 1, sites);
        QVERIFY(type1.startsWith(u"SELECT   1 as SINRYOU_TYPE"_s));
        QVERIFY(type1.contains(u" AND 月間実績.実費料金 > 0"_s));
        QVERIFY(type1.endsWith(u" AND SEIKYU_SISETSU.nIDNo = 5"_s + sites +
                               u" ORDER BY SEIKYU_ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s));
        keep(type0);
        keep(type1);
    }

    void corporationLookups()
    {
        PrintJouken j = baseJouken();
        QCOMPARE(csCorpSql(j, 1, 2),
                 u"select   CORP.cShamei1 AS CORP_NAME ,CORP.cYubinNo AS CORP_YUBIN ,"
                 u"CORP.cAddress1 AS CORP_ADDRESS1 from CORP WHERE CORP.iKyotenCd  = 1   AND "
                 u"CORP.iKyotenEb  = 2 AND CORP.iType = 0"_s);
        QVERIFY(csTiryoinSql(j, 1, 2).startsWith(u"select   CORP.cShamei1 AS TIRYOIN_NAME"_s));
        QVERIFY(csTiryoinSql(j, 1, 2).endsWith(u" AND CORP.iType = 0"_s));
        j.nDairiCd = 5;
        j.nTiryoinCd = 6;
        QVERIFY(csCorpSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.nIDNo  = 5"_s));
        QVERIFY(csTiryoinSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.nIDNo = 6"_s));
        keep(csCorpSql(j, 1, 2));
        keep(csTiryoinSql(j, 1, 2));
    }

    void kanjaWholeText()
    {
        PrintJouken j = baseJouken();
        j.nTiryoinCd = 4;
        j.nShisetuCdTo = 30;
        j.sSisetsuType2 = u"有料'老人"_s;
        j.nTantouCd = 6;
        j.iSortShisetsu = 2;
        QCOMPARE(csKanjaSql(j, 1, 2),
                 u"SELECT    0 as SINRYOU_TYPE ,RIYOUSHA.nIDNo AS RIYOUSHA_ID ,RIYOUSHA.cName AS RIYOUSHA_N"
                 u"AME ,RIYOUSHA.cNameKana AS RIYOUSHA_NAMEKANA ,RIYOUSHA.nRoomNo AS RIYOUSHA_ROOMNO ,(CASE"
                 u" WHEN iFutanritsu > 0 THEN iFutanritsu ELSE iKaigoLevel END) AS RIYOUSHA_FUTANWARIAI ,月"
                 u"間実績.施術回数 ,月間実績.総合計 ,月間実績.自己負担額2 ,月間実績.実費料金 ,月間実績.患者"
                 u"請求額 ,(CASE WHEN ISNULL(SISETSU.nIDNo, 0) = 0 THEN -1 ELSE SISETSU.nIDNo END) AS SISET"
                 u"SU_ID ,SISETSU.cShamei1 AS SISETSU_NAME ,SISETSU.iPaymentType  ,HOKEN_NAME.cRyaku AS HOK"
                 u"EN_RYAKU ,RIYOUSHA.iSyogai ,RIYOUSHA_SUB.iRiyouJoseiUmu ,TIRYOIN.cShamei1 AS TIRYOIN_NAM"
                 u"E ,TIRYOIN.cYubinNo AS TIRYOIN_YUBIN ,TIRYOIN.cAddress1 AS TIRYOIN_ADDRESS1 ,TIRYOIN.cTe"
                 u"lNo AS TIRYOIN_TELNO ,TIRYOIN.cFaxNo AS TIRYOIN_FAXNO ,TIRYOIN.cKinyuName AS TIRYOIN_BAN"
                 u"KNAME ,TIRYOIN.cKinyuSiten AS TIRYOIN_SHITENNAME ,TIRYOIN.iKozaType AS TIRYOIN_KOUZATYPE"
                 u" ,TIRYOIN.cKozaBangou AS TIRYOIN_KOUZANO ,TIRYOIN.cKozaMeigi1 AS TIRYOIN_KOUZAMEIGI ,TIR"
                 u"YOIN.iKinSyubetsu ,TIRYOIN.iKinSiten FROM ((月間実績  LEFT JOIN RIYOUSHA ON 月間実績.患"
                 u"者IDNo = RIYOUSHA.nIDNo  AND 月間実績.iKyotenCd = RIYOUSHA.iKyotenCd AND 月間実績.iKyote"
                 u"nEb = RIYOUSHA.iKyotenEb ) LEFT JOIN RIYOUSHA_SUB ON 月間実績.患者IDNo = RIYOUSHA_SUB.nI"
                 u"DNo  AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA_S"
                 u"UB.iKyotenEb ) LEFT JOIN SISETSU ON SISETSU.nIDNo = RIYOUSHA_SUB.iCareSisetsuCd LEFT JOI"
                 u"N HOKEN AS HOKEN_NAME ON HOKEN_NAME.iType = RIYOUSHA.iHoken LEFT JOIN CORP AS TIRYOIN ON"
                 u"     TIRYOIN.iKyotenCd  = 1 AND TIRYOIN.iKyotenEb  = 2 AND TIRYOIN.nIDNo = 4 WHERE 月間"
                 u"実績.実績年 * 100 + 月間実績.実績月 = 202410 AND 月間実績.iKyotenCd  = 1 AND 月間実績.iK"
                 u"yotenEb  = 2 AND (月間実績.総合計 > 0 or 月間実績.実費料金 > 0) AND SISETSU.nIDNo > 0  A"
                 u"ND SISETSU.nIDNo = 30 AND SISETSU.cSisetsuType = '有料''老人' AND RIYOUSHA.nTantou = 6 O"
                 u"RDER BY SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s);
    }

    // The facility join and the order of the co-payment list.
    void kanjaConditions_data()
    {
        QTest::addColumn<bool>("addressFacility");
        QTest::addColumn<qint32>("sisetsu");
        QTest::addColumn<qint16>("sort");
        QTest::addColumn<QString>("join");
        QTest::addColumn<QString>("tail");
        const QString care = u" LEFT JOIN SISETSU ON SISETSU.nIDNo = RIYOUSHA_SUB.iCareSisetsuCd "_s;
        const QString address = u" LEFT JOIN SISETSU ON SISETSU.nIDNo = "_s + csAddressSetCase() + u' ';
        QTest::newRow("care facility, sort 0")
            << false << 0 << qint16(0) << care << u" ORDER BY SISETSU_ID, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s;
        QTest::newRow("address facility, sort 1")
            << true << 0 << qint16(1) << address << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("facility code 1, sort 3")
            << true << 1 << qint16(3) << address
            << u" AND SISETSU.nIDNo = 1 ORDER BY SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("sort outside 0-3")
            << false << 0 << qint16(7) << care
            << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, RIYOUSHA.cNameKana, RIYOUSHA.nRoomNo, SINRYOU_TYPE"_s;
    }
    void kanjaConditions()
    {
        QFETCH(bool, addressFacility);
        QFETCH(qint32, sisetsu);
        QFETCH(qint16, sort);
        QFETCH(QString, join);
        QFETCH(QString, tail);
        PrintJouken j = baseJouken();
        j.bSelSisetsuType = addressFacility;
        j.nShisetuCdTo = sisetsu;
        j.iSortShisetsu = sort;
        const QString sql = csKanjaSql(j, 1, 2);
        QVERIFY(sql.contains(join + u"LEFT JOIN HOKEN"_s));
        QVERIFY(sql.endsWith(u" AND SISETSU.nIDNo > 0 "_s + tail));
        keep(sql);
    }

    void treatmentDayStatements()
    {
        QCOMPARE(csSejyutuCntSql(42, 202412, 1, 2),
                 u"SELECT count(*) as J_CNT  FROM JISSEKI  WHERE     JISSEKI.iKyotenCd  = 1 AND "
                 u"JISSEKI.iKyotenEb  = 2 AND JISSEKI.nRiyoushaIDNo  = 42 AND JISSEKI.tServicyDayStart  >= "
                 u"'2024/12/01' AND JISSEKI.tServicyDayStart  < '2025/01/01'"_s);
        QVERIFY(cs4Down5UpSql(42, u"2024/12"_s, 1, 2)
                    .endsWith(u" WHERE nRiyoushaIDNo = 42   AND tServicyDayStart >= '2024/12/01'   AND "
                              u"tServicyDayStart < '2025/01/01'   AND JISSEKI.iKyotenCd = 1   AND "
                              u"JISSEKI.iKyotenEb = 2 ORDER BY  tServicyDayStart"_s));
        // The same for every patient at once: the patient condition becomes the key.
        const QString counts = csSejyutuCntAllSql(202412, 1, 2);
        QVERIFY(counts.startsWith(u"SELECT JISSEKI.nRiyoushaIDNo ,count(*) as J_CNT "_s));
        QVERIFY(counts.endsWith(u" < '2025/01/01' GROUP BY JISSEKI.nRiyoushaIDNo"_s));
        const QString days = cs4Down5UpAllSql(u"2024/12"_s, 1, 2);
        QVERIFY(days.endsWith(u" ORDER BY  JISSEKI.nRiyoushaIDNo, JISSEKI.tServicyDayStart"_s));
        keep(csSejyutuCntSql(42, 202412, 1, 2));
        keep(cs4Down5UpSql(42, u"2024/12"_s, 1, 2));
        keep(counts);
        keep(days);
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
        j.iSort = sort;
        if (filtered) {
            j.sSisetsuType2 = u"施'術"_s;
            j.nShisetuCdFrom = 8;
            j.sSisetsuType1 = u"請求"_s;
            j.nKanjaCd = 77;
        }
        const QString sql =
            csKenRyousyuuSql(j, kind == 4 ? ReceiptDays::CoPayment : ReceiptDays::SelfPay, 1, 2);
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
