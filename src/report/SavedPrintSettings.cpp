#include "report/SavedPrintSettings.h"

#include "app/FileUtil.h"
#include "app/Paths.h"
#include "app/SysIni.h"
#include "app/clsOplIniFile.h"

using namespace Qt::StringLiterals;

namespace qelprn {

void applySavedPrintSettings(const AppContext& context, PrintFormValues& v)
{
    const QString path = csDataDir(context) + u"印刷設定.ini"_s;
    clsOplIniFile ini;
    if (!bFileExists(path) || ini.iInit(path) != 0)
        return;
    const QString section = u"施設請求書"_s;
    const qint32 sort = ini.nGetProfileLong(section, u"並び順"_s);
    if (sort >= 0 && sort < 3) {
        v.optSort = {};
        v.optSort[std::size_t(sort)] = true;
    }
    if (const qint32 corp = ini.nGetProfileLong(section, u"印字社名"_s); corp > 0) {
        v.cbDairiListIndex = 1;
        v.cbDairiItemData = corp;
    }
    if (const qint32 clinic = ini.nGetProfileLong(section, u"印字治療院名"_s); clinic > 0) {
        v.cbTiryoinListIndex = 1;
        v.cbTiryoinItemData = clinic;
    }
    const bool address = ini.nGetProfileLong(section, u"対象施設"_s) != 0;
    v.optSelSisetsuType = {!address, address};
}

} // namespace qelprn
