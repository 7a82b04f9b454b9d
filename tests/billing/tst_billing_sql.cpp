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
        QTest::newRow("chosen corporation and clinic, the lowest codes")
            << 1 << 1 << 0 << QString()
            << QStringList{u" AND CORP.nIDNo  = 1"_s, u" AND TIRYOIN.nIDNo = 1"_s};
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
    }

    void seikyuAllDatabases()
    {
        const QString sites = kyotenConditionSql({{1, 1}, {2, 3}});
        PrintJouken j = baseJouken();
        j.nDairiCd = 9; // the corporation is looked up apart: no CORP join in these statements
        j.nShisetuCdFrom = 5;
        const QString type0 = seikyuAllDbSql(j, 0, sites);
        QVERIFY(type0.contains(u" AND 月間実績.自己負担額2 > 0"_s) && !type0.contains(u"CORP"_s));
        QVERIFY(seikyuAllDbSql(j, 1, sites)
                    .endsWith(u" AND SEIKYU_SISETSU.nIDNo = 5"_s + sites +
                              u" ORDER BY SEIKYU_ID, SINRYOU_TYPE, SEJUTSU_ID, ROOMNO"_s));
    }

    void corporationLookups()
    {
        PrintJouken j = baseJouken();
        QVERIFY(corpSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.iType = 0"_s));
        QVERIFY(tiryoinSql(j, 1, 2).endsWith(u" AND CORP.iType = 0"_s));
        j.nDairiCd = 1; // the lowest code one can choose
        j.nTiryoinCd = 1;
        QVERIFY(corpSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.nIDNo  = 1"_s));
        QVERIFY(tiryoinSql(j, 1, 2).endsWith(u"CORP.iKyotenEb  = 2 AND CORP.nIDNo = 1"_s));
    }

    // The narrowing conditions and the orders of the co-payment list the data tests leave out.
    void kanjaConditions_data()
    {
        QTest::addColumn<qint32>("sisetsu");
        QTest::addColumn<qint16>("sort");
        QTest::addColumn<QString>("tail");
        QTest::newRow("sort 1") << 0 << qint16(1) << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("facility code 1, sort 3")
            << 1 << qint16(3)
            << u" AND SISETSU.nIDNo = 1 AND SISETSU.cSisetsuType = '有料''老人' AND RIYOUSHA.nTantou = 6 "
               u"ORDER BY "
               u"SISETSU_ID, RIYOUSHA.nRoomNo, RIYOUSHA.nIDNo, SINRYOU_TYPE"_s;
        QTest::newRow("sort outside 0-3")
            << 0 << qint16(7)
            << u" ORDER BY SISETSU_ID, RIYOUSHA.nIDNo, RIYOUSHA.cNameKana, RIYOUSHA.nRoomNo, SINRYOU_TYPE"_s;
    }
    void kanjaConditions()
    {
        QFETCH(qint32, sisetsu);
        QFETCH(qint16, sort);
        QFETCH(QString, tail);
        PrintJouken j = baseJouken();
        j.nShisetuCdTo = sisetsu;
        j.iSortShisetsu = sort;
        j.nTiryoinCd = 1;
        j.nTantouCd = sisetsu > 0 ? 6 : 0;
        j.sSisetsuType2 = sisetsu > 0 ? u"有料'老人"_s : QString();
        const QString sql = kanjaSql(j, 1, 2);
        QVERIFY(sql.contains(
            u" AND TIRYOIN.nIDNo = 1 WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = 202410 "
            u"AND 月間実績.iKyotenCd  = 1 AND 月間実績.iKyotenEb  = 2 AND (月間実績.総合計 > 0 or "
            u"月間実績.実費料金 > 0) AND SISETSU.nIDNo > 0 "_s));
        QVERIFY(sql.endsWith(u" AND SISETSU.nIDNo > 0 "_s + tail));
    }

    void treatmentDayStatements()
    {
        // December's month ends in the next year.
        QVERIFY(sejyutuCntSql(42, 202412, 1, 2)
                    .endsWith(u" >= '2024/12/01' AND JISSEKI.tServicyDayStart  < '2025/01/01'"_s));
        QVERIFY(cs4Down5UpSql(42, u"2024/12"_s, 1, 2).contains(u" AND tServicyDayStart < '2025/01/01' "_s));
    }

    // The receipts' statement where the data tests do not reach: a split day's share, the facility
    // kinds with a quote, the room order.
    void kenRyousyuuStatement()
    {
        PrintJouken j = baseJouken();
        j.iSort = 3;
        j.sSisetsuType2 = u"施'術"_s;
        j.sSisetsuType1 = u"請求"_s;
        const QString sql = kenRyousyuuSql(j, ReceiptDays::CoPayment, 1, 2);
        QVERIFY(sql.contains(u" AND JISSEKI.nKanjaSeikyu > 0 AND (CASE WHEN JISSEKI.iAnbunUmu = 1 THEN "
                             u"JISSEKI.nFutankinAnbun ELSE JISSEKI.nFutankin END) > 0"_s));
        QVERIFY(sql.endsWith(
            u" AND SEJUTSU_SISETSU.cSisetsuType = '施''術' AND SEIKYU_SISETSU.cSisetsuType = "
            u"'請求' ORDER BY RIYOUSHA.nRoomNo, RIYOUSHA.cNameKana, JISSEKI.tServicyDayStart"_s));
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
