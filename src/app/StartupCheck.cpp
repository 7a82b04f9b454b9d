#include "app/StartupCheck.h"

#include "app/DbLoginTimeout.h"
#include "app/FileUtil.h"
#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "app/SysIni.h"
#include "app/Val.h"

using namespace Qt::StringLiterals;

namespace qelprn {

bool checkCommandLine(Interaction& ui, const QString& commandLine)
{
    if (!commandLine.isEmpty())
        return true;
    const QString title = u"　エラー！！"_s;
    ui.messageBox(u"処理モードが設定されていません。"_s, title, MsgIcon::Exclamation);
    ui.messageBox(u"起動できません！"_s, title, MsgIcon::Critical);
    return false;
}

std::optional<AppContext> loadAppContext(Interaction& ui)
{
    const AppDirLookup lookup = findAppDir();
    if (lookup.found.isEmpty()) {
        ui.messageBox(lookup.describeMissing(), seikyuTitle(), MsgIcon::Critical);
        return std::nullopt;
    }
    return loadAppContext(ui, lookup.found);
}

std::optional<AppContext> loadAppContext(Interaction& ui, const QString& appDir)
{
    AppContext ctx;
    ctx.ui = &ui;
    // As the suite does: the program folder becomes the current directory, so relative paths of
    // the settings (an embedded database folder, say) are taken from it.
    csChangeDir(appDir);
    ctx.csAppDir = appDir;
    const std::optional<QString> baseId = readSysIniValue(ctx, u"BASEID"_s, true);
    if (!baseId)
        return std::nullopt;
    // The suite's Val(): the leading digits count ("1X" is 1), a non-number part gives 0.
    ctx.iBaseKyotenCd = qint16(leadingNumber(QStringView(*baseId).mid(0, 2)));
    ctx.iBaseKyotenEb = qint16(leadingNumber(QStringView(*baseId).mid(2, 2)));
    setDbLoginTimeout(vGetSysIniValue(ctx, u"DB_LOGIN_TIMEOUT"_s, false));
    return ctx;
}

} // namespace qelprn
