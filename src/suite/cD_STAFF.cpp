#include "suite/cD_STAFF.h"

using namespace Qt::StringLiterals;

namespace qelprn {

const TableDef& cD_STAFF::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_STAFF_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"STAFF"_s;
        d.word = u"STAFF"_s;
        d.setDefault({u"nIDNo"}, -1);
        d.siteInKeyWhere = true;
        d.siteOnRead = true;
        d.allocate(IdAllocation::SitePrefix, u"      max(STAFF.nIDNo) as nIDNo"_s);
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
