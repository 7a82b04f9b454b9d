#include "db/AdodbIni.h"
#include "db/DatabaseList.h"
#include "db/cT_ADODB.h"
#include "demo/DemoProgramFolder.h"
#include "support/TestInteraction.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

// Runs one statement through the program's connection wrapper and returns the named columns of
// every record; fails the test with the wrapper's message.
QList<QVariantList> query(const QString& connection, const QString& sql, const QStringList& columns)
{
    QList<QVariantList> rows;
    cT_ADODB ado;
    if (ado.iInit(connection) != 0 || ado.iConnect() != 0) {
        QTest::qFail(qPrintable(ado.sErrMsg), __FILE__, __LINE__);
        return rows;
    }
    RecordSet rs;
    if (ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        QTest::qFail(qPrintable(ado.sErrMsg + u" in: "_s + sql), __FILE__, __LINE__);
        ado.iDisConnect();
        return rows;
    }
    while (!rs.isEOF()) {
        QVariantList row;
        for (const QString& c : columns)
            row.append(rs.field(c));
        rows.append(row);
        rs.moveNext();
    }
    ado.iCloseRecSet(rs);
    ado.iDisConnect();
    return rows;
}

} // namespace

// The demo folder as the program itself reads it: its settings files through the program's
// readers, its databases through the connection wrapper with the suite's own T-SQL statements.
class tst_DemoSuite : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    test::TestInteraction m_ui;
    AppContext m_ctx;

private slots:
    void initTestCase()
    {
        DemoOptions options;
        options.folder = m_dir.filePath(u"demo"_s);
        options.patients = 60;
        options.month = QDate(2026, 10, 1);
        QString error;
        QVERIFY2(DemoProgramFolder(options).create(m_ui, &error), qPrintable(error));
        m_ctx.csAppDir = options.folder;
        QDir::setCurrent(options.folder);
        m_ctx.iBaseKyotenCd = 1;
        m_ctx.iBaseKyotenEb = 1;
        m_ctx.ui = &m_ui;
    }

    void databaseListAndSites()
    {
        QCOMPARE(cDBserverName2(m_ctx), QString());
        QList<DbInfo> list;
        QCOMPARE(iDatabaseRead(m_ctx, list), qint16(2));
        QCOMPARE(list[0].cDatabase, u"suite"_s);
        QCOMPARE(list[0].cServer, u"sqlite:db"_s);
        QCOMPARE(list[0].cDbName, u"suite"_s);
        QCOMPARE(list[1].cDatabase, u"suite2"_s);
        QVERIFY(m_ui.messages.isEmpty());

        const QStringList columns = {u"iKyotenCd"_s, u"iKyotenEb"_s};
        QCOMPARE(query(csDbConnectionString(list[0]), csKyotenGridSql(false, 0), columns),
                 (QList<QVariantList>{{1, 1}, {1, 2}}));
        QCOMPARE(query(csDbConnectionString(list[1]), csKyotenGridSql(false, 0), columns),
                 (QList<QVariantList>{{2, 1}}));
        // With every site: the closed site shows, the head-office row (branch 0) still does not.
        QCOMPARE(query(csDbConnectionString(list[1]), csKyotenGridSql(true, 0), columns),
                 (QList<QVariantList>{{2, 1}, {2, 9}}));
    }

    // A patient's month total and share, recomputed from the days with the visit-split statement,
    // equal the month row.
    void dayAmountsMatchTheMonthRow()
    {
        const QString cs = readAdodbConnectionString(m_ctx);
        QVERIFY(cs.contains(u"Database=suite;"_s));
        const auto months =
            query(cs,
                  u"SELECT 月間実績.患者IDNo, 月間実績.総合計, 月間実績.自己負担額2, 月間実績.施術回数 "
                  "FROM 月間実績 WHERE 月間実績.実績年 * 100 + 月間実績.実績月 = 202610 "
                  "AND 月間実績.iKyotenCd = 1 AND 月間実績.iKyotenEb = 1"_s,
                  {u"患者IDNo"_s, u"総合計"_s, u"自己負担額2"_s, u"施術回数"_s});
        QVERIFY(months.size() > 10);
        for (const QVariantList& m : months) {
            const auto days = query(
                cs,
                u"SELECT    JISSEKI.nRiyoushaIDNo ,JISSEKI.tServicyDayStart ,JISSEKI.nKanjaSeikyu"
                " ,(CASE WHEN RIYOUSHA.iFutanritsu > 0 THEN RIYOUSHA.iFutanritsu ELSE RIYOUSHA.iKaigoLevel "
                "END) "
                "AS RIYOUSHA_FUTANWARIAI"
                " ,(CASE WHEN JISSEKI.iAnbunUmu = 1 THEN JISSEKI.nGokeiKinAnbun ELSE JISSEKI.nGokeiKin END) "
                "AS "
                "DAY_GOKEIKIN"
                " FROM JISSEKI LEFT JOIN RIYOUSHA ON        JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo "
                "  AND JISSEKI.iKyotenCd = RIYOUSHA.iKyotenCd    AND JISSEKI.iKyotenEb = RIYOUSHA.iKyotenEb "
                " WHERE nRiyoushaIDNo = "_s +
                    m[0].toString() +
                    u"   AND tServicyDayStart >= '2026/10/01'   AND tServicyDayStart < '2026/11/01'"
                    "   AND JISSEKI.iKyotenCd = 1   AND JISSEKI.iKyotenEb = 1 ORDER BY  tServicyDayStart"_s,
                {u"RIYOUSHA_FUTANWARIAI"_s, u"DAY_GOKEIKIN"_s});
            double total = 0;
            double share = 0;
            for (const QVariantList& d : days) {
                total += d[1].toDouble();
                share += d[1].toDouble() * (d[0].toDouble() - 1) / 10;
            }
            QCOMPARE(days.size(), m[3].toInt());
            QCOMPARE(total, m[1].toDouble());
            QCOMPARE(share, m[2].toDouble());
        }
    }

    // The month's prices: one valid row per kind and code, the current schedule.
    void pricesValidForTheMonth()
    {
        const QString cs = readAdodbConnectionString(m_ctx);
        const QString month = u"202610"_s;
        const auto prices = query(
            cs,
            u"SELECT * FROM 療養費単価 WHERE SUBSTRING(CONVERT(VARCHAR, cStartDate, "
            u"112),1,4)+SUBSTRING(CONVERT("
            "VARCHAR, cStartDate, 112),6,2) <=   '"_s +
                month +
                u"' AND SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cEndDate, "
                "112),6,2) >=   '"_s +
                month + u"' ORDER BY cStartDate, iTankaKbn, nTankaCode"_s,
            {u"iTankaKbn"_s, u"nTankaCode"_s, u"nTanka"_s});
        QCOMPARE(prices.size(), 19);
        QCOMPARE(prices.first(), (QVariantList{1, 1, 450}));
        const auto bands =
            query(cs,
                  u"SELECT * FROM 往療費区分 WHERE SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)+"
                  "SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '"_s +
                      month +
                      u"' AND SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),1,4)+SUBSTRING(CONVERT("
                      "VARCHAR, cEndDate, 112),6,2) >=   '"_s +
                      month + u"' ORDER BY nMaxLen"_s,
                  {u"nMaxLen"_s, u"nKingakuOuryou"_s});
        QCOMPARE(bands, (QList<QVariantList>{{4, 1800}, {8, 2300}, {16, 2700}}));
    }
};

QTEST_MAIN(tst_DemoSuite)
#include "tst_demosuite.moc"
