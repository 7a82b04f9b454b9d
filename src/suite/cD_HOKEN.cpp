#include "suite/cD_HOKEN.h"

using namespace Qt::StringLiterals;

namespace qelprn {

const TableDef& cD_HOKEN::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_HOKEN_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"HOKEN"_s;
        d.word = u"HOKEN"_s;
        d.setDefault({u"iType"}, -1);
        d.keyColumns = {u"iType"_s};
        d.siteInKeyWhere = true;
        d.siteOnRead = true;
        d.orderBy = u"  order by      iType"_s;
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
