// The flat-key reader of "Tovara.ini" and the sectioned private-profile reader and writer.
#include "FuzzInput.h"
#include "app/SysIni.h"
#include "app/clsOplIniFile.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace qelprn;
    fuzz::writeInputFile(u"Tovara.ini"_s, data, size);
    const AppContext ctx = fuzz::quietContext();
    for (const QString& key : {u"SYSTEM_TMP"_s, u"BASEID"_s, u"終了患者施術期間"_s, u"x"_s})
        vGetSysIniValue(ctx, key, true);
    csDataDir(ctx);
    const QString ini = fuzz::writeInputFile(u"adodb.ini"_s, data, size);
    clsOplIniFile file;
    if (file.iInit(ini) == 0) {
        file.csGetProfileString(u"接続情報"_s, u"接続情報"_s);
        file.nGetProfileLong(u"A"_s, u"key"_s);
        file.iWriteProfileString(u"施設請求書"_s, u"並び順"_s, u"2"_s);
        file.csGetProfileString(u"施設請求書"_s, u"並び順"_s);
    }
    return 0;
}
