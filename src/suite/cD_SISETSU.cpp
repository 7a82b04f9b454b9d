#include "suite/cD_SISETSU.h"

#include "db/SqlText.h"
#include "suite/MasterTable.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// Val() of the suite: the number a numeric text stands for; nullopt when it is not numeric.
std::optional<QString> numericValue(const QString& text)
{
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return v == static_cast<double>(static_cast<qint64>(v)) ? QString::number(static_cast<qint64>(v))
                                                            : QString::number(v);
}

QString readWhere(const MasterRecord& cond, const SiteKey&)
{
    // Facility numbers carry the site, so the site is not filtered.
    QString sql;
    if (cond.integer(u"nIDNo") > -1)
        sql += u" where"_s + u"    nIDNo = "_s + QString::number(cond.integer(u"nIDNo"));
    if (const std::optional<QString> type = numericValue(cond.text(u"cSisetsuType")))
        sql += (sql.isEmpty() ? u" where"_s : u" and"_s) + u"     cSisetsuType = "_s + *type;
    return sql;
}

QString gridWhere(const MasterRecord& cond, const SiteKey&)
{
    QStringList parts;
    if (cond.integer(u"nIDNo") > 0)
        parts << u"     Sisetsu.nIDNo = "_s + QString::number(cond.integer(u"nIDNo"));
    if (!cond.text(u"cShamei1").isEmpty())
        parts << u"     Sisetsu.cShamei1 LIKE '%"_s + sqlText(cond.text(u"cShamei1")) + u"%'"_s;
    if (!cond.text(u"cShameiKana1").isEmpty())
        parts << u"     Sisetsu.cShameiKana1 LIKE '%"_s + sqlText(cond.text(u"cShameiKana1")) + u"%'"_s;
    if (cond.integer(u"iKikanShubetsu") > 0)
        parts << u"     Sisetsu.iKikanShubetsu = "_s + QString::number(cond.integer(u"iKikanShubetsu"));
    const QString type = cond.text(u"cSisetsuType");
    if (!type.isEmpty() && type != u"－指定なし－"_s)
        parts << u"     Sisetsu.cSisetsuType LIKE '%"_s + sqlText(type) + u"%'"_s;
    QString sql;
    for (int i = 0; i < parts.size(); ++i)
        sql += (i == 0 ? u" where"_s : u" and"_s) + parts.at(i);
    return sql;
}

} // namespace

const TableDef& cD_SISETSU::table()
{
    static const TableDef def = [] {
        TableDef d;
        d.table = u"Sisetsu"_s;
        d.word = u"Sisetsu"_s;
        d.columns = {QELPRN_SISETSU_COLUMNS(QELPRN_COLUMN_DEF)};
        d.finish();
        d.setDefault({u"iType", u"nIDNo", u"nLat", u"nLon"}, -1);
        d.column(u"iType").stored = false;
        d.column(u"cSisetsuType").numberText = true;
        // Reads and writes list the columns in this order, not in the property order.
        d.statementColumns = {
            u"cAddress1"_s, u"cAddress2"_s,  u"cAddressKana"_s, u"cDaihyo"_s,        u"cDaihyoKana"_s,
            u"cFaxNo"_s,    u"cShamei1"_s,   u"cShamei2"_s,     u"cShameiKana1"_s,   u"cShameiKana2"_s,
            u"cTelNo"_s,    u"cYubinNo"_s,   u"cSisetsuType"_s, u"nIDNo"_s,          u"nLat"_s,
            u"nLon"_s,      u"cPcName"_s,    u"tUpDateTime"_s,  u"iKikanShubetsu"_s, u"cDouiIrai"_s,
            u"cComment"_s,  u"nColorCode"_s, u"iColorIndex"_s,  u"cShamei1Ryaku"_s,  u"iPaymentType"_s};
        d.gridColumns = {u"cAddress1"_s,    u"cAddress2"_s,     u"cDaihyo"_s,        u"cFaxNo"_s,
                         u"cShamei1"_s,     u"cShamei2"_s,      u"cTelNo"_s,         u"cYubinNo"_s,
                         u"cSisetsuType"_s, u"nIDNo"_s,         u"iKikanShubetsu"_s, u"nColorCode"_s,
                         u"iColorIndex"_s,  u"cShamei1Ryaku"_s, u"iPaymentType"_s,   u"cShameiKana1"_s};
        d.allocate(IdAllocation::SitePrefix, u"      max(Sisetsu.nIDNo) as nIDNo"_s,
                   u" where"_s + u" iKyotenCd = "_s, u" and iKyotenEb = "_s);
        d.readWhere = readWhere;
        d.gridWhere = gridWhere;
        return d.finish();
    }();
    return def;
}

} // namespace qelprn
