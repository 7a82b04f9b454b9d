#include "db/TsqlTranslator.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::translateTsqlToSqlite;

// Each construct of the suite's T-SQL that SQLite spells differently, and the ones that must pass
// untouched. The statements of the queries run translated on SQLite in their own tests.
class tst_tsql_translator : public QObject
{
    Q_OBJECT

private slots:
    void translates_data()
    {
        QTest::addColumn<QString>("tsql");
        QTest::addColumn<QString>("sqlite");
        QTest::newRow("left function, left join untouched")
            << u"FROM A LEFT JOIN B ON LEFT(nIDNo,4) = '0101'"_s
            << u"FROM A LEFT JOIN B ON SUBSTR(nIDNo,1,4) = '0101'"_s;
        QTest::newRow("right and len")
            << u" right(left(HOKENJA.cIDno,4),2) = '13' and len(HOKENJA.cIDno)=8"_s
            << u" SUBSTR(SUBSTR(HOKENJA.cIDno,1,4),-(2)) = '13' and LENGTH(HOKENJA.cIDno)=8"_s;
        QTest::newRow("substring of convert joined by plus")
            << u"SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '202405'"_s
            << u"SUBSTR(CAST(cStartDate AS TEXT),1,4)||SUBSTR(CAST(cStartDate AS TEXT),6,2) <=   '202405'"_s;
        QTest::newRow("a call with the wrong arguments stays")
            << u"LEN(a, b) = RIGHT(c), ISNULL(d), LEFT(e), GETDATE(1), CONVERT(f)"_s
            << u"LEN(a, b) = RIGHT(c), ISNULL(d), LEFT(e), GETDATE(1), CONVERT(f)"_s;
        QTest::newRow("one call alone, a blank before its parenthesis") << u"LEN (a)"_s << u"LENGTH(a)"_s;
        QTest::newRow("nine letters") << u"x = SUBSTRING(a,2,3)"_s << u"x = SUBSTR(a,2,3)"_s;
        QTest::newRow("nested") << u"ISNULL(SUBSTRING(a,1,2),'x')"_s << u"IFNULL(SUBSTR(a,1,2),'x')"_s;
        QTest::newRow("bracketed name alone") << u"SELECT [a b] FROM t"_s << u"SELECT \"a b\" FROM t"_s;
        QTest::newRow("plus before a text") << u"a + LEFT(b,2), c + 'y', UPPER (d) + e"_s
                                            << u"a || SUBSTR(b,1,2), c || 'y', UPPER (d) || e"_s;
        QTest::newRow("plus after a text function joins")
            << u"RTRIM(a) + b, LEN(a) + 1"_s << u"RTRIM(a) || b, LENGTH(a) + 1"_s;
        QTest::newRow("plus between numbers stays")
            << u"月間実績.実績年 * 100 + 月間実績.実績月 = ISNULL(a,0) + 1"_s
            << u"月間実績.実績年 * 100 + 月間実績.実績月 = IFNULL(a,0) + 1"_s;
        QTest::newRow("national string alone") << u"x = N'a'"_s << u"x = 'a'"_s;
        QTest::newRow("getdate in any case")
            << u"tUpDateTime = GetDate(), t2 = getdate( )"_s
            << u"tUpDateTime = strftime('%Y/%m/%d %H:%M:%S','now','localtime'), t2 = strftime('%Y/%m/%d %H:%M:%S','now','localtime')"_s;
        QTest::newRow("top") << u"  select top 1 DOCTOR.cIDNo from DOCTOR  where iKyotenCd =1"_s
                             << u"  select DOCTOR.cIDNo from DOCTOR  where iKyotenCd =1 LIMIT 1 "_s;
        QTest::newRow("distinct top, comments, a national string")
            << u"SELECT DISTINCT TOP 10 n'a' -- LEN(x)\n, b /* ISNULL(y) */ FROM t;"_s
            << u"SELECT DISTINCT 'a' -- LEN(x)\n, b /* ISNULL(y) */ FROM t LIMIT 10 ;"_s;
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
        QTest::newRow("update from with a subquery")
            << u"UPDATE t SET t.a = (SELECT MAX(u.b) FROM u WHERE u.k = t.k), t.c = 2 FROM t JOIN v ON t.i = v.i"_s
            << u"UPDATE t SET a = (SELECT MAX(u.b) FROM u WHERE u.k = t.k), c = 2  "
               u"WHERE rowid IN (SELECT t.rowid FROM t JOIN v ON t.i = v.i)"_s;
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
};

QTEST_GUILESS_MAIN(tst_tsql_translator)
#include "tst_tsql_translator.moc"
