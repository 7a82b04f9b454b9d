#include "suite/clsT_Dao.h"

#include "db/RecordSetImpl.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kNotOpen = u"データベースが開かれていません。"_s;

QString errorOf(const QSqlError& e)
{
    return e.databaseText().isEmpty() ? e.text() : e.databaseText();
}

} // namespace

clsT_Dao::~clsT_Dao()
{
    iWorkSpaceClose();
}

qint16 clsT_Dao::iInit()
{
    sErrMsg.clear();
    return 0;
}

qint16 clsT_Dao::iWorkSpaceClose()
{
    return iDbClose();
}

qint16 clsT_Dao::iDbOpen(const QString& fileName, bool create)
{
    iDbClose();
    if (!create && !QFileInfo::exists(fileName)) {
        sErrMsg = fileName + u": the database file does not exist"_s;
        return -1;
    }
    m_connectionName = u"qelprn-dao-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connectionName);
        db.setDatabaseName(fileName);
        db.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=5000"_s);
        ok = db.open();
        if (!ok)
            sErrMsg = fileName + u": "_s + errorOf(db.lastError());
    }
    if (!ok) {
        QSqlDatabase::removeDatabase(m_connectionName);
        m_connectionName.clear();
        return -1;
    }
    return 0;
}

qint16 clsT_Dao::iDbClose()
{
    if (m_connectionName.isEmpty())
        return 0;
    {
        QSqlDatabase db = QSqlDatabase::database(m_connectionName, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(m_connectionName);
    m_connectionName.clear();
    return 0;
}

qint16 clsT_Dao::iOpenRecordset(RecordSet& rs, const QString& sql)
{
    if (m_connectionName.isEmpty()) {
        sErrMsg = kNotOpen;
        return -1;
    }
    rs.close();
    QSqlQuery query(QSqlDatabase::database(m_connectionName, false));
    query.setForwardOnly(true);
    if (!query.exec(sql)) {
        sErrMsg = errorOf(query.lastError());
        return -1;
    }
    rs.impl()->attach(std::move(query));
    return 0;
}

qint16 clsT_Dao::iCloseRecordset(RecordSet& rs)
{
    rs.close();
    return 0;
}

qint16 clsT_Dao::iExecuteSql(const QString& sql)
{
    return iExecSQL(sql);
}

qint16 clsT_Dao::iExecSQL(const QString& sql, int* rowsAffected)
{
    if (m_connectionName.isEmpty()) {
        sErrMsg = kNotOpen;
        return -1;
    }
    QSqlQuery query(QSqlDatabase::database(m_connectionName, false));
    if (!query.exec(sql)) {
        sErrMsg = errorOf(query.lastError());
        return -1;
    }
    if (rowsAffected)
        *rowsAffected = query.numRowsAffected();
    return 0;
}

qint16 clsT_Dao::iBeginTrans()
{
    return iExecSQL(u"BEGIN"_s);
}

qint16 clsT_Dao::iCommitTrans()
{
    return iExecSQL(u"COMMIT"_s);
}

qint16 clsT_Dao::iRollbackTrans()
{
    return iExecSQL(u"ROLLBACK"_s);
}

} // namespace qelprn
