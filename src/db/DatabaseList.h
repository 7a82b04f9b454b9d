#pragma once

#include "app/AppContext.h"
#include "db/DbInfo.h"

#include <QList>
#include <QString>

namespace qelprn {

// The database server's name: the last "[DBServer]=" line of "ServerName.zkt" in the program
// folder, trimmed; "" without the file or such a line.
QString cDBserverName2(const AppContext& ctx);

// Fills list from "DB.ini" (CSV records: label, server, database), or with the one database of
// "adodb.ini" when "DB.ini" is absent. Returns the number of entries; on an error a critical
// message is shown and 0 is returned.
qint16 iDatabaseRead(const AppContext& ctx, QList<DbInfo>& list);

// "Provider=SQLOLEDB;Data Source=<server>;Database=<database>;uid=sa;pwd=...", cut at NUL and
// right-trimmed.
QString dbConnectionString(const DbInfo& db);

// The grid loaders' site statement for bAllFlg and the start-up mode.
QString kyotenGridSql(bool bAllFlg, qint16 startMode);

} // namespace qelprn
