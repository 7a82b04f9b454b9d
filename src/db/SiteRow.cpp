#include "db/SiteRow.h"

#include <algorithm>

namespace qelprn {

QList<SelectedDatabase> groupByDatabase(const QList<SiteRow>& rows)
{
    QList<SelectedDatabase> databases;
    for (const SiteRow& row : rows) {
        auto db = std::find_if(databases.begin(), databases.end(),
                               [&](const SelectedDatabase& d) { return d.cDatabase == row.database; });
        if (db == databases.end())
            databases.append({row.database, {row.site}});
        else if (!db->sites.contains(row.site))
            db->sites.append(row.site);
    }
    return databases;
}

} // namespace qelprn
