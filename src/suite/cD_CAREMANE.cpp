#include "suite/cD_CAREMANE.h"

using namespace Qt::StringLiterals;

namespace qelprn {

const TableDef& cD_CAREMANE::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_CAREMANE_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"CAREMANE"_s;
        d.word = u"CAREMANE"_s;
        d.setDefault({u"nIDNo", u"iSisetsuCode"}, -1);
        d.allocate(IdAllocation::SiteMax, u"      max(CAREMANE.nIDNo) as nIDNo"_s, u"  where iKyotenCd = "_s,
                   QString());
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
