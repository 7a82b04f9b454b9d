#include "db/AdodbIni.h"

#include "app/NullValue.h"
#include "app/clsOplIniFile.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString readAdodbConnectionString(const AppContext& ctx, QString* errorText)
{
    clsOplIniFile ini;
    if (ini.iInit(ctx.csAppDir + u"/adodb.ini"_s) != 0) {
        if (errorText)
            *errorText = ini.CsErrStr();
        return QString();
    }
    QString cs = csCutNull(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s));
    while (cs.endsWith(u' '))
        cs.chop(1);
    return cs;
}

} // namespace qelprn
