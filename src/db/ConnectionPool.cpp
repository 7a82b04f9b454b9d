#include "db/ConnectionPool.h"

#include "app/DbLoginTimeout.h"
#include "db/ConnectionString.h"
#include "db/DbTraffic.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QMutexLocker>
#include <QRegularExpression>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

constexpr int kMaxIdlePerKey = 4;
constexpr int kBusyTimeoutMs = 5000;
constexpr qsizetype kMaxShapesPerConnection = 64;
constexpr qsizetype kMaxStatementsPerShape = 4;

// Connections are shared by what they reach, not by the text that names it: "sqlite:db" means
// another file once the current directory (the program folder) has changed. Every query opens a
// connection, so the target is remembered per text and current directory: parsing and resolving
// the text each time cost more than a look-up statement.
QString poolKey(const QString& connectionString)
{
    static QMutex mutex;
    static QHash<QString, QString> targets;
    constexpr qsizetype kTargetLimit = 256;
    const QString memoKey = QDir::currentPath() + u'\n' + connectionString;
    QString target;
    {
        QMutexLocker lock(&mutex);
        target = targets.value(memoKey);
    }
    if (target.isEmpty()) {
        const ConnectionString cs = ConnectionString::parse(connectionString);
        target = cs.backend() == ConnectionString::Backend::Sqlite ? u"sqlite|"_s + cs.sqliteFile()
                                                                   : u"odbc|"_s + cs.odbcConnectString();
        QMutexLocker lock(&mutex);
        if (targets.size() >= kTargetLimit)
            targets.clear();
        targets.insert(memoKey, target);
    }
    return QString::number(reinterpret_cast<quintptr>(QThread::currentThreadId())) + u'|' + target;
}

// The driver's diagnostic records once each: drivers repeat a record for every address they
// tried, and Qt appends its own English summary.
QString driverText(const QSqlError& e)
{
    const QString text = e.databaseText().trimmed();
    if (text.isEmpty())
        return e.text();
    static const QRegularExpression recordStart(u"\\s+(?=\\[)"_s);
    QStringList records;
    for (const QString& record : text.split(recordStart, Qt::SkipEmptyParts)) {
        if (!records.contains(record.trimmed()))
            records.append(record.trimmed());
    }
    return records.join(u' ');
}

void dropConnection(const QString& name)
{
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        if (db.isValid())
            db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

} // namespace

struct ConnectionPool::Impl
{
    mutable QMutex mutex;
    QHash<QString, QList<QString>> idle;
    QHash<QString, QString> keyOfInUse; // connection name -> the key it was opened for

    struct Statements
    {
        QHash<QString, QList<QSqlQuery>> idle;
        QSet<QString> unpreparable;
    };
    QHash<QString, Statements> statements; // connection name -> its prepared statements

    // Closes and removes a connection, its prepared statements first. Call with the mutex held.
    void drop(const QString& name)
    {
        statements.remove(name);
        dropConnection(name);
    }
};

ConnectionPool::ConnectionPool() : d(std::make_unique<Impl>())
{
    // Qt's connection registry must outlive the pool: touching it here constructs it first, so it
    // is destroyed after the pool at exit.
    (void)QSqlDatabase::connectionNames();
}

ConnectionPool::~ConnectionPool()
{
    clear();
}

ConnectionPool& ConnectionPool::instance()
{
    static ConnectionPool pool;
    return pool;
}

QString ConnectionPool::acquire(const QString& connectionString, QString* error)
{
    const QString key = poolKey(connectionString);
    {
        QMutexLocker lock(&d->mutex);
        QList<QString>& names = d->idle[key];
        while (!names.isEmpty()) {
            const QString name = names.takeLast();
            if (QSqlDatabase::database(name, false).isOpen()) {
                d->keyOfInUse.insert(name, key);
                return name;
            }
            d->drop(name);
        }
    }

    const ConnectionString cs = ConnectionString::parse(connectionString);
    const QString name = u"qelprn-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool opened = false;
    {
        QSqlDatabase db;
        if (cs.backend() == ConnectionString::Backend::Sqlite) {
            db = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
            db.setDatabaseName(cs.sqliteFile());
            db.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT="_s + QString::number(kBusyTimeoutMs));
        } else {
            db = QSqlDatabase::addDatabase(u"QODBC"_s, name);
            db.setDatabaseName(cs.odbcConnectString());
            db.setConnectOptions(u"SQL_ATTR_LOGIN_TIMEOUT="_s + QString::number(dbLoginTimeout()) +
                                 u";SQL_ATTR_CONNECTION_TIMEOUT=15"_s);
        }
        if (!db.isValid()) {
            if (error)
                *error = u"The database driver is not available: "_s + db.driverName();
        } else if (cs.backend() == ConnectionString::Backend::Sqlite && !QFileInfo::exists(cs.sqliteFile())) {
            // SQLite would create an empty file; the suite's database must already be there.
            if (error)
                *error = cs.sqliteFile() + u": the database file does not exist"_s;
        } else if (!db.open()) {
            if (error) {
                *error = cs.backend() == ConnectionString::Backend::Sqlite
                             ? cs.sqliteFile() + u": "_s + db.lastError().text()
                             : driverText(db.lastError());
            }
        } else {
            opened = true;
            countConnection();
            if (cs.speaksSqlite()) {
                QSqlQuery pragma(db);
                pragma.exec(u"PRAGMA busy_timeout = "_s + QString::number(kBusyTimeoutMs));
            }
        }
    }
    if (!opened) {
        dropConnection(name);
        return QString();
    }
    QMutexLocker lock(&d->mutex);
    d->keyOfInUse.insert(name, key);
    d->statements.insert(name, {});
    return name;
}

void ConnectionPool::release(const QString& connectionName, bool healthy)
{
    if (connectionName.isEmpty())
        return;
    QString key;
    {
        QMutexLocker lock(&d->mutex);
        key = d->keyOfInUse.take(connectionName);
    }
    if (healthy) {
        QSqlDatabase db = QSqlDatabase::database(connectionName, false);
        healthy = db.isOpen();
    }
    if (healthy) {
        QMutexLocker lock(&d->mutex);
        QList<QString>& names = d->idle[key];
        if (!key.isEmpty() && names.size() < kMaxIdlePerKey) {
            names.append(connectionName);
            return;
        }
    }
    QMutexLocker lock(&d->mutex);
    d->drop(connectionName);
}

void ConnectionPool::clear()
{
    QMutexLocker lock(&d->mutex);
    QHash<QString, QList<QString>> idle;
    idle.swap(d->idle);
    for (const QList<QString>& names : std::as_const(idle)) {
        for (const QString& name : names)
            d->drop(name);
    }
}

int ConnectionPool::idleCount(const QString& connectionString) const
{
    QMutexLocker lock(&d->mutex);
    return int(d->idle.value(poolKey(connectionString)).size());
}

std::optional<QSqlQuery> ConnectionPool::takeStatement(const QString& connectionName, const QString& shape)
{
    QMutexLocker lock(&d->mutex);
    const auto connection = d->statements.find(connectionName);
    if (connection == d->statements.end())
        return std::nullopt;
    const auto it = connection->idle.find(shape);
    if (it == connection->idle.end() || it->isEmpty())
        return std::nullopt;
    return it->takeLast();
}

void ConnectionPool::keepStatement(const QString& connectionName, const QString& shape, QSqlQuery&& query)
{
    QMutexLocker lock(&d->mutex);
    const auto connection = d->statements.find(connectionName);
    if (connection == d->statements.end())
        return; // the connection is gone; the statement goes with the caller's copy
    if (!connection->idle.contains(shape) && connection->idle.size() >= kMaxShapesPerConnection)
        connection->idle.clear();
    QList<QSqlQuery>& kept = connection->idle[shape];
    if (kept.size() < kMaxStatementsPerShape)
        kept.append(std::move(query));
}

bool ConnectionPool::isUnpreparable(const QString& connectionName, const QString& shape) const
{
    QMutexLocker lock(&d->mutex);
    const auto connection = d->statements.constFind(connectionName);
    return connection != d->statements.constEnd() && connection->unpreparable.contains(shape);
}

void ConnectionPool::markUnpreparable(const QString& connectionName, const QString& shape)
{
    QMutexLocker lock(&d->mutex);
    const auto connection = d->statements.find(connectionName);
    if (connection != d->statements.end() && connection->unpreparable.size() < kMaxShapesPerConnection)
        connection->unpreparable.insert(shape);
}

} // namespace qelprn
