#include "engine/BundledFonts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>
#include <mutex>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

QStringList loadFontFolder(const QString& folder, QStringList* problems)
{
    QStringList families;
    const QDir dir(folder);
    const QStringList files = dir.entryList({u"*.ttf"_s, u"*.otf"_s, u"*.ttc"_s}, QDir::Files, QDir::Name);
    for (const QString& name : files) {
        const int id = QFontDatabase::addApplicationFont(dir.filePath(name));
        if (id < 0) {
            if (problems)
                problems->append(QDir::toNativeSeparators(dir.filePath(name)));
            continue;
        }
        families += QFontDatabase::applicationFontFamilies(id);
    }
    return families;
}

void loadBundledFonts()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (QCoreApplication::instance())
            loadFontFolder(QCoreApplication::applicationDirPath() + u"/fonts"_s);
    });
}

bool fontFamilyAvailable(const QString& family)
{
    loadBundledFonts();
    return QFontDatabase::families().contains(family, Qt::CaseInsensitive);
}

} // namespace qelprn::engine
