#pragma once

#include <QString>

namespace qelprn {

// The main form's status bar texts. The database the connection opened: "データベース：suite",
// "データベース：－" when the connection string names none.
QString databaseStatusText(const QString& connectionString);
// The site the program runs as: "拠点：01-01 杉並本店", without a name when it is not known.
QString siteStatusText(qint32 kyotenCd, qint32 kyotenEb, const QString& siteName);

} // namespace qelprn
