#include "db/cT_ADODB.h"

#include "db/ConnectionPool.h"
#include "db/ConnectionString.h"
#include "db/DbTraffic.h"
#include "db/RecordSetImpl.h"
#include "db/StatementShape.h"
#include "db/TsqlTranslator.h"

#include <QList>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The driver's error as the suite's error log shows it: number, text, source, SQLSTATE, native code.
struct ErrorEntry
{
    QString number;
    QString description;
    QString source;
    QString sqlState;
    QString nativeError;
};

ErrorEntry entryOf(const QSqlError& e, const QString& source)
{
    ErrorEntry entry;
    entry.nativeError = e.nativeErrorCode();
    bool numeric = false;
    entry.nativeError.toLongLong(&numeric);
    entry.number = numeric ? entry.nativeError : u"-1"_s;
    entry.description = e.databaseText().isEmpty() ? e.text() : e.databaseText();
    entry.source = source;
    // ODBC reports a five-character SQLSTATE; the embedded engine has none.
    static const QRegularExpression state(u"\\b([0-9A-Z]{5})\\b"_s);
    if (source.contains(u"ODBC"_s)) {
        const auto m = state.match(e.nativeErrorCode() + u' ' + e.driverText());
        if (m.hasMatch())
            entry.sqlState = m.captured(1);
    }
    return entry;
}

const QString kClosed = u"Operation is not allowed when the object is closed."_s;

} // namespace

struct cT_ADODB::Impl
{
    QString connectionName;
    bool speaksSqlite = false;
    bool embedded = false; // Qt's own SQLite driver, where prepared statements are kept
    bool broken = false;
    QList<ErrorEntry> errors;
    int state = 0; // 0 closed, 1 open, as the suite reads a connection's state
    bool inTransaction = false;

    QSqlDatabase db() const { return QSqlDatabase::database(connectionName, false); }
    QString source() const
    {
        return speaksSqlite ? u"Embedded SQLite"_s : u"Microsoft OLE DB Provider for ODBC"_s;
    }
};

cT_ADODB::cT_ADODB() : d(std::make_unique<Impl>()) {}

cT_ADODB::~cT_ADODB()
{
    iDisConnect();
}

qint16 cT_ADODB::iInit(const QString& connectionString)
{
    if (connectionString.trimmed().isEmpty()) {
        sErrMsg = u"接続文字列取得できません。"_s;
        return -1;
    }
    if (d->state == 1 && connectionString != m_connectionString)
        iDisConnect();
    m_connectionString = connectionString;
    const ConnectionString cs = ConnectionString::parse(connectionString);
    sDbName = cs.database;
    d->speaksSqlite = cs.speaksSqlite();
    d->embedded = cs.backend() == ConnectionString::Backend::Sqlite;
    return 0;
}

QString cT_ADODB::csGetComputerName()
{
    return QSysInfo::machineHostName();
}

void cT_ADODB::vAddAdoErrorLog(QString& errorText)
{
    if (d->errors.isEmpty())
        return;
    QStringList lines;
    lines.append(u"Connection State="_s + QString::number(d->state));
    for (const ErrorEntry& e : std::as_const(d->errors)) {
        lines.append(u"Error Number: "_s + e.number);
        lines.append(u"  Description: "_s + e.description);
        lines.append(u"  Source: "_s + e.source);
        lines.append(u"  SQL State: "_s + e.sqlState);
        lines.append(u"  Native Error: "_s + e.nativeError);
    }
    lines.append(QString::number(d->errors.size()) + u" provider error(s) occurred."_s);
    if (!errorText.isEmpty())
        errorText += u'\r';
    errorText += lines.join(u'\r');
    d->errors.clear();
}

qint16 cT_ADODB::iConnect()
{
    if (d->state == 1)
        return 0;
    if (m_connectionString.isEmpty()) {
        sErrMsg = u"接続文字列取得できません。"_s;
        return -1;
    }
    QString error;
    d->connectionName = ConnectionPool::instance().acquire(m_connectionString, &error);
    if (d->connectionName.isEmpty()) {
        d->state = 0;
        // The reason in Japanese first; the driver's own text follows once, in the error log.
        const ConnectionString cs = ConnectionString::parse(m_connectionString);
        sErrMsg = u"データベースに接続できません。（サーバー：%1　データベース：%2）"_s.arg(cs.dataSource,
                                                                                            cs.database);
        ErrorEntry entry;
        entry.number = u"-1"_s;
        entry.description = error;
        entry.source = d->source();
        d->errors.append(entry);
        vAddAdoErrorLog(sErrMsg);
        return -1;
    }
    d->state = 1;
    d->broken = false;
    return 0;
}

qint16 cT_ADODB::iDisConnect()
{
    if (d->state != 1)
        return 0;
    if (d->inTransaction) {
        // A transaction left open by a failed caller must not leak into the next user of the
        // pooled connection.
        d->db().rollback();
        d->inTransaction = false;
    }
    ConnectionPool::instance().release(d->connectionName, !d->broken);
    d->connectionName.clear();
    d->state = 0;
    return 0;
}

qint16 cT_ADODB::iOpenRecSet(RecordSet& rs, const QString& sql, int, int, int)
{
    rs.close();
    QSqlQuery query;
    QString shape;
    if (!run(query, sql, true, &shape))
        return -1;
    rs.impl()->attach(std::move(query));
    if (!shape.isEmpty()) {
        rs.impl()->recycle = [name = d->connectionName, shape](QSqlQuery&& used) {
            ConnectionPool::instance().keepStatement(name, shape, std::move(used));
        };
    }
    if (rs.hasError()) {
        sErrMsg = rs.errorText();
        return -1;
    }
    return 0;
}

qint16 cT_ADODB::iCloseRecSet(RecordSet& rs)
{
    rs.close();
    return 0;
}

qint16 cT_ADODB::iExecSQL(const QString& sql)
{
    QSqlQuery query;
    return run(query, sql, false) ? 0 : -1;
}

// Runs one statement (translated for SQLite) on the open connection; on failure sErrMsg holds the
// database's reason followed by the error log.
bool cT_ADODB::run(QSqlQuery& query, const QString& sql, bool forwardOnly, QString* preparedShape)
{
    if (d->state != 1) {
        sErrMsg = kClosed;
        return false;
    }
    const QString text = d->speaksSqlite ? translateTsqlToSqlite(sql) : sql;
    countStatement();
    const Prepared prepared = preparedShape && d->embedded && forwardOnly
                                  ? runPrepared(query, text, *preparedShape)
                                  : Prepared::NotUsed;
    if (prepared == Prepared::Ran)
        return true;
    if (prepared == Prepared::NotUsed) {
        query = QSqlQuery(d->db());
        query.setForwardOnly(forwardOnly);
        if (query.exec(text))
            return true;
    }
    const QSqlError e = query.lastError();
    if (e.type() == QSqlError::ConnectionError)
        d->broken = true;
    sErrMsg = e.databaseText().isEmpty() ? e.text() : e.databaseText();
    d->errors.append(entryOf(e, d->source()));
    vAddAdoErrorLog(sErrMsg);
    return false;
}

// Runs a SELECT as the kept prepared statement of its shape, preparing it the first time. NotUsed
// when the statement has no shape or would not prepare (the caller runs the plain text, which
// reports any fault in it as before); Failed with the failed query in query when it ran and failed.
cT_ADODB::Prepared cT_ADODB::runPrepared(QSqlQuery& query, const QString& sqliteSql, QString& preparedShape)
{
    const std::optional<StatementShape> shape = shapeOfSelect(sqliteSql);
    if (!shape)
        return Prepared::NotUsed;
    ConnectionPool& pool = ConnectionPool::instance();
    if (pool.isUnpreparable(d->connectionName, shape->text))
        return Prepared::NotUsed;
    std::optional<QSqlQuery> kept = pool.takeStatement(d->connectionName, shape->text);
    QSqlQuery prepared = kept ? std::move(*kept) : QSqlQuery(d->db());
    if (!kept) {
        prepared.setForwardOnly(true);
        if (!prepared.prepare(shape->text)) {
            pool.markUnpreparable(d->connectionName, shape->text);
            return Prepared::NotUsed;
        }
    }
    for (qsizetype i = 0; i < shape->values.size(); ++i)
        prepared.bindValue(int(i), shape->values.at(i));
    const bool ran = prepared.exec();
    query = std::move(prepared);
    if (!ran)
        return Prepared::Failed;
    preparedShape = shape->text;
    return Prepared::Ran;
}

// Begins or commits a transaction through fn; false with sErrMsg set.
bool cT_ADODB::transactionStep(bool (QSqlDatabase::*fn)())
{
    if (d->state != 1) {
        sErrMsg = kClosed;
        return false;
    }
    QSqlDatabase db = d->db();
    if (!(db.*fn)()) {
        sErrMsg = db.lastError().text();
        return false;
    }
    return true;
}

qint16 cT_ADODB::iBeginTrans()
{
    if (!transactionStep(&QSqlDatabase::transaction))
        return -1;
    d->inTransaction = true;
    return 0;
}

qint16 cT_ADODB::iCommitTrans()
{
    if (!transactionStep(&QSqlDatabase::commit))
        return -1;
    d->inTransaction = false;
    return 0;
}

qint16 cT_ADODB::iRollback()
{
    if (d->state != 1)
        return -1;
    const bool ok = d->db().rollback();
    d->inTransaction = false;
    if (!ok)
        d->errors.append(entryOf(d->db().lastError(), d->source()));
    // Keep the reason of the failed transaction in sErrMsg.
    vAddAdoErrorLog(sErrMsg);
    return ok ? 0 : -1;
}

qint16 cT_ADODB::iSetTimeout(int seconds)
{
    if (seconds < 0)
        return -1;
    if (d->state == 1 && d->speaksSqlite)
        QSqlQuery(d->db()).exec(u"PRAGMA busy_timeout = "_s + QString::number(seconds * 1000));
    return 0;
}

} // namespace qelprn
