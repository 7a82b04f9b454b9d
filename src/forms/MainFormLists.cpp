#include "forms/MainFormLists.h"

#include "app/Cp932.h"
#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/SysIni.h"
#include "db/RecordSet.h"
#include "db/cT_KyotenDbAcs.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn {

bool MainFormLists::readList(const QString& sql, const QString& nameColumn, QList<CodeName>& out)
{
    out.clear();
    RecordSet rs;
    if (m_ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        m_error = m_ado.sErrMsg;
        return false;
    }
    while (!rs.isEOF()) {
        out.append({nNullToLng(rs.field(u"nIDNo"_s)), csNullToRTrim(rs.field(nameColumn))});
        rs.moveNext();
    }
    const bool failed = rs.hasError();
    if (failed)
        m_error = rs.errorText();
    m_ado.iCloseRecSet(rs);
    return !failed;
}

QString MainFormLists::siteCondition() const
{
    return u" WHERE iKyotenCd = "_s + QString::number(m_ctx.iBaseKyotenCd) + u" AND iKyotenEb = "_s +
           QString::number(m_ctx.iBaseKyotenEb);
}

bool MainFormLists::readCorps()
{
    m_error.clear();
    cT_KyotenDbAcs sites(m_ctx);
    sites.iInit(&m_ado);
    if (sites.iDataRead(&m_ado) != 0) {
        m_error = sites.sErrMsg;
        return false;
    }
    for (int i = 0; i < sites.nデータ数(); ++i) {
        const cD_Kyoten& k = sites.clsKyoten(i);
        if (k.KyotenCd() == m_ctx.iBaseKyotenCd && k.KyotenEd() == m_ctx.iBaseKyotenEb)
            m_siteName = k.KyotenName();
    }
    const QString corps = u"SELECT nIDNo, cShamei1 FROM CORP"_s + siteCondition() + u" AND iType = "_s;
    return readList(corps + u"0 ORDER BY nIDNo"_s, u"cShamei1"_s, m_corps) &&
           readList(corps + u"1 ORDER BY nIDNo"_s, u"cShamei1"_s, m_clinics);
}

bool MainFormLists::readStaff(bool withEnded)
{
    m_error.clear();
    QString sql = u"SELECT nIDNo, cName FROM STAFF"_s + siteCondition();
    if (!withEnded)
        sql += u" AND (iChusiFlg = 0 OR iChusiFlg IS NULL)"_s;
    sql += u" ORDER BY nIDNo"_s;
    return readList(sql, u"cName"_s, m_staff);
}

bool MainFormLists::readFacilityKinds()
{
    m_error.clear();
    m_facilityKinds.clear();
    const QString path = toLocalPath(csDataDir(m_ctx) + u"施設種類List.txt"_s);
    bool ok = false;
    const QStringList lines = QFileInfo(path).isFile() ? readTextLines(path, &ok) : QStringList();
    if (!ok) {
        m_error = path + u"がありません。"_s;
        return false;
    }
    for (const QString& line : lines) {
        if (!line.trimmed().isEmpty())
            m_facilityKinds.append(line.trimmed());
    }
    return true;
}

} // namespace qelprn
