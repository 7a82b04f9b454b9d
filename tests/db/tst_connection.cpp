#include "db/ConnectionPool.h"
#include "db/ConnectionString.h"
#include "db/RecordSet.h"
#include "db/StatementShape.h"
#include "db/cT_ADODB.h"
#include "db/clsT_Dao.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QDir>
#include <QScopeGuard>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::ConnectionString;
using qelprn::cT_ADODB;
using qelprn::RecordSet;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

class tst_connection : public QObject
{
    Q_OBJECT

private slots:
    void parsesTheSuiteShape()
    {
        const auto cs = ConnectionString::parse(
            u"Provider=SQLOLEDB;Data Source=srv\\SQLEXPRESS;Database=HALVEX;uid=sa;pwd=tqz4187"_s);
        QCOMPARE(cs.backend(), ConnectionString::Backend::Odbc);
        QCOMPARE(cs.dataSource, u"srv\\SQLEXPRESS"_s);
        qunsetenv("QELPRN_ODBC_DRIVER");
        QCOMPARE(cs.odbcConnectString(),
                 u"Driver={FreeTDS};Server=srv\\SQLEXPRESS;Database=HALVEX;UID=sa;PWD=tqz4187"_s);

        const auto alt = ConnectionString::parse(
            u" initial catalog = D ; SERVER=s;Integrated Security=SSPI;Extra=1;User ID=u;Password=p"_s);
        QCOMPARE(alt.database, u"D"_s);
        QCOMPARE(alt.user, u"u"_s);
        QCOMPARE(alt.password, u"p"_s);
        QVERIFY(alt.integratedSecurity);
        QCOMPARE(alt.odbcConnectString(), u"Driver={FreeTDS};Server=s;Database=D;Trusted_Connection=Yes"_s);

        // The embedded engine is chosen by the Data Source whatever the provider says.
        const auto lite =
            ConnectionString::parse(u"Provider=SQLOLEDB;Data Source=sqlite:db;Database=suite"_s);
        QCOMPARE(lite.backend(), ConnectionString::Backend::Sqlite);
        QCOMPARE(lite.sqliteFile(), QDir::current().absoluteFilePath(u"db/suite.sqlite"_s));
        const auto abs = ConnectionString::parse(u"Data Source=SQLITE:/var/x;Database=a"_s);
        QCOMPARE(abs.sqliteFile(), u"/var/x/a.sqlite"_s);
    }

    void readsThroughTheWrapper()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        folder.context(ui);
        folder.exec(u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cName, cByoumei, nRoomNo) "
                    u"VALUES (1, 1, 1, 'O''Neil', '腰痛', NULL)"_s);
        cT_ADODB ado;
        QCOMPARE(ado.iInit(folder.connectionString()), qint16(0));
        QCOMPARE(ado.iConnect(), qint16(0));
        RecordSet rs;
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT ISNULL(nRoomNo, -1) AS R, * FROM RIYOUSHA"_s, 1, 1, 0),
                 qint16(0));
        QVERIFY(!rs.isEOF());
        QCOMPARE(rs.field(u"r"_s).toInt(), -1);
        QCOMPARE(rs.field(u"CNAME"_s).toString(), u"O'Neil"_s);
        // The server matches names width-insensitively: the full-width ｃ finds cByoumei.
        QCOMPARE(rs.field(u"ｃByoumei"_s).toString(), u"腰痛"_s);
        QVERIFY(rs.field(u"nRoomNo"_s).isNull());
        QVERIFY(!rs.hasError());
        QVERIFY(!rs.field(u"nothere"_s).isValid());
        QVERIFY(rs.hasError());
        rs.moveNext();
        QVERIFY(rs.isEOF());
        QCOMPARE(ado.iCloseRecSet(rs), qint16(0));

        // A failing statement leaves the database's reason and the error log, never a throw.
        QCOMPARE(ado.iExecSQL(u"UPDATE NOSUCHTABLE SET a = 1"_s), qint16(-1));
        QVERIFY2(ado.sErrMsg.startsWith(u"no such table: NOSUCHTABLE\rConnection State=1\rError Number: "_s),
                 qPrintable(ado.sErrMsg));
        QVERIFY(ado.sErrMsg.contains(u"\r  Description: no such table: NOSUCHTABLE\r  Source: "_s));
        QVERIFY(ado.sErrMsg.endsWith(u"\r1 provider error(s) occurred."_s));

        // Transactions: a rolled-back insert leaves nothing.
        QCOMPARE(ado.iBeginTrans(), qint16(0));
        QCOMPARE(ado.iExecSQL(u"DELETE FROM RIYOUSHA"_s), qint16(0));
        QCOMPARE(ado.iRollback(), qint16(0));
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT count(*) AS N FROM RIYOUSHA"_s), qint16(0));
        QCOMPARE(rs.field(u"N"_s).toInt(), 1);
        QCOMPARE(ado.iDisConnect(), qint16(0));
    }

    void poolsHealthyConnectionsOnly()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        folder.context(ui);
        auto& pool = qelprn::ConnectionPool::instance();
        pool.clear();
        const QString good = folder.connectionString();
        {
            cT_ADODB a;
            a.iInit(good);
            QCOMPARE(a.iConnect(), qint16(0));
            QCOMPARE(pool.idleCount(good), 0);
        }
        QCOMPARE(pool.idleCount(good), 1);
        {
            cT_ADODB b; // reuses the idle one
            b.iInit(good);
            QCOMPARE(b.iConnect(), qint16(0));
            QCOMPARE(pool.idleCount(good), 0);
            // A transaction left open is rolled back before the connection goes back.
            QCOMPARE(b.iBeginTrans(), qint16(0));
            QCOMPARE(b.iExecSQL(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb) VALUES (9, 9)"_s), qint16(0));
        }
        {
            cT_ADODB c;
            c.iInit(good);
            QCOMPARE(c.iConnect(), qint16(0));
            RecordSet rs;
            QCOMPARE(c.iOpenRecSet(rs, u"SELECT count(*) AS N FROM KYOTEN"_s), qint16(0));
            QCOMPARE(rs.field(u"N"_s).toInt(), 0);
        }

        // A database that is not there: the reason names the file, no empty file appears, and
        // nothing is pooled for it.
        const QString missing = folder.connectionString(u"missing"_s);
        cT_ADODB m;
        m.iInit(missing);
        QCOMPARE(m.iConnect(), qint16(-1));
        QVERIFY(m.sErrMsg.contains(u"missing.sqlite"_s));
        QVERIFY(m.sErrMsg.contains(u"Connection State=0"_s));
        QVERIFY(!QFile::exists(folder.filePath(u"db/missing.sqlite"_s)));
        m.iDisConnect();
        QCOMPARE(pool.idleCount(missing), 0);
        cT_ADODB empty;
        QCOMPARE(empty.iInit(QString()), qint16(-1));
    }

    // Literals leave a SELECT only where they are values: select lists, aliases and ORDER BY
    // positions keep theirs, and anything unusual is left to run as plain text.
    void shapesSelectsByTheirLiterals()
    {
        const auto shape = qelprn::shapeOfSelect(u"SELECT 1 AS ONE, 'x' AS 'Alias', (SELECT count(*) FROM J "
                                                 u"WHERE J.a = 7) AS C, col1 FROM RIYOUSHA "
                                                 u"WHERE nIDNo = 12 AND cName = 'O''Neil' AND \"odd 5\" > "
                                                 u"-3.5 AND b IN (SELECT d FROM U WHERE e = 2) "
                                                 u"ORDER BY 1"_s);
        QVERIFY(shape);
        QCOMPARE(shape->text,
                 u"SELECT 1 AS ONE, 'x' AS 'Alias', (SELECT count(*) FROM J WHERE J.a = 7) AS C, col1 "
                 u"FROM RIYOUSHA WHERE nIDNo = ? AND cName = ? AND \"odd 5\" > -? AND b IN (SELECT d "
                 u"FROM U WHERE e = ?) ORDER BY 1"_s);
        QCOMPARE(shape->values, (QVariantList{12LL, u"O'Neil"_s, 3.5, 2LL}));
        for (const QString& plain :
             {u"UPDATE T SET a = 1"_s, u"SELECT * FROM T WHERE a = 1 -- note"_s,
              u"SELECT * FROM T WHERE a = :p"_s, u"SELECT * FROM T"_s, u"SELECT * FROM T WHERE a = 'open"_s,
              u"SELECT * FROM T WHERE x1 = a2"_s})
            QVERIFY2(!qelprn::shapeOfSelect(plain), qPrintable(plain));
    }

    // Look-ups that differ only in literals share a kept prepared statement: each still reads its
    // own rows, two open at once do not disturb each other, a schema change is seen, and a failing
    // statement reports what the database says.
    void keptStatementsReadTheirOwnRows()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        folder.context(ui);
        folder.exec(u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cName) VALUES "
                    u"(1, 1, 1, 'A'), (2, 1, 1, 'B'), (3, 1, 1, 'C')"_s);
        cT_ADODB ado;
        ado.iInit(folder.connectionString());
        QCOMPARE(ado.iConnect(), qint16(0));
        const auto nameOf = [&](RecordSet& rs, int id) {
            if (ado.iOpenRecSet(rs, u"SELECT cName FROM RIYOUSHA WHERE nIDNo = "_s + QString::number(id)) !=
                0)
                return ado.sErrMsg;
            return rs.isEOF() ? u"(none)"_s : rs.field(u"cName"_s).toString();
        };
        for (int round = 0; round < 3; ++round) {
            RecordSet rs;
            QCOMPARE(nameOf(rs, 1), u"A"_s);
            QCOMPARE(nameOf(rs, 3), u"C"_s);
            QCOMPARE(nameOf(rs, 4), u"(none)"_s);
        }
        RecordSet outer;
        RecordSet inner;
        QCOMPARE(nameOf(outer, 1), u"A"_s);
        QCOMPARE(nameOf(inner, 2), u"B"_s);
        QCOMPARE(outer.field(u"cName"_s).toString(), u"A"_s);
        inner.close();
        outer.close();

        QCOMPARE(ado.iExecSQL(u"ALTER TABLE RIYOUSHA ADD COLUMN cExtra TEXT DEFAULT 'new'"_s), qint16(0));
        RecordSet rs;
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT * FROM RIYOUSHA WHERE nIDNo = 2"_s), qint16(0));
        QCOMPARE(rs.field(u"cExtra"_s).toString(), u"new"_s);
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT nosuch FROM RIYOUSHA WHERE nIDNo = 2"_s), qint16(-1));
        QVERIFY2(ado.sErrMsg.startsWith(u"no such column: nosuch"_s), qPrintable(ado.sErrMsg));
    }

    // Regression: two program folders with the same relative "sqlite:db" must not share a pooled
    // connection once the program folder (the current directory) has changed.
    void poolsPerDatabaseFileNotPerText()
    {
        TestProgramFolder first;
        TestProgramFolder second;
        first.exec(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb) VALUES (1, 1)"_s);
        TestInteraction ui;
        const auto countSites = [&](TestProgramFolder& folder) {
            folder.context(ui);
            cT_ADODB ado;
            ado.iInit(folder.connectionString());
            if (ado.iConnect() != 0)
                return -1;
            RecordSet rs;
            ado.iOpenRecSet(rs, u"SELECT count(*) AS N FROM KYOTEN"_s);
            return rs.field(u"N"_s).toInt();
        };
        QCOMPARE(countSites(first), 1);
        QCOMPARE(countSites(second), 0);
        QCOMPARE(countSites(first), 1);
    }

    // The real unixODBC driver manager with the SQLite ODBC driver, statements translated.
    void runsThroughOdbc()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        folder.context(ui);
        folder.exec(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName) VALUES (1, 1, '本店')"_s);
        qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
        const auto restore = qScopeGuard([] { qunsetenv("QELPRN_ODBC_DRIVER"); });
        cT_ADODB ado;
        ado.iInit(u"Provider=SQLOLEDB;Data Source="_s + folder.filePath(u"db"_s) +
                  u";Database=suite;uid=sa;pwd=x"_s);
        QVERIFY2(ado.iConnect() == 0, qPrintable(ado.sErrMsg));
        RecordSet rs;
        QVERIFY2(ado.iOpenRecSet(rs, u"SELECT TOP 1 ISNULL(cKyotenName,'') + '拠点' AS N FROM KYOTEN"_s) == 0,
                 qPrintable(ado.sErrMsg));
        QCOMPARE(rs.field(u"N"_s).toString(), u"本店拠点"_s);
        QCOMPARE(ado.iExecSQL(u"UPDATE KYOTEN SET cPcName = 'pc' WHERE iKyotenCd = 1"_s), qint16(0));
        QCOMPARE(ado.iExecSQL(u"SELECT * FROM NOSUCH"_s), qint16(-1));
        QVERIFY(ado.sErrMsg.contains(u"Source: Microsoft OLE DB Provider for ODBC"_s) ||
                ado.sErrMsg.contains(u"Source: Embedded SQLite"_s));
    }

    void localDatabaseFile()
    {
        QTemporaryDir dir;
        qelprn::clsT_Dao dao;
        QCOMPARE(dao.iInit(), qint16(0));
        QCOMPARE(dao.iDbOpen(dir.filePath(u"work.db"_s)), qint16(-1));
        QCOMPARE(dao.iDbOpen(dir.filePath(u"work.db"_s), true), qint16(0));
        QCOMPARE(dao.iExecuteSql(u"CREATE TABLE W (a INTEGER)"_s), qint16(0));
        QCOMPARE(dao.iBeginTrans(), qint16(0));
        int rows = 0;
        QCOMPARE(dao.iExecSQL(u"INSERT INTO W VALUES (1), (2)"_s, &rows), qint16(0));
        QCOMPARE(rows, 2);
        QCOMPARE(dao.iCommitTrans(), qint16(0));
        RecordSet rs;
        QCOMPARE(dao.iOpenRecordset(rs, u"SELECT sum(a) AS S FROM W"_s), qint16(0));
        QCOMPARE(rs.field(u"S"_s).toInt(), 3);
        dao.iCloseRecordset(rs);
        QCOMPARE(dao.iExecSQL(u"bad"_s), qint16(-1));
        QVERIFY(!dao.sErrMsg.isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_connection)
#include "tst_connection.moc"
