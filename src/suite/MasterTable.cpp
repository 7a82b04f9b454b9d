#include "suite/MasterTable.h"

#include "app/NullValue.h"
#include "app/RunTimeError.h"
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

bool isSiteColumn(const QString& column)
{
    return column == u"iKyotenCd"_s || column == u"iKyotenEb"_s;
}

bool isBareNumber(ColumnKind kind)
{
    return kind == ColumnKind::Int || kind == ColumnKind::Money;
}

// Whether a condition record's key is set: a number above -1, a text that is not empty.
bool keySet(const MasterRecord& cond, int column)
{
    const ColumnDef& c = cond.def().columns.at(column);
    return isBareNumber(c.kind) ? cond.value(column).toLongLong() > -1
                                : !cond.value(column).toString().isEmpty();
}

} // namespace

QString quoted(const QString& text)
{
    return u"'"_s + sqlText(text) + u"'"_s;
}

QString sqlValue(const MasterRecord& rec, int column)
{
    const ColumnDef& c = rec.def().columns.at(column);
    const QVariant v = rec.value(column);
    if (isBareNumber(c.kind))
        return QString::number(v.toLongLong());
    if (c.kind == ColumnKind::Date && v.toString().isEmpty())
        return u"NULL"_s;
    return quoted(v.toString());
}

MasterTable::MasterTable(const TableDef& def) : m_def(def) {}

MasterTable::~MasterTable() = default;

qint16 MasterTable::guardedImpl(const std::function<qint16()>& body)
{
    if (!m_ado) {
        sErrMsg = u"iInit() が呼ばれていません。"_s;
        return -1;
    }
    try {
        return body();
    } catch (const RunTimeError& e) {
        sErrMsg = runTimeErrorText(e);
    } catch (const std::exception& e) {
        sErrMsg = QString::fromUtf8(e.what());
    } catch (...) {
        sErrMsg = u"予期しないエラーが発生しました。"_s;
    }
    return -1;
}

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
    return QString::number(m_site.iKyotenCd).trimmed() +
           u"%1"_s.arg(m_site.iKyotenEb, 2, 10, QLatin1Char('0'));
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
    QString sql = u"  select"_s + m_def.maxExpression + u"  FROM"_s + u"      "_s + m_def.table +
                  m_def.maxSiteCd + QString::number(m_site.iKyotenCd);
    if (!m_def.maxSiteEb.isEmpty())
        sql += m_def.maxSiteEb + QString::number(m_site.iKyotenEb);
    if (m_def.allocation == IdAllocation::SitePrefix || m_def.allocation == IdAllocation::GapFill) {
        const QString prefix = sitePrefix();
        sql += u"  and LEFT(nIDNo,"_s + QString::number(prefix.size()) + u") = '"_s + prefix + u"'"_s;
    }
    return sql;
}

QString MasterTable::selectList(const QList<int>& columns) const
{
    QString sql;
    for (int i = 0; i < columns.size(); ++i) {
        const ColumnDef& c = m_def.columns.at(columns.at(i));
        const QString source = c.expression.isEmpty() ? m_def.table + u"."_s + c.name : c.expression;
        sql += (i == 0 ? u"      "_s : u"     ,"_s) + source + u" as "_s + c.name;
    }
    return sql;
}

namespace {

QString defaultWhere(const MasterRecord& cond, const SiteKey& site)
{
    const TableDef& def = cond.def();
    QStringList parts;
    const int key = def.indexOf(def.keyColumns.constFirst());
    if (key >= 0 && keySet(cond, key))
        parts << u"    "_s + def.table + u"."_s + def.keyColumns.constFirst() + u" = "_s +
                     sqlValue(cond, key);
    if (def.siteOnRead) {
        parts << u"    "_s + def.table + u".iKyotenCd = "_s + QString::number(site.iKyotenCd);
        parts << u"    "_s + def.table + u".iKyotenEb = "_s + QString::number(site.iKyotenEb);
    }
    return parts.isEmpty() ? QString() : u" where"_s + parts.join(u" and"_s);
}

QString fromClause(const TableDef& def)
{
    return u"  FROM"_s + u"      "_s + (def.readFrom.isEmpty() ? def.table : def.readFrom);
}

} // namespace

QString MasterTable::selectStatement(const QList<int>& columns, const QString& where, const QString& orderBy,
                                     int top) const
{
    return u"  select"_s + (top > 0 ? u" top "_s + QString::number(top) : QString()) + selectList(columns) +
           fromClause(m_def) + where + (orderBy.isEmpty() ? m_def.orderBy : orderBy);
}

QString MasterTable::readStatement(const MasterRecord& cond) const
{
    return selectStatement(m_def.readColumns(),
                           m_def.readWhere ? m_def.readWhere(cond, m_site) : defaultWhere(cond, m_site));
}

QString MasterTable::gridStatement(const MasterRecord& cond) const
{
    QList<int> columns;
    for (const QString& name : m_def.gridColumns)
        columns.append(m_def.indexOf(name));
    if (columns.isEmpty())
        columns = m_def.readColumns();
    const QString where = m_def.gridWhere   ? m_def.gridWhere(cond, m_site)
                          : m_def.readWhere ? m_def.readWhere(cond, m_site)
                                            : defaultWhere(cond, m_site);
    return selectStatement(columns, where);
}

QString MasterTable::insertStatement(const MasterRecord& rec, const QString& pcName) const
{
    QString columns;
    QString values;
    if (m_def.siteInsert) {
        columns = u"      iKyotenCd,"_s + u"      iKyotenEb,"_s;
        values = u"      '"_s + QString::number(m_site.iKyotenCd) + u"',"_s + u"      '"_s +
                 QString::number(m_site.iKyotenEb) + u"',"_s;
    }
    bool first = true;
    for (const int i : m_def.readColumns()) {
        const ColumnDef& c = m_def.columns.at(i);
        if (!c.written() || (m_def.siteInsert && isSiteColumn(c.name)))
            continue;
        columns += (first ? u"      "_s : u"     ,"_s) + c.name;
        QString value;
        if (isTimeStamp(c.name))
            value = u" GetDate()"_s; // the server's clock, not the record's
        else if (c.name == u"cPcName"_s)
            value = quoted(pcName); // the writer's computer, not the record's
        else
            value = isBareNumber(c.kind) ? u" "_s + sqlValue(rec, i) : sqlValue(rec, i);
        values += (first ? u"      "_s : u"     ,"_s) + value;
        first = false;
    }
    return u" insert into "_s + u"   "_s + m_def.table + u" ("_s + columns + u" )values( "_s + values +
           u" ) "_s;
}

QString MasterTable::keyWhere(const MasterRecord& rec) const
{
    QString sql = u" where"_s;
    for (int k = 0; k < m_def.keyColumns.size(); ++k) {
        const QString& key = m_def.keyColumns.at(k);
        sql += (k == 0 ? u"    "_s : u" and "_s) + key + u" = "_s + sqlValue(rec, m_def.indexOf(key));
    }
    if (m_def.siteInKeyWhere)
        sql += u" and iKyotenCd = "_s + QString::number(m_site.iKyotenCd) + u" and iKyotenEb = "_s +
               QString::number(m_site.iKyotenEb);
    return sql;
}

QString MasterTable::updateStatement(const MasterRecord& rec, const QString& pcName) const
{
    QString sets;
    bool first = true;
    for (const int i : m_def.readColumns()) {
        const ColumnDef& c = m_def.columns.at(i);
        if (!c.written() || isSiteColumn(c.name))
            continue;
        QString item;
        if (isTimeStamp(c.name))
            item = c.name + u" = GetDate()"_s;
        else if (c.name == u"cPcName"_s)
            item = c.name + u" = "_s + quoted(pcName);
        else if (isBareNumber(c.kind) || c.numberText)
            item = c.name + u" =  "_s + sqlValue(rec, i);
        else
            item = c.name + u" = "_s + sqlValue(rec, i);
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
    return guarded([&]() -> qint16 {
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
        // A site without numbers yet starts at its base number.
        const qint32 highest = *n == 0 ? siteBaseNumber() : *n;
        if (m_def.allocation == IdAllocation::GapFill && highest >= siteBaseNumber() + 9999)
            return gapFill(maxId);
        maxId = highest;
        return 0;
    });
}

// The range of the site is used up to its top: the lowest free number, found as the lowest
// number whose successor is not taken (the caller adds one), or the first of the range.
qint16 MasterTable::gapFill(qint32& maxId)
{
    const qint32 base = siteBaseNumber();
    const QString table = m_def.table;
    bool taken = false;
    const QString first = u"  select top 1 "_s + table + u"."_s + m_def.keyColumns.constFirst() +
                          u" from "_s + table + u"  where iKyotenCd ="_s + QString::number(m_site.iKyotenCd) +
                          u"  and iKyotenEb ="_s + QString::number(m_site.iKyotenEb) + m_def.gapTakenTest +
                          QString::number(base + 1);
    if (!readNumber(first, &taken))
        return -1;
    if (!taken) {
        maxId = base;
        return 0;
    }
    const QString column = table + u"."_s + m_def.gapColumn;
    const QString lowest = m_def.gapMinSelect + u"  where ("_s + column + u" + 1)"_s +
                           u"  not in (select "_s + column + u" from "_s + table + u")"_s + u"  and "_s +
                           column + u"  between "_s + QString::number(base) + u"  and "_s +
                           QString::number(base + 9999);
    const std::optional<qint32> n = readNumber(lowest);
    if (!n)
        return -1;
    if (*n < base + 1 || *n >= base + 9999) {
        sErrMsg = u"データ登録の上限に達しました"_s;
        return -1;
    }
    maxId = *n;
    return 0;
}

qint16 MasterTable::readRows(const QString& sql, const QList<int>& columns)
{
    m_rows.clear();
    RecordSet rs;
    if (m_ado->iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        sErrMsg = m_ado->sErrMsg;
        return -1;
    }
    while (!rs.isEOF() && !rs.hasError()) {
        std::unique_ptr<MasterRecord> rec = newRecord();
        rec->fillFrom(rs, columns);
        if (rs.hasError())
            break; // a column the table lacks: the rows before it stay
        m_rows.push_back(std::move(rec));
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
    return guarded([&]() -> qint16 {
        if (!checkRecord(cond, m_def.word))
            return -1;
        return readRows(readStatement(*cond), m_def.readColumns());
    });
}

qint16 MasterTable::iDataReadGrid(const MasterRecord* cond)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(cond, m_def.word))
            return -1;
        QList<int> columns;
        for (const QString& name : m_def.gridColumns)
            columns.append(m_def.indexOf(name));
        return readRows(gridStatement(*cond), columns.isEmpty() ? m_def.readColumns() : columns);
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

qint16 MasterTable::prepareWrite(const MasterRecord* rec, QString& pcName)
{
    return checkRecord(rec, m_def.word) && checkComputerName(pcName) ? 0 : -1;
}

qint16 MasterTable::write(const MasterRecord* rec, bool inTransaction, bool update)
{
    return guarded([&]() -> qint16 {
        QString pcName;
        if (prepareWrite(rec, pcName) != 0)
            return -1;
        const QString sql = update ? updateStatement(*rec, pcName) : insertStatement(*rec, pcName);
        return execute({sql}, inTransaction);
    });
}

qint16 MasterTable::propagate(const MasterRecord* rec, const QString& word,
                              const std::function<QStringList()>& statements)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(rec, word))
            return -1;
        QString pcName;
        if (!checkComputerName(pcName))
            return -1;
        return execute(statements(), false);
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
    return guarded([&]() -> qint16 {
        if (!checkRecord(rec, m_def.word))
            return -1;
        return execute({deleteStatement(*rec)}, false);
    });
}

} // namespace qelprn
