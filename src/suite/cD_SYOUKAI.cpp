#include "suite/cD_SYOUKAI.h"

using namespace Qt::StringLiterals;

namespace qelprn {

const TableDef& cD_SYOUKAI::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_SYOUKAI_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"SYOUKAI"_s;
        d.word = u"SYOUKAI"_s;
        d.setDefault({u"nIDNo", u"iSisetsuCode"}, -1);
        d.allocate(IdAllocation::GapFill, u"      max(SYOUKAI.nIDNo) as nIDNo"_s);
        d.gapTakenTest = u"  and SYOUKAI.nIDNo = "_s;
        d.gapMinSelect = u"  select min(SYOUKAI.cIDNo) as nIDNo from SYOUKAI"_s;
        d.gapColumn = u"nIDNo"_s;
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
