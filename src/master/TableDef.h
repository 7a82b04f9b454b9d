#pragma once

#include "db/DbInfo.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace qelprn {

class MasterRecord;

// How a column is held in a record and written into statements.
enum class ColumnKind {
    Text,     // text between single quotes
    Int,      // 32-bit number, bare
    Date,     // date text "yyyy/mm/dd"; an empty date is written as NULL
    Currency, // amount in yen, bare
};

struct ColumnDef
{
    QString name;
    ColumnKind kind = ColumnKind::Text;
    qint32 defaultValue = 0; // for Int and Currency; text columns start ""
    // False for properties that live only in the record (never read or written).
    bool stored = true;
    // A text column that holds a number; its update fragment is " =  '" like the numbers'.
    bool numberText = false;
    // Name the record set is asked for when it differs from the column name.
    QString readName;
};

// How a table hands out new numbers (iGetMaxIDNo).
enum class IdAllocation {
    None,
    SiteMax,    // highest number of the site
    SitePrefix, // highest number of the site whose digits start with site and two-digit branch
    GapFill,    // as SitePrefix, then the lowest free number once the range is used up
};

// Everything the generic table code needs to know about one master table: its columns in
// property order, the words of its statements and messages, its key and how it allocates numbers.
struct TableDef
{
    QString table;    // name as written in statements ("Sisetsu")
    QString word;     // word of the "…が無効です。" message
    QList<ColumnDef> columns;
    QStringList gridColumns; // select list of iDataReadGrid; empty = every stored column
    bool siteInsert = true;  // insert writes iKyotenCd/iKyotenEb of the current site first
    QString keyColumn = QStringLiteral("nIDNo");
    bool siteInKeyWhere = false; // update/delete also test the site
    bool siteOnRead = false;     // reads filter on the current site
    IdAllocation allocation = IdAllocation::None;
    QString maxExpression; // "      max(Sisetsu.nIDNo) as nIDNo"
    QString maxSiteCd;     // fragment before the site code in the max statement
    QString maxSiteEb;     // fragment before the site branch
    // Gap-filling allocation: the test whether a number is taken ("  and … = ") and the select
    // of the lowest number whose successor is free ("  select min(…) as nIDNo from …").
    QString gapTakenTest;
    QString gapMinSelect;
    QString orderBy = QStringLiteral("  order by      nIDNo");
    // Conditions of iDataRead / iDataReadGrid; nullptr gives the key (when set) and the site.
    QString (*readWhere)(const MasterRecord& cond, const SiteKey& site) = nullptr;
    QString (*gridWhere)(const MasterRecord& cond, const SiteKey& site) = nullptr;

    QHash<QString, int> index; // column name -> position, filled by finish()

    // Builds the name index; call once after the columns are listed.
    TableDef& finish();
    int indexOf(QStringView name) const;
};

} // namespace qelprn
