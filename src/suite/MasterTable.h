#pragma once

#include "app/AppContext.h"
#include "db/DbInfo.h"
#include "suite/MasterRecord.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qelprn {

class cT_ADODB;

// The table-class pattern shared by every master table, driven by the table's TableDef: read rows
// into records, allocate numbers, and write one record with one statement, optionally inside a
// transaction of its own. Operations return 0 or -1 and leave the reason in sErrMsg (a database
// failure keeps the connection's message unchanged); none throws. The cT_… classes (through
// MasterTableOf) add the record type, the array accessor under the suite's name and their own
// extra operations.
class MasterTable
{
public:
    explicit MasterTable(const TableDef& def);
    virtual ~MasterTable();
    MasterTable(const MasterTable&) = delete;
    MasterTable& operator=(const MasterTable&) = delete;

    QString sErrMsg;
    qint32 nデータ数() const { return static_cast<qint32>(m_rows.size()); }

    // The computer's name for cPcName; -1 with name "" when the system gives none.
    static qint16 iGetComputerName(QString& name);
    // Keeps the connection (the caller owns it and keeps it open) and the current site; empties
    // the rows. Always 0.
    qint16 iInit(cT_ADODB& ado, const AppContext& ctx);
    qint16 iInit(cT_ADODB& ado, const SiteKey& site);
    // Highest number in use in the current site; the caller adds one.
    qint16 iGetMaxIDNo(qint32& maxId);
    qint16 iDataReadGrid(const MasterRecord* cond);
    qint16 iDataRead(const MasterRecord* cond);
    qint16 iDataInsert(const MasterRecord* rec, bool inTransaction);
    qint16 iDataUpdate(const MasterRecord* rec, bool inTransaction);
    qint16 iData削除(const MasterRecord* rec);

    // The statements as sent; tests and the suite's tools compare them.
    QString maxIdStatement() const;
    QString readStatement(const MasterRecord& cond) const;
    QString gridStatement(const MasterRecord& cond) const;
    QString insertStatement(const MasterRecord& rec, const QString& pcName) const;
    QString updateStatement(const MasterRecord& rec, const QString& pcName) const;
    QString deleteStatement(const MasterRecord& rec) const;

    const SiteKey& site() const { return m_site; }
    // The first number of the site's range: site "00", branch "00", "0000".
    qint32 siteBaseNumber() const;
    // The site code trimmed followed by the two-digit branch: how numbers of the site start.
    QString sitePrefix() const;

protected:
    const MasterRecord& row(int i) const { return *m_rows.at(static_cast<size_t>(i)); }
    const TableDef& def() const { return m_def; }
    cT_ADODB* ado() const { return m_ado; }
    // A new record of the table's record class, filled by reads.
    virtual std::unique_ptr<MasterRecord> newRecord() const = 0;

    // "<word>が無効です。" unless rec is a record of this table.
    bool checkRecord(const MasterRecord* rec, const QString& word);
    bool checkComputerName(QString& name);
    // Replaces the rows with those of sql, reading the given columns (the rows read before a
    // failure stay).
    qint16 readRows(const QString& sql, const QList<int>& columns);
    // Runs the statements in order, inside a transaction of their own when asked.
    qint16 execute(const QStringList& statements, bool inTransaction);
    // First column of a one-row read; empty counts as 0. nullopt on failure.
    std::optional<qint32> readNumber(const QString& sql, bool* found = nullptr);
    // Runs body and turns anything it throws into a failure with a message in sErrMsg.
    template <typename Body> qint16 guarded(Body body);

    // Carries a record's data into other tables: checks the record (message "<word>が無効です。")
    // and the computer name, then runs the statements built from the record, without a
    // transaction of its own.
    qint16 propagate(const MasterRecord* rec, const QString& word,
                     const std::function<QStringList()>& statements);

    QString selectList(const QList<int>& columns) const;
    // "  select" columns "  FROM" the read's tables, the conditions and the order (the table's
    // when none is given); top > 0 reads only that many rows.
    QString selectStatement(const QList<int>& columns, const QString& where,
                            const QString& orderBy = QString(), int top = 0) const;
    // The checks every write makes first: the record is one of this table, the computer has a name.
    qint16 prepareWrite(const MasterRecord* rec, QString& pcName);
    QString keyWhere(const MasterRecord& rec) const;

private:
    qint16 write(const MasterRecord* rec, bool inTransaction, bool update);
    qint16 gapFill(qint32& maxId);
    qint16 guardedImpl(const std::function<qint16()>& body);

    const TableDef& m_def;
    cT_ADODB* m_ado = nullptr;
    SiteKey m_site;
    std::vector<std::unique_ptr<MasterRecord>> m_rows;
};

template <typename Body> qint16 MasterTable::guarded(Body body)
{
    return guardedImpl(std::function<qint16()>(std::move(body)));
}

// A table class over record class Rec: the records read last, typed.
template <typename Rec> class MasterTableOf : public MasterTable
{
public:
    MasterTableOf() : MasterTable(Rec::table()) {}
    // The record at a 0-based index of the last read (the cT_… classes name it as the suite does).
    const Rec& record(int i) const { return static_cast<const Rec&>(row(i)); }

protected:
    std::unique_ptr<MasterRecord> newRecord() const override { return std::make_unique<Rec>(); }
};

// A value as it stands in a statement: text quoted with its quotes doubled, numbers bare, an
// empty date NULL.
QString sqlValue(const MasterRecord& rec, int column);
// A text value between single quotes, its quotes doubled.
QString quoted(const QString& text);

} // namespace qelprn
