#include "app/DbLoginTimeout.h"
#include "app/StartupCheck.h"
#include "db/ConnectionPool.h"
#include "db/ConnectionReport.h"
#include "db/ConnectionString.h"
#include "db/RecordSet.h"
#include "db/StatementShape.h"
#include "db/cT_ADODB.h"
#include "db/clsT_Dao.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QtTest>
#ifdef Q_OS_UNIX
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;
using qelprn::ConnectionString;
using qelprn::cT_ADODB;
using qelprn::RecordSet;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

#ifdef Q_OS_UNIX
// A TCP socket on 127.0.0.1 that listens (the system completes connections) but never answers:
// a server that does not respond to the login. Closed at once, its port is a closed port.
struct SilentServer
{
    int fd = -1;
    int port = 0;
    SilentServer()
    {
        fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in addr{};
        addr.sin_family = AF_INET;
        addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof addr;
        if (fd < 0 || ::bind(fd, reinterpret_cast<sockaddr*>(&addr), len) != 0 || ::listen(fd, 8) != 0 ||
            ::getsockname(fd, reinterpret_cast<sockaddr*>(&addr), &len) != 0)
            return;
        port = ntohs(addr.sin_port);
    }
    ~SilentServer() { close(); }
    void close()
    {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
};
#endif

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
    void parsesTheSuiteShape()
    {
        const auto cs = ConnectionString::parse(
            u"Provider=SQLOLEDB;Data Source=srv\\SQLEXPRESS;Database=HALVEX;uid=sa;pwd=tqz4187"_s);
        QCOMPARE(cs.backend(), ConnectionString::Backend::Odbc);
        QCOMPARE(cs.dataSource, u"srv\\SQLEXPRESS"_s);
        qunsetenv("QELPRN_ODBC_DRIVER");
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
        qunsetenv("QELPRN_ODBC_DRIVER");
        QCOMPARE(ConnectionString::masked(u"Data Source=s;uid=sa; PWD =a=b;Password=;x=1"_s),
                 u"Data Source=s;uid=sa; PWD =****;Password=****;x=1"_s);

        const auto alt = ConnectionString::parse(
            u" initial catalog = D ; SERVER=s;Integrated Security=SSPI;Extra=1;User ID=u;Password=p"_s);
        QCOMPARE(alt.database, u"D"_s);
        QCOMPARE(alt.user, u"u"_s);
        QCOMPARE(alt.password, u"p"_s);
        QVERIFY(alt.integratedSecurity);
        QCOMPARE(alt.odbcConnectString(), u"Driver={FreeTDS};Server=s;TDS_Version=7.4;ClientCharset=UTF-8;"
                                          u"Database=D;Trusted_Connection=Yes"_s);

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

    void connectionCheck_data() { qelprn::test::addBackEndRows(); }

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
        const auto restore = qScopeGuard([] {
            qunsetenv("QELPRN_ODBC_DRIVER");
            qelprn::ConnectionPool::instance().clear();
        });
        const QString source = odbc ? folder.filePath(u"db"_s) : u"sqlite:db"_s;
        writeIni(folder, source,
                 u"\"本店:suite\",\""_s + source + u"\",\"suite\"\n\"三鷹:suite2\",\""_s + source +
                     u"\",\"suite2\"\n"_s);
        const qelprn::AppContext ctx = qelprn::loadAppContext(ui, folder.path());
        qelprn::ConnectionReport report = qelprn::checkConnections(ctx);
        const QString text = report.lines().join(u'\n');
        QVERIFY2(report.allOpened(), qPrintable(text));
        QVERIFY(!text.contains(u"tqz4187"_s));
        QVERIFY(text.contains(u"pwd=****"_s));
        QVERIFY(report.serverVersion.startsWith(u"SQLite 3."_s));
        QCOMPARE(report.driver, odbc ? u"SQLite3 (ODBC)"_s : u"組み込みデータベース (SQLite)"_s);
        QCOMPARE(report.databases.size(), 2);
        QCOMPARE(report.databases.at(0).sites, 2);
        QCOMPARE(report.databases.at(1).sites, 1);
        QVERIFY(text.contains(u"三鷹:suite2  サーバー: "_s + source +
                              u"  データベース: suite2  接続: 成功  拠点数: 1"_s));
        QCOMPARE(ui.messages.size(), 0);

        QVERIFY(QFile::remove(folder.filePath(u"db/suite2.sqlite"_s)));
        qelprn::ConnectionPool::instance().clear();
        report = qelprn::checkConnections(ctx);
        QVERIFY(report.opened);
        QVERIFY(report.databases.at(0).opened);
        QVERIFY(!report.databases.at(1).opened);
        QVERIFY(!report.allOpened());
        QVERIFY(!report.databases.at(1).error.isEmpty());
        if (!odbc)
            QVERIFY(report.databases.at(1).error.startsWith(
                u"データベースに接続できません。（サーバー：sqlite:db　データベース：suite2）\r"_s));
    }

    // A SQL Server that cannot be reached through FreeTDS: a closed port fails at once, a server
    // that never answers the login after DB_LOGIN_TIMEOUT seconds; the Japanese reason comes first
    // and the driver's text once.
    void unreachableServer()
    {
#ifndef Q_OS_UNIX
        QSKIP("needs a POSIX socket for the silent server");
#else
        TestProgramFolder folder;
        TestInteraction ui;
        qunsetenv("QELPRN_ODBC_DRIVER"); // FreeTDS
        const auto restore = qScopeGuard([] { qelprn::ConnectionPool::instance().clear(); });
        SilentServer closed;
        const QString closedSource = u"127.0.0.1,"_s + QString::number(closed.port);
        closed.close();
        writeIni(folder, closedSource, u"\"本店:suite\",\""_s + closedSource + u"\",\"suite\"\n"_s);
        qelprn::AppContext ctx = qelprn::loadAppContext(ui, folder.path());
        QElapsedTimer clock;
        clock.start();
        qelprn::ConnectionReport report = qelprn::checkConnections(ctx);
        QVERIFY(clock.elapsed() < 10000);
        QVERIFY(!report.opened);
        QVERIFY(!report.allOpened());
        QVERIFY2(report.error.startsWith(u"データベースに接続できません。（サーバー："_s + closedSource +
                                         u"　データベース：suite）\r"_s),
                 qPrintable(report.error));
        QCOMPARE(report.error.count(u"Unable to connect to data source"_s), 1);
        QCOMPARE(report.error.count(u"Adaptive Server is unavailable"_s), 1);
        QVERIFY(!report.error.contains(u"QODBC"_s));
        QVERIFY(report.odbcConnectString.contains(u";Port="_s + QString::number(closed.port) + u";"_s));

        SilentServer silent;
        QVERIFY(silent.port > 0);
        const QString silentSource = u"127.0.0.1,"_s + QString::number(silent.port);
        writeIni(folder, silentSource, u"\"本店:suite\",\"sqlite:db\",\"suite\"\n"_s);
        QFile tovara(folder.filePath(u"Tovara.ini"_s));
        QVERIFY(tovara.open(QIODevice::Append));
        tovara.write("DB_LOGIN_TIMEOUT=2\r\n");
        tovara.close();
        ctx = qelprn::loadAppContext(ui, folder.path());
        clock.restart();
        report = qelprn::checkConnections(ctx);
        const qint64 waited = clock.elapsed();
        QVERIFY2(waited >= 1500 && waited < 8000, qPrintable(QString::number(waited)));
        QVERIFY(!report.opened);
        QVERIFY(report.error.startsWith(u"データベースに接続できません。"_s));
        QVERIFY2(report.error.contains(u"Timeout expired"_s), qPrintable(report.error));
        QCOMPARE(report.databases.size(), 1);
        QVERIFY(report.databases.at(0).opened);
        qelprn::setDbLoginTimeout(QString()); // back to the default for later tests
#endif
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
