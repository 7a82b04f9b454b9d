#include "forms/CodeNameLists.h"

#include "app/NullValue.h"
#include "db/RecordSet.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

qint16 readList(cT_ADODB& ado, const QString& sql, const QString& nameColumn, QList<CodeName>& out,
                QString& sErrMsg)
{
    out.clear();
    RecordSet rs;
    if (ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        sErrMsg = ado.sErrMsg;
        return -1;
    }
    while (!rs.isEOF()) {
        out.append({nNullToLng(rs.field(u"nIDNo"_s)), csNullToRTrim(rs.field(nameColumn))});
        rs.moveNext();
    }
    const bool failed = rs.hasError();
    if (failed)
        sErrMsg = rs.errorText();
    ado.iCloseRecSet(rs);
    return failed ? qint16(-1) : qint16(0);
}

QString siteCondition(const AppContext& ctx)
{
    return u" WHERE iKyotenCd = "_s + QString::number(ctx.iBaseKyotenCd) + u" AND iKyotenEb = "_s +
           QString::number(ctx.iBaseKyotenEb);
}

} // namespace

qint16 readCorpList(cT_ADODB& ado, const AppContext& ctx, int iType, QList<CodeName>& out, QString& sErrMsg)
{
    const QString sql = u"SELECT nIDNo, cShamei1 FROM CORP"_s + siteCondition(ctx) + u" AND iType = "_s +
                        QString::number(iType) + u" ORDER BY nIDNo"_s;
    return readList(ado, sql, u"cShamei1"_s, out, sErrMsg);
}

qint16 readStaffList(cT_ADODB& ado, const AppContext& ctx, bool withEnded, QList<CodeName>& out,
                     QString& sErrMsg)
{
    QString sql = u"SELECT nIDNo, cName FROM STAFF"_s + siteCondition(ctx);
    if (!withEnded)
        sql += u" AND (iChusiFlg = 0 OR iChusiFlg IS NULL)"_s;
    sql += u" ORDER BY nIDNo"_s;
    return readList(ado, sql, u"cName"_s, out, sErrMsg);
}

void fillCodeCombo(QComboBox& box, const QList<CodeName>& list)
{
    const QSignalBlocker block(box);
    box.clear();
    box.addItem(u"（指定なし）"_s, 0);
    for (const CodeName& entry : list)
        box.addItem(entry.name, entry.nIDNo);
    box.setCurrentIndex(0);
}

bool selectItemData(QComboBox& box, qint32 code)
{
    const int index = box.findData(code);
    if (index < 0)
        return false;
    box.setCurrentIndex(index);
    return true;
}

qint32 selectedItemData(const QComboBox& box)
{
    return box.currentIndex() < 0 ? 0 : box.currentData().toInt();
}

} // namespace qelprn
