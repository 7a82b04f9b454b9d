// The local work-file wrapper of the suite's tools, on a real SQLite file.
#include "db/RecordSet.h"
#include "suite/clsT_Dao.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using qelprn::RecordSet;

class tst_local_file : public QObject
{
    Q_OBJECT

private slots:
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
        QCOMPARE(dao.iOpenRecordset(rs, u"SELECT b FROM W"_s), qint16(-1));
        // Closed, nothing runs.
        QCOMPARE(dao.iDbClose(), qint16(0));
        QCOMPARE(dao.iOpenRecordset(rs, u"SELECT 1"_s), qint16(-1));
        QCOMPARE(dao.iExecSQL(u"SELECT 1"_s), qint16(-1));
    }
};

QTEST_GUILESS_MAIN(tst_local_file)
#include "tst_local_file.moc"
