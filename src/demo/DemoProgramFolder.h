#pragma once

#include "app/Interaction.h"
#include "demo/DemoOptions.h"

#include <QList>
#include <QString>

namespace qelprn {

// Writes a complete program folder for trying the program without the suite: the settings files
// ("Tovara.ini", "adodb.ini", "DB.ini", "ServerName.zkt", "Halvex.Ver", and in DATA
// "施設種類List.txt" and "Version.ini", all CP932 with CR LF), the folders SYS, TMP, ICON, DATA and
// db, the layouts in SYS, the company seal and the wallpaper, and the embedded databases with the
// demo data. Progress of the data goes to ui.progress().
class DemoProgramFolder
{
public:
    explicit DemoProgramFolder(DemoOptions options);

    // The sites with their databases and patient counts: site codes 1, 1, 2, 2, ... with branches
    // 1, 2, 1, 2, ...; the sites of code k live in database "suite" (k = 1) or "suite<k>".
    QList<DemoSite> sites() const;
    QDate month() const; // the billing month's first day
    QStringList databases() const;

    bool create(Interaction& ui, QString* error);

private:
    bool writeSettings(QString* error) const;
    bool writeImages(QString* error) const;
    bool copyLayouts(QString* error) const;
    QString path(const QString& relative) const;

    DemoOptions m_options;
};

// Encodes text as CP932 with CR LF line ends and writes it atomically.
bool writeDemoSettingsFile(const QString& file, const QString& text, QString* error);

} // namespace qelprn
