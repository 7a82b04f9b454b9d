#include "app/DbLoginTimeout.h"
#include "app/StartupCheck.h"
#include "db/ConnectionPool.h"
#include "db/ConnectionReport.h"
#include "db/ConnectionString.h"
#include "db/RecordSet.h"
#include "db/StatementShape.h"
#include "db/cT_ADODB.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::ConnectionString;
using qelprn::cT_ADODB;
using qelprn::RecordSet;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

void writeIni(TestProgramFolder& folder, const QString& dataSource, const QString& dbIni)
{
    folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=Provider=SQLOLEDB;Data Source="_s +
                                                 dataSource + u";Database=suite;uid=sa;pwd=tqz4187\n"_s);
    folder.writeSettingsFile(u"DB.ini"_s, dbIni);
}

} // namespace

class tst_connection : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        qunsetenv("QELPRN_ODBC_DRIVER");
        qelprn::ConnectionPool::instance().clear();
    }

    void parsesTheSuiteShape()
    {
        const auto cs = ConnectionString::parse(
            u"Provider=SQLOLEDB;Data Source=srv\\SQLEXPRESS;Database=HALVEX;uid=sa;pwd=tqz4187"_s);
        QCOMPARE(cs.backend(), ConnectionString::Backend::Odbc);
        qunsetenv("QELPRN_ODBC_DRIVER");
#ifdef Q_OS_WIN
        // Windows' own driver, present on every Windows, reads the suite's values as they are.
        QCOMPARE(cs.odbcConnectString(),
                 u"Driver={SQL Server};Server=srv\\SQLEXPRESS;Database=HALVEX;UID=sa;PWD=tqz4187"_s);
        qputenv("QELPRN_ODBC_DRIVER", "FreeTDS");
#endif
        QCOMPARE(
            cs.odbcConnectString(),
            u"Driver={FreeTDS};Server=srv\\SQLEXPRESS;TDS_Version=7.4;ClientCharset=UTF-8;Database=HALVEX;"
            u"UID=sa;PWD=tqz4187"_s);
        // FreeTDS takes a port only as its own attribute; other drivers read "host,port" themselves.
        const auto port = ConnectionString::parse(u"Data Source=10.0.0.5, 1500;Database=D;uid=u;pwd=p"_s);
        QCOMPARE(port.odbcConnectString(), u"Driver={FreeTDS};Server=10.0.0.5;Port=1500;TDS_Version=7.4;"
                                           u"ClientCharset=UTF-8;Database=D;UID=u;PWD=p"_s);
        qputenv("QELPRN_ODBC_DRIVER", "ODBC Driver 18 for SQL Server");
        QCOMPARE(port.odbcConnectString(),
                 u"Driver={ODBC Driver 18 for SQL Server};Server=10.0.0.5, 1500;Database=D;UID=u;PWD=p"_s);
        qputenv("QELPRN_ODBC_DRIVER", "FreeTDS");
        QCOMPARE(ConnectionString::masked(u"Data Source=s;uid=sa; PWD =a=b;Password=;x=1"_s),
                 u"Data Source=s;uid=sa; PWD =****;Password=****;x=1"_s);

        const auto alt = ConnectionString::parse(
            u" initial catalog = D ; SERVER=s;Integrated Security=SSPI;Extra=1;User ID=u;Password=p"_s);
        QCOMPARE(alt.user, u"u"_s);
        QCOMPARE(alt.password, u"p"_s);
        QCOMPARE(alt.odbcConnectString(), u"Driver={FreeTDS};Server=s;TDS_Version=7.4;ClientCharset=UTF-8;"
                                          u"Database=D;Trusted_Connection=Yes"_s);

        // The embedded engine is chosen by the Data Source whatever the provider says.
        const auto lite =
            ConnectionString::parse(u"Provider=SQLOLEDB;Data Source=sqlite:db;Database=suite"_s);
        QCOMPARE(lite.backend(), ConnectionString::Backend::Sqlite);
        QCOMPARE(lite.sqliteFile(), QDir::current().absoluteFilePath(u"db/suite.sqlite"_s));
        const auto abs = ConnectionString::parse(u"Data Source=SQLITE:/var/x;Database=a"_s);
        // On Windows a path from the root is on the current drive.
        QCOMPARE(abs.sqliteFile(), QFileInfo(u"/var/x/a.sqlite"_s).absoluteFilePath());
    }

    // Fields by name as the server matches them; look-ups that differ only in literals share a kept
    // prepared statement, yet each reads its own rows and a schema change is seen; a failing
    // statement leaves the reason, and a rolled-back change leaves nothing.
    void readsThroughTheWrapper()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        folder.context(ui);
        folder.exec(u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cName, cByoumei, nRoomNo) VALUES "
                    u"(1, 1, 1, 'O''Neil', '腰痛', NULL), (2, 1, 1, 'B', '', 2), (3, 1, 1, 'C', '', 3)"_s);
        cT_ADODB ado;
        QCOMPARE(ado.iConnect(), qint16(-1));
        QCOMPARE(ado.sErrMsg, u"接続文字列取得できません。"_s);
        QCOMPARE(ado.iInit(folder.connectionString()), qint16(0));
        QCOMPARE(ado.iConnect(), qint16(0));
        QCOMPARE(ado.iConnect(), qint16(0)); // already open
        RecordSet rs;
        QCOMPARE(ado.iSetTimeout(-1), qint16(-1));
        QCOMPARE(ado.iSetTimeout(2), qint16(0));
        QCOMPARE(ado.iOpenRecSet(rs, u"PRAGMA busy_timeout"_s), qint16(0));
        QCOMPARE(rs.field(0).toInt(), 2000);
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT ISNULL(nRoomNo, -1) AS R, * FROM RIYOUSHA ORDER BY nIDNo"_s, 1,
                                 1, 0),
                 qint16(0));
        QCOMPARE(rs.field(u"r"_s).toInt(), -1);
        QCOMPARE(rs.field(u"CNAME"_s).toString(), u"O'Neil"_s);
        // The server matches names width-insensitively: the full-width ｃ finds cByoumei.
        QCOMPARE(rs.field(u"ｃByoumei"_s).toString(), u"腰痛"_s);
        QVERIFY(rs.field(u"nRoomNo"_s).isNull());
        QVERIFY(!rs.field(u"nothere"_s).isValid() && rs.hasError());
        QCOMPARE(ado.iCloseRecSet(rs), qint16(0));

        const auto nameOf = [&](int id) {
            if (ado.iOpenRecSet(rs, u"SELECT cName FROM RIYOUSHA WHERE nIDNo = "_s + QString::number(id)) !=
                0)
                return ado.sErrMsg;
            return rs.isEOF() ? u"(none)"_s : rs.field(u"cName"_s).toString();
        };
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(nameOf(1), u"O'Neil"_s);
            QCOMPARE(nameOf(3), u"C"_s);
            QCOMPARE(nameOf(4), u"(none)"_s);
        }
        QCOMPARE(ado.iExecSQL(u"ALTER TABLE RIYOUSHA ADD COLUMN cExtra TEXT DEFAULT 'new'"_s), qint16(0));
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT * FROM RIYOUSHA WHERE nIDNo = 2"_s), qint16(0));
        QCOMPARE(rs.field(u"cExtra"_s).toString(), u"new"_s);

        // A failing statement leaves the database's reason and the error log, never a throw.
        QCOMPARE(ado.iExecSQL(u"UPDATE NOSUCHTABLE SET a = 1"_s), qint16(-1));
        QVERIFY2(ado.sErrMsg.startsWith(u"no such table: NOSUCHTABLE\rConnection State=1\rError Number: "_s),
                 qPrintable(ado.sErrMsg));
        QVERIFY(ado.sErrMsg.endsWith(u"\r1 provider error(s) occurred."_s));

        QCOMPARE(ado.iBeginTrans(), qint16(0));
        QCOMPARE(ado.iExecSQL(u"DELETE FROM RIYOUSHA"_s), qint16(0));
        QCOMPARE(ado.iRollback(), qint16(0));
        QCOMPARE(ado.iOpenRecSet(rs, u"SELECT count(*) AS N FROM RIYOUSHA"_s), qint16(0));
        QCOMPARE(rs.field(u"N"_s).toInt(), 3);
        QCOMPARE(ado.iCommitTrans(), qint16(-1)); // none begun
        QCOMPARE(ado.iDisConnect(), qint16(0));
        QCOMPARE(ado.iDisConnect(), qint16(0)); // already closed
        // Closed, every call is refused with the reason.
        QCOMPARE(ado.iBeginTrans(), qint16(-1));
        QCOMPARE(ado.sErrMsg, u"Operation is not allowed when the object is closed."_s);
        QCOMPARE(ado.iExecSQL(u"DELETE FROM RIYOUSHA"_s), qint16(-1));
        QCOMPARE(ado.iRollback(), qint16(-1));
    }

    // Only healthy connections are pooled, each for its database file: two program folders with the
    // same relative "sqlite:db" do not share one once the program folder (the current directory)
    // has changed.
    void poolsHealthyConnectionsOnly()
    {
        TestProgramFolder folder;
        TestProgramFolder second;
        second.exec(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb) VALUES (1, 1)"_s);
        TestInteraction ui;
        folder.context(ui);
        const auto countSites = [&](TestProgramFolder& in) {
            in.context(ui);
            cT_ADODB ado;
            ado.iInit(in.connectionString());
            RecordSet rs;
            if (ado.iConnect() != 0 || ado.iOpenRecSet(rs, u"SELECT count(*) AS N FROM KYOTEN"_s) != 0)
                return -1;
            return rs.field(u"N"_s).toInt();
        };
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
        QCOMPARE(countSites(folder), 0);
        QCOMPARE(countSites(second), 1);
        QCOMPARE(countSites(folder), 0);

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

    void connectionCheck_data()
    {
        qelprn::test::addBackEndRows();
    }

    // 接続確認 on a folder of two databases: each opens with its sites counted as the site grid
    // lists them; a database file that is gone fails the check with the reason under its line.
    void connectionCheck()
    {
        QFETCH(bool, odbc);
        TestProgramFolder folder;
        TestInteraction ui;
        folder.addDatabase(u"suite2"_s);
        folder.exec(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES "
                    u"(1, 1, '本店', 1), (1, 2, '支店', 1), (1, 0, '本部', 1), (1, 3, '休止', 0)"_s);
        folder.exec(
            u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES (2, 1, 'b', 1)"_s,
            u"suite2"_s);
        if (odbc)
            qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
        const QString source = odbc ? folder.filePath(u"db"_s) : u"sqlite:db"_s;
        writeIni(folder, source,
                 u"\"本店:suite\",\""_s + source + u"\",\"suite\"\n\"三鷹:suite2\",\""_s + source +
                     u"\",\"suite2\"\n"_s);
        const qelprn::AppContext ctx = qelprn::loadAppContext(ui, folder.path()).value();
        qelprn::ConnectionReport report = qelprn::checkConnections(ctx);
        const QString text = report.lines().join(u'\n');
        QVERIFY2(report.allOpened(), qPrintable(text));
        QVERIFY(text.contains(u"pwd=****"_s) && !text.contains(u"tqz4187"_s));
        QVERIFY(report.serverVersion.startsWith(u"SQLite 3."_s));
        QCOMPARE(report.driver, odbc ? u"SQLite3 (ODBC)"_s : u"組み込みデータベース (SQLite)"_s);
        QCOMPARE(report.databases.size(), 2);
        QCOMPARE(report.databases.at(0).sites, 2);
        QVERIFY(text.contains(u"三鷹:suite2  サーバー: "_s + source +
                              u"  データベース: suite2  接続: 成功  拠点数: 1"_s));
        QCOMPARE(ui.messages.size(), 0);

        // Closed first: Windows does not delete a file that is open.
        qelprn::ConnectionPool::instance().clear();
        QVERIFY(QFile::remove(folder.filePath(u"db/suite2.sqlite"_s)));
        report = qelprn::checkConnections(ctx);
        QVERIFY(report.opened && report.databases.at(0).opened && !report.databases.at(1).opened);
        if (!odbc)
            QVERIFY(report.databases.at(1).error.startsWith(
                u"データベースに接続できません。（サーバー：sqlite:db　データベース：suite2）\r"_s));
    }

    // A SQL Server that cannot be reached through FreeTDS (a closed port): the Japanese reason comes
    // first and the driver's text once.
    void unreachableServer()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        qputenv("QELPRN_ODBC_DRIVER", "FreeTDS");
        // Port 1 of this machine: nothing listens there.
        const QString closedSource = u"127.0.0.1,1"_s;
        writeIni(folder, closedSource, u"\"本店:suite\",\""_s + closedSource + u"\",\"suite\"\n"_s);
        qelprn::AppContext ctx = qelprn::loadAppContext(ui, folder.path()).value();
        qelprn::ConnectionReport report = qelprn::checkConnections(ctx);
        QVERIFY(!report.opened);
        QVERIFY(!report.allOpened());
        QVERIFY2(report.error.startsWith(u"データベースに接続できません。（サーバー："_s + closedSource +
                                         u"　データベース：suite）\r"_s),
                 qPrintable(report.error));
        QCOMPARE(report.error.count(u"Unable to connect to data source"_s), 1);
        QCOMPARE(report.error.count(u"Adaptive Server is unavailable"_s), 1);
        QVERIFY(!report.error.contains(u"QODBC"_s));
    }
};

QTEST_GUILESS_MAIN(tst_connection)
#include "tst_connection.moc"
