#include "report/SavedPrintSettings.h"

#include "app/FileUtil.h"
#include "app/Paths.h"
#include "app/SysIni.h"
#include "app/clsOplIniFile.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

void applySavedPrintSettings(const AppContext& context, PrintJouken& j)
{
    const QString path = csDataDir(context) + u"印刷設定.ini"_s;
    clsOplIniFile ini;
    if (!bFileExists(path) || ini.iInit(path) != 0)
        return;
    const QString section = u"施設請求書"_s;
    if (const qint32 sort = ini.nGetProfileLong(section, u"並び順"_s); sort >= 0 && sort < 3)
        j.iSort = qint16(sort + 1);
    if (const qint32 corp = ini.nGetProfileLong(section, u"印字社名"_s); corp > 0)
        j.nDairiCd = corp;
    if (const qint32 clinic = ini.nGetProfileLong(section, u"印字治療院名"_s); clinic > 0)
        j.nTiryoinCd = clinic;
    j.bSelSisetsuType = ini.nGetProfileLong(section, u"対象施設"_s) != 0;
}

} // namespace

PrintJouken monthEndJouken(const AppContext& context, int kind, QDate month, QDate issue)
{
    PrintJouken j;
    applySavedPrintSettings(context, j);
    j.iPrintKind = qint16(kind);
    j.setMonthAndIssue(month, issue);
    return j;
}

} // namespace qelprn
