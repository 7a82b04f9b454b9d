#include "suite/TableDef.h"

namespace qelprn {

TableDef& TableDef::finish()
{
    index.clear();
    for (int i = 0; i < columns.size(); ++i)
        index.insert(columns.at(i).name, i);
    return *this;
}

int TableDef::indexOf(QStringView name) const
{
    const auto it = index.constFind(name.toString());
    return it == index.constEnd() ? -1 : it.value();
}

void TableDef::allocate(IdAllocation how, const QString& expression, const QString& siteCd,
                        const QString& siteEb)
{
    allocation = how;
    maxExpression = expression;
    maxSiteCd = siteCd;
    maxSiteEb = siteEb;
}

void TableDef::setDefault(std::initializer_list<QStringView> names, qint32 value)
{
    for (const QStringView name : names)
        column(name).defaultValue = value;
}

void TableDef::setIntDefault(qint32 value)
{
    for (ColumnDef& c : columns)
        if (c.kind == ColumnKind::Int)
            c.defaultValue = value;
}

QList<int> TableDef::readColumns() const
{
    QList<int> result;
    if (!statementColumns.isEmpty()) {
        for (const QString& name : statementColumns)
            result.append(indexOf(name));
        return result;
    }
    for (int i = 0; i < columns.size(); ++i)
        if (columns.at(i).stored)
            result.append(i);
    return result;
}

} // namespace qelprn
