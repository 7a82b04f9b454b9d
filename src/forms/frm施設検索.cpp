#include "forms/frm施設検索.h"

#include "app/NullValue.h"
#include "app/ProgramTitle.h"
#include "db/ScopedConnection.h"
#include "db/SqlText.h"
#include "forms/FormControls.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace qelprn {

frm施設検索::frm施設検索(const AppContext& ctx, QWidget* parent)
    : SearchDialogBase(ctx, u"施設検索"_s, u"施設を決定します"_s, parent)
{
    setObjectName(u"frm施設検索"_s);
    QWidget* frame = filterLayout()->parentWidget();
    in_SiboriID = makeCodeBox(frame, u"in_SiboriID"_s);
    txt_SiboriName = makeTextFilter(u"txt_SiboriName"_s);
    txt_SiboriKana = makeTextFilter(u"txt_SiboriKana"_s);
    setReadingFilter(txt_SiboriKana, 2);
    addFilter(0, 0, u"施設ID(&I)"_s, in_SiboriID);
    addFilter(1, 0, u"名称(&N)"_s, txt_SiboriName);
    addFilter(1, 1, u"かな(&K)"_s, txt_SiboriKana);
    setColumns({u"施設ID"_s, u"施設名"_s, u"フリガナ"_s, u"緯度"_s, u"経度"_s}, {6, 18, 18, 7, 7});
    resize(760, 520);
}

qint16 frm施設検索::iInit(qint32 code)
{
    setPreselection(code);
    return iDsp1ranSub();
}

void frm施設検索::vGetSeledInf(qint32& code, QString& name, double& lat, double& lon) const
{
    code = seledCode();
    name = seledName();
    lat = m_lat;
    lon = m_lon;
}

QString frm施設検索::listSql() const
{
    QString conditions;
    QString sql = u" select"_s + u"      *"_s + u" from"_s + u"      SISETSU"_s;
    if (!txt_SiboriName->text().isEmpty())
        sql += joiner(conditions) + u" cShamei1 LIKE '%"_s + sqlText(txt_SiboriName->text()) + u"%'"_s;
    // The reading filter is applied to the fetched rows (SearchDialogBase::setReadingFilter).
    if (in_SiboriID->value() > 0)
        sql += joiner(conditions) + u" nIDNo = "_s + QString::number(in_SiboriID->value());
    sql += joiner(conditions) + u" iKikanShubetsu = 1 "_s;
    return sql + u" order by"_s + u"     nIDNo"_s + u"    ,cShamei1 "_s;
}

QStringList frm施設検索::cellsOf(const RecordSet& rs) const
{
    return {QString::number(nNullToLng(rs.field(u"nIDNo"_s))), csNullToRTrim(rs.field(u"cShamei1"_s)),
            csNullToRTrim(rs.field(u"cShameiKana1"_s)), csNullToStr(rs.field(u"nLat"_s)),
            csNullToStr(rs.field(u"nLon"_s))};
}

QString frm施設検索::noRowsText() const
{
    return u"該当する施設データがありません。"_s;
}

QString frm施設検索::conditionSummary() const
{
    QString s;
    if (!txt_SiboriName->text().isEmpty())
        s += u" 名称（全文一致）="_s + txt_SiboriName->text();
    if (!txt_SiboriKana->text().isEmpty())
        s += u" かな（全文一致）="_s + txt_SiboriKana->text();
    if (in_SiboriID->value() > 0)
        s += u" 施設ID="_s + QString::number(in_SiboriID->value());
    return s;
}

void frm施設検索::takeChoice(const QStringList& cells)
{
    m_lat = cells.value(3).toDouble();
    m_lon = cells.value(4).toDouble();
}

qint16 frm施設検索::iMastDataLoad(QList<std::pair<qint32, QString>>& out)
{
    out.clear();
    const QString sql = u"SELECT nIDNo, cShamei1, cShameiKana1 "_s + u" FROM SISETSU "_s +
                        u" WHERE nIDNo >= 0 "_s + u" AND iKyotenCd = "_s +
                        QString::number(m_ctx.iBaseKyotenCd) + u" AND iKyotenEb = "_s +
                        QString::number(m_ctx.iBaseKyotenEb) + u" ORDER BY nIDNo "_s;
    ScopedConnection own;
    if (!openReported(own, sql, u"iMastDataLoad() でエラー\r\n"_s))
        return -1;
    for (RecordSet& rs = own.rs; !rs.isEOF(); rs.moveNext())
        out.append({nNullToLng(rs.field(u"nIDNo"_s)), csNullToRTrim(rs.field(u"cShamei1"_s))});
    if (out.isEmpty()) {
        m_ctx.interaction().messageBox(noRowsText(), seikyuTitle(), MsgIcon::Information);
        return 1;
    }
    return 0;
}

} // namespace qelprn
