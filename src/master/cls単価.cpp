#include "master/cls単価.h"

#include "app/NullValue.h"
#include "app/ProgramTitle.h"
#include "app/RunTimeError.h"
#include "db/ScopedConnection.h"
#include "master/MonthPeriod.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {
const QString kProc = u"iGetTanka() でエラー"_s;
} // namespace

cls単価::cls単価(const AppContext& ctx) : m_ctx(ctx) {}

QString cls単価::selectStatement(const QString& yearMonth)
{
    return monthPeriodSelect(u"療養費単価"_s, yearMonth, u" ORDER BY cStartDate, iTankaKbn, nTankaCode"_s);
}

qint32* cls単価::slot(qint16 kind, qint32 code)
{
    if (kind == 1) {
        switch (code) {
        case 1:
            return &m_nマッサージ;
        case 2:
            return &m_n変形徒手;
        case 3:
            return &m_n温按法;
        case 4:
            return &m_n電気光線;
        case 11:
            return &m_n鍼灸1術;
        case 12:
            return &m_n鍼灸2術;
        case 13:
            return &m_n鍼灸1術初回;
        case 14:
            return &m_n鍼灸2術初回;
        case 15:
            return &m_n電気鍼温灸器;
        case 16:
            return &m_n鍼灸1術初検料;
        case 17:
            return &m_n鍼灸2術初検料;
        case 18:
            return &m_n施術報告書交付料;
        default:
            return nullptr;
        }
    }
    if (kind == 2) {
        switch (code) {
        case 1:
            return &m_n基本往療費;
        case 2:
            return &m_n加算往療費;
        default:
            return nullptr;
        }
    }
    if (kind == 9) {
        switch (code) {
        case 1:
            return &m_n定額料金1割;
        case 2:
            return &m_n定額料金2割;
        case 3:
            return &m_n定額料金3割;
        case 11:
            return &m_n実費施術費;
        case 12:
            return &m_n実費交通費;
        default:
            return nullptr;
        }
    }
    return nullptr;
}

void cls単価::showError(const QString& reason) const
{
    m_ctx.interaction().messageBox(reason + u"\r\n"_s + kProc, seikyuTitle(), MsgIcon::Critical);
}

qint16 cls単価::iGetTanka(const QString& yearMonth)
{
    try {
        return load(yearMonth);
    } catch (const RunTimeError& e) {
        showError(runTimeErrorText(e));
    } catch (const std::exception& e) {
        showError(QString::fromUtf8(e.what()));
    } catch (...) {
        showError(u"予期しないエラーが発生しました。"_s);
    }
    return -1;
}

qint16 cls単価::load(const QString& yearMonth)
{
    ScopedConnection con;
    if (!con.openAdodbQuery(m_ctx, selectStatement(yearMonth))) {
        showError(con.errorText());
        return -1;
    }

    RecordSet& rs = con.rs;
    qint16 kind = 0;
    qint32 code = 0;
    int rows = 0;
    while (!rs.isEOF()) {
        kind = static_cast<qint16>(nNullToLng(rs.field(u"iTankaKbn"_s)));
        code = nNullToLng(rs.field(u"nTankaCode"_s));
        // Rows come by start date, so a later period valid in the same month overwrites.
        if (qint32* price = slot(kind, code))
            *price = nNullToLng(rs.field(u"nTanka"_s));
        ++rows;
        rs.moveNext();
    }
    if (rs.hasError()) {
        showError(rs.errorText());
        return -1;
    }
    if (rows == 0) {
        m_ctx.interaction().messageBox(u"単価データがありません。"_s, seikyuTitle(), MsgIcon::Information);
        m_ctx.interaction().messageBox(u"単価の取得に失敗しました。\r区分:"_s + QString::number(kind) +
                                           u"  コード："_s + QString::number(code),
                                       u"DB Read Error!!"_s, MsgIcon::Critical);
        return -1;
    }
    return 0;
}

} // namespace qelprn
