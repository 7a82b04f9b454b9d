#pragma once

#include <QString>
#include <QStringList>

namespace qelprn {

// Settings hold folder values the Windows way ("\TMP"); on other systems backslashes become '/'.
QString toLocalPath(const QString& suitePath);

// Where the program folder was looked for, and where it was found.
struct AppDirLookup
{
    enum class Source { Environment, ProgramFolder, UserData };
    struct Candidate
    {
        Source source;
        QString folder; // without a trailing separator
    };
    QList<Candidate> tried; // in the order they were looked at
    QString found;          // the first that holds "Tovara.ini"; "" when none does

    // The folder a new program folder should be written to: QELPRN_APP_DIR when it is set, else
    // the per-user data folder.
    QString suggested() const;
    // In Japanese: that "Tovara.ini" was not found, and each folder tried with its reason.
    QString describeMissing() const;
};

// The program folder: QELPRN_APP_DIR when set (only that folder is tried, it was chosen on
// purpose); else the executable's folder when it holds "Tovara.ini", as the suite installs it;
// else the per-user data folder (QStandardPaths::AppDataLocation of "qelprn").
AppDirLookup findAppDir();
// The program folder found by findAppDir(), or the folder it would suggest when none was found.
QString defaultAppDir();

// The per-user data folder of the product, the same for every one of its programs.
QString userDataDir();

// The form layouts installed with the programs ("<prefix>/share/qelprn/layouts", found from the
// executable's folder "<prefix>/bin"; on Windows first "SYS" beside the programs, where the zip
// puts them), or "" when there is none.
QString installedLayoutsDir();

} // namespace qelprn
