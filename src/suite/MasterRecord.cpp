#include "suite/MasterRecord.h"

#include "app/NullValue.h"
#include "db/RecordSet.h"
#include "master/LoaderFields.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QVariant defaultOf(const ColumnDef& c)
{
    switch (c.kind) {
    case ColumnKind::Text:
    case ColumnKind::Date:
        return QString();
    case ColumnKind::Int:
        return qint32(c.defaultValue);
    case ColumnKind::Money:
        return qint64(c.defaultValue);
    }
    return {};
}

bool isDateValue(const QVariant& v)
{
    const int type = v.metaType().id();
    return type == QMetaType::QDate || type == QMetaType::QDateTime;
}

QVariant convert(const ColumnDef& c, const QVariant& v)
{
    switch (c.kind) {
    case ColumnKind::Text:
        // A server date-time read into a text property keeps the suite's text form.
        return isDateValue(v) ? dateTimeOf(v).toString(u"yyyy/MM/dd HH:mm:ss"_s) : csNullToStr(v);
    case ColumnKind::Date:
        return isDateValue(v) ? dateOf(v).toString(u"yyyy/MM/dd"_s) : csNullToStr(v);
    case ColumnKind::Int:
        return nNullToLng(v);
    case ColumnKind::Money:
        return v.isNull() ? qint64(0) : v.toLongLong();
    }
    return {};
}

} // namespace

MasterRecord::MasterRecord(const TableDef& def) : m_def(&def)
{
    m_values.reserve(def.columns.size());
    for (const ColumnDef& c : def.columns)
        m_values.append(defaultOf(c));
}

int MasterRecord::require(QStringView column) const
{
    const int i = m_def->indexOf(column);
    if (i < 0) // accessors are generated from the column lists, so this is a programming error
        throw std::logic_error("unknown column of " + m_def->table.toStdString() + ": " +
                               column.toString().toStdString());
    return i;
}

QString MasterRecord::text(QStringView column) const
{
    return m_values.at(require(column)).toString();
}

void MasterRecord::setText(QStringView column, const QString& value)
{
    m_values[require(column)] = value;
}

qint32 MasterRecord::integer(QStringView column) const
{
    return m_values.at(require(column)).toInt();
}

void MasterRecord::setInteger(QStringView column, qint32 value)
{
    m_values[require(column)] = value;
}

qint64 MasterRecord::money(QStringView column) const
{
    return m_values.at(require(column)).toLongLong();
}

void MasterRecord::setMoney(QStringView column, qint64 value)
{
    m_values[require(column)] = value;
}

void MasterRecord::fillFrom(const RecordSet& rs, const QList<int>& columns)
{
    for (const int i : columns) {
        const ColumnDef& c = m_def->columns.at(i);
        m_values[i] = convert(c, rs.field(c.readName.isEmpty() ? c.name : c.readName));
    }
}

} // namespace qelprn
