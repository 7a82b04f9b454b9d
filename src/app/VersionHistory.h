#pragma once

#include <QString>
#include <QStringList>

namespace qelprn {

// "Version.ini" of the data folder: CSV records of version number and description. The first
// record is the current version; the others are the history shown under it.
struct VersionHistory
{
    QString current;
    QStringList history;
};

// Reads the file at path (CP932); history entries numbered below minVersion are left out when
// minVersion is above 0. A missing or unreadable file gives an empty history.
VersionHistory readVersionHistory(const QString& path, int minVersion);

} // namespace qelprn
