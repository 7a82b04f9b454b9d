#pragma once

#include "suite/TableDef.h"

#include <QString>
#include <QVariant>

namespace qelprn {

class RecordSet;

// One row of a master table held by column: text and date columns as QString, numbers as qint32,
// amounts as qint64, each starting at its table's default. The record classes cD_… derive from it
// and declare one accessor pair per property from their column list (QELPRN_PROPERTY below), so
// that the list that describes the table also declares the properties.
class MasterRecord
{
public:
    explicit MasterRecord(const TableDef& def);
    virtual ~MasterRecord() = default;
    MasterRecord(const MasterRecord&) = default;
    MasterRecord& operator=(const MasterRecord&) = default;

    const TableDef& def() const { return *m_def; }
    QString text(QStringView column) const;
    void setText(QStringView column, const QString& value);
    qint32 integer(QStringView column) const;
    void setInteger(QStringView column, qint32 value);
    qint64 money(QStringView column) const;
    void setMoney(QStringView column, qint64 value);
    QVariant value(int index) const { return m_values.at(index); }

    // The given columns from the current row of rs, by their read names: text Null -> "", number
    // Null -> 0; date values become "yyyy/mm/dd" (date-times "yyyy/mm/dd hh:mm:ss").
    void fillFrom(const RecordSet& rs, const QList<int>& columns);

private:
    int require(QStringView column) const;

    const TableDef* m_def;
    QVariantList m_values;
};

} // namespace qelprn

// Accessor pairs named as the suite's properties: cShamei1() / setcShamei1(v).
#define QELPRN_PROPERTY_Text(name)                                                                           \
    QString name() const                                                                                     \
    {                                                                                                        \
        return text(u"" #name);                                                                              \
    }                                                                                                        \
    void set##name(const QString& v)                                                                         \
    {                                                                                                        \
        setText(u"" #name, v);                                                                               \
    }
#define QELPRN_PROPERTY_Date(name) QELPRN_PROPERTY_Text(name)
#define QELPRN_PROPERTY_Int(name)                                                                            \
    qint32 name() const                                                                                      \
    {                                                                                                        \
        return integer(u"" #name);                                                                           \
    }                                                                                                        \
    void set##name(qint32 v)                                                                                 \
    {                                                                                                        \
        setInteger(u"" #name, v);                                                                            \
    }
#define QELPRN_PROPERTY_Money(name)                                                                          \
    qint64 name() const                                                                                      \
    {                                                                                                        \
        return money(u"" #name);                                                                             \
    }                                                                                                        \
    void set##name(qint64 v)                                                                                 \
    {                                                                                                        \
        setMoney(u"" #name, v);                                                                              \
    }
#define QELPRN_PROPERTY(kind, name) QELPRN_PROPERTY_##kind(name)
