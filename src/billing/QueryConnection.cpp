#include "billing/QueryConnection.h"

#include "db/AdodbIni.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString noConnectionStringText()
{
    return u"接続文字列取得できません。"_s;
}

QueryConnection::QueryConnection(const AppContext& ctx, QString header)
    : m_ctx(ctx), m_header(std::move(header))
{}

QueryConnection::~QueryConnection()
{
    close();
}

void QueryConnection::fail(const QString& reason, const QString& header) const
{
    m_ctx.interaction().messageBox((header.isEmpty() ? m_header : header) + u"\r\n"_s + reason, seikyuTitle(),
                                   MsgIcon::Critical);
}

bool QueryConnection::openAdodb(const QString& emptyHeader)
{
    QString iniError;
    const QString cs = readAdodbConnectionString(m_ctx, &iniError);
    if (cs.isEmpty()) {
        // A file that cannot be read reports the reader's reason; a missing or empty key the
        // suite's own text.
        if (!iniError.isEmpty())
            fail(iniError);
        else
            fail(noConnectionStringText(), emptyHeader);
        return false;
    }
    return open(cs);
}

bool QueryConnection::open(const QString& connectionString)
{
    close();
    if (connectionString.isEmpty()) {
        fail(noConnectionStringText());
        return false;
    }
    if (m_ado.iInit(connectionString) != 0 || m_ado.iConnect() != 0) {
        fail(m_ado.sErrMsg);
        return false;
    }
    m_connected = true;
    return true;
}

bool QueryConnection::query(const QString& sql)
{
    if (rs.isOpen())
        m_ado.iCloseRecSet(rs);
    if (m_ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        fail(m_ado.sErrMsg);
        return false;
    }
    return true;
}

bool QueryConnection::checkRead()
{
    if (!rs.hasError())
        return true;
    fail(rs.errorText());
    return false;
}

void QueryConnection::close()
{
    if (rs.isOpen())
        m_ado.iCloseRecSet(rs);
    if (m_connected)
        m_ado.iDisConnect();
    m_connected = false;
}

} // namespace qelprn
