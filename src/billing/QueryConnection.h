#pragma once

#include "app/AppContext.h"
#include "db/ScopedConnection.h"

#include <QString>

namespace qelprn {

// The connection of one invoice query: a ScopedConnection whose every failure is shown to the
// user at once as the query's error header, CR LF and the reason (critical box, the program's
// title), as the invoice queries report their errors.
class QueryConnection
{
    const AppContext& m_ctx;
    QString m_header;
    ScopedConnection m_con;

public:
    // header: the procedure's error header, e.g. "iGetSeikyuData() でエラー".
    QueryConnection(const AppContext& ctx, QString header) : m_ctx(ctx), m_header(std::move(header)) {}

    // Connects with the string of "adodb.ini". An empty string is reported under emptyHeader when
    // given (one caller reports it under another procedure's header), else under the own header.
    bool openAdodb(const QString& emptyHeader = QString());
    bool open(const QString& connectionString) { return reported(m_con.open(connectionString)); }
    bool query(const QString& sql) { return reported(m_con.query(sql)); }
    // After walking the record set: false (reported) when a read failed midway.
    bool checkRead() { return reported(m_con.checkRead()); }
    void close() { m_con.close(); }

    RecordSet& rs = m_con.rs;

private:
    bool reported(bool ok, const QString& emptyHeader = QString()) const;
};

} // namespace qelprn
