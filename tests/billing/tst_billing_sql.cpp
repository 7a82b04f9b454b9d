// The statements of the invoice queries as SQL Server receives them: the fragments that the
// conditions change, and statements of every family run on SQLite through the connection
// wrapper's translation. What the statements select is proven by the query tests on real data.
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

private slots:
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
        const QString sql = seikyuSql(j, 1, 2);
        for (const QString& fragment : fragments)
            QCOMPARE(sql.count(fragment), 2);
        // The patients' shares of the month, then their self-pay fees; one order over both.
        QVERIFY(sql.startsWith(u"SELECT   0 as SINRYOU_TYPE"_s));
        QCOMPARE(sql.count(u" UNION SELECT   1 as SINRYOU_TYPE"_s), 1);
        QCOMPARE(
            sql.count(u"WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = 202410 AND 月間実績.iKyotenCd  = 1 "
                      u"AND 月間実績.iKyotenEb  = 2"_s),
            1);
        QCOMPARE(sql.count(u" AND 月間実績.実費料金 > 0 AND 月間実績.iKyotenCd  = 1"_s), 1);
        QVERIFY(sql.endsWith(u" ORDER BY SEIKYU_ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s));
    }

    void seikyuAllDatabases()
    {
        const QString sites = kyotenConditionSql({{1, 1}, {2, 3}});
        QCOMPARE(sites, u" AND (      ( 月間実績.iKyotenCd = 1    AND 月間実績.iKyotenEb = 1 )  OR       ( "
                        u"月間実績.iKyotenCd = 2    AND 月間実績.iKyotenEb = 3 )  ) "_s);
        PrintJouken j = baseJouken();
        j.nDairiCd = 9; // the corporation is looked up apart: no CORP join in these statements
        j.nShisetuCdFrom = 5;
        const QString type0 = seikyuAllDbSql(j, 0, sites);
        QVERIFY(type0.contains(u" LEFT JOIN SISETSU AS SEIKYU_SISETSU ON SEIKYU_SISETSU.nIDNo = (CASE WHEN "
                               u"ISNULL(SEJUTSU_SISETSU.nOyaSisetsuCd,0) = 0 THEN SEJUTSU_SISETSU.nIDNo ELSE "
                               u"SEJUTSU_SISETSU.nOyaSisetsuCd END) WHERE "_s));
        QVERIFY(type0.contains(u" AND 月間実績.自己負担額2 > 0"_s) && !type0.contains(u"CORP"_s));
        const QString type1 = seikyuAllDbSql(j, 1, sites);
        QVERIFY(type1.startsWith(u"SELECT   1 as SINRYOU_TYPE"_s));
        QVERIFY(type1.contains(u" AND 月間実績.実費料金 > 0"_s));
        QVERIFY(type1.endsWith(u" AND SEIKYU_SISETSU.nIDNo = 5"_s + sites +
                               u" ORDER BY SEIKYU_ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s));
    }

    void corporationLookups()
    {
        PrintJouken j = baseJouken();
        QCOMPARE(corpSql(j, 1, 2),
                 u"select   CORP.cShamei1 AS CORP_NAME ,CORP.cYubinNo AS CORP_YUBIN ,"
                 u"CORP.cAddress1 AS CORP_ADDRESS1 from CORP WHERE CORP.iKyotenCd  = 1   AND "
                 u"CORP.iKyotenEb  = 2 AND CORP.iType = 0"_s);
        QVERIFY(tiryoinSql(j, 1, 2).startsWith(u"select   CORP.cShamei1 AS TIRYOIN_NAME"_s));
        QVERIFY(tiryoinSql(j, 1, 2).endsWith(u" AND CORP.iType = 0"_s));
        j.nDairiCd = 5;
        j.nTiryoinCd = 6;
        QVERIFY(corpSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.nIDNo  = 5"_s));
        QVERIFY(tiryoinSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.nIDNo = 6"_s));
    }

    // The facility join, the narrowing conditions and the order of the co-payment list.
    void kanjaConditions_data()
    {
        QTest::addColumn<bool>("addressFacility");
        QTest::addColumn<qint32>("sisetsu");
        QTest::addColumn<qint16>("sort");
        QTest::addColumn<QString>("join");
        QTest::addColumn<QString>("tail");
        const QString care = u" LEFT JOIN SISETSU ON SISETSU.nIDNo = RIYOUSHA_SUB.iCareSisetsuCd "_s;
        const QString address = u" LEFT JOIN SISETSU ON SISETSU.nIDNo = "_s + addressSetCaseSql() + u' ';
        QTest::newRow("care facility, sort 0")
            << false << 0 << qint16(0) << care << u" ORDER BY SISETSU_ID, RIYOUSHA.cNameKana, SINRYOU_TYPE"_s;
        QTest::newRow("address facility, sort 1")
            << true << 0 << qint16(1) << address << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("facility code 1, sort 3")
            << true << 1 << qint16(3) << address
            << u" AND SISETSU.nIDNo = 1 AND SISETSU.cSisetsuType = '有料''老人' AND RIYOUSHA.nTantou = 6 "
               u"ORDER BY "
               u"SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
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
        j.nTiryoinCd = 4;
        j.nTantouCd = sisetsu > 0 ? 6 : 0;
        j.sSisetsuType2 = sisetsu > 0 ? u"有料'老人"_s : QString();
        const QString sql = kanjaSql(j, 1, 2);
        QVERIFY(sql.contains(join + u"LEFT JOIN HOKEN"_s));
        QVERIFY(sql.contains(
            u" AND TIRYOIN.nIDNo = 4 WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = 202410 "
            u"AND 月間実績.iKyotenCd  = 1 AND 月間実績.iKyotenEb  = 2 AND (月間実績.総合計 > 0 or "
            u"月間実績.実費料金 > 0) AND SISETSU.nIDNo > 0 "_s));
        QVERIFY(sql.endsWith(u" AND SISETSU.nIDNo > 0 "_s + tail));
    }

    void treatmentDayStatements()
    {
        QCOMPARE(sejyutuCntSql(42, 202412, 1, 2),
                 u"SELECT count(*) as J_CNT  FROM JISSEKI  WHERE     JISSEKI.iKyotenCd  = 1 AND "
                 u"JISSEKI.iKyotenEb  = 2 AND JISSEKI.nRiyoushaIDNo  = 42 AND JISSEKI.tServicyDayStart  >= "
                 u"'2024/12/01' AND JISSEKI.tServicyDayStart  < '2025/01/01'"_s);
        QVERIFY(cs4Down5UpSql(42, u"2024/12"_s, 1, 2)
                    .endsWith(u" WHERE nRiyoushaIDNo = 42   AND tServicyDayStart >= '2024/12/01'   AND "
                              u"tServicyDayStart < '2025/01/01'   AND JISSEKI.iKyotenCd = 1   AND "
                              u"JISSEKI.iKyotenEb = 2 ORDER BY  tServicyDayStart"_s));
        // The same for every patient at once: the patient condition becomes the key.
        const QString counts = sejyutuCntAllSql(202412, 1, 2);
        QVERIFY(counts.startsWith(u"SELECT JISSEKI.nRiyoushaIDNo ,count(*) as J_CNT "_s));
        QVERIFY(counts.endsWith(u" < '2025/01/01' GROUP BY JISSEKI.nRiyoushaIDNo"_s));
        const QString days = cs4Down5UpAllSql(u"2024/12"_s, 1, 2);
        QVERIFY(days.endsWith(u" ORDER BY  JISSEKI.nRiyoushaIDNo, JISSEKI.tServicyDayStart"_s));
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
            kenRyousyuuSql(j, kind == 4 ? ReceiptDays::CoPayment : ReceiptDays::SelfPay, 1, 2);
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
    }

    // The translation of the connection wrapper takes a statement of every family with every
    // narrowing condition set, on an empty schema.
    void statementsRunOnSqlite()
    {
        PrintJouken j = baseJouken();
        j.nDairiCd = 3;
        j.nTiryoinCd = 4;
        j.nShisetuCdFrom = 5;
        j.nShisetuCdTo = 6;
        j.sSisetsuType1 = u"特'養"_s;
        j.sSisetsuType2 = u"有料"_s;
        j.nTantouCd = 7;
        j.nKanjaCd = 8;
        j.bSelSisetsuType = true;
        const QString sites = kyotenConditionSql({{1, 1}, {2, 3}});
        QStringList statements = {seikyuSql(j, 1, 2),
                                  seikyuAllDbSql(j, 0, sites),
                                  seikyuAllDbSql(j, 1, sites),
                                  corpSql(j, 1, 2),
                                  tiryoinSql(j, 1, 2),
                                  sejyutuCntSql(42, 202412, 1, 2),
                                  cs4Down5UpSql(42, u"2024/12"_s, 1, 2),
                                  sejyutuCntAllSql(202412, 1, 2),
                                  cs4Down5UpAllSql(u"2024/12"_s, 1, 2)};
        for (qint16 sort = 0; sort < 5; ++sort) {
            j.iSort = sort;
            j.iSortShisetsu = sort;
            statements << kanjaSql(j, 1, 2) << kenRyousyuuSql(j, ReceiptDays(sort % 3), 1, 2);
        }
        test::TestProgramFolder folder;
        QVERIFY(folder.isValid());
        cT_ADODB ado;
        QCOMPARE(ado.iInit(folder.connectionString().replace(u"sqlite:db"_s,
                                                             u"sqlite:"_s + folder.filePath(u"db"_s))),
                 0);
        QCOMPARE(ado.iConnect(), 0);
        for (const QString& sql : std::as_const(statements)) {
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
