#pragma once

#include "db/RecordSet.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// The same operations as cT_ADODB over a local database file of its own (an SQLite file here, where
// the desktop database engine the suite once used has no runtime). Statements run as written.
// Nothing in the print run uses it; the suite's other tools keep small local work files with it.
class clsT_Dao
{
public:
    clsT_Dao() = default;
    ~clsT_Dao();
    clsT_Dao(const clsT_Dao&) = delete;
    clsT_Dao& operator=(const clsT_Dao&) = delete;

    QString sErrMsg;

    qint16 iInit();
    qint16 iWorkSpaceClose();
    // Opens the database file; with create false a missing file is an error.
    qint16 iDbOpen(const QString& fileName, bool create = false);
    qint16 iDbClose();
    qint16 iOpenRecordset(RecordSet& rs, const QString& sql);
    qint16 iCloseRecordset(RecordSet& rs);
    qint16 iExecuteSql(const QString& sql);
    qint16 iBeginTrans();
    qint16 iCommitTrans();
    qint16 iRollbackTrans();
    // As iExecuteSql, and the number of rows the statement changed in *rowsAffected.
    qint16 iExecSQL(const QString& sql, int* rowsAffected = nullptr);

private:
    QString m_connectionName;
};

} // namespace qelprn
