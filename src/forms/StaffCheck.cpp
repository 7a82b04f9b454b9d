#include "forms/StaffCheck.h"

#include "app/NullValue.h"
#include "master/OwnConnection.h"

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 checkStaffCode(const AppContext& ctx, qint32 code, const QString& notFoundText, QString& errorText,
                      QString* name)
{
    const QString sql = u"SELECT cName, iChusiFlg FROM STAFF "_s + u" WHERE nIDNo = "_s +
                        QString::number(code) + u" AND iKyotenCd = "_s + QString::number(ctx.iBaseKyotenCd) +
                        u" AND iKyotenEb = "_s + QString::number(ctx.iBaseKyotenEb);
    OwnConnection own(ctx);
    switch (own.open(sql)) {
    case OwnConnection::Status::NoConnectionString:
        errorText = u"iChkStaff でエラー\r\n接続文字列取得できません。"_s;
        return -1;
    case OwnConnection::Status::Failed:
        errorText = u"iChkStaff でエラー\r\n"_s + own.errorText();
        return -1;
    case OwnConnection::Status::Ok:
        break;
    }
    if (own.rs().isEOF()) {
        errorText = own.rs().hasError() ? u"iChkStaff でエラー\r\n"_s + own.rs().errorText() : notFoundText;
        return -1;
    }
    if (name)
        *name = csNullToRTrim(own.rs().field(u"cName"_s));
    if (nNullToLng(own.rs().field(u"iChusiFlg"_s)) != 0) {
        errorText = u"管理対象から外れています。"_s;
        return -1;
    }
    return 0;
}

} // namespace qelprn
