#include "suite/cD_RIYOUSHA.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString readWhere(const MasterRecord& cond, const SiteKey& site)
{
    const QString siteWhere = u"    and iKyotenCd = "_s + QString::number(site.iKyotenCd) +
                              u"    and iKyotenEb = "_s + QString::number(site.iKyotenEb);
    if (cond.integer(u"nIDNo") > -1)
        return u" where"_s + u"    nIDNo = "_s + QString::number(cond.integer(u"nIDNo")) + siteWhere;
    // No number: every patient of the site.
    return u" where"_s + u"    iKyotenCd = "_s + QString::number(site.iKyotenCd) + u"    and iKyotenEb = "_s +
           QString::number(site.iKyotenEb);
}

} // namespace

const TableDef& cD_RIYOUSHA::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.table = u"RIYOUSHA"_s;
        d.word = u"RIYOUSHA"_s;
        d.columns = {QELPRN_RIYOUSHA_LOADER_COLUMNS(QELPRN_COLUMN_DEF) QELPRN_RIYOUSHA_EXTRA_COLUMNS(
            QELPRN_COLUMN_DEF) QELPRN_RIYOUSHA_ADDRESS_SET(QELPRN_COLUMN_DEF)};
        d.finish();
        d.setIntDefault(-1);
        for (const QStringView name : {u"iAddressSet", u"cSisetsuName", u"cSisetsuAddress", u"nSisetsuCd"})
            d.column(name).stored = false;
        // Looked up under its full-width spelling, found by the width-insensitive name match.
        d.column(u"cByoumei").readName = u"ｃByoumei"_s;
        d.siteInKeyWhere = true;
        d.readWhere = readWhere;
        d.orderBy = u"  order by      RIYOUSHA.nIDNo"_s;
        d.allocate(IdAllocation::SiteMax, u"      max(RIYOUSHA.nIDNo) as nIDNo"_s, u"  WHERE iKyotenCd = "_s,
                   u"  AND iKyotenEb = "_s);
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
