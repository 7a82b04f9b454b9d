#pragma once

#include "app/AppContext.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QVariant>
#include <functional>

namespace qelprn {

class RecordSet;

// Field types of the plain loader structures, named by the column kinds of the column lists.
namespace field {
using Text = QString;
using Int = qint32;
using Money = qint32;
using Date = QDate;
using DateTime = QDateTime;
} // namespace field

// A date or date-time column as a value: text "yyyy/mm/dd[ hh:mm:ss]" (the embedded engine) or a
// date value (the server). Null or unreadable gives an invalid value.
QDate dateOf(const QVariant& v);
QDateTime dateTimeOf(const QVariant& v);

// The loaders' reading rule: a Null text column becomes "", a Null number or date column leaves
// the field as it was.
void readLoaderField(const RecordSet& rs, const QString& name, QString& out);
void readLoaderField(const RecordSet& rs, const QString& name, qint32& out);
void readLoaderField(const RecordSet& rs, const QString& name, QDate& out);
void readLoaderField(const RecordSet& rs, const QString& name, QDateTime& out);

// Reads the first row of sql on a connection of its own and hands it to fill; true when a row
// was found and read without error. A connection or read failure puts the message in errorText
// (when given); a missing row leaves errorText alone.
bool loadSingleRow(const AppContext& ctx, const QString& sql, QString* errorText,
                   const std::function<void(const RecordSet&)>& fill);

// "SELECT * FROM <table> WHERE nIDNo = … and iKyotenCd = … and iKyotenEb = …" for the own site.
QString ownSiteRowStatement(const AppContext& ctx, const QString& table, qint32 nIDNo);

// The loaders' whole calling sequence: reads the row into a copy of rec (so that a Null number
// keeps rec's value) and assigns the copy to rec only when the row was read whole.
template <typename Info, typename Read>
bool loadInto(const AppContext& ctx, const QString& sql, Info& rec, QString* errorText, Read read)
{
    Info loaded = rec;
    const bool found = loadSingleRow(ctx, sql, errorText, [&](const RecordSet& rs) { read(rs, loaded); });
    if (found)
        rec = loaded; // assigned as a whole once the connection is closed
    return found;
}

} // namespace qelprn
