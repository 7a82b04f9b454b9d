#include "suite/cls往療費.h"

#include "app/NullValue.h"
#include "app/ProgramTitle.h"
#include "app/RunTimeError.h"
#include "db/ScopedConnection.h"
#include "master/MonthPeriod.h"

#include <exception>
#include <limits>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {} // namespace

cls往療費::cls往療費(const AppContext& ctx) : m_ctx(ctx) {}

QString cls往療費::selectStatement(const QString& yearMonth)
{
    return monthPeriodSelect(u"往療費区分"_s, yearMonth, u" ORDER BY nMaxLen"_s);
}

void cls往療費::showError(const QString& reason, const QString& procedure) const
{
    m_ctx.interaction().messageBox(reason + u"\r\n"_s + procedure + u"() でエラー"_s, seikyuTitle(),
                                   MsgIcon::Critical);
}

qint16 cls往療費::iGetOuryohi(qint32& distance, qint16 mode)
{
    if (distance == 0 || m_count == 0)
        return 0;
    const int last = m_count - 1;
    if (distance > m_nMaxLen.at(last))
        distance = m_nMaxLen.at(last); // the caller sees the capped distance
    int band = 0;
    while (band < last && m_nMaxLen.at(band) < distance)
        ++band;
    if (band == last && mode == 1 && band > 0)
        --band;
    const qint32 fee = m_nKingakuOuryou.at(band);
    if (fee > std::numeric_limits<qint16>::max() || fee < std::numeric_limits<qint16>::min()) {
        showError(u"オーバーフローしました。"_s, u"iGetOuryohi"_s);
        return 0;
    }
    return static_cast<qint16>(fee);
}

qint16 cls往療費::iGetOuryohiAll(const QString& yearMonth)
{
    try {
        return load(yearMonth);
    } catch (const RunTimeError& e) {
        showError(runTimeErrorText(e), u"iGetOuryohiAll"_s);
    } catch (const std::exception& e) {
        showError(QString::fromUtf8(e.what()), u"iGetOuryohiAll"_s);
    } catch (...) {
        showError(u"予期しないエラーが発生しました。"_s, u"iGetOuryohiAll"_s);
    }
    return -1;
}

qint16 cls往療費::load(const QString& yearMonth)
{
    m_nMaxLen.clear();
    m_nKingakuOuryou.clear();
    m_count = 0;

    ScopedConnection con;
    if (!con.openAdodbQuery(m_ctx, selectStatement(yearMonth))) {
        showError(con.errorText(), u"iGetOuryohiAll"_s);
        return -1;
    }
    RecordSet& rs = con.rs;
    while (!rs.isEOF()) {
        m_nKingakuOuryou.append(nNullToLng(rs.field(u"nKingakuOuryou"_s)));
        m_nMaxLen.append(nNullToLng(rs.field(u"nMaxLen"_s)));
        rs.moveNext();
    }
    m_count = static_cast<qint16>(m_nMaxLen.size());
    if (rs.hasError()) {
        showError(rs.errorText(), u"iGetOuryohiAll"_s);
        return -1;
    }
    return 0;
}

} // namespace qelprn
