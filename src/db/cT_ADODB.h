#pragma once

#include "db/RecordSet.h"

#include <QString>
#include <QtGlobal>
#include <memory>

class QSqlDatabase;
class QSqlQuery;

namespace qelprn {

// One connection to the suite's database, with operations that never throw: each returns 0 on
// success and -1 on failure and leaves the reason in sErrMsg. The connection string keeps the
// suite's ADO shape; a Data Source beginning with "sqlite:" selects the embedded SQLite engine,
// anything else is SQL Server through ODBC (see ConnectionString). Statements are written in T-SQL;
// on SQLite they are translated before they run. Open connections are pooled per connection string,
// so the open-run-close pattern of every query stays cheap.
class cT_ADODB
{
public:
    cT_ADODB();
    ~cT_ADODB(); // returns the connection to the pool
    cT_ADODB(const cT_ADODB&) = delete;
    cT_ADODB& operator=(const cT_ADODB&) = delete;

    QString sErrMsg;
    QString sDbName;

    qint16 iInit(const QString& connectionString);
    static QString csGetComputerName();
    void vAddAdoErrorLog(QString& errorText);
    qint16 iConnect();
    qint16 iDisConnect();
    // Opens rs on this connection (forward-only). cursorType, lockType and options are accepted
    // for the suite's call shape (1, 1, 0) and do not change what is read.
    qint16 iOpenRecSet(RecordSet& rs, const QString& sql, int cursorType = 1, int lockType = 1,
                       int options = 0);
    qint16 iCloseRecSet(RecordSet& rs);
    qint16 iExecSQL(const QString& sql);
    qint16 iBeginTrans();
    qint16 iCommitTrans();
    qint16 iRollback();
    qint16 iSetTimeout(int seconds);

    QString connectionString() const { return m_connectionString; }

private:
    // preparedShape, when given, lets a SELECT on the embedded database run as a kept prepared
    // statement; it then receives the statement's shape ("" when it ran as plain text).
    bool run(QSqlQuery& query, const QString& sql, bool forwardOnly, QString* preparedShape = nullptr);
    enum class Prepared { NotUsed, Ran, Failed };
    Prepared runPrepared(QSqlQuery& query, const QString& sqliteSql, QString& preparedShape);
    bool transactionStep(bool (QSqlDatabase::*fn)());

    struct Impl;
    std::unique_ptr<Impl> d;
    QString m_connectionString;
};

} // namespace qelprn
