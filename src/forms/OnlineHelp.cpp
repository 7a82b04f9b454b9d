#include "forms/OnlineHelp.h"

#include "app/Cp932.h"
#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/clsOplIniFile.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString reversed(QString text)
{
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace

QString onlineHelpUrl(const AppContext& ctx, int helpContext)
{
    clsOplIniFile ini;
    QString address;
    if (ini.iInit(ctx.csAppDir + u"\\Halvex.Ver"_s) == 0)
        address = csCutNull(ini.csGetProfileString(u"OnlineHelp"_s, u"ADDRESS"_s)).trimmed();
    // Without an http address there is nothing the browser could open.
    if (!address.startsWith(u"http"_s)) {
        ctx.interaction().messageBox(u"環境ファイルの取得に失敗しました。"_s, u"データ参照エラー"_s,
                                     MsgIcon::Critical);
        return QString();
    }

    QString user;
    QString password;
    const QString emap = toLocalPath(ctx.csAppDir + u"\\EmapUser.ini"_s);
    if (QFileInfo::exists(emap)) {
        for (const QString& line : readTextLines(emap)) {
            if (line.startsWith(u"ZENRIN_USER="_s))
                user = reversed(line.mid(12));
            else if (line.startsWith(u"ZENRIN_PWD="_s))
                password = reversed(line.mid(11));
        }
    }
    return address + u"?zi="_s + user + u"&zp="_s + password + u"&lk="_s +
           QString::number(helpContext >= 1 ? helpContext : 1);
}

void showOnlineHelp(const AppContext& ctx, int helpContext)
{
    QString address;
    {
        BusyPointer busy(ctx.interaction());
        address = onlineHelpUrl(ctx, helpContext);
    }
    if (!address.isEmpty())
        ctx.interaction().openUrl(address);
}

} // namespace qelprn
