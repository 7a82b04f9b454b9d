#pragma once

#include "db/RecordSet.h"

#include <QHash>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <functional>

namespace qelprn {

// What a record set holds: the forward-only query positioned on the current record, and the
// column names folded for look-up. Only the connection wrapper and the record set see this.
struct RecordSet::Impl
{
    QSqlQuery query;
    QHash<QString, int> names;
    QStringList columns; // the column names as the statement gave them
    // Names as the caller spelt them, so a loop asking for the same field each record folds once.
    QHash<QString, int> asked;
    QString error;
    // Hands the finished query back for reuse, when it is a kept prepared statement.
    std::function<void(QSqlQuery&&)> recycle;
    bool open = false;
    bool eof = true;

    static QString foldName(const QString& name);
    // A column name as the driver reported it, cleaned of what a faulty driver appends.
    static QString columnName(const QString& reported);
    void attach(QSqlQuery&& q);
    void step();
};

} // namespace qelprn
