#pragma once

#include "db/DbInfo.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <initializer_list>

namespace qelprn {

class MasterRecord;

// How a column is held in a record and written into statements. The enumerators are the kinds
// named in the column lists of the record classes (X(Text, cShamei1), X(Int, nIDNo), ...).
enum class ColumnKind {
    Text,  // text between single quotes
    Int,   // 32-bit number, bare
    Date,  // date text "yyyy/mm/dd"; an empty date is written as NULL
    Money, // amount in yen, bare
};

struct ColumnDef
{
    QString name;
    ColumnKind kind = ColumnKind::Text;
    qint32 defaultValue = 0; // for Int and Money; text and dates start ""
    // False for properties that live only in the record (never read or written).
    bool stored = true;
    // A column the read computes from a joined table ("SISETSU.cShamei1"): read, never written.
    QString expression;
    // A text column that holds a number; its update fragment is " =  '" like the numbers'.
    bool numberText = false;
    // Name the record set is asked for when it differs from the column name.
    QString readName;

    bool written() const { return stored && expression.isEmpty(); }
    static ColumnDef of(const QString& name, ColumnKind kind)
    {
        ColumnDef c;
        c.name = name;
        c.kind = kind;
        return c;
    }
};

// How a table hands out new numbers (iGetMaxIDNo).
enum class IdAllocation {
    None,
    SiteMax,    // highest number of the site
    SitePrefix, // highest number of the site whose digits start with site and two-digit branch
    GapFill,    // as SitePrefix, then the lowest free number once the range is used up
};

using WhereBuilder = QString (*)(const MasterRecord& cond, const SiteKey& site);

// Everything the shared table code needs to know about one master table: its columns in property
// order, the words of its statements and messages, its key and how it allocates numbers. Each
// record class builds its table's description once, from the same column list that declares its
// properties.
struct TableDef
{
    QString table; // name as written in statements ("Sisetsu")
    QString word;  // word of the "…が無効です。" message
    QList<ColumnDef> columns;
    // Order of the columns in reads and writes when it differs from the property order.
    QStringList statementColumns;
    QStringList gridColumns; // select list of iDataReadGrid; empty = the read's columns
    QString readFrom;        // FROM clause body of reads; empty = the table
    bool siteInsert = true;  // insert writes iKyotenCd/iKyotenEb of the current site first
    QStringList keyColumns = {QStringLiteral("nIDNo")};
    bool siteInKeyWhere = false; // update/delete also test the site
    bool siteOnRead = false;     // reads filter on the current site
    IdAllocation allocation = IdAllocation::None;
    QString maxExpression; // "      max(Sisetsu.nIDNo) as nIDNo"
    QString maxSiteCd;     // fragment before the site code in the max statement
    QString maxSiteEb;     // fragment before the site branch; empty = the site code alone
    // Gap-filling allocation: the test whether the range's first number is taken (followed by the
    // number), the select of the lowest number whose successor is free, and the numeric column
    // the range clauses test.
    QString gapTakenTest;
    QString gapMinSelect;
    QString gapColumn;
    QString orderBy = QStringLiteral("  order by      nIDNo");
    // Conditions of iDataRead / iDataReadGrid; nullptr gives the key (when set) and the site.
    WhereBuilder readWhere = nullptr;
    WhereBuilder gridWhere = nullptr;

    QHash<QString, int> index; // column name -> position, filled by finish()

    // Builds the name index; call once after the columns are listed.
    TableDef& finish();
    int indexOf(QStringView name) const;
    const ColumnDef& column(QStringView name) const { return columns.at(indexOf(name)); }
    ColumnDef& column(QStringView name) { return columns[indexOf(name)]; }
    // Number allocation: the max expression and the fragments before the site code and branch
    // (an empty branch fragment tests the site code alone).
    void allocate(IdAllocation how, const QString& expression,
                  const QString& siteCd = QStringLiteral("  where iKyotenCd = "),
                  const QString& siteEb = QStringLiteral("  and iKyotenEb = "));
    // Start values of number columns: the named ones, or every Int column.
    void setDefault(std::initializer_list<QStringView> names, qint32 value);
    void setIntDefault(qint32 value);
    // Columns read by iDataRead, in statement order.
    QList<int> readColumns() const;
};

} // namespace qelprn

// Builds the ColumnDef list of a column list X(kind, name): QList<ColumnDef>{ QELPRN_COLUMNS(L) }.
#define QELPRN_COLUMN_DEF(kind, name) qelprn::ColumnDef::of(QStringLiteral(#name), qelprn::ColumnKind::kind),
