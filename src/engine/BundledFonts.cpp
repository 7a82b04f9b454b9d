#include "engine/BundledFonts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <mutex>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

// Adds every font file of folder to the application's fonts. A file that is no usable font adds
// nothing; a layout that needs its family then stops with the family's name.
void loadFontFolder(const QString& folder)
{
    const QDir dir(folder);
    for (const QString& name : dir.entryList({u"*.ttf"_s, u"*.otf"_s, u"*.ttc"_s}, QDir::Files, QDir::Name))
        QFontDatabase::addApplicationFont(dir.filePath(name));
}

} // namespace

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
    // Listing the families also fills the font database, which hasFamily's alias look-up needs.
    if (QFontDatabase::families().contains(family, Qt::CaseInsensitive))
        return true;
    // A Japanese system lists such fonts under their Japanese names ("IPAexゴシック") and knows the
    // English one only as an alias, which hasFamily resolves where the platform registers it.
    if (QFontDatabase::hasFamily(family))
        return true;
    // Elsewhere the family is there when it resolves to another font than a family no machine has
    // (which gets the stand-in).
    const QString standIn = QFontInfo(QFont(u"qelprn-no-such-family"_s)).family();
    return QFontInfo(QFont(family)).family() != standIn;
}

} // namespace qelprn::engine
