#pragma once

#include <QString>
#include <QStringList>

class QCoreApplication;

namespace qelprn {

// Japanese for Qt's own texts (the print, page set-up and file dialogs, the calendar) and Japanese
// number and date conventions, whatever the user's locale. The translation "qtbase_ja.qm" is looked
// for in the program folder's "translations" folder (shipped with the Windows build), then in Qt's
// translation folder; without it Qt's own texts stay English and the program starts all the same.
// Returns the file loaded, or "" when none was found.
QString installJapaneseTranslation(QCoreApplication& app);

// The folders searched, in order.
QStringList qtTranslationFolders();

} // namespace qelprn
