#include "app/SysIni.h"

#include "app/Cp932.h"
#include "app/FileUtil.h"
#include "app/Paths.h"
#include "app/SpaceTrim.h"

using namespace Qt::StringLiterals;

namespace qelprn {

std::optional<QString> readSysIniValue(const AppContext& ctx, const QString& key, bool showError)
{
    const QString path = toLocalPath(ctx.csAppDir + u"\\"_s + u"Tovara.ini"_s);
    bool ok = false;
    QStringList lines;
    if (bFileExists(path))
        lines = readTextLines(path, &ok);
    if (!ok) {
        ctx.interaction().messageBox(u"システム設定ファイルが見つかりません。"_s, u"警告！"_s,
                                     MsgIcon::Critical);
        return std::nullopt;
    }
    const QString wanted = trimSpaces(key);
    for (const QString& line : lines) {
        const qsizetype eq = line.indexOf(u'=');
        if (eq < 0)
            continue;
        if (trimSpaces(QStringView(line).left(eq)) == wanted)
            return line.mid(eq + 1);
    }
    if (showError) {
        ctx.interaction().messageBox(u"システム設定ファイルに、指定の項目が見つかりません。"_s + u"\r["_s +
                                         key + u"]"_s,
                                     u"警告！"_s, MsgIcon::Critical);
    }
    return QString();
}

QString vGetSysIniValue(const AppContext& ctx, const QString& key, bool showError)
{
    return readSysIniValue(ctx, key, showError).value_or(QString());
}

namespace {
QString folder(const AppContext& ctx, const QString& key)
{
    const std::optional<QString> value = readSysIniValue(ctx, key, true);
    return value ? ctx.csAppDir + *value + u"\\"_s : QString();
}
} // namespace

QString csSysDir(const AppContext& ctx)
{
    return folder(ctx, u"SYSTEM_SYS"_s);
}

QString csTmpDir(const AppContext& ctx)
{
    return folder(ctx, u"SYSTEM_TMP"_s);
}

QString csIconDir(const AppContext& ctx)
{
    return folder(ctx, u"SYSTEM_ICON"_s);
}

QString csDataDir(const AppContext& ctx)
{
    return folder(ctx, u"SYSTEM_DATA"_s);
}

} // namespace qelprn
