#include "db/ScopedConnection.h"

#include "db/AdodbIni.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString noConnectionStringText()
{
    return u"接続文字列取得できません。"_s;
}

ScopedConnection::~ScopedConnection()
{
    close();
}

bool ScopedConnection::fail(const QString& reason, bool lacksConnectionString)
{
    m_error = reason;
    m_lacksConnectionString = lacksConnectionString;
    return false;
}

bool ScopedConnection::openAdodb(const AppContext& ctx)
{
    QString iniError;
    const QString cs = readAdodbConnectionString(ctx, &iniError);
    if (cs.isEmpty() && !iniError.isEmpty())
        return fail(iniError);
    return open(cs);
}

bool ScopedConnection::open(const QString& connectionString)
{
    close();
    if (connectionString.isEmpty())
        return fail(noConnectionStringText(), true);
    if (m_ado.iInit(connectionString) != 0 || m_ado.iConnect() != 0)
        return fail(m_ado.sErrMsg);
    m_connected = true;
    return true;
}

bool ScopedConnection::query(const QString& sql)
{
    if (rs.isOpen())
        m_ado.iCloseRecSet(rs);
    if (m_ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0)
        return fail(m_ado.sErrMsg);
    return true;
}

bool ScopedConnection::checkRead()
{
    return !rs.hasError() || fail(rs.errorText());
}

void ScopedConnection::close()
{
    if (rs.isOpen())
        m_ado.iCloseRecSet(rs);
    if (m_connected)
        m_ado.iDisConnect();
    m_connected = false;
}

} // namespace qelprn
