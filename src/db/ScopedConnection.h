#pragma once

#include "app/AppContext.h"
#include "db/RecordSet.h"
#include "db/cT_ADODB.h"

#include <QString>

namespace qelprn {

// A connection for one piece of work: opened with the connection string of "adodb.ini" or a given
// one, it runs statements one after the other on one record set and closes both on every path
// out. It shows nothing: each step returns false on failure and errorText() says why.
class ScopedConnection
{
public:
    ScopedConnection() = default;
    ~ScopedConnection();
    ScopedConnection(const ScopedConnection&) = delete;
    ScopedConnection& operator=(const ScopedConnection&) = delete;

    // Connects with the string of "adodb.ini".
    bool openAdodb(const AppContext& ctx);
    bool open(const QString& connectionString);
    // Closes the previous record set and opens the statement's.
    bool query(const QString& sql);
    // openAdodb and query in one.
    bool openAdodbQuery(const AppContext& ctx, const QString& sql) { return openAdodb(ctx) && query(sql); }
    // After walking the record set: false when a read failed midway.
    bool checkRead();
    void close();

    // Why the last step failed: the reader's reason for an unreadable "adodb.ini", "接続文字列取得
    // できません。" for a missing or empty connection string, else the connection's message.
    QString errorText() const { return m_error; }
    // True when the last failure was a missing or empty connection string (not an unreadable file).
    bool lacksConnectionString() const { return m_lacksConnectionString; }

    RecordSet rs;

private:
    bool fail(const QString& reason, bool lacksConnectionString = false);

    cT_ADODB m_ado;
    bool m_connected = false;
    QString m_error;
    bool m_lacksConnectionString = false;
};

// "接続文字列取得できません。": the reason given for an empty connection string.
QString noConnectionStringText();

} // namespace qelprn
