#pragma once

#include "db/DbInfo.h"

#include <QList>
#include <QString>

namespace qelprn {

// One site of the site list as the main form's grid shows it and the command line reads it.
struct SiteRow
{
    QString name;     // the site's name
    QString database; // the database it was read from; "" from the single-database loader
    SiteKey site;
};

// The sites of rows grouped by database, databases and sites in row order, each site once.
QList<SelectedDatabase> groupByDatabase(const QList<SiteRow>& rows);

} // namespace qelprn
