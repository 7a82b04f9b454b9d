#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// One database of the multi-site list ("DB.ini", or the one database of "adodb.ini").
struct DbInfo
{
    QString cDbLabel;  // field 1 of the line
    QString cDatabase; // database name
    QString cServer;   // server, possibly "server\instance"
    QString cDbName;   // the part of cDbLabel after its first ":"
};

// A site chosen for a multi-site run.
struct SiteKey
{
    qint16 iKyotenCd = 0;
    qint16 iKyotenEb = 0;
    friend bool operator==(const SiteKey&, const SiteKey&) = default;
};

// A database of a multi-site run with the sites chosen in it (filled from the site grid's checked
// rows, or from the command line's --sites).
struct SelectedDatabase
{
    QString cDatabase;
    QList<SiteKey> sites;
};

} // namespace qelprn
