#pragma once

#include "master/TableDef.h"

#include <QString>
#include <QVariant>

namespace qelprn {

class RecordSet;

// One row of a master table held by column: text columns as QString, numbers as qint32,
// amounts as qint64, each starting at its table's default. The record classes cD_… derive from it
// and add one accessor pair per property (see the QELPRN_… macros below).
class MasterRecord
{
public:
    explicit MasterRecord(const TableDef& def);

    const TableDef& def() const { return *m_def; }
    QString text(QStringView column) const;
    void setText(QStringView column, const QString& value);
    qint32 integer(QStringView column) const;
    void setInteger(QStringView column, qint32 value);
    qint64 currency(QStringView column) const;
    void setCurrency(QStringView column, qint64 value);
    QVariant value(int index) const { return m_values.at(index); }

    // Every stored column from the current row of rs, by its read name: text Null -> "",
    // number Null -> 0 (the read of a table class).
    void fillFrom(const RecordSet& rs);
    // Every column the record set has: text Null -> "", a Null number or date keeps the value
    // held (the loaders' rule).
    void mergeFrom(const RecordSet& rs);

private:
    int require(QStringView column) const;

    const TableDef* m_def;
    QVariantList m_values;
};

} // namespace qelprn

// Accessor pairs named as the suite's properties: cShamei1() / setcShamei1(v).
#define QELPRN_TEXT(name)                                                                          \
    QString name() const { return text(u"" #name); }                                               \
    void set##name(const QString& v) { setText(u"" #name, v); }
#define QELPRN_INT(name)                                                                           \
    qint32 name() const { return integer(u"" #name); }                                             \
    void set##name(qint32 v) { setInteger(u"" #name, v); }
#define QELPRN_CURRENCY(name)                                                                      \
    qint64 name() const { return currency(u"" #name); }                                            \
    void set##name(qint64 v) { setCurrency(u"" #name, v); }
