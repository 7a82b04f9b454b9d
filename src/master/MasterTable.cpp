#include "master/MasterTable.h"

#include "app/NullValue.h"
#include "db/RecordSet.h"
#include "db/SqlText.h"
#include "db/cT_ADODB.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

bool isTimeStamp(const QString& column)
{
    return column.compare(u"tUpDateTime"_s, Qt::CaseInsensitive) == 0;
}

bool isBareNumber(ColumnKind kind)
{
    return kind == ColumnKind::Int || kind == ColumnKind::Currency;
}

// Runs an operation body and turns anything it throws into a failure with a message.
template <typename Body> qint16 guarded(QString& err, Body body)
{
    try {
        return body();
    } catch (const std::exception& e) {
        err = QString::fromUtf8(e.what());
    } catch (...) {
        err = u"予期しないエラーが発生しました。"_s;
    }
    return -1;
}

} // namespace

QString sqlValue(const MasterRecord& rec, int column)
{
    const ColumnDef& c = rec.def().columns.at(column);
    const QVariant v = rec.value(column);
    if (isBareNumber(c.kind))
        return QString::number(v.toLongLong());
    if (c.kind == ColumnKind::Date && v.toString().isEmpty())
        return u"NULL"_s;
    return u"'"_s + sqlText(v.toString()) + u"'"_s;
}

MasterTable::MasterTable(const TableDef& def) : m_def(def) {}

qint16 MasterTable::iGetComputerName(QString& name)
{
    name = cT_ADODB::csGetComputerName();
    return name.isEmpty() ? -1 : 0;
}

qint16 MasterTable::iInit(cT_ADODB& ado, const AppContext& ctx)
{
    return iInit(ado, SiteKey{ctx.iBaseKyotenCd, ctx.iBaseKyotenEb});
}

qint16 MasterTable::iInit(cT_ADODB& ado, const SiteKey& site)
{
    m_ado = &ado;
    m_site = site;
    m_rows.clear();
    return 0;
}

qint32 MasterTable::siteBaseNumber() const
{
    return (m_site.iKyotenCd * 100 + m_site.iKyotenEb) * 10000;
}

QString MasterTable::sitePrefix() const
{
    return QString::number(m_site.iKyotenCd).trimmed()
           + u"%1"_s.arg(m_site.iKyotenEb, 2, 10, QLatin1Char('0'));
}

bool MasterTable::checkRecord(const MasterRecord* rec, const QString& word)
{
    if (rec && &rec->def() == &m_def)
        return true;
    sErrMsg = word + u"が無効です。"_s;
    return false;
}

bool MasterTable::checkComputerName(QString& name)
{
    if (iGetComputerName(name) == 0)
        return true;
    sErrMsg = u"コンピューター名の取得に失敗しました。"_s;
    return false;
}

// ---- statements -----------------------------------------------------------------------------

QString MasterTable::maxIdStatement() const
{
    QString sql = u"  select"_s + m_def.maxExpression + u"  FROM"_s + u"      "_s + m_def.table
                  + m_def.maxSiteCd + QString::number(m_site.iKyotenCd) + m_def.maxSiteEb
                  + QString::number(m_site.iKyotenEb);
    if (m_def.allocation == IdAllocation::SitePrefix || m_def.allocation == IdAllocation::GapFill) {
        const QString prefix = sitePrefix();
        sql += u"  and LEFT(nIDNo,"_s + QString::number(prefix.size()) + u") = '"_s + prefix
               + u"'"_s;
    }
    return sql;
}

QString MasterTable::selectList(const QStringList& columns) const
{
    QString sql;
    for (int i = 0; i < columns.size(); ++i)
        sql += (i == 0 ? u"      "_s : u"     ,"_s) + m_def.table + u"."_s + columns.at(i)
               + u" as "_s + columns.at(i);
    return sql;
}

QString MasterTable::defaultWhere(const MasterRecord& cond) const
{
    QStringList parts;
    const int key = m_def.indexOf(m_def.keyColumn);
    if (key >= 0) {
        const ColumnDef& c = m_def.columns.at(key);
        const bool set = isBareNumber(c.kind) ? cond.value(key).toLongLong() > -1
                                              : !cond.value(key).toString().isEmpty();
        if (set)
            parts << u"    "_s + c.name + u" = "_s + sqlValue(cond, key);
    }
    if (m_def.siteOnRead) {
        parts << u"    iKyotenCd = "_s + QString::number(m_site.iKyotenCd);
        parts << u"    iKyotenEb = "_s + QString::number(m_site.iKyotenEb);
    }
    return parts.isEmpty() ? QString() : u" where"_s + parts.join(u" and"_s);
}

QString MasterTable::readStatement(const MasterRecord& cond) const
{
    QStringList columns;
    for (const ColumnDef& c : m_def.columns)
        if (c.stored)
            columns << c.name;
    const QString where = m_def.readWhere ? m_def.readWhere(cond, m_site) : defaultWhere(cond);
    return u"  select"_s + selectList(columns) + u"  FROM"_s + u"      "_s + m_def.table + where
           + m_def.orderBy;
}

QString MasterTable::gridStatement(const MasterRecord& cond) const
{
    if (m_def.gridColumns.isEmpty() && !m_def.gridWhere)
        return readStatement(cond);
    QStringList columns = m_def.gridColumns;
    if (columns.isEmpty())
        for (const ColumnDef& c : m_def.columns)
            if (c.stored)
                columns << c.name;
    const QString where = m_def.gridWhere ? m_def.gridWhere(cond, m_site)
                          : m_def.readWhere ? m_def.readWhere(cond, m_site)
                                            : defaultWhere(cond);
    return u"  select"_s + selectList(columns) + u"  FROM"_s + u"      "_s + m_def.table + where
           + m_def.orderBy;
}

QString MasterTable::insertStatement(const MasterRecord& rec, const QString& pcName) const
{
    QString columns;
    QString values;
    if (m_def.siteInsert) {
        columns = u"      iKyotenCd,"_s + u"      iKyotenEb,"_s;
        values = u"      '"_s + QString::number(m_site.iKyotenCd) + u"',"_s + u"      '"_s
                 + QString::number(m_site.iKyotenEb) + u"',"_s;
    }
    bool first = true;
    for (int i = 0; i < m_def.columns.size(); ++i) {
        const ColumnDef& c = m_def.columns.at(i);
        if (!c.stored || (m_def.siteInsert && (c.name == u"iKyotenCd"_s || c.name == u"iKyotenEb"_s)))
            continue;
        columns += (first ? u"      "_s : u"     ,"_s) + c.name;
        QString value;
        if (isTimeStamp(c.name))
            value = u" GetDate()"_s;
        else if (c.name == u"cPcName"_s)
            value = u"'"_s + sqlText(pcName) + u"'"_s;
        else
            value = isBareNumber(c.kind) ? u" "_s + sqlValue(rec, i) : sqlValue(rec, i);
        values += (first ? u"      "_s : u"     ,"_s) + value;
        first = false;
    }
    return u" insert into "_s + u"   "_s + m_def.table + u" ("_s + columns + u" )values( "_s
           + values + u" ) "_s;
}

QString MasterTable::keyWhere(const MasterRecord& rec) const
{
    QString sql = u" where"_s + u"    "_s + m_def.keyColumn + u" = "_s
                  + sqlValue(rec, m_def.indexOf(m_def.keyColumn));
    if (m_def.siteInKeyWhere)
        sql += u" and iKyotenCd = "_s + QString::number(m_site.iKyotenCd)
               + u" and iKyotenEb = "_s + QString::number(m_site.iKyotenEb);
    return sql;
}

QString MasterTable::updateStatement(const MasterRecord& rec, const QString& pcName) const
{
    QString sets;
    bool first = true;
    for (int i = 0; i < m_def.columns.size(); ++i) {
        const ColumnDef& c = m_def.columns.at(i);
        if (!c.stored || c.name == u"iKyotenCd"_s || c.name == u"iKyotenEb"_s)
            continue;
        QString item;
        if (isTimeStamp(c.name))
            item = c.name + u" = GetDate()"_s;
        else if (c.name == u"cPcName"_s)
            item = c.name + u" = '"_s + sqlText(pcName) + u"'"_s;
        else if (isBareNumber(c.kind))
            item = c.name + u" =  "_s + sqlValue(rec, i);
        else
            item = c.name + (c.numberText ? u" =  "_s : u" = "_s) + sqlValue(rec, i);
        sets += (first ? u"      "_s : u"     ,"_s) + item;
        first = false;
    }
    return u" update "_s + u"     "_s + m_def.table + u" set "_s + sets + keyWhere(rec);
}

QString MasterTable::deleteStatement(const MasterRecord& rec) const
{
    return u" delete from "_s + u"     "_s + m_def.table + keyWhere(rec);
}

// ---- operations -----------------------------------------------------------------------------

std::optional<qint32> MasterTable::readNumber(const QString& sql, bool* found)
{
    RecordSet rs;
    if (m_ado->iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        sErrMsg = m_ado->sErrMsg;
        return std::nullopt;
    }
    qint32 n = 0;
    if (found)
        *found = !rs.isEOF();
    if (!rs.isEOF())
        n = nNullToLng(rs.field(0));
    const bool failed = rs.hasError();
    if (failed)
        sErrMsg = rs.errorText();
    m_ado->iCloseRecSet(rs);
    if (failed)
        return std::nullopt;
    return n;
}

qint16 MasterTable::iGetMaxIDNo(qint32& maxId)
{
    return guarded(sErrMsg, [&]() -> qint16 {
        if (m_def.allocation == IdAllocation::None) {
            sErrMsg = m_def.table + u"には番号の採番がありません。"_s;
            return -1;
        }
        const std::optional<qint32> n = readNumber(maxIdStatement());
        if (!n)
            return -1;
        if (m_def.allocation == IdAllocation::SiteMax) {
            maxId = *n;
            return 0;
        }
        const qint32 highest = *n == 0 ? siteBaseNumber() : *n;
        if (m_def.allocation == IdAllocation::GapFill && highest >= siteBaseNumber() + 9999)
            return gapFill(maxId, highest);
        maxId = highest;
        return 0;
    });
}

qint16 MasterTable::gapFill(qint32& maxId, qint32 /*highest*/)
{
    const qint32 base = siteBaseNumber();
    bool taken = false;
    const QString first = u"  select top 1 "_s + m_def.table + u"."_s + m_def.keyColumn
                          + u" from "_s + m_def.table + u"  where iKyotenCd ="_s
                          + QString::number(m_site.iKyotenCd) + u"  and iKyotenEb ="_s
                          + QString::number(m_site.iKyotenEb) + m_def.gapTakenTest
                          + QString::number(base + 1);
    if (!readNumber(first, &taken))
        return -1;
    if (!taken) {
        maxId = base; // the first number of the range is free
        return 0;
    }
    const QString lowest = m_def.gapMinSelect + u"  where ("_s + m_def.table + u".nIDNo + 1)"_s
                           + u"  not in (select "_s + m_def.table + u".nIDNo from "_s
                           + m_def.table + u")"_s + u"  and "_s + m_def.table + u".nIDNo"_s
                           + u"  between "_s + QString::number(base) + u"  and "_s
                           + QString::number(base + 9999);
    const std::optional<qint32> n = readNumber(lowest);
    if (!n)
        return -1;
    if (*n <= 0 || *n >= base + 9999) {
        sErrMsg = u"データ登録の上限に達しました"_s;
        return -1;
    }
    maxId = *n;
    return 0;
}

qint16 MasterTable::readRows(const QString& sql)
{
    m_rows.clear();
    RecordSet rs;
    if (m_ado->iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        sErrMsg = m_ado->sErrMsg;
        return -1;
    }
    while (!rs.isEOF()) {
        MasterRecord rec(m_def);
        rec.fillFrom(rs);
        m_rows.append(std::move(rec));
        rs.moveNext();
    }
    const bool failed = rs.hasError();
    if (failed)
        sErrMsg = rs.errorText(); // the rows read so far stay
    m_ado->iCloseRecSet(rs);
    return failed ? -1 : 0;
}

qint16 MasterTable::iDataRead(const MasterRecord* cond)
{
    return guarded(sErrMsg, [&]() -> qint16 {
        if (!checkRecord(cond, m_def.word))
            return -1;
        return readRows(readStatement(*cond));
    });
}

qint16 MasterTable::iDataReadGrid(const MasterRecord* cond)
{
    return guarded(sErrMsg, [&]() -> qint16 {
        if (!checkRecord(cond, m_def.word))
            return -1;
        return readRows(gridStatement(*cond));
    });
}

qint16 MasterTable::execute(const QStringList& statements, bool inTransaction)
{
    if (inTransaction && m_ado->iBeginTrans() != 0) {
        sErrMsg = m_ado->sErrMsg;
        return -1;
    }
    for (const QString& sql : statements) {
        if (m_ado->iExecSQL(sql) != 0) {
            sErrMsg = m_ado->sErrMsg;
            if (inTransaction)
                m_ado->iRollback();
            return -1;
        }
    }
    if (inTransaction && m_ado->iCommitTrans() != 0) {
        sErrMsg = m_ado->sErrMsg;
        m_ado->iRollback();
        return -1;
    }
    return 0;
}

qint16 MasterTable::write(const MasterRecord* rec, bool inTransaction, bool update)
{
    return guarded(sErrMsg, [&]() -> qint16 {
        if (!checkRecord(rec, m_def.word))
            return -1;
        QString pcName;
        if (!checkComputerName(pcName))
            return -1;
        const QString sql = update ? updateStatement(*rec, pcName) : insertStatement(*rec, pcName);
        return execute({sql}, inTransaction);
    });
}

qint16 MasterTable::iDataInsert(const MasterRecord* rec, bool inTransaction)
{
    return write(rec, inTransaction, false);
}

qint16 MasterTable::iDataUpdate(const MasterRecord* rec, bool inTransaction)
{
    return write(rec, inTransaction, true);
}

qint16 MasterTable::iData削除(const MasterRecord* rec)
{
    return guarded(sErrMsg, [&]() -> qint16 {
        if (!checkRecord(rec, m_def.word))
            return -1;
        return execute({deleteStatement(*rec)}, false);
    });
}

} // namespace qelprn
