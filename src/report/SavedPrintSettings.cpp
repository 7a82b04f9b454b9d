#include "report/SavedPrintSettings.h"

#include "app/FileUtil.h"
#include "app/Paths.h"
#include "app/SysIni.h"
#include "app/clsOplIniFile.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kSection = u"施設請求書"_s;

QString settingsPath(const AppContext& context)
{
    return csDataDir(context) + u"印刷設定.ini"_s;
}

} // namespace

std::optional<SavedPrintChoices> readSavedPrintChoices(const AppContext& context)
{
    const QString path = settingsPath(context);
    clsOplIniFile ini;
    if (!bFileExists(path) || ini.iInit(path) != 0)
        return std::nullopt;
    SavedPrintChoices choices;
    if (const qint32 sort = ini.nGetProfileLong(kSection, u"並び順"_s); sort >= 0 && sort < 3)
        choices.sortIndex = sort;
    choices.corpCode = ini.nGetProfileLong(kSection, u"印字社名"_s);
    choices.clinicCode = ini.nGetProfileLong(kSection, u"印字治療院名"_s);
    choices.addressFacility = ini.nGetProfileLong(kSection, u"対象施設"_s) != 0;
    return choices;
}

bool writeSavedPrintChoices(const AppContext& context, const SavedPrintChoices& choices)
{
    clsOplIniFile ini;
    // A missing file is written afresh; only the name is needed.
    ini.iInit(settingsPath(context));
    // "対象施設" keeps the suite's true, -1.
    const QList<std::pair<QString, qint32>> values = {{u"並び順"_s, choices.sortIndex},
                                                      {u"印字社名"_s, choices.corpCode},
                                                      {u"印字治療院名"_s, choices.clinicCode},
                                                      {u"対象施設"_s, choices.addressFacility ? -1 : 0}};
    for (const auto& [key, value] : values) {
        if (ini.iWriteProfileString(kSection, key, QString::number(value)) == 0)
            return false;
    }
    return true;
}

PrintJouken monthEndJouken(const AppContext& context, int kind, QDate month, QDate issue)
{
    PrintJouken j;
    if (const std::optional<SavedPrintChoices> saved = readSavedPrintChoices(context)) {
        j.iSort = qint16(saved->sortIndex + 1);
        j.nDairiCd = qMax(0, saved->corpCode);
        j.nTiryoinCd = qMax(0, saved->clinicCode);
        j.bSelSisetsuType = saved->addressFacility;
    }
    j.iPrintKind = qint16(kind);
    j.setMonthAndIssue(month, issue);
    return j;
}

} // namespace qelprn
