#pragma once

#include <QSqlQuery>
#include <QString>
#include <memory>
#include <optional>

namespace qelprn {

// Open database connections kept per connection string (and per thread, as Qt requires), so that
// the open-run-close pattern of every query costs a look-up instead of a new session. A connection
// that failed to open, or that was handed back as broken, is dropped rather than reused.
class ConnectionPool
{
public:
    static ConnectionPool& instance();

    // The Qt connection name of an open connection for connectionString; "" with *error set when
    // it cannot be opened.
    QString acquire(const QString& connectionString, QString* error);
    // Hands a connection back: kept for reuse by the same database when healthy, closed and removed
    // otherwise.
    void release(const QString& connectionName, bool healthy);
    // Closes every idle connection (tests; the end of the program).
    void clear();

    int idleCount(const QString& connectionString) const;

    // Prepared statements kept with a connection, by statement shape, so that look-ups that
    // differ only in their literals are parsed and planned once. They go when the connection goes.
    std::optional<QSqlQuery> takeStatement(const QString& connectionName, const QString& shape);
    void keepStatement(const QString& connectionName, const QString& shape, QSqlQuery&& query);
    // A shape the database would not prepare is run as plain text from then on.
    bool isUnpreparable(const QString& connectionName, const QString& shape) const;
    void markUnpreparable(const QString& connectionName, const QString& shape);

    ~ConnectionPool();
    ConnectionPool(const ConnectionPool&) = delete;
    ConnectionPool& operator=(const ConnectionPool&) = delete;

private:
    ConnectionPool();
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace qelprn
