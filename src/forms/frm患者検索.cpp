#include "forms/frm患者検索.h"

#include "app/NullValue.h"
#include "app/ProgramTitle.h"
#include "app/SysIni.h"
#include "db/ScopedConnection.h"
#include "db/SqlText.h"
#include "forms/CodeNameLists.h"
#include "forms/FormControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString boundMonthOf(const AppContext& ctx, QDate today)
{
    bool ok = false;
    const int months = vGetSysIniValue(ctx, u"終了患者施術期間"_s, false).trimmed().toInt(&ok);
    if (!ok)
        return u"9999/12"_s;
    return today.addMonths(-months).toString(u"yyyy/MM"_s);
}

} // namespace

frm患者検索::frm患者検索(const AppContext& ctx, QDate today, QWidget* parent)
    : SearchDialogBase(ctx, u"患者検索"_s, u"利用者を決定します"_s, parent), m_bound(boundMonthOf(ctx, today))
{
    setObjectName(u"frm患者検索"_s);
    QWidget* frame = filterLayout()->parentWidget();
    in_SiboriID = makeCodeBox(frame, u"in_SiboriID"_s);
    txt_SiboriName = makeTextFilter(u"txt_SiboriName"_s);
    txt_SiboriKana = makeTextFilter(u"txt_SiboriKana"_s);
    setReadingFilter(txt_SiboriKana, 2);
    txt_SiboriTel = makeTextFilter(u"txt_SiboriTel"_s);
    cmb_Tantou = new QComboBox(frame);
    cmb_Tantou->setObjectName(u"cmb_Tantou"_s);
    cmb_Sejutsu = new QComboBox(frame);
    cmb_Sejutsu->setObjectName(u"cmb_Sejutsu"_s);
    cmb_Sejutsu->addItem(u"（指定なし）"_s, 0);
    cmb_Sejutsu->addItem(u"マッサージ"_s, 1);
    cmb_Sejutsu->addItem(u"鍼灸"_s, 2);
    chkEndKanja = new QCheckBox(m_bound + u"以前に、施術の終了した利用者も表示する。"_s, frame);
    chkEndKanja->setObjectName(u"chkEndKanja"_s);
    addFilter(0, 0, u"利用者ID(&I)"_s, in_SiboriID);
    addFilter(0, 1, u"TEL(&T)"_s, txt_SiboriTel);
    addFilter(1, 0, u"名称(&N)"_s, txt_SiboriName);
    addFilter(1, 1, u"かな(&K)"_s, txt_SiboriKana);
    addFilter(2, 0, u"担当施術者(&A)"_s, cmb_Tantou);
    addFilter(2, 1, u"施術区分(&B)"_s, cmb_Sejutsu);
    filterLayout()->addWidget(chkEndKanja, 3, 0, 1, 4);
    setColumns(
        {u"利用者ID"_s, u"氏名"_s, u"フリガナ"_s, u"TEL"_s, u"住所1"_s, u"住所2"_s, u"略称"_s, u"拠点"_s},
        {7, 10, 12, 9, 16, 10, 6, 5});
    resize(900, 560);
}

qint16 frm患者検索::iInit(qint32 code, qint32 tantou)
{
    iMastDataLoad();
    if (tantou > 0)
        selectItemData(*cmb_Tantou, tantou);
    setPreselection(code);
    return iDsp1ranSub();
}

void frm患者検索::vGetSeledInf(qint32& code, QString& name) const
{
    code = seledCode();
    name = seledName();
}

void frm患者検索::iMastDataLoad()
{
    fillCodeCombo(*cmb_Tantou, {});
    const QString sql = u"SELECT nIDNo, cName, cNameRyaku "_s + u" FROM STAFF "_s + u" WHERE nIDNo >= 0 "_s +
                        u" AND iKyotenCd = "_s + QString::number(m_ctx.iBaseKyotenCd) +
                        u" AND iKyotenEb = "_s + QString::number(m_ctx.iBaseKyotenEb) + u" ORDER BY nIDNo "_s;
    ScopedConnection own;
    if (!openReported(own, sql, u"iMastDataLoad() でエラー\r\n"_s))
        return;
    QList<CodeName> staff;
    for (RecordSet& rs = own.rs; !rs.isEOF(); rs.moveNext())
        staff.append({nNullToLng(rs.field(u"nIDNo"_s)), csNullToRTrim(rs.field(u"cName"_s))});
    fillCodeCombo(*cmb_Tantou, staff);
    if (staff.isEmpty())
        m_ctx.interaction().messageBox(u"該当する利用者データがありません。"_s, seikyuTitle(),
                                       MsgIcon::Information);
}

QString frm患者検索::listSql() const
{
    QString sql = u"SELECT   iKyotenCd, iKyotenEb, "_s + u" nIDNo, cName, cNameKana, cNameRyaku, "_s +
                  u" cTelNo, cAdress1, cAdress2 "_s + u" FROM RIYOUSHA "_s + u" WHERE nIDNo >= 0 "_s +
                  u" AND iKyotenCd = "_s + QString::number(m_ctx.iBaseKyotenCd) + u" AND iKyotenEb = "_s +
                  QString::number(m_ctx.iBaseKyotenEb);
    if (!txt_SiboriName->text().isEmpty())
        sql += u" AND cName LIKE '%"_s + sqlText(txt_SiboriName->text()) + u"%'"_s;
    // The reading filter is applied to the fetched rows (SearchDialogBase::setReadingFilter).
    if (!txt_SiboriTel->text().isEmpty())
        sql += u" AND cTelNo LIKE '%"_s + sqlText(txt_SiboriTel->text()) + u"%'"_s;
    // Unless asked for, patients whose treatment ended before the bound month stay hidden.
    if (!chkEndKanja->isChecked())
        sql += u" AND (tExpireDay IS NULL  OR tExpireDay >= '"_s + m_bound + u"/01'"_s + u" OR ('"_s +
               m_bound + u"' <= SUBSTRING(CONVERT(VARCHAR, tExpireDay, 111),1,7)))"_s;
    const qint32 tantou = selectedItemData(*cmb_Tantou);
    if (tantou > 0) {
        const QString t = QString::number(tantou);
        sql += u" AND (nTantou="_s + t + u" OR nTantou2="_s + t + u" OR nTantou3="_s + t +
               u" OR nTantou4="_s + t + u" OR nTantou5="_s + t + u") "_s;
    }
    const qint32 kubun = selectedItemData(*cmb_Sejutsu);
    if (kubun > 0)
        sql += u" AND iSejutsuKubun="_s + QString::number(kubun);
    if (in_SiboriID->value() > 0)
        sql += u" AND nIDNo="_s + QString::number(in_SiboriID->value());
    return sql + u" ORDER BY nIDNo "_s;
}

QStringList frm患者検索::cellsOf(const RecordSet& rs) const
{
    const QString site =
        QString::number(nNullToLng(rs.field(u"iKyotenCd"_s))) + u'-' +
        QStringLiteral("%1").arg(nNullToLng(rs.field(u"iKyotenEb"_s)), 2, 10, QLatin1Char('0'));
    return {QString::number(nNullToLng(rs.field(u"nIDNo"_s))),
            csNullToRTrim(rs.field(u"cName"_s)),
            csNullToRTrim(rs.field(u"cNameKana"_s)),
            csNullToRTrim(rs.field(u"cTelNo"_s)),
            csNullToRTrim(rs.field(u"cAdress1"_s)),
            csNullToRTrim(rs.field(u"cAdress2"_s)),
            csNullToRTrim(rs.field(u"cNameRyaku"_s)),
            site};
}

QString frm患者検索::noRowsText() const
{
    return u"該当する利用者データがありません。"_s;
}

QString frm患者検索::conditionSummary() const
{
    QString s;
    if (!txt_SiboriName->text().isEmpty())
        s += u" 名称（全文一致）="_s + txt_SiboriName->text();
    if (!txt_SiboriKana->text().isEmpty())
        s += u" かな（全文一致）="_s + txt_SiboriKana->text();
    if (!txt_SiboriTel->text().isEmpty())
        s += u" TEL（全文一致）="_s + txt_SiboriTel->text();
    if (chkEndKanja->isChecked())
        s += u" 施術終了患者表示 "_s;
    if (selectedItemData(*cmb_Tantou) > 0)
        s += u" 担当施術者="_s + cmb_Tantou->currentText();
    if (selectedItemData(*cmb_Sejutsu) > 0)
        s += u" 施術区分="_s + cmb_Sejutsu->currentText();
    if (in_SiboriID->value() > 0)
        s += u" 利用者ID="_s + QString::number(in_SiboriID->value());
    return s;
}

} // namespace qelprn
