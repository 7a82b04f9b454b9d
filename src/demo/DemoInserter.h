#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>

struct sqlite3;
struct sqlite3_stmt;

namespace qelprn {

// One prepared INSERT per table, bound by position and run through SQLite's own interface on the
// connection Qt opened: the benchmark set writes close to a million rows, and Qt's per-value
// binding would double the time. The first failure is kept; later rows are then ignored.
class DemoInserter
{
public:
    DemoInserter(QSqlDatabase& db, const QString& table, const QStringList& columns);
    ~DemoInserter();
    DemoInserter(const DemoInserter&) = delete;
    DemoInserter& operator=(const DemoInserter&) = delete;

    // Values in column order; a null QVariant writes Null, numbers are bound as numbers and
    // everything else as UTF-8 text.
    void add(const QVariantList& values);
    QString error() const { return m_error; }

private:
    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    int m_columns;
    QString m_table;
    QString m_error;
};

} // namespace qelprn
