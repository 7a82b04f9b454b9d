#include "master/MasterRecord.h"

#include "app/NullValue.h"
#include "db/RecordSet.h"

#include <stdexcept>

namespace qelprn {

namespace {

QVariant defaultOf(const ColumnDef& c)
{
    switch (c.kind) {
    case ColumnKind::Text:
    case ColumnKind::Date: return QString();
    case ColumnKind::Int: return qint32(c.defaultValue);
    case ColumnKind::Currency: return qint64(c.defaultValue);
    }
    return {};
}

QVariant convert(const ColumnDef& c, const QVariant& v)
{
    switch (c.kind) {
    case ColumnKind::Text:
    case ColumnKind::Date: return csNullToStr(v);
    case ColumnKind::Int: return nNullToLng(v);
    case ColumnKind::Currency: return v.isNull() ? qint64(0) : v.toLongLong();
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
        throw std::logic_error("unknown column of " + m_def->table.toStdString() + ": "
                               + column.toString().toStdString());
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

qint64 MasterRecord::currency(QStringView column) const
{
    return m_values.at(require(column)).toLongLong();
}

void MasterRecord::setCurrency(QStringView column, qint64 value)
{
    m_values[require(column)] = value;
}

void MasterRecord::fillFrom(const RecordSet& rs)
{
    for (int i = 0; i < m_def->columns.size(); ++i) {
        const ColumnDef& c = m_def->columns.at(i);
        if (!c.stored)
            continue;
        const QString name = c.readName.isEmpty() ? c.name : c.readName;
        if (rs.hasField(name))
            m_values[i] = convert(c, rs.field(name));
    }
}

void MasterRecord::mergeFrom(const RecordSet& rs)
{
    for (int i = 0; i < m_def->columns.size(); ++i) {
        const ColumnDef& c = m_def->columns.at(i);
        const QString name = c.readName.isEmpty() ? c.name : c.readName;
        if (!c.stored || !rs.hasField(name))
            continue;
        const QVariant v = rs.field(name);
        if (c.kind == ColumnKind::Text)
            m_values[i] = csNullToStr(v);
        else if (!v.isNull())
            m_values[i] = convert(c, v);
    }
}

} // namespace qelprn
