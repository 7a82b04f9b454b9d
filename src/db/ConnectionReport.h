#pragma once

#include "app/AppContext.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace qelprn {

// What an administrator checks after pointing the program folder at a database: the connection of
// "adodb.ini" (password masked), the driver, whether it opened and the server's product and
// version, then every database of "DB.ini" with whether it opened and how many sites the site
// grid would list from it. Nothing is shown through the interaction; failures are part of the
// report.
struct ConnectionReport
{
    struct Database
    {
        QString label;
        QString server;
        QString database;
        bool opened = false;
        int sites = 0;
        QString error;
    };

    QString connectionString;  // masked
    QString odbcConnectString; // masked; empty for the embedded engine
    QString driver;
    bool opened = false;
    QString serverVersion;
    QString error;
    QString listError; // "DB.ini" could not be read
    QList<Database> databases;

    bool allOpened() const;
    // The report as the command prints it, one line each.
    QStringList lines() const;
};

ConnectionReport checkConnections(const AppContext& ctx);

} // namespace qelprn
