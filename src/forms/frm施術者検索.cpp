#include "forms/frm施術者検索.h"

#include "app/NullValue.h"
#include "db/ScopedConnection.h"
#include "db/SqlText.h"
#include "forms/FormControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace qelprn {

frm施術者検索::frm施術者検索(const AppContext& ctx, QWidget* parent)
    : SearchDialogBase(ctx, u"施術者検索"_s, u"施術者を決定します"_s, parent)
{
    setObjectName(u"frm施術者検索"_s);
    QWidget* frame = filterLayout()->parentWidget();
    in_SiboriID = makeCodeBox(frame, u"in_SiboriID"_s);
    txt_SiboriName = makeTextFilter(u"txt_SiboriName"_s);
    txt_SiboriKana = makeTextFilter(u"txt_SiboriKana"_s);
    setReadingFilter(txt_SiboriKana, 2);
    cmb_Kyoten = new QComboBox(frame);
    cmb_Kyoten->setObjectName(u"cmb_Kyoten"_s);
    in_SoudanID = makeCodeBox(frame, u"in_SoudanID"_s);
    chk_Chusi = new QCheckBox(u"管理終了の施術者も表示する"_s, frame);
    chk_Chusi->setObjectName(u"chk_Chusi"_s);
    addFilter(0, 0, u"施術者ID(&I)"_s, in_SiboriID);
    addFilter(0, 1, u"事業所(&J)"_s, cmb_Kyoten);
    addFilter(1, 0, u"名称(&N)"_s, txt_SiboriName);
    addFilter(1, 1, u"かな(&K)"_s, txt_SiboriKana);
    addFilter(2, 0, u"相談員ID(&D)"_s, in_SoudanID);
    filterLayout()->addWidget(chk_Chusi, 2, 2, 1, 2);
    setColumns({u"施術者ID"_s, u"氏名"_s, u"フリガナ"_s}, {8, 16, 16});
    resize(620, 520);
}

qint16 frm施術者検索::iInit(qint32 code)
{
    loadKyotenList();
    setPreselection(code);
    return iDsp1ranSub();
}

void frm施術者検索::vGetSeledInf(qint32& code, QString& name) const
{
    code = seledCode();
    name = seledName();
}

qint16 frm施術者検索::loadKyotenList()
{
    const QString used = m_ctx.iStartMode == 0 || m_ctx.iStartMode == 1
                             ? u" KYOTEN.iUsedFlg = "_s + QString::number(m_ctx.iStartMode + 1)
                             : u" ( KYOTEN.iUsedFlg = 1 or KYOTEN.iUsedFlg = 2 ) "_s;
    const QString sql = u"SELECT "_s + u"KYOTEN.iKyotenCd,"_s + u"KYOTEN.iKyotenEb,"_s +
                        u"KYOTEN.cKyotenName"_s + u" FROM KYOTEN "_s + u" WHERE "_s + used +
                        u" AND KYOTEN.iKyotenEb<>0"_s + u" ORDER BY KYOTEN.iKyotenCd,KYOTEN.iKyotenEb"_s;
    cmb_Kyoten->clear();
    ScopedConnection own;
    const bool ok = openReported(own, sql, u"loadKyotenList() でエラー\r\n"_s);
    for (RecordSet* rs = ok ? &own.rs : nullptr; rs && !rs->isEOF(); rs->moveNext()) {
        const int cd = nNullToLng(rs->field(u"iKyotenCd"_s));
        const int eb = nNullToLng(rs->field(u"iKyotenEb"_s));
        cmb_Kyoten->addItem(csNullToRTrim(rs->field(u"cKyotenName"_s)), QVariantList{cd, eb});
    }
    // The own site is always offered, even when the site table does not list it.
    const QVariantList ownSite{int(m_ctx.iBaseKyotenCd), int(m_ctx.iBaseKyotenEb)};
    int index = cmb_Kyoten->findData(ownSite);
    if (index < 0) {
        cmb_Kyoten->insertItem(0, u"自拠点"_s, ownSite);
        index = 0;
    }
    cmb_Kyoten->setCurrentIndex(index);
    return ok ? qint16(0) : qint16(-1);
}

std::pair<int, int> frm施術者検索::selectedSite() const
{
    const QVariantList site = cmb_Kyoten->currentData().toList();
    if (site.size() != 2)
        return {m_ctx.iBaseKyotenCd, m_ctx.iBaseKyotenEb};
    return {site.at(0).toInt(), site.at(1).toInt()};
}

QString frm施術者検索::listSql() const
{
    const auto [cd, eb] = selectedSite();
    QString sql = u" select"_s + u"      *"_s + u" from"_s + u"      ("_s + u"         select"_s +
                  u"         distinct"_s + u"              nIDNo"_s + u"             ,iKyotenCd"_s +
                  u"             ,iKyotenEb"_s + u"             ,cName"_s + u"             ,cNameRyaku "_s +
                  u"             ,cNameKana "_s + u"         from"_s + u"              STAFF"_s;
    QString conditions;
    if (!txt_SiboriName->text().isEmpty())
        sql += joiner(conditions) + u" cName LIKE '%"_s + sqlText(txt_SiboriName->text()) + u"%'"_s;
    // The reading filter is applied to the fetched rows (SearchDialogBase::setReadingFilter).
    if (!chk_Chusi->isChecked())
        sql += joiner(conditions) + u" (iChusiFlg = 0 OR iChusiFlg IS NULL)"_s;
    if (in_SiboriID->value() > 0)
        sql += joiner(conditions) + u" nIDNo = "_s + QString::number(in_SiboriID->value());
    sql += joiner(conditions) + u" iKyotenCd = "_s + QString::number(cd) + u" and iKyotenEb = "_s +
           QString::number(eb);
    sql += u"      )staff"_s + u"      left join"_s + u"      ("_s + u"         select"_s +
           u"              nIDNo as SoudanID"_s + u"             ,iStaffKyotenCd"_s +
           u"             ,iStaffKyotenEb "_s + u"             ,nStaffIDNo "_s + u"         from"_s +
           u"              SOUDAN_TANTOU"_s + u"         where"_s + u"              iStaffKyotenCd = "_s +
           QString::number(cd) + u"         and  iStaffKyotenEb = "_s + QString::number(eb) +
           u"      )soudan"_s + u"      on"_s + u"          staff.nIDNo = soudan.nStaffIDNo"_s +
           u"      and staff.iKyotenCd = soudan.iStaffKyotenCd"_s +
           u"      and staff.iKyotenEb = soudan.iStaffKyotenEb"_s;
    if (in_SoudanID->value() > 0)
        sql += u" where"_s + u"      soudan.SoudanID = "_s + QString::number(in_SoudanID->value());
    return sql + u" order by"_s + u"     nIDNo"_s + u"    ,cName "_s;
}

QStringList frm施術者検索::cellsOf(const RecordSet& rs) const
{
    return {QString::number(nNullToLng(rs.field(u"nIDNo"_s))), csNullToRTrim(rs.field(u"cName"_s)),
            csNullToRTrim(rs.field(u"cNameKana"_s))};
}

bool frm施術者検索::acceptsRow(const QStringList& cells, const QStringList& previous) const
{
    // A practitioner with several consultants comes once per consultant; list each once.
    return previous.isEmpty() || previous.first() != cells.first();
}

QString frm施術者検索::noRowsText() const
{
    return u"該当する施術者データがありません。"_s;
}

QString frm施術者検索::conditionSummary() const
{
    QString s;
    if (!txt_SiboriName->text().isEmpty())
        s += u" 名称（全文一致）="_s + txt_SiboriName->text();
    if (!txt_SiboriKana->text().isEmpty())
        s += u" かな（全文一致）="_s + txt_SiboriKana->text();
    if (chk_Chusi->isChecked())
        s += u" 管理終了者表示 "_s;
    if (in_SiboriID->value() > 0)
        s += u" 施術者ID="_s + QString::number(in_SiboriID->value());
    return s;
}

} // namespace qelprn
