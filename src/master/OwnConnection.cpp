#include "master/OwnConnection.h"

#include "db/AdodbIni.h"

namespace qelprn {

OwnConnection::~OwnConnection()
{
    if (m_rs.isOpen())
        m_ado.iCloseRecSet(m_rs);
    if (m_connected)
        m_ado.iDisConnect();
}

OwnConnection::Status OwnConnection::open(const QString& sql)
{
    const QString cs = readAdodbConnectionString(m_ctx);
    if (cs.isEmpty())
        return Status::NoConnectionString;
    if (m_ado.iInit(cs) != 0 || m_ado.iConnect() != 0)
        return Status::Failed;
    m_connected = true;
    if (m_ado.iOpenRecSet(m_rs, sql, 1, 1, 0) != 0)
        return Status::Failed;
    return Status::Ok;
}

} // namespace qelprn
