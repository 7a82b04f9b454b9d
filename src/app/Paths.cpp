#include "app/Paths.h"

#include "app/Platform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kSuiteSettings = u"Tovara.ini"_s;

QString withoutTrailingSeparator(const QString& folder)
{
    QString dir = QDir::cleanPath(QDir(folder).absolutePath());
    while (dir.size() > 1 && (dir.endsWith(u'/') || dir.endsWith(u'\\')))
        dir.chop(1);
    return dir;
}

bool holdsSuiteSettings(const QString& folder)
{
    return QFileInfo(QDir(folder).filePath(kSuiteSettings)).isFile();
}

QString sourceName(AppDirLookup::Source source)
{
    switch (source) {
    case AppDirLookup::Source::Environment:
        return u"環境変数 QELPRN_APP_DIR"_s;
    case AppDirLookup::Source::ProgramFolder:
        return u"プログラムのフォルダ"_s;
    case AppDirLookup::Source::UserData:
        break;
    }
    return u"利用者のデータフォルダ"_s;
}

} // namespace

QString toLocalPath(const QString& suitePath)
{
#ifdef Q_OS_WIN
    return platform::windowsPath(suitePath);
#else
    QString p = suitePath;
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    // "dir\" + "\TMP" gives a doubled separator; harmless but untidy in messages.
    while (p.contains(QLatin1String("//")))
        p.replace(QLatin1String("//"), QLatin1String("/"));
    return p;
#endif
}

QString AppDirLookup::suggested() const
{
    return tried.isEmpty() ? QString() : tried.last().folder;
}

QString AppDirLookup::describeMissing() const
{
    QString text =
        u"システム設定ファイル "_s + kSuiteSettings + u" が見つかりません。次のフォルダを探しました："_s;
    for (const Candidate& c : tried)
        text += u"\n・"_s + sourceName(c.source) + u"："_s + QDir::toNativeSeparators(c.folder);
    return text;
}

QString userDataDir()
{
    // AppDataLocation is named after the application; every program of the product shares the
    // desktop program's folder, so the name is set to "qelprn" for the question.
    const QString ownName = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(u"qelprn"_s);
    const QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QCoreApplication::setApplicationName(ownName);
    return withoutTrailingSeparator(dir);
}

AppDirLookup findAppDir()
{
    AppDirLookup lookup;
    const QString chosen = qEnvironmentVariable("QELPRN_APP_DIR");
    if (!chosen.isEmpty()) {
        lookup.tried.append({AppDirLookup::Source::Environment, withoutTrailingSeparator(chosen)});
    } else {
        lookup.tried.append({AppDirLookup::Source::ProgramFolder,
                             withoutTrailingSeparator(QCoreApplication::applicationDirPath())});
        lookup.tried.append({AppDirLookup::Source::UserData, userDataDir()});
    }
    for (const AppDirLookup::Candidate& c : std::as_const(lookup.tried)) {
        if (holdsSuiteSettings(c.folder)) {
            lookup.found = c.folder;
            break;
        }
    }
    return lookup;
}

QString defaultAppDir()
{
    const AppDirLookup lookup = findAppDir();
    return lookup.found.isEmpty() ? lookup.suggested() : lookup.found;
}

QString installedLayoutsDir()
{
    // <prefix>/share/qelprn/layouts beside <prefix>/bin, as installed on Linux and in the build
    // tree; the Windows zip carries them in SYS beside the programs.
    const QString exeDir = QCoreApplication::applicationDirPath();
    QStringList candidates{exeDir + u"/../share/qelprn/layouts"_s};
#ifdef Q_OS_WIN
    candidates.prepend(exeDir + u"/SYS"_s);
#endif
    for (const QString& candidate : std::as_const(candidates)) {
        const QDir dir(candidate);
        if (dir.exists())
            return QDir::cleanPath(dir.absolutePath());
    }
    return {};
}

} // namespace qelprn
