#include "suite/cD_CORP.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The site's corporations, of one type when the condition's type is set (0 is the main one).
QString readWhere(const MasterRecord& cond, const SiteKey& site)
{
    QString sql = u" where"_s + u"     iKyotenCd = "_s + QString::number(site.iKyotenCd) + u" and"_s +
                  u"     iKyotenEb = "_s + QString::number(site.iKyotenEb);
    if (cond.integer(u"iType") > -1)
        sql += u" and"_s + u"     iType = "_s + QString::number(cond.integer(u"iType"));
    if (cond.integer(u"nIDNo") > -1)
        sql += u" and"_s + u"     nIDNo = "_s + QString::number(cond.integer(u"nIDNo"));
    return sql;
}

} // namespace

const TableDef& cD_CORP::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_CORP_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"CORP"_s;
        d.word = u"CORP"_s;
        d.setDefault({u"nIDNo", u"iType", u"nLat", u"nLon"}, -1);
        d.siteInKeyWhere = true;
        d.siteOnRead = true;
        d.readWhere = readWhere;
        d.allocate(IdAllocation::SiteMax, u"      max(CORP.nIDNo) as nIDNo"_s);
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
