#include "engine/TextLayerFont.h"

#include "engine/FontFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHash>
#include <QMutex>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

char32_t keptCodePoint(const QList<char32_t>& sharing)
{
    // The original font names the glyph by the lowest of them, so the copy keeps another: the first
    // that is not a radical (長, not U+2FA7 after U+2ED1), a combining mark or a format character,
    // else the second.
    for (qsizetype i = 1; i < sharing.size(); ++i) {
        const char32_t c = sharing[i];
        const QChar::Category category = QChar::category(c);
        if (category != QChar::Mark_NonSpacing && category != QChar::Mark_Enclosing &&
            category != QChar::Other_Format && (c < 0x2E80 || c > 0x2FDF))
            return c;
    }
    return sharing.value(1, sharing.value(0));
}

} // namespace

QByteArray textLayerFontFile(const QRawFont& font, const QString& family)
{
    if (!font.isValid())
        return {};
    CharMap map = readCharMap(font);
    QHash<quint32, QList<char32_t>> sharing; // glyph -> its code points, lowest first
    for (const auto& [c, glyph] : map)
        sharing[glyph].append(c);
    QHash<quint32, char32_t> kept;
    for (auto it = sharing.cbegin(); it != sharing.cend(); ++it)
        kept.insert(it.key(), keptCodePoint(it.value()));
    bool changed = false;
    for (auto it = map.begin(); it != map.end();) {
        if (kept.value(it->second) != it->first) {
            it = map.erase(it);
            changed = true;
        } else {
            ++it;
        }
    }
    if (!changed)
        return {};
    return fontFileWith(font, map, family);
}

namespace {

// Registers the font file at path; the family it brings, or "" when it is not family.
QString registerFont(const QString& path, const QString& family)
{
    const int id = QFontDatabase::addApplicationFont(path);
    if (QFontDatabase::applicationFontFamilies(id).contains(family))
        return family;
    if (id >= 0)
        QFontDatabase::removeApplicationFont(id);
    return {};
}

// The copy of font as a registered file: from the user's cache folder when an earlier run built it
// (a few megabytes per face, built once), else built now and kept there, or in a temporary folder
// when the cache folder cannot be written.
QString registerCopy(const QRawFont& font)
{
    static QTemporaryDir scratch;
    // The face and the way of building its copy: a change to either names another file.
    static constexpr char kCopyVersion[] = "1";
    const QByteArray identity =
        kCopyVersion + (font.familyName() + u'\n' + font.styleName()).toUtf8() + font.fontTable("head");
    const QString family =
        u"QelprnTextLayer"_s +
        QString::fromLatin1(QCryptographicHash::hash(identity, QCryptographicHash::Sha1).toHex().left(10));
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    const QString cached = cache.isEmpty() ? QString() : cache + u"/fonts/"_s + family + u".ttf"_s;
    if (!cached.isEmpty() && QFileInfo::exists(cached)) {
        const QString registered = registerFont(cached, family);
        if (!registered.isEmpty())
            return registered;
    }
    const QByteArray data = textLayerFontFile(font, family);
    if (data.isEmpty())
        return {};
    for (const QString& path :
         {cached, scratch.isValid() ? scratch.filePath(family + u".ttf"_s) : QString()}) {
        if (path.isEmpty() || !QDir().mkpath(QFileInfo(path).absolutePath()))
            continue;
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(data) == data.size() && file.commit())
            return registerFont(path, family);
    }
    return {};
}

} // namespace

QRawFont textLayerFont(const QRawFont& font)
{
    if (!font.isValid())
        return font;
    // The PDF writer embeds only fonts that come from a file, so the copy is a file registered
    // under a family name of its own (a changed font must not carry the original's name). One copy
    // per face for the life of the program.
    static QMutex mutex;
    static QHash<QString, QString> families; // original face -> family of the copy ("" = none)
    const QString key = font.familyName() + u'\n' + font.styleName();
    QString family;
    {
        QMutexLocker lock(&mutex);
        auto it = families.find(key);
        if (it == families.end())
            it = families.insert(key, registerCopy(font));
        family = it.value();
    }
    if (family.isEmpty())
        return font;
    QFont copy(family);
    copy.setPixelSize(qMax(1, qRound(font.pixelSize())));
    copy.setHintingPreference(QFont::PreferNoHinting);
    copy.setStyleStrategy(QFont::PreferOutline);
    const QRawFont raw = QRawFont::fromFont(copy);
    return raw.isValid() && raw.familyName() == family ? raw : font;
}

} // namespace qelprn::engine
