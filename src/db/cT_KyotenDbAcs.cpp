#include "db/cT_KyotenDbAcs.h"

#include "app/NullValue.h"
#include "app/ProgramTitle.h"
#include "app/SpaceTrim.h"
#include "app/Val.h"
#include "db/AdodbIni.h"
#include "db/DatabaseList.h"
#include "db/RecordSet.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {
const QString kAllDbHeader = u"iGetSeikyuData_ALLDB() でエラー\r\n"_s;

// A site code as the suite reads it: spaces trimmed (nothing else), then the number it begins with.
qint32 numberOf(const QVariant& v)
{
    return leadingNumber(trimSpaces(csNullToStr(v)));
}
} // namespace

cT_KyotenDbAcs::~cT_KyotenDbAcs()
{
    m_list.clear();
    m_ado = nullptr;
}

qint16 cT_KyotenDbAcs::iInit(cT_ADODB* cADO)
{
    m_ado = cADO;
    m_list.clear();
    return 0;
}

qint16 cT_KyotenDbAcs::iDataRead(cT_ADODB* cADO)
{
    if (!cADO) {
        sErrMsg = u"Kyotenが無効です。"_s;
        return -1;
    }
    const QString sql = u" SELECT "_s + u" KYOTEN.iKyotenCd,"_s + u" KYOTEN.iKyotenEb,"_s +
                        u" KYOTEN.cAreaName,"_s + u" KYOTEN.cKyotenName"_s + u" FROM KYOTEN"_s +
                        u" WHERE KYOTEN.iKyotenEb<>0"_s + u" ORDER BY KYOTEN.iKyotenCd,KYOTEN.iKyotenEb"_s;
    RecordSet rs;
    if (cADO->iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        sErrMsg = cADO->sErrMsg;
        return -1;
    }
    m_list.clear();
    while (!rs.isEOF()) {
        cD_Kyoten k;
        k.setKyotenCd(numberOf(rs.field(u"iKyotenCd"_s)));
        k.setKyotenEd(numberOf(rs.field(u"iKyotenEb"_s)));
        k.setAreaName(csNullToStr(rs.field(u"cAreaName"_s)));
        k.setKyotenName(csNullToStr(rs.field(u"cKyotenName"_s)));
        m_list.append(k);
        rs.moveNext();
    }
    cADO->iCloseRecSet(rs);
    return 0;
}

qint16 cT_KyotenDbAcs::iDataLoadKyoten()
{
    return iDataRead(m_ado);
}

void cT_KyotenDbAcs::showError(const QString& text)
{
    m_ctx.interaction().messageBox(text, seikyuTitle(), MsgIcon::Critical);
}

bool cT_KyotenDbAcs::fillGrid(cT_ADODB& ado, const QString& sql, const QString& database,
                              QList<SiteRow>& grid)
{
    RecordSet rs;
    if (ado.iOpenRecSet(rs, sql, 1, 1, 0) != 0) {
        sErrMsg = ado.sErrMsg;
        return false;
    }
    while (!rs.isEOF()) {
        cD_Kyoten k;
        k.setKyotenCd(numberOf(rs.field(u"iKyotenCd"_s)));
        k.setKyotenEd(numberOf(rs.field(u"iKyotenEb"_s)));
        // The grid loaders keep the site name in AreaName.
        k.setAreaName(csNullToStr(rs.field(u"cKyotenName"_s)));
        grid.append({k.AreaName(), database, {qint16(k.KyotenCd()), qint16(k.KyotenEd())}});
        m_list.append(k);
        rs.moveNext();
    }
    ado.iCloseRecSet(rs);
    return true;
}

void cT_KyotenDbAcs::iLoadKyoten(QList<SiteRow>& grid, bool bAllFlg, qint16& result)
{
    result = -1;
    if (!m_ado) {
        sErrMsg = u"Kyotenが無効です。"_s;
        showError(sErrMsg);
        return;
    }
    m_list.clear();
    grid.clear();
    if (!fillGrid(*m_ado, kyotenGridSql(bAllFlg, m_startMode), QString(), grid)) {
        showError(sErrMsg);
        return;
    }
    result = 0;
}

qint16 cT_KyotenDbAcs::iDatabaseRead()
{
    return qelprn::iDatabaseRead(m_ctx, m_dbInfo);
}

void cT_KyotenDbAcs::iLoadKyoten_ALLDB(QList<SiteRow>& grid, bool bAllFlg, qint16& result)
{
    result = -1;
    const QString sql = kyotenGridSql(bAllFlg, m_startMode);
    if (iDatabaseRead() < 1) {
        showError(u"DBの読み込みに失敗しました"_s);
        return;
    }
    // The base database must be reachable before the others are tried, as at start-up.
    {
        QString readError;
        const QString baseCs = readAdodbConnectionString(m_ctx, &readError);
        if (!readError.isEmpty()) {
            showError(kAllDbHeader + readError);
            return;
        }
        if (baseCs.isEmpty()) {
            showError(kAllDbHeader + u"接続文字列取得できません。"_s);
            return;
        }
        cT_ADODB base;
        if (base.iInit(baseCs) != 0 || base.iConnect() != 0) {
            sErrMsg = base.sErrMsg;
            showError(kAllDbHeader + sErrMsg);
            return;
        }
        base.iDisConnect();
    }

    m_list.clear();
    grid.clear();
    for (const DbInfo& db : std::as_const(m_dbInfo)) {
        const QString cs = dbConnectionString(db);
        if (cs.isEmpty()) {
            showError(kAllDbHeader + u"接続文字列取得できません。"_s);
            return;
        }
        cT_ADODB ado;
        if (ado.iInit(cs) != 0 || ado.iConnect() != 0) {
            sErrMsg = ado.sErrMsg;
            showError(kAllDbHeader + db.cDbLabel + u"\r\n"_s + sErrMsg);
            return;
        }
        const bool ok = fillGrid(ado, sql, db.cDatabase, grid);
        ado.iDisConnect();
        if (!ok) {
            showError(kAllDbHeader + db.cDbLabel + u"\r\n"_s + sErrMsg);
            return;
        }
    }
    result = 0;
}

} // namespace qelprn
