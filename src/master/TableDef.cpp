#include "master/TableDef.h"

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
