#pragma once

#include "db/RecordSet.h"

#include <QHash>
#include <QSqlQuery>
#include <QString>

namespace qelprn {

// What a record set holds: the forward-only query positioned on the current record, and the
// column names folded for look-up. Only the connection wrapper and the record set see this.
struct RecordSet::Impl
{
    QSqlQuery query;
    QHash<QString, int> names;
    QString error;
    bool open = false;
    bool eof = true;

    static QString foldName(const QString& name);
    void attach(QSqlQuery&& q);
    void step();
};

} // namespace qelprn
