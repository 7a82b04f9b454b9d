#include "suite/cD_SHINSEISYO.h"

using namespace Qt::StringLiterals;

namespace qelprn {

const TableDef& cD_SHINSEISYO::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_SHINSEISYO_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"SHINSEISYO"_s;
        d.word = u"SHINSEISYO"_s;
        d.setDefault({u"nIDNo"}, -1);
        d.siteInKeyWhere = true;
        d.siteOnRead = true;
        d.allocate(IdAllocation::SiteMax, u"      max(SHINSEISYO.nIDNo) as nIDNo"_s);
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
