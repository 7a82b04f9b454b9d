#include "forms/StaffCheck.h"

#include "app/NullValue.h"
#include "db/ScopedConnection.h"

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 checkStaffCode(const AppContext& ctx, qint32 code, const QString& notFoundText, QString& errorText,
                      QString* name)
{
    const QString sql = u"SELECT cName, iChusiFlg FROM STAFF "_s + u" WHERE nIDNo = "_s +
                        QString::number(code) + u" AND iKyotenCd = "_s + QString::number(ctx.iBaseKyotenCd) +
                        u" AND iKyotenEb = "_s + QString::number(ctx.iBaseKyotenEb);
    ScopedConnection own;
    if (!own.openAdodbQuery(ctx, sql)) {
        errorText = u"iChkStaff でエラー\r\n"_s + own.errorText();
        return -1;
    }
    if (own.rs.isEOF()) {
        errorText = own.rs.hasError() ? u"iChkStaff でエラー\r\n"_s + own.rs.errorText() : notFoundText;
        return -1;
    }
    if (name)
        *name = csNullToRTrim(own.rs.field(u"cName"_s));
    if (nNullToLng(own.rs.field(u"iChusiFlg"_s)) != 0) {
        errorText = u"管理対象から外れています。"_s;
        return -1;
    }
    return 0;
}

} // namespace qelprn
