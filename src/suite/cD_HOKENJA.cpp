#include "suite/cD_HOKENJA.h"

#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The insurers whose numbers patients use, of the prefecture whose two digits the condition's
// cIDNo holds (insurer numbers of 8 digits carry them in digits 3-4, those of 6 in digits 1-2).
QString gridWhere(const MasterRecord& cond, const SiteKey&)
{
    QString sql = u" where (exists ("_s + u"     select cHokenNo, iHoken from RIYOUSHA "_s +
                  u" where RIYOUSHA.cHokenNo = HOKENJA.cIDno) or HOKENJA.cIDno in ("_s +
                  u"     select cFutanNo from RIYOUSHA "_s + u"))"_s;
    const QString pref = cond.text(u"cIDNo").trimmed();
    if (pref.size() == 2) {
        const QString pp = sqlText(pref);
        sql += u" and"_s + u" ((right(left(HOKENJA.cIDno,4),2) = '"_s + pp +
               u"' and len(HOKENJA.cIDno)=8)  or (left(HOKENJA.cIDno,2) = '"_s + pp +
               u"' and len(HOKENJA.cIDno)=6)) "_s;
    }
    return sql;
}

} // namespace

const TableDef& cD_HOKENJA::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_HOKENJA_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"HOKENJA"_s;
        d.word = u"HOKENJA"_s;
        d.setDefault({u"iHoken"}, -1);
        d.keyColumns = {u"cIDNo"_s};
        d.orderBy = u"  order by      cIDNo"_s;
        d.gridWhere = gridWhere;
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
