#include "db/TsqlTranslator.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::translateTsqlToSqlite;

// Each construct of the suite's T-SQL that SQLite spells differently, and the ones that must pass
// untouched; then the translated statements are run on a real SQLite database.
class tst_tsql_translator : public QObject
{
    Q_OBJECT

private slots:
    void translates_data()
    {
        QTest::addColumn<QString>("tsql");
        QTest::addColumn<QString>("sqlite");
        QTest::newRow("isnull") << u"CASE WHEN ISNULL(S.nIDNo,0) = 0 THEN -1 END"_s
                                << u"CASE WHEN IFNULL(S.nIDNo,0) = 0 THEN -1 END"_s;
        QTest::newRow("left function, left join untouched")
            << u"FROM A LEFT JOIN B ON LEFT(nIDNo,4) = '0101'"_s
            << u"FROM A LEFT JOIN B ON SUBSTR(nIDNo,1,4) = '0101'"_s;
        QTest::newRow("right and len")
            << u" right(left(HOKENJA.cIDno,4),2) = '13' and len(HOKENJA.cIDno)=8"_s
            << u" SUBSTR(SUBSTR(HOKENJA.cIDno,1,4),-(2)) = '13' and LENGTH(HOKENJA.cIDno)=8"_s;
        QTest::newRow("substring of convert joined by plus")
            << u"SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '202405'"_s
            << u"SUBSTR(CAST(cStartDate AS TEXT),1,4)||SUBSTR(CAST(cStartDate AS TEXT),6,2) <=   '202405'"_s;
        QTest::newRow("plus between numbers stays") << u"月間実績.実績年 * 100 + 月間実績.実績月 = 202405"_s
                                                    << u"月間実績.実績年 * 100 + 月間実績.実績月 = 202405"_s;
        QTest::newRow("getdate in any case")
            << u"tUpDateTime = GetDate(), t2 = getdate( )"_s
            << u"tUpDateTime = strftime('%Y/%m/%d %H:%M:%S','now','localtime'), t2 = strftime('%Y/%m/%d %H:%M:%S','now','localtime')"_s;
        QTest::newRow("top") << u"  select top 1 DOCTOR.cIDNo from DOCTOR  where iKyotenCd =1"_s
                             << u"  select DOCTOR.cIDNo from DOCTOR  where iKyotenCd =1 LIMIT 1 "_s;
        QTest::newRow("top in a subquery") << u"SELECT a FROM (SELECT TOP 2 b FROM t ORDER BY b) x"_s
                                           << u"SELECT a FROM (SELECT b FROM t ORDER BY b LIMIT 2 ) x"_s;
        QTest::newRow("literals and names untouched")
            << u"SELECT 'ISNULL(a,b) + GetDate()' AS [LEFT(x)], \"SUBSTRING\" FROM 月間実績"_s
            << u"SELECT 'ISNULL(a,b) + GetDate()' AS \"LEFT(x)\", \"SUBSTRING\" FROM 月間実績"_s;
        QTest::newRow("update from join")
            << u" update      RIYOUSHA set       RIYOUSHA.tUpdateTime = 'x' from RIYOUSHA left join "
               u"RIYOUSHA_SUB"
               u" on RIYOUSHA.nIDNo = RIYOUSHA_SUB.nIDNo where    iSyoukaiSisetsuCd = 5"_s
            << u" update      RIYOUSHA set       tUpdateTime = 'x'  WHERE rowid IN (SELECT RIYOUSHA.rowid "
               u"from RIYOUSHA"
               u" left join RIYOUSHA_SUB on RIYOUSHA.nIDNo = RIYOUSHA_SUB.nIDNo where    iSyoukaiSisetsuCd = 5)"_s;
        QTest::newRow("plain update untouched") << u" update  Sisetsu set  cShamei1 = 'a' where nIDNo = 1"_s
                                                << u" update  Sisetsu set  cShamei1 = 'a' where nIDNo = 1"_s;
    }

    void translates()
    {
        QFETCH(QString, tsql);
        QFETCH(QString, sqlite);
        QCOMPARE(translateTsqlToSqlite(tsql), sqlite);
        QCOMPARE(translateTsqlToSqlite(tsql), sqlite); // the cached answer is the same
    }

    void translatedStatementsRun()
    {
        qelprn::test::TestProgramFolder folder;
        folder.exec(
            u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cName) VALUES (1, 1, 1, 'A'), (2, 1, 1, 'B')"_s);
        folder.exec(
            u"INSERT INTO RIYOUSHA_SUB (nIDNo, iKyotenCd, iKyotenEb, iSyoukaiSisetsuCd) VALUES (1, 1, 1, 7), (2, 1, 1, 8)"_s);
        const QString name = QUuid::createUuid().toString();
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
            db.setDatabaseName(folder.filePath(u"db/suite.sqlite"_s));
            QVERIFY(db.open());
            QSqlQuery q(db);
            QVERIFY2(q.exec(translateTsqlToSqlite(
                         u" update RIYOUSHA set RIYOUSHA.tUpdateTime = getdate() from RIYOUSHA left join "
                         u"RIYOUSHA_SUB"
                         u" on RIYOUSHA.iKyotenCd = RIYOUSHA_SUB.iKyotenCd and RIYOUSHA.iKyotenEb = "
                         u"RIYOUSHA_SUB.iKyotenEb"
                         u" and RIYOUSHA.nIDNo = RIYOUSHA_SUB.nIDNo where    iSyoukaiSisetsuCd = 8"_s)),
                     qPrintable(q.lastError().text()));
            QVERIFY(q.exec(u"SELECT nIDNo, tUpdateTime FROM RIYOUSHA ORDER BY nIDNo"_s));
            QVERIFY(q.next());
            QVERIFY(q.value(1).isNull());
            QVERIFY(q.next());
            QCOMPARE(q.value(1).toString().size(), 19); // "yyyy/mm/dd hh:mm:ss"
            QVERIFY(q.exec(translateTsqlToSqlite(
                u"select top 1 ISNULL(cName,'') + '様' AS N, LEFT(nIDNo, 1) AS L from RIYOUSHA order by nIDNo desc"_s)));
            QVERIFY(q.next());
            QCOMPARE(q.value(0).toString(), u"B様"_s);
            QCOMPARE(q.value(1).toString(), u"2"_s);
            QVERIFY(!q.next());
        }
        QSqlDatabase::removeDatabase(name);
    }
};

QTEST_GUILESS_MAIN(tst_tsql_translator)
#include "tst_tsql_translator.moc"
