#include "forms/frmPrintSisetsuSeikyu.h"

#include "app/Cp932.h"
#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "app/SysIni.h"
#include "app/clsOplIniFile.h"
#include "db/AdodbIni.h"
#include "db/cT_KyotenDbAcs.h"
#include "forms/CodeNameLists.h"
#include "forms/FormControls.h"
#include "forms/OnlineHelp.h"
#include "forms/RunOutcomeInteraction.h"
#include "forms/SiteGridWidget.h"
#include "forms/cls患者検索.h"
#include "forms/cls施術者検索.h"
#include "forms/cls施設検索.h"
#include "forms/frmVer.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QTime>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The title this form has always used for its load-time messages.
const QString kLoadTitle = u"往療費内訳書印刷"_s;
const QString kSettingsSection = u"施設請求書"_s;

} // namespace

frmPrintSisetsuSeikyu::frmPrintSisetsuSeikyu(AppContext& ctx, PrintAction print, QDate today, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_print(std::move(print)), m_today(today)
{
    setObjectName(u"frmPrintSisetsuSeikyu"_s);
    setWindowTitle(csSeikyuTitle());
    setWindowFlag(Qt::WindowMinimizeButtonHint);
    setSizeGripEnabled(true);
    buildControls();
    connectControls();
    // A consistent state even when loading stops early.
    optPrint[1]->setChecked(true);
    optPrint_Click(1);
}

// ---- building -------------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::buildControls()
{
    auto* menuBar = new QMenuBar(this);
    buildMenu(menuBar);

    QWidget* kinds = buildKindGroup();
    QWidget* dates = buildDateGroup();
    buildConditionFrames();
    buildSiteFrames();

    // The captions carry the function keys that press them (the menu holds the shortcuts).
    cbPreview = new QPushButton(u"F5 ﾌﾟﾚﾋﾞｭｰ"_s, this);
    cbPreview->setObjectName(u"cbPreview"_s);
    cbPreview->setToolTip(u"画面に表示します (F5)"_s);
    cbPrint = new QPushButton(u"F9 印刷"_s, this);
    cbPrint->setObjectName(u"cbPrint"_s);
    cbPrint->setToolTip(u"プリンターに出力します (F9 / Ctrl+P)"_s);
    cbReturn = new QPushButton(u"F12 戻る"_s, this);
    cbReturn->setObjectName(u"cbReturn"_s);
    cbReturn->setToolTip(u"終了してメニューに戻ります (F12)"_s);
    cmdMenu = new QPushButton(u"メインメニュー"_s, this);
    cmdMenu->setObjectName(u"cmdMenu"_s);
    for (QPushButton* b : {cbPreview, cbPrint, cbReturn, cmdMenu}) {
        b->setAutoDefault(false);
        b->setMinimumWidth(b->fontMetrics().horizontalAdvance(u'あ') * 7);
    }

    StatusBar1 = new QStatusBar(this);
    StatusBar1->setObjectName(u"StatusBar1"_s);
    StatusBar1->setSizeGripEnabled(false);
    m_statusDb = new QLabel(this);
    m_statusDb->setObjectName(u"StatusDatabase"_s);
    m_statusSite = new QLabel(this);
    m_statusSite->setObjectName(u"StatusSite"_s);
    m_statusRun = new QLabel(u"前回の処理：なし"_s, this);
    m_statusRun->setObjectName(u"StatusRun"_s);
    StatusBar1->addWidget(m_statusDb);
    StatusBar1->addWidget(m_statusSite);
    StatusBar1->addWidget(m_statusRun, 1);

    // Three columns (conditions; sorting and printed names; sites) keep the form low enough for a
    // 1366×768 screen, or 1920×1080 at 150 %, with a task bar.
    auto* left = new QVBoxLayout;
    left->addWidget(frmAbsSeikyuSisetsu);
    left->addWidget(frmAbsSejutsuSisetsu);
    left->addWidget(frmAbsRiyousha);
    left->addStretch(1);

    auto* centre = new QVBoxLayout;
    centre->addWidget(frmSelectSisetsu);
    centre->addWidget(frmSort);
    centre->addWidget(frmPrintSisetsu);
    centre->addStretch(1);

    auto* right = new QVBoxLayout;
    right->addWidget(FraCorpFc);
    right->addWidget(FraKyoten);
    right->addWidget(FrmSelKyoten, 1);

    auto* top = new QHBoxLayout;
    top->addWidget(kinds, 3);
    auto* topRight = new QVBoxLayout;
    topRight->addWidget(dates);
    topRight->addWidget(Frame5);
    top->addLayout(topRight, 2);

    auto* middle = new QHBoxLayout;
    middle->addLayout(left, 3);
    middle->addLayout(centre, 2);
    middle->addLayout(right, 2);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cbPreview);
    buttons->addWidget(cbPrint);
    buttons->addSpacing(fontMetrics().horizontalAdvance(u'あ') * 2);
    buttons->addWidget(cbReturn);
    buttons->addWidget(cmdMenu);

    auto* body = new QVBoxLayout;
    body->addLayout(top);
    body->addLayout(middle, 1);
    body->addLayout(buttons);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setMenuBar(menuBar);
    auto* margins = new QWidget;
    margins->setObjectName(u"FormBody"_s);
    margins->setLayout(body);
    // On a screen smaller than the form the conditions scroll; menu and status bar stay in view.
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(u"FormScroll"_s);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(margins);
    layout->addWidget(scroll, 1);
    layout->addWidget(StatusBar1);

    // Keyboard order follows the form: kinds, dates, conditions, sorting, sites, buttons.
    QList<QWidget*> order;
    for (QRadioButton* r : optPrint)
        order.append(r);
    order << imD_Out << imD_Teis << optSelSisetsuType[0] << optSelSisetsuType[1] << imNum_ShisetuCD[0]
          << btnSelShisetu[0] << cmbKaishaKbn[0] << imNum_ShisetuCD[1] << btnSelShisetu[1] << cmbKaishaKbn[1]
          << cbTantou << imNum_CD << btn_KanjaSelect << imNum_StaffNo << btn_StaffSelect << chkChushi
          << cbDairi << cbTiryoin << optSortShisetsu[0] << optSort[0] << optSelCorp[0] << optSelJob[0]
          << sprKyoten << cbPreview << cbPrint << cbReturn << cmdMenu;
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

QWidget* frmPrintSisetsuSeikyu::buildKindGroup()
{
    auto* group = new QGroupBox(u"帳票の種類"_s, this);
    group->setObjectName(u"FramePrint"_s);
    QButtonGroup* buttons = nullptr;
    optPrint = makeOptions<6>(group, u"optPrint"_s,
                              {u"請求書(施設請求先別)"_s, u"一部負担金一覧表"_s,
                               u"一部負担金一覧表(回数区分あり)"_s, u"請求書兼領収書"_s,
                               u"請求書兼領収書(自費分)"_s, u"請求書(施設請求先別・拠点選択)"_s},
                              buttons);
    connect(buttons, &QButtonGroup::idClicked, this, &frmPrintSisetsuSeikyu::optPrint_Click);
    auto* grid = new QGridLayout(group);
    for (int i = 0; i < 6; ++i)
        grid->addWidget(optPrint[std::size_t(i)], i % 3, i / 3);
    return group;
}

QWidget* frmPrintSisetsuSeikyu::buildDateGroup()
{
    auto* group = new QGroupBox(u"日付"_s, this);
    group->setObjectName(u"FrameDate"_s);
    imD_Out = makeDateBox(group, u"imD_Out"_s);
    imD_Teis = makeDateBox(group, u"imD_Teis"_s);
    auto* grid = new QGridLayout(group);
    auto* outLabel = makeLabel(group, u"laOut"_s, u"出力月　　："_s);
    outLabel->setBuddy(imD_Out);
    auto* teisLabel = makeLabel(group, u"laTeis"_s, u"提出日　　："_s);
    teisLabel->setBuddy(imD_Teis);
    grid->addWidget(outLabel, 0, 0);
    grid->addWidget(imD_Out, 0, 1);
    grid->addWidget(teisLabel, 1, 0);
    grid->addWidget(imD_Teis, 1, 1);
    grid->setColumnStretch(2, 1);

    Frame5 = new QGroupBox(u"出力条件"_s, this);
    Frame5->setObjectName(u"Frame5"_s);
    QButtonGroup* types = nullptr;
    optSelSisetsuType =
        makeOptions<2>(Frame5, u"optSelSisetsuType"_s, {u"ケアマネ施設"_s, u"住所施設"_s}, types);
    optSelSisetsuType[0]->setChecked(true);
    auto* row = new QHBoxLayout(Frame5);
    row->addWidget(makeLabel(Frame5, u"laSelSisetsuType"_s, u"対象施設  ："_s));
    row->addWidget(optSelSisetsuType[0]);
    row->addWidget(optSelSisetsuType[1]);
    row->addStretch(1);
    return group;
}

void frmPrintSisetsuSeikyu::buildConditionFrames()
{
    const QStringList titles = {u"請求先施設選択："_s, u"施術施設選択　："_s, u"利用者選択　　："_s,
                                u"請求先施設区分："_s, u"施術施設区分　："_s, u"主担当施術者選択　："_s};
    // Billing and service facility frames share one shape: code, name, search; kind.
    const auto facilityFrame = [&](int i, const QString& name, const QString& caption) {
        auto* frame = new QGroupBox(caption, this);
        frame->setObjectName(name);
        laTitleShisetu[std::size_t(i)] = makeLabel(frame, indexed(u"laTitleShisetu"_s, i), titles.at(i));
        laTitleShisetu[std::size_t(i + 3)] =
            makeLabel(frame, indexed(u"laTitleShisetu"_s, i + 3), titles.at(i + 3));
        imNum_ShisetuCD[std::size_t(i)] = makeCodeBox(frame, indexed(u"imNum_ShisetuCD"_s, i));
        txtShisetu[std::size_t(i)] = makeNameBox(frame, indexed(u"txtShisetu"_s, i));
        btnSelShisetu[std::size_t(i)] =
            makeSearchButton(frame, indexed(u"btnSelShisetu"_s, i), u"施設を検索します"_s);
        cmbKaishaKbn[std::size_t(i)] = makeCombo(frame, indexed(u"cmbKaishaKbn"_s, i));
        laTitleShisetu[std::size_t(i)]->setBuddy(imNum_ShisetuCD[std::size_t(i)]);
        laTitleShisetu[std::size_t(i + 3)]->setBuddy(cmbKaishaKbn[std::size_t(i)]);
        auto* grid = new QGridLayout(frame);
        grid->addWidget(laTitleShisetu[std::size_t(i)], 0, 0);
        grid->addWidget(imNum_ShisetuCD[std::size_t(i)], 0, 1);
        grid->addWidget(txtShisetu[std::size_t(i)], 0, 2);
        grid->addWidget(btnSelShisetu[std::size_t(i)], 0, 3);
        grid->addWidget(laTitleShisetu[std::size_t(i + 3)], 1, 0);
        grid->addWidget(cmbKaishaKbn[std::size_t(i)], 1, 1, 1, 3);
        grid->setColumnStretch(2, 1);
        return std::pair{frame, grid};
    };
    frmAbsSeikyuSisetsu = facilityFrame(0, u"frmAbsSeikyuSisetsu"_s, u"抽出条件 (請求先施設)"_s).first;
    auto [service, serviceGrid] = facilityFrame(1, u"frmAbsSejutsuSisetsu"_s, u"抽出条件 (施術施設)"_s);
    frmAbsSejutsuSisetsu = service;
    laTitleShisetu[5] = makeLabel(service, u"laTitleShisetu_5"_s, titles.at(5));
    cbTantou = makeCombo(service, u"cbTantou"_s);
    laTitleShisetu[5]->setBuddy(cbTantou);
    serviceGrid->addWidget(laTitleShisetu[5], 2, 0);
    serviceGrid->addWidget(cbTantou, 2, 1, 1, 3);

    frmAbsRiyousha = new QGroupBox(u"抽出条件 (利用者)"_s, this);
    frmAbsRiyousha->setObjectName(u"frmAbsRiyousha"_s);
    laTitleShisetu[2] = makeLabel(frmAbsRiyousha, u"laTitleShisetu_2"_s, titles.at(2));
    imNum_CD = makeCodeBox(frmAbsRiyousha, u"imNum_CD_0"_s);
    txtSelKanja = makeNameBox(frmAbsRiyousha, u"txtSelKanja_0"_s);
    btn_KanjaSelect = makeSearchButton(frmAbsRiyousha, u"btn_KanjaSelect_0"_s, u"利用者を検索します (F4)"_s);
    Label2[0] = makeLabel(frmAbsRiyousha, u"Label2_0"_s, u"主担当選択　　："_s);
    imNum_StaffNo = makeCodeBox(frmAbsRiyousha, u"imNum_StaffNo"_s);
    txtSelStaff = makeNameBox(frmAbsRiyousha, u"txtSelStaff"_s);
    btn_StaffSelect = makeSearchButton(frmAbsRiyousha, u"btn_StaffSelect"_s, u"施術者を検索します (F3)"_s);
    chkChushi = new QCheckBox(u"管理終了の施術者も表示する"_s, frmAbsRiyousha);
    chkChushi->setObjectName(u"chkChushi"_s);
    laTitleShisetu[2]->setBuddy(imNum_CD);
    Label2[0]->setBuddy(imNum_StaffNo);
    auto* patientGrid = new QGridLayout(frmAbsRiyousha);
    patientGrid->addWidget(laTitleShisetu[2], 0, 0);
    patientGrid->addWidget(imNum_CD, 0, 1);
    patientGrid->addWidget(txtSelKanja, 0, 2);
    patientGrid->addWidget(btn_KanjaSelect, 0, 3);
    patientGrid->addWidget(Label2[0], 1, 0);
    patientGrid->addWidget(imNum_StaffNo, 1, 1);
    patientGrid->addWidget(txtSelStaff, 1, 2);
    patientGrid->addWidget(btn_StaffSelect, 1, 3);
    patientGrid->addWidget(chkChushi, 2, 1, 1, 3);
    patientGrid->setColumnStretch(2, 1);

    frmPrintSisetsu = new QGroupBox(u"抽出条件 (印字選択)"_s, this);
    frmPrintSisetsu->setObjectName(u"frmPrintSisetsu"_s);
    Label2[1] = makeLabel(frmPrintSisetsu, u"Label2_1"_s, u"印字社名　　　："_s);
    Label2[2] = makeLabel(frmPrintSisetsu, u"Label2_2"_s, u"印字治療院名　："_s);
    cbDairi = makeCombo(frmPrintSisetsu, u"cbDairi"_s);
    cbTiryoin = makeCombo(frmPrintSisetsu, u"cbTiryoin"_s);
    Label2[1]->setBuddy(cbDairi);
    Label2[2]->setBuddy(cbTiryoin);
    auto* printGrid = new QGridLayout(frmPrintSisetsu);
    printGrid->addWidget(Label2[1], 0, 0);
    printGrid->addWidget(cbDairi, 0, 1);
    printGrid->addWidget(Label2[2], 1, 0);
    printGrid->addWidget(cbTiryoin, 1, 1);
    printGrid->setColumnStretch(1, 1);

    // One caption width for every condition frame, so their inputs line up in one column.
    int captionWidth = 0;
    for (QLabel* l : laTitleShisetu)
        captionWidth = qMax(captionWidth, l->sizeHint().width());
    for (QLabel* l : Label2)
        captionWidth = qMax(captionWidth, l->sizeHint().width());
    for (QLabel* l : laTitleShisetu)
        l->setMinimumWidth(captionWidth);
    for (QLabel* l : Label2)
        l->setMinimumWidth(captionWidth);
}

void frmPrintSisetsuSeikyu::buildSiteFrames()
{
    frmSort = new QGroupBox(u"並び順"_s, this);
    frmSort->setObjectName(u"frmSort"_s);
    QButtonGroup* sorts = nullptr;
    optSort = makeOptions<3>(frmSort, u"optSort"_s, {u"ID番号"_s, u"フリガナ"_s, u"部屋番号"_s}, sorts);
    optSort[0]->setChecked(true);
    auto* sortBox = new QHBoxLayout(frmSort);
    for (QRadioButton* r : optSort)
        sortBox->addWidget(r);
    sortBox->addStretch(1);

    frmSelectSisetsu = new QGroupBox(u"出力時の並び順"_s, this);
    frmSelectSisetsu->setObjectName(u"frmSelectSisetsu"_s);
    QButtonGroup* sortSisetsu = nullptr;
    optSortShisetsu = makeOptions<4>(
        frmSelectSisetsu, u"optSortShisetsu"_s,
        {u"利用者カナ"_s, u"利用者ＩＤ"_s, u"部屋番号→利用者カナ"_s, u"部屋番号→利用者ＩＤ"_s}, sortSisetsu);
    optSortShisetsu[0]->setChecked(true);
    auto* sortSisetsuGrid = new QGridLayout(frmSelectSisetsu);
    for (int i = 0; i < 4; ++i)
        sortSisetsuGrid->addWidget(optSortShisetsu[std::size_t(i)], i % 2, i / 2);

    FraCorpFc = new QGroupBox(u"事業所区分"_s, this);
    FraCorpFc->setObjectName(u"FraCorpFc"_s);
    QButtonGroup* corps = nullptr;
    optSelCorp = makeOptions<3>(FraCorpFc, u"optSelCorp"_s, {u"事業所"_s, u"ＦＣ"_s, u"全て"_s}, corps);
    optSelCorp[0]->setChecked(true);
    connect(corps, &QButtonGroup::idClicked, this, &frmPrintSisetsuSeikyu::optSelCorp_Click);
    auto* corpBox = new QHBoxLayout(FraCorpFc);
    for (QRadioButton* r : optSelCorp)
        corpBox->addWidget(r);
    corpBox->addStretch(1);

    FraKyoten = new QGroupBox(u"印刷を行う事業所の選択"_s, this);
    FraKyoten->setObjectName(u"FraKyoten"_s);
    QButtonGroup* jobs = nullptr;
    optSelJob =
        makeOptions<3>(FraKyoten, u"optSelJob"_s, {u"単一選択"_s, u"複数選択"_s, u"全事業所"_s}, jobs);
    optSelJob[0]->setChecked(true);
    connect(jobs, &QButtonGroup::idClicked, this, &frmPrintSisetsuSeikyu::optSelJob_Click);
    auto* jobBox = new QHBoxLayout(FraKyoten);
    for (QRadioButton* r : optSelJob)
        jobBox->addWidget(r);
    jobBox->addStretch(1);

    FrmSelKyoten = new QGroupBox(u"処理対象となる事業所"_s, this);
    FrmSelKyoten->setObjectName(u"FrmSelKyoten"_s);
    LblSetKyoten = makeLabel(FrmSelKyoten, u"LblSetKyoten"_s, QString());
    QFont bold = LblSetKyoten->font();
    bold.setBold(true);
    LblSetKyoten->setFont(bold);
    sprKyoten = new SiteGridWidget(FrmSelKyoten);
    sprKyoten->setObjectName(u"sprKyoten"_s);
    sprKyoten->setMinimumHeight(sprKyoten->fontMetrics().height() * 6);
    auto* siteBox = new QVBoxLayout(FrmSelKyoten);
    siteBox->addWidget(LblSetKyoten);
    siteBox->addWidget(sprKyoten, 1);
}

void frmPrintSisetsuSeikyu::buildMenu(QWidget* menuHost)
{
    auto* menuBar = static_cast<QMenuBar*>(menuHost);
    QMenu* mnMenu = menuBar->addMenu(u"機能(&F)"_s);
    mnMenu->setObjectName(u"mnMenu"_s);
    const auto add = [this](QMenu* menu, const QString& name, const QString& caption, const QKeySequence& key,
                            auto slot) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        action->setShortcut(key);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    add(mnMenu, u"mnF03"_s, u"施術者検索"_s, QKeySequence(Qt::Key_F3), [this] { searchStaff(); });
    add(mnMenu, u"mnSerch"_s, u"患者検索"_s, QKeySequence(Qt::Key_F4), [this] { searchPatient(); });
    QAction* print =
        add(mnMenu, u"mnPrint"_s, u"印刷"_s, QKeySequence(Qt::Key_F9), [this] { cbPrint_Click(); });
    print->setShortcuts({QKeySequence(Qt::Key_F9), QKeySequence(Qt::CTRL | Qt::Key_P)});
    add(mnMenu, u"mnPreview"_s, u"プレビュー"_s, QKeySequence(Qt::Key_F5), [this] { cbPreview_Click(); });
    mnMenu->addSeparator()->setObjectName(u"mnKugiri1"_s);
    add(mnMenu, u"mnMenuReturn"_s, u"メインメニュー"_s, QKeySequence(), [this] {
        bMenuReturn = true;
        accept();
    });
    add(mnMenu, u"mnReturn"_s, u"戻る"_s, QKeySequence(Qt::Key_F12), [this] {
        bMenuReturn = false;
        reject();
    });
    QMenu* mnHelpMenu = menuBar->addMenu(u"ヘルプ(&H)"_s);
    mnHelpMenu->setObjectName(u"mnHelpMenu"_s);
    add(mnHelpMenu, u"mnVer"_s, u"ﾊﾞｰｼﾞｮﾝ情報"_s, QKeySequence(), [this] { showVersion(); });
    add(mnHelpMenu, u"mnDispHelp"_s, u"オンラインヘルプ(&M)"_s, QKeySequence(Qt::Key_F1),
        [this] { vDispOnlineHelp(m_ctx, 1); });
}

void frmPrintSisetsuSeikyu::connectControls()
{
    connect(cbPreview, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::cbPreview_Click);
    connect(cbPrint, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::cbPrint_Click);
    connect(cbReturn, &QPushButton::clicked, this, [this] {
        bMenuReturn = false;
        reject();
    });
    connect(cmdMenu, &QPushButton::clicked, this, [this] {
        bMenuReturn = true;
        accept();
    });
    for (int i = 0; i < 2; ++i) {
        connect(btnSelShisetu[std::size_t(i)], &QPushButton::clicked, this, [this, i] { searchFacility(i); });
        connect(imNum_ShisetuCD[std::size_t(i)], &QSpinBox::valueChanged, this,
                [this, i] { lookUpFacility(i); });
    }
    connect(btn_KanjaSelect, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::searchPatient);
    connect(btn_StaffSelect, &QPushButton::clicked, this, &frmPrintSisetsuSeikyu::searchStaff);
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
                                       csSeikyuTitle(), MsgIcon::Critical);
        return false;
    }
    cADO.iDisConnect();
    if (cADO.iInit(cs) != 0 || cADO.iConnect() != 0) {
        m_ctx.interaction().messageBox(header + cADO.sErrMsg, csSeikyuTitle(), MsgIcon::Critical);
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
    iLoadPrintSettings();
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
    optPrint[1]->setChecked(true);
    optPrint_Click(1);
    imNum_StaffNo->setValue(0);
    imNum_ShisetuCD[0]->setValue(0);
    imNum_ShisetuCD[1]->setValue(0);
    lookUpPatient();
    loadSiteGrid();
    optSelJob_Click(selectedJob());
    // The keyboard starts at the form kind, so arrow keys choose it.
    optPrint[1]->setFocus();
    return true;
}

bool frmPrintSisetsuSeikyu::loadCorpLists()
{
    cT_KyotenDbAcs sites(m_ctx);
    sites.iInit(&cADO);
    bool ok = sites.iDataRead(&cADO) == 0;
    for (int i = 0; ok && i < sites.nデータ数(); ++i) {
        const cD_Kyoten& k = sites.clsKyoten(i);
        if (k.KyotenCd() == m_ctx.iBaseKyotenCd && k.KyotenEd() == m_ctx.iBaseKyotenEb)
            m_siteName = k.KyotenName();
    }
    QList<CodeName> corps;
    QList<CodeName> clinics;
    ok = ok && iLoadCorpList(cADO, m_ctx, 0, corps, sErrMsg) == 0;
    ok = ok && iLoadCorpList(cADO, m_ctx, 1, clinics, sErrMsg) == 0;
    fillCodeCombo(*cbDairi, corps);
    fillCodeCombo(*cbTiryoin, clinics);
    updateStatus();
    return ok;
}

bool frmPrintSisetsuSeikyu::loadStaffList()
{
    sErrMsg.clear();
    QList<CodeName> staff;
    if (iLoadStaffList(cADO, m_ctx, chkChushi->isChecked(), staff, sErrMsg) != 0)
        return false;
    const qint32 kept = selectedItemData(*cbTantou);
    fillCodeCombo(*cbTantou, staff);
    selectItemData(*cbTantou, kept);
    return !staff.isEmpty();
}

bool frmPrintSisetsuSeikyu::loadFacilityKinds()
{
    const QString path = toLocalPath(csDataDir(m_ctx) + u"施設種類List.txt"_s);
    bool ok = false;
    const QStringList kinds = QFileInfo(path).isFile() ? readTextLines(path, &ok) : QStringList();
    if (!ok) {
        showLoadMessage(path + u"がありません。"_s, MsgIcon::Exclamation);
        return false;
    }
    for (QComboBox* box : cmbKaishaKbn) {
        box->clear();
        for (const QString& kind : kinds) {
            if (!kind.trimmed().isEmpty())
                box->addItem(kind.trimmed());
        }
        box->setCurrentIndex(-1);
    }
    return true;
}

void frmPrintSisetsuSeikyu::loadSiteGrid()
{
    // The site kind picks the used-flag condition: own sites, franchise sites or both.
    AppContext siteCtx = m_ctx;
    siteCtx.iStartMode = qint16(qMax(0, checkedIndex(optSelCorp)));
    cT_KyotenDbAcs sites(siteCtx);
    sites.iInit(&cADO);
    qint16 result = 0;
    sites.iLoadKyoten_ALLDB(*sprKyoten, false, result);
}

// ---- settings -------------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::iLoadPrintSettings()
{
    const QString path = csDataDir(m_ctx) + u"印刷設定.ini"_s;
    clsOplIniFile ini;
    if (ini.iInit(path) != 0)
        return;
    const int sort = ini.nGetProfileLong(kSettingsSection, u"並び順"_s);
    if (sort >= 0 && sort < 3)
        optSort[std::size_t(sort)]->setChecked(true);
    selectItemData(*cbDairi, ini.nGetProfileLong(kSettingsSection, u"印字社名"_s));
    selectItemData(*cbTiryoin, ini.nGetProfileLong(kSettingsSection, u"印字治療院名"_s));
    const bool address = ini.nGetProfileLong(kSettingsSection, u"対象施設"_s) != 0;
    optSelSisetsuType[address ? 1 : 0]->setChecked(true);
}

qint16 frmPrintSisetsuSeikyu::iSavePrintSettings()
{
    clsOplIniFile ini;
    // A missing file is written afresh; only the name is needed.
    ini.iInit(csDataDir(m_ctx) + u"印刷設定.ini"_s);
    const QList<std::pair<QString, QString>> values = {
        {u"並び順"_s, QString::number(qMax(0, checkedIndex(optSort)))},
        {u"印字社名"_s, QString::number(selectedItemData(*cbDairi))},
        {u"印字治療院名"_s, QString::number(selectedItemData(*cbTiryoin))},
        {u"対象施設"_s, QString::number(optSelSisetsuType[1]->isChecked() ? -1 : 0)}};
    for (const auto& [key, value] : values) {
        if (ini.iWriteProfileString(kSettingsSection, key, value) == 0)
            return -1;
    }
    return 0;
}

// ---- control rules --------------------------------------------------------------------------------

void frmPrintSisetsuSeikyu::optPrint_Click(int index)
{
    if (index < 0 || index > 5)
        return;
    const bool patient = index == 3 || index == 4;
    const bool service = index >= 1 && index <= 4;
    const bool billing = index == 0 || index == 5 || patient;
    const bool sites = index == 5;
    for (QWidget* w : std::initializer_list<QWidget*>{frmAbsRiyousha, laTitleShisetu[2], btn_KanjaSelect,
                                                      imNum_CD, txtSelKanja})
        w->setEnabled(patient);
    for (QWidget* w : std::initializer_list<QWidget*>{frmAbsSejutsuSisetsu, laTitleShisetu[1],
                                                      btnSelShisetu[1], imNum_ShisetuCD[1], txtShisetu[1],
                                                      laTitleShisetu[4], cmbKaishaKbn[1]})
        w->setEnabled(service);
    for (QWidget* w : std::initializer_list<QWidget*>{frmAbsSeikyuSisetsu, laTitleShisetu[0],
                                                      btnSelShisetu[0], imNum_ShisetuCD[0], txtShisetu[0],
                                                      laTitleShisetu[3], cmbKaishaKbn[0]})
        w->setEnabled(billing);
    for (QWidget* w :
         std::initializer_list<QWidget*>{frmPrintSisetsu, Label2[1], cbDairi, Label2[2], cbTiryoin})
        w->setEnabled(true);
    frmSort->setEnabled(patient);
    for (QRadioButton* r : optSort)
        r->setEnabled(patient);
    for (QWidget* w :
         std::initializer_list<QWidget*>{FraCorpFc, FraKyoten, FrmSelKyoten, LblSetKyoten, sprKyoten})
        w->setEnabled(sites);
    for (QRadioButton* r : optSelCorp)
        r->setEnabled(sites);
    for (QRadioButton* r : optSelJob)
        r->setEnabled(sites);
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
        m_ctx.interaction().messageBox(sErrMsg, csSeikyuTitle(), MsgIcon::Critical);
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

void frmPrintSisetsuSeikyu::runPrint(qint16 mode)
{
    if (optPrint[5]->isChecked() && sprKyoten->firstCheckedRow() < 0) {
        m_ctx.interaction().messageBox(u"処理の対象となる事業所の選択を行ってください。"_s, u"選択エラー"_s,
                                       MsgIcon::Exclamation);
        return;
    }
    if (mode == 1 &&
        m_ctx.interaction().messageBox(u"印刷処理を実行します。よろしいですか？"_s, u"印刷確認"_s,
                                       MsgIcon::Question, MsgButtons::YesNo) != MsgResult::Yes)
        return;
    // The run talks through a recorder, so its outcome can be shown afterwards.
    Interaction* const real = m_ctx.ui;
    RunOutcomeInteraction recorder(*real);
    m_ctx.ui = &recorder;
    struct Restore
    {
        AppContext& ctx;
        Interaction* ui;
        ~Restore() { ctx.ui = ui; }
    } restore{m_ctx, real};
    if (m_print)
        m_print(m_ctx, mode, *this);
    const QString saved = iSavePrintSettings() == 0 ? QString() : u"（設定を保存できませんでした）"_s;
    // The engine runs on its own: a quiet run has only opened its window, and whether anything
    // was printed is decided in the engine's print dialog.
    const QString outcome = recorder.hasMessage() ? recorder.outcome()
                            : mode == 0           ? u"プレビューを開きました"_s
                                                  : u"印刷ダイアログを開きました"_s;
    m_statusRun->setText(u"前回の処理："_s + (mode == 0 ? u"プレビュー "_s : u"印刷 "_s) +
                         QTime::currentTime().toString(u"HH:mm"_s) + u" "_s + outcome + saved);
}

bool frmPrintSisetsuSeikyu::readPrintFormValues(PrintFormValues& values)
{
    values.optPrint = checkedFlags(optPrint);
    values.imD_Out = imD_Out->date();
    values.imD_Teis = imD_Teis->date();
    values.cbDairiListIndex = cbDairi->currentIndex();
    values.cbDairiItemData = selectedItemData(*cbDairi);
    values.cbTiryoinListIndex = cbTiryoin->currentIndex();
    values.cbTiryoinItemData = selectedItemData(*cbTiryoin);
    values.imNum_ShisetuCD = {imNum_ShisetuCD[0]->value(), imNum_ShisetuCD[1]->value()};
    values.optSort = checkedFlags(optSort);
    values.imNum_CD = imNum_CD->value();
    for (std::size_t i = 0; i < 2; ++i) {
        values.cmbKaishaKbnEnabled[i] = cmbKaishaKbn[i]->isEnabled();
        values.cmbKaishaKbnListIndex[i] = cmbKaishaKbn[i]->currentIndex();
        values.cmbKaishaKbnText[i] = cmbKaishaKbn[i]->currentText();
    }
    values.optSelSisetsuType = checkedFlags(optSelSisetsuType);
    values.optSortShisetsu = checkedFlags(optSortShisetsu);
    values.cbTantouListIndex = cbTantou->currentIndex();
    values.cbTantouItemData = selectedItemData(*cbTantou);
    return true;
}

QList<SelectedDatabase> frmPrintSisetsuSeikyu::selectedDatabases()
{
    return sprKyoten->checkedSites();
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

void frmPrintSisetsuSeikyu::searchFacility(int index)
{
    cls施設検索 search(m_ctx);
    search.nSeledCD = imNum_ShisetuCD[std::size_t(index)]->value();
    const qint16 result = search.iDspStart(this);
    if (result < 0) {
        m_ctx.interaction().messageBox(u"施設の検索に失敗しました"_s, csSeikyuTitle(), MsgIcon::Exclamation);
        return;
    }
    if (result == 0) {
        imNum_ShisetuCD[std::size_t(index)]->setValue(search.nSeledCD);
        txtShisetu[std::size_t(index)]->setText(search.csSeledName);
    }
}

void frmPrintSisetsuSeikyu::searchStaff()
{
    // The shortcut must not fill a box the form kind has switched off.
    if (!btn_StaffSelect->isEnabled())
        return;
    cls施術者検索 search(m_ctx);
    search.nSeledCD = imNum_StaffNo->value();
    const qint16 result = search.iDspStart(this);
    if (result < 0) {
        m_ctx.interaction().messageBox(u"施術者の検索に失敗しました"_s, csSeikyuTitle(),
                                       MsgIcon::Exclamation);
        return;
    }
    if (result == 0) {
        const QSignalBlocker block(imNum_StaffNo);
        imNum_StaffNo->setValue(search.nSeledCD);
        txtSelStaff->setText(search.csSeledName);
    }
}

void frmPrintSisetsuSeikyu::searchPatient()
{
    if (!btn_KanjaSelect->isEnabled())
        return;
    cls患者検索 search(m_ctx);
    search.nSeledCD = imNum_CD->value();
    search.nTantouCD = imNum_StaffNo->value();
    const qint16 result = search.iDspStart(this);
    if (result < 0) {
        m_ctx.interaction().messageBox(u"患者の検索に失敗しました"_s, csSeikyuTitle(), MsgIcon::Exclamation);
        return;
    }
    if (result == 0) {
        const QSignalBlocker block(imNum_CD);
        imNum_CD->setValue(search.nSeledCD);
        txtSelKanja->setText(search.csSeledName);
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
        m_ctx.interaction().messageBox(check.CsErrStr, csSeikyuTitle(), MsgIcon::Exclamation);
    }
}

void frmPrintSisetsuSeikyu::showVersion()
{
    frmVer version(m_ctx, windowTitle(), 0, this);
    version.exec();
}

void frmPrintSisetsuSeikyu::updateStatus()
{
    static const QRegularExpression database(u"(?:^|;)\\s*Database\\s*=\\s*([^;]*)"_s,
                                             QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = database.match(cADO.connectionString());
    m_statusDb->setText(u"データベース："_s + (m.hasMatch() ? m.captured(1).trimmed() : u"－"_s));
    const QString site = QStringLiteral("%1-%2")
                             .arg(m_ctx.iBaseKyotenCd, 2, 10, QLatin1Char('0'))
                             .arg(m_ctx.iBaseKyotenEb, 2, 10, QLatin1Char('0'));
    m_statusSite->setText(u"拠点："_s + site + (m_siteName.isEmpty() ? QString() : u" "_s + m_siteName));
}

} // namespace qelprn
