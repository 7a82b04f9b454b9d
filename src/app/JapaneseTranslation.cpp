#include "app/JapaneseTranslation.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace qelprn {

QStringList qtTranslationFolders()
{
    return {QDir(QCoreApplication::applicationDirPath()).filePath(u"translations"_s),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath)};
}

QString installJapaneseTranslation(QCoreApplication& app)
{
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    for (const QString& folder : qtTranslationFolders()) {
        auto* translator = new QTranslator(&app);
        if (translator->load(u"qtbase_ja"_s, folder)) {
            QCoreApplication::installTranslator(translator);
            return translator->filePath();
        }
        delete translator;
    }
    return {};
}

} // namespace qelprn
