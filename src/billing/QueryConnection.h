#pragma once

#include "app/AppContext.h"
#include "app/ProgramTitle.h"
#include "db/RecordSet.h"
#include "db/cT_ADODB.h"

#include <QString>

namespace qelprn {

// The connection of one invoice query: opened from "adodb.ini" or from a given connection string,
// running its statements one after the other on one record set. Every failure is shown to the user
// at once as the query's error header, CR LF and the reason (critical box, the program's title);
// the record set and the connection are closed on every path out.
class QueryConnection
{
public:
    // header: the procedure's error header, e.g. "iGetSeikyuData() でエラー".
    QueryConnection(const AppContext& ctx, QString header);
    ~QueryConnection();
    QueryConnection(const QueryConnection&) = delete;
    QueryConnection& operator=(const QueryConnection&) = delete;

    // Connects with the string of "adodb.ini". An empty string is reported under emptyHeader when
    // given (one caller reports it under another procedure's header), else under the own header.
    bool openAdodb(const QString& emptyHeader = QString());
    bool open(const QString& connectionString);
    // Closes the previous record set and opens the statement's.
    bool query(const QString& sql);
    // After walking the record set: false (reported) when a read failed midway.
    bool checkRead();
    void close();

    RecordSet rs;

private:
    void fail(const QString& reason, const QString& header = QString()) const;

    const AppContext& m_ctx;
    QString m_header;
    cT_ADODB m_ado;
    bool m_connected = false;
};

// "接続文字列取得できません。": the reason given for an empty connection string.
QString noConnectionStringText();

} // namespace qelprn
