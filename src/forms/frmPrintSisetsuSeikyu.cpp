#include "forms/frmPrintSisetsuSeikyu.h"

#include "app/ProgramTitle.h"
#include "app/SpaceTrim.h"
#include "db/AdodbIni.h"
#include "db/cT_KyotenDbAcs.h"
#include "forms/CodeNameLists.h"
#include "forms/ConnectionStatus.h"
#include "forms/FormControls.h"
#include "forms/MonthEndDialog.h"
#include "forms/RunOutcomeInteraction.h"
#include "forms/SiteGridWidget.h"
#include "forms/cls患者検索.h"
#include "forms/cls施術者検索.h"
#include "forms/cls施設検索.h"
#include "forms/frmVer.h"
#include "report/PrintKind.h"
#include "report/SavedPrintSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QStatusBar>
#include <QTime>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The title this form has always used for its load-time messages.
const QString kLoadTitle = u"往療費内訳書印刷"_s;

} // namespace

frmPrintSisetsuSeikyu::frmPrintSisetsuSeikyu(const AppContext& ctx, PrintAction print, QDate today,
                                             QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_print(std::move(print)), m_today(today)
{
    setObjectName(u"frmPrintSisetsuSeikyu"_s);
    setWindowTitle(seikyuTitle());
    setWindowFlag(Qt::WindowMinimizeButtonHint);
    setSizeGripEnabled(true);
    buildControls();
    connectControls();
    // A consistent state even when loading stops early.
    chooseKind(1);
}

void frmPrintSisetsuSeikyu::connectControls()
{
    connect(cbPreview, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::cbPreview_Click);
    connect(cbPrint, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::cbPrint_Click);
    connect(cbPdfFolder, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::cbPdfFolder_Click);
    connect(cbReturn, &QPushButton::clicked, this, [this] {
        bMenuReturn = false;
        reject();
    });
    connect(cmdMenu, &QPushButton::clicked, this, [this] {
        bMenuReturn = true;
        accept();
    });
    for (int i = 0; i < 2; ++i) {
        connect(btnSelShisetu[std::size_t(i)], &QPushButton::clicked, this,
                [this, i] { search(i == 0 ? Search::BillingFacility : Search::ServiceFacility); });
        connect(imNum_ShisetuCD[std::size_t(i)], &QSpinBox::valueChanged, this,
                [this, i] { lookUpFacility(i); });
    }
    connect(btn_KanjaSelect, &QPushButton::clicked, this, [this] { search(Search::Patient); });
    connect(btn_StaffSelect, &QPushButton::clicked, this, [this] { search(Search::Practitioner); });
    connect(imNum_CD, &QSpinBox::valueChanged, this, &frmPrintSisetsuSeikyu::lookUpPatient);
    connect(imNum_StaffNo, &QSpinBox::valueChanged, this, [this] { lookUpStaff(false); });
    connect(imNum_StaffNo, &QSpinBox::editingFinished, this, [this] { lookUpStaff(true); });
    connect(chkChushi, &QCheckBox::clicked, this, &frmPrintSisetsuSeikyu::chkChushi_Click);
    connect(sprKyoten, &SiteGridWidget::rowClicked, this, &frmPrintSisetsuSeikyu::sprKyoten_Click);
}

// ---- loading --------------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::showLoadMessage(const QString& text, MsgIcon icon) const
{
    m_ctx.interaction().messageBox(text, kLoadTitle, icon);
}

qint16 frmPrintSisetsuSeikyu::iGetComputerName()
{
    m_computerName = cT_ADODB::csGetComputerName();
    return m_computerName.isEmpty() ? qint16(-1) : qint16(0);
}

bool frmPrintSisetsuSeikyu::openConnection(const QString& header)
{
    QString iniError;
    const QString cs = readAdodbConnectionString(m_ctx, &iniError);
    if (cs.isEmpty()) {
        m_ctx.interaction().messageBox(header +
                                           (iniError.isEmpty() ? u"接続文字列取得できません。"_s : iniError),
                                       seikyuTitle(), MsgIcon::Critical);
        return false;
    }
    cADO.iDisConnect();
    if (cADO.iInit(cs) != 0 || cADO.iConnect() != 0) {
        m_ctx.interaction().messageBox(header + cADO.sErrMsg, seikyuTitle(), MsgIcon::Critical);
        return false;
    }
    return true;
}

bool frmPrintSisetsuSeikyu::Form_Load()
{
    BusyPointer busy(m_ctx.interaction());
    // 1. The computer's name stamps the suite's writes; without it nothing can go on.
    if (iGetComputerName() != 0) {
        showLoadMessage(u"コンピューター名の取得に失敗しました。"_s, MsgIcon::Exclamation);
        return true;
    }
    // 2. The connection of "adodb.ini".
    if (!openConnection(u"Form_Load() でエラー\r\n"_s))
        return true;
    updateStatus();
    // 3. Billing month: the first day of the previous month; issue date: today.
    imD_Out->setDate(QDate(m_today.year(), m_today.month(), 1).addMonths(-1));
    imD_Teis->setDate(m_today);
    // 4. Site list and the printed corporation and clinic lists.
    if (!loadCorpLists())
        showLoadMessage(u"本店/支店データの取得に失敗しました。"_s, MsgIcon::Exclamation);
    // 5. Last choices, then the practitioners.
    loadPrintSettings();
    if (!loadStaffList()) {
        if (sErrMsg.isEmpty())
            showLoadMessage(u"スタッフが存在しません。メイン画面に戻ります"_s, MsgIcon::Exclamation);
        else
            showLoadMessage(sErrMsg, MsgIcon::Critical);
        return false;
    }
    // 6. Facility kinds.
    if (!loadFacilityKinds())
        return true;
    // 7. Form kind 1, empty codes, the site grid.
    chooseKind(1);
    imNum_StaffNo->setValue(0);
    imNum_ShisetuCD[0]->setValue(0);
    imNum_ShisetuCD[1]->setValue(0);
    lookUpPatient();
    loadSiteGrid();
    optSelJob_Click(selectedJob());
    // The keyboard starts at the form kind, so arrow keys choose it.
    optPrint.value(1, optPrint.first())->setFocus();
    return true;
}

bool frmPrintSisetsuSeikyu::loadCorpLists()
{
    MainFormLists lists(m_ctx, cADO);
    const bool ok = lists.readCorps();
    m_siteName = lists.siteName();
    fillCodeCombo(*cbDairi, lists.corps());
    fillCodeCombo(*cbTiryoin, lists.clinics());
    updateStatus();
    return ok;
}

bool frmPrintSisetsuSeikyu::loadStaffList()
{
    MainFormLists lists(m_ctx, cADO);
    const bool read = lists.readStaff(chkChushi->isChecked());
    sErrMsg = lists.errorText();
    if (!read)
        return false;
    const qint32 kept = selectedItemData(*cbTantou);
    fillCodeCombo(*cbTantou, lists.staff());
    selectItemData(*cbTantou, kept);
    return !lists.staff().isEmpty();
}

bool frmPrintSisetsuSeikyu::loadFacilityKinds()
{
    MainFormLists lists(m_ctx, cADO);
    if (!lists.readFacilityKinds()) {
        showLoadMessage(lists.errorText(), MsgIcon::Exclamation);
        return false;
    }
    for (QComboBox* box : cmbKaishaKbn) {
        box->clear();
        box->addItems(lists.facilityKinds());
        box->setCurrentIndex(-1);
    }
    return true;
}

void frmPrintSisetsuSeikyu::loadSiteGrid()
{
    cT_KyotenDbAcs sites(m_ctx);
    // The site kind picks the used-flag condition: own sites, franchise sites or both.
    sites.setStartMode(qint16(qMax(0, checkedIndex(optSelCorp))));
    sites.iInit(&cADO);
    QList<SiteRow> rows;
    qint16 result = 0;
    sites.iLoadKyoten_ALLDB(rows, false, result);
    sprKyoten->setRows(rows);
}

// ---- settings -------------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::loadPrintSettings()
{
    const std::optional<SavedPrintChoices> saved = readSavedPrintChoices(m_ctx);
    if (!saved)
        return;
    optSort[std::size_t(saved->sortIndex)]->setChecked(true);
    selectItemData(*cbDairi, saved->corpCode);
    selectItemData(*cbTiryoin, saved->clinicCode);
    optSelSisetsuType[saved->addressFacility ? 1 : 0]->setChecked(true);
}

bool frmPrintSisetsuSeikyu::savePrintSettings()
{
    return writeSavedPrintChoices(m_ctx, {.sortIndex = qMax(0, checkedIndex(optSort)),
                                          .corpCode = selectedItemData(*cbDairi),
                                          .clinicCode = selectedItemData(*cbTiryoin),
                                          .addressFacility = optSelSisetsuType[1]->isChecked()});
}

// ---- control rules --------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::chooseKind(int index)
{
    if (index < 0 || index >= int(optPrint.size()))
        return;
    optPrint.at(index)->setChecked(true);
    optPrint_Click(index);
}

void frmPrintSisetsuSeikyu::optPrint_Click(int index)
{
    // A condition's controls are on only for the kinds whose query reads it.
    const PrintKind* kind = printKind(index + 1);
    if (!kind)
        return;
    const auto enable = [](std::initializer_list<QWidget*> widgets, bool on) {
        for (QWidget* w : widgets)
            w->setEnabled(on);
    };
    const bool serviceCode = kind->reads(Condition::ServiceFacility);
    const bool serviceKind = kind->reads(Condition::ServiceKind);
    const bool practitioner = kind->reads(Condition::Practitioner);
    const bool sort = kind->reads(Condition::Sort);
    const bool sites = kind->reads(Condition::Sites);
    enable({frmAbsRiyousha, laTitleShisetu[2], btn_KanjaSelect, imNum_CD, txtSelKanja},
           kind->reads(Condition::Patient));
    enable({frmAbsSejutsuSisetsu}, serviceCode || serviceKind || practitioner);
    enable({laTitleShisetu[1], btnSelShisetu[1], imNum_ShisetuCD[1], txtShisetu[1]}, serviceCode);
    enable({laTitleShisetu[4], cmbKaishaKbn[1]}, serviceKind);
    enable({laTitleShisetu[5], cbTantou}, practitioner);
    enable({frmAbsSeikyuSisetsu, laTitleShisetu[0], btnSelShisetu[0], imNum_ShisetuCD[0], txtShisetu[0],
            laTitleShisetu[3], cmbKaishaKbn[0]},
           kind->reads(Condition::BillingFacility));
    // The printed names stay on for every kind, as the suite's form has them.
    enable({frmPrintSisetsu, Label2[1], cbDairi, Label2[2], cbTiryoin}, true);
    enable({frmSort, optSort[0], optSort[1], optSort[2]}, sort);
    enable({FraCorpFc, FraKyoten, FrmSelKyoten, LblSetKyoten, sprKyoten, optSelCorp[0], optSelCorp[1],
            optSelCorp[2], optSelJob[0], optSelJob[1], optSelJob[2]},
           sites);
    const int job = sites ? 2 : 0;
    optSelJob[std::size_t(job)]->setChecked(true);
    optSelJob_Click(job);
}

int frmPrintSisetsuSeikyu::selectedJob() const
{
    return qMax(0, checkedIndex(optSelJob));
}

void frmPrintSisetsuSeikyu::optSelJob_Click(int index)
{
    switch (index) {
    case 0: {
        // One site at most: keep the first checked row.
        const int keep = sprKyoten->firstCheckedRow();
        sprKyoten->setAllChecked(false);
        if (keep >= 0)
            sprKyoten->setChecked(keep, true);
        LblSetKyoten->setText(keep >= 0 ? sprKyoten->siteName(keep) : QString());
        break;
    }
    case 1:
        sprKyoten->setAllChecked(false);
        LblSetKyoten->setText(u"【複数拠点選択中】"_s);
        break;
    case 2:
        sprKyoten->setAllChecked(true);
        LblSetKyoten->setText(u"【全拠点選択中】"_s);
        break;
    default:
        break;
    }
}

void frmPrintSisetsuSeikyu::sprKyoten_Click(int row)
{
    if (row < 0 || row >= sprKyoten->rowCount())
        return;
    switch (selectedJob()) {
    case 0:
        sprKyoten->setAllChecked(false);
        sprKyoten->setChecked(row, true);
        LblSetKyoten->setText(sprKyoten->siteName(row));
        break;
    case 1:
        sprKyoten->setChecked(row, !sprKyoten->isChecked(row));
        break;
    default:
        // Under "全事業所" every site stays selected.
        sprKyoten->setAllChecked(true);
        break;
    }
}

void frmPrintSisetsuSeikyu::optSelCorp_Click(int index)
{
    if (index < 0 || index > 2)
        return;
    BusyPointer busy(m_ctx.interaction());
    if (!openConnection(u"optSelCorp_Click() でエラー\r\n"_s))
        return;
    loadSiteGrid();
    optSelJob_Click(selectedJob());
}

void frmPrintSisetsuSeikyu::chkChushi_Click()
{
    if (!loadStaffList() && !sErrMsg.isEmpty())
        m_ctx.interaction().messageBox(sErrMsg, seikyuTitle(), MsgIcon::Critical);
}

// ---- print run ------------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::cbPreview_Click()
{
    runPrint(0);
}

void frmPrintSisetsuSeikyu::cbPrint_Click()
{
    runPrint(1);
}

void frmPrintSisetsuSeikyu::cbPdfFolder_Click()
{
    if (needsSites() && sprKyoten->firstCheckedRow() < 0) {
        m_ctx.interaction().messageBox(u"処理の対象となる事業所の選択を行ってください。"_s, u"選択エラー"_s,
                                       MsgIcon::Exclamation);
        return;
    }
    savePrintSettings();
    // The form's conditions carry its checked sites.
    MonthEndDialog dialog(m_ctx, imD_Out->date(), imD_Teis->date(), this, {}, this);
    dialog.exec();
}

void frmPrintSisetsuSeikyu::mnMonthEnd_Click()
{
    // The month end runs with the saved conditions: those of the form as it is now.
    savePrintSettings();
    MonthEndDialog dialog(
        m_ctx, imD_Out->date(), imD_Teis->date(), nullptr, [this] { return sprKyoten->checkedSites(); },
        this);
    dialog.exec();
}

bool frmPrintSisetsuSeikyu::needsSites() const
{
    const PrintKind* kind = printKind(checkedIndex(optPrint) + 1);
    return kind && kind->reads(Condition::Sites);
}

void frmPrintSisetsuSeikyu::runPrint(qint16 mode)
{
    if (needsSites() && sprKyoten->firstCheckedRow() < 0) {
        m_ctx.interaction().messageBox(u"処理の対象となる事業所の選択を行ってください。"_s, u"選択エラー"_s,
                                       MsgIcon::Exclamation);
        return;
    }
    if (mode == 1 &&
        m_ctx.interaction().messageBox(u"印刷処理を実行します。よろしいですか？"_s, u"印刷確認"_s,
                                       MsgIcon::Question, MsgButtons::YesNo) != MsgResult::Yes)
        return;
    // The run talks through a recorder, so its outcome can be shown afterwards.
    RunOutcomeInteraction recorder(m_ctx.interaction());
    AppContext runContext = m_ctx;
    runContext.ui = &recorder;
    if (m_print)
        m_print(runContext, mode, *this);
    const QString saved = savePrintSettings() ? QString() : u"（設定を保存できませんでした）"_s;
    // The engine runs on its own: a quiet run has only opened its window, and whether anything
    // was printed is decided in the engine's print dialog.
    const QString outcome = recorder.hasMessage() ? recorder.outcome()
                            : mode == 0           ? u"プレビューを開きました"_s
                                                  : u"印刷ダイアログを開きました"_s;
    m_statusRun->setText(u"前回の処理："_s + (mode == 0 ? u"プレビュー "_s : u"印刷 "_s) +
                         QTime::currentTime().toString(u"HH:mm"_s) + u" "_s + outcome + saved);
}

bool frmPrintSisetsuSeikyu::iGetPrintJouken(PrintJouken& j)
{
    const auto chosenItemData = [](const QComboBox* box) {
        return box->currentIndex() > 0 ? selectedItemData(*box) : 0;
    };
    const int kind = checkedIndex(optPrint);
    j.iPrintKind = qint16(kind < 0 ? 1 : kind + 1);
    j.setMonthAndIssue(imD_Out->date(), imD_Teis->date());
    j.nDairiCd = chosenItemData(cbDairi);
    j.nTiryoinCd = chosenItemData(cbTiryoin);
    j.nShisetuCdFrom = imNum_ShisetuCD[0]->value();
    j.nShisetuCdTo = imNum_ShisetuCD[1]->value();
    if (const int sort = checkedIndex(optSort); sort >= 0)
        j.iSort = qint16(sort + 1);
    j.nKanjaCd = imNum_CD->value();
    const auto facilityKind = [](const QComboBox* box) {
        return box->isEnabled() && box->currentIndex() > 0 ? trimRightSpaces(box->currentText()) : QString();
    };
    j.sSisetsuType1 = facilityKind(cmbKaishaKbn[0]);
    j.sSisetsuType2 = facilityKind(cmbKaishaKbn[1]);
    j.bSelSisetsuType = !optSelSisetsuType[0]->isChecked();
    j.iSortShisetsu = qint16(qMax(0, checkedIndex(optSortShisetsu)));
    j.nTantouCd = chosenItemData(cbTantou);
    j.selectedDatabases = sprKyoten->checkedSites();
    return true;
}

// ---- keyboard and screen ------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::keyPressEvent(QKeyEvent* event)
{
    // A stray Esc must not close the form and lose the entered conditions: F12 and 戻る do that.
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmPrintSisetsuSeikyu::fitInto(const QRect& available)
{
    // The scroll area would report a small size of its own; the form wants its whole body.
    const auto* body = findChild<QWidget*>(u"FormBody"_s);
    const int bars = layout()->menuBar()->sizeHint().height() + StatusBar1->sizeHint().height();
    fitWindowInto(*this, body->sizeHint() + QSize(0, bars), available);
}

// ---- searches and look-ups ------------------------------------------------------------------------

template <class Dialog>
void frmPrintSisetsuSeikyu::runSearch(Dialog& dialog, QPushButton& button, QSpinBox& code, QLineEdit& name,
                                      const QString& what)
{
    // A shortcut must not fill a box the form kind has switched off.
    if (!button.isEnabled())
        return;
    dialog.nSeledCD = code.value();
    const qint16 result = dialog.iDspStart(this);
    if (result < 0) {
        m_ctx.interaction().messageBox(what + u"の検索に失敗しました"_s, seikyuTitle(), MsgIcon::Exclamation);
        return;
    }
    if (result == 0) {
        // The chosen name is shown as it is; no look-up of the code follows.
        const QSignalBlocker block(&code);
        code.setValue(dialog.nSeledCD);
        name.setText(dialog.csSeledName);
    }
}

void frmPrintSisetsuSeikyu::search(Search what)
{
    switch (what) {
    case Search::BillingFacility:
    case Search::ServiceFacility: {
        const std::size_t i = what == Search::BillingFacility ? 0 : 1;
        cls施設検索 dialog(m_ctx);
        runSearch(dialog, *btnSelShisetu[i], *imNum_ShisetuCD[i], *txtShisetu[i], u"施設"_s);
        break;
    }
    case Search::Practitioner: {
        cls施術者検索 dialog(m_ctx);
        runSearch(dialog, *btn_StaffSelect, *imNum_StaffNo, *txtSelStaff, u"施術者"_s);
        break;
    }
    case Search::Patient: {
        cls患者検索 dialog(m_ctx);
        dialog.nTantouCD = imNum_StaffNo->value();
        runSearch(dialog, *btn_KanjaSelect, *imNum_CD, *txtSelKanja, u"患者"_s);
        break;
    }
    }
}

void frmPrintSisetsuSeikyu::lookUpFacility(int index)
{
    cls施設検索 search(m_ctx);
    search.iSetShisetuName(imNum_ShisetuCD[std::size_t(index)]->value(), *txtShisetu[std::size_t(index)]);
}

void frmPrintSisetsuSeikyu::lookUpPatient()
{
    cls患者検索 search(m_ctx);
    search.iSetRiyouName(imNum_CD->value(), *txtSelKanja);
}

void frmPrintSisetsuSeikyu::lookUpStaff(bool report)
{
    const qint32 code = imNum_StaffNo->value();
    // A code is reported once, not again each time the focus leaves an unchanged box.
    if (!report)
        m_staffReported = 0;
    if (code <= 0) {
        txtSelStaff->clear();
        return;
    }
    cls施術者検索 check(m_ctx);
    const qint16 status = check.iChkStaff(code);
    txtSelStaff->setText(check.csSeledName);
    if (status != 0 && report && code != m_staffReported) {
        m_staffReported = code;
        m_ctx.interaction().messageBox(check.CsErrStr, seikyuTitle(), MsgIcon::Exclamation);
    }
}

void frmPrintSisetsuSeikyu::showVersion()
{
    frmVer version(m_ctx, windowTitle(), 0, this);
    version.exec();
}

void frmPrintSisetsuSeikyu::updateStatus()
{
    m_statusDb->setText(databaseStatusText(cADO.connectionString()));
    m_statusSite->setText(siteStatusText(m_ctx.iBaseKyotenCd, m_ctx.iBaseKyotenEb, m_siteName));
}

} // namespace qelprn
