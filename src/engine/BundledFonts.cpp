#include "engine/BundledFonts.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>
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

// True when the family is installed and its own glyphs cover Japanese (not a stand-in's).
bool drawsJapanese(const QString& family)
{
    // Listing the families fills the font database, which hasFamily's alias look-up needs.
    QFontDatabase::families();
    if (!QFontDatabase::hasFamily(family))
        return false;
    const QRawFont raw = QRawFont::fromFont(QFont(family));
    return raw.isValid() && raw.supportsCharacter(u'あ') && raw.supportsCharacter(u'施');
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

QString useJapaneseUiFont(const QString& fontsFolder)
{
    QFont font = QApplication::font();
    // The face the system's font resolves to, which is what a window draws with.
    const QString system = QFontInfo(font).family();
    if (drawsJapanese(system))
        return system;
    // Windows' Japanese UI faces, then the Gothic faces of Windows and Linux systems.
    static const QStringList gothic{u"Yu Gothic UI"_s, u"Meiryo UI"_s,  u"MS UI Gothic"_s,
                                    u"Yu Gothic"_s,    u"Meiryo"_s,     u"MS PGothic"_s,
                                    u"IPAexGothic"_s,  u"IPAPGothic"_s, u"Noto Sans CJK JP"_s};
    QString family;
    for (const QString& candidate : gothic) {
        if (drawsJapanese(candidate)) {
            family = candidate;
            break;
        }
    }
    if (family.isEmpty()) {
        const int id = QFontDatabase::addApplicationFont(QDir(fontsFolder).filePath(u"ipaexg.ttf"_s));
        family = QFontDatabase::applicationFontFamilies(id).value(0);
    }
    if (family.isEmpty())
        return system;
    font.setFamilies({family});
    QApplication::setFont(font);
    return family;
}

} // namespace qelprn::engine
