#include "suite/cD_DOCTOR.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString readWhere(const MasterRecord& cond, const SiteKey&)
{
    // Doctor numbers carry the site; the text key is compared as the number it holds.
    const QString id = cond.text(u"cIDNo").trimmed();
    bool numeric = false;
    const qint64 n = id.toLongLong(&numeric);
    return numeric ? u"     WHERE CAST(cIDno AS NUMERIC(10))= "_s + QString::number(n) : QString();
}

} // namespace

const TableDef& cD_DOCTOR::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.columns = {QELPRN_DOCTOR_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.table = u"DOCTOR"_s;
        d.word = u"DOCTOR"_s;
        d.setDefault({u"nIDNo", u"iSisetsuCode", u"nSisetsuCd"}, -1);
        d.keyColumns = {u"cIDNo"_s};
        d.column(u"cIDNo").numberText = true;
        // The facility the doctor works at, read with the doctor.
        d.column(u"SISETSUSHAMEI").expression = u"SISETSU.cShamei1"_s;
        d.column(u"SISETSUSHAMEIKANA").expression = u"SISETSU.cShameiKana1"_s;
        d.column(u"nSisetsuCd").expression = u"SISETSU.nIDNo"_s;
        d.readFrom = u"DOCTOR left join SISETSU on SISETSU.nIDNo = DOCTOR.iSisetsuCode"_s;
        d.readWhere = readWhere;
        d.orderBy = u"  order by      DOCTOR.nIDNo"_s;
        d.allocate(IdAllocation::GapFill, u"      max(CAST(DOCTOR.cIDNo AS NUMERIC(10))) as nIDNo"_s);
        d.gapTakenTest = u"  and CAST(DOCTOR.cIDNo AS NUMERIC(10)) = "_s;
        d.gapMinSelect = u"  select min((CAST(DOCTOR.cIDNo AS NUMERIC(10)))) as nIDNo from DOCTOR"_s;
        d.gapColumn = u"nIDNo"_s;
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
