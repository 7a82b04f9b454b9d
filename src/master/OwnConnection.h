#pragma once

#include "app/AppContext.h"
#include "db/RecordSet.h"
#include "db/cT_ADODB.h"

#include <QString>

namespace qelprn {

// One read on a connection of its own, as the lookups and loaders do it: the connection string
// of "adodb.ini", connect, open one record set; the destructor closes both on every path.
class OwnConnection
{
public:
    enum class Status { Ok, NoConnectionString, Failed };

    explicit OwnConnection(const AppContext& ctx) : m_ctx(ctx) {}
    ~OwnConnection();
    OwnConnection(const OwnConnection&) = delete;
    OwnConnection& operator=(const OwnConnection&) = delete;

    // Opens the record set of sql. On Failed, errorText() holds the connection's message.
    Status open(const QString& sql);
    RecordSet& rs() { return m_rs; }
    QString errorText() const { return m_ado.sErrMsg; }

private:
    const AppContext& m_ctx;
    cT_ADODB m_ado;
    RecordSet m_rs;
    bool m_connected = false;
};

} // namespace qelprn
