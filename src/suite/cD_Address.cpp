#include "suite/cD_Address.h"

using namespace Qt::StringLiterals;

namespace qelprn {

const TableDef& cD_Address::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_ADDRESS_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"ADDRESS"_s;
        d.word = u"ADDRESS"_s;
        d.setDefault({u"nKanjaCD", u"iAddressSet", u"nSisetsuCd"}, -1);
        d.keyColumns = {u"nKanjaCD"_s, u"tStartDay"_s};
        d.siteInKeyWhere = true;
        d.siteOnRead = true;
        d.orderBy = u"  order by      nKanjaCD, tStartDay"_s;
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
