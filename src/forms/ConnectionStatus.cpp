#include "forms/ConnectionStatus.h"

#include "db/ConnectionString.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString databaseStatusText(const QString& connectionString)
{
    const QString database = ConnectionString::parse(connectionString).database;
    return u"データベース："_s + (database.isEmpty() ? u"－"_s : database);
}

QString siteStatusText(qint32 kyotenCd, qint32 kyotenEb, const QString& siteName)
{
    const QString site =
        u"%1-%2"_s.arg(kyotenCd, 2, 10, QLatin1Char('0')).arg(kyotenEb, 2, 10, QLatin1Char('0'));
    return u"拠点："_s + site + (siteName.isEmpty() ? QString() : u" "_s + siteName);
}

} // namespace qelprn
