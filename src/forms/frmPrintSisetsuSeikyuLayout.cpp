// How the main form is built: its controls, named as the suite names them, their frames and the
// three columns they are laid out in, the keyboard order and the menu.
#include "forms/FormControls.h"
#include "forms/OnlineHelp.h"
#include "forms/SiteGridWidget.h"
#include "forms/frmPrintSisetsuSeikyu.h"
#include "report/PrintKind.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qelprn {

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
    cbPdfFolder = new QPushButton(u"F7 PDF(宛先別)"_s, this);
    cbPdfFolder->setObjectName(u"cbPdfFolder"_s);
    cbPdfFolder->setToolTip(u"宛先ごとに一つの PDF と送付一覧.csv をフォルダに書きます (F7)"_s);
    cbReturn = new QPushButton(u"F12 戻る"_s, this);
    cbReturn->setObjectName(u"cbReturn"_s);
    cbReturn->setToolTip(u"終了してメニューに戻ります (F12)"_s);
    cmdMenu = new QPushButton(u"メインメニュー"_s, this);
    cmdMenu->setObjectName(u"cmdMenu"_s);
    for (QPushButton* b : {cbPreview, cbPrint, cbPdfFolder, cbReturn, cmdMenu}) {
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
    buttons->addWidget(cbPdfFolder);
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
          << sprKyoten << cbPreview << cbPrint << cbPdfFolder << cbReturn << cmdMenu;
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

QWidget* frmPrintSisetsuSeikyu::buildKindGroup()
{
    auto* group = new QGroupBox(u"帳票の種類"_s, this);
    group->setObjectName(u"FramePrint"_s);
    QButtonGroup* buttons = nullptr;
    QStringList captions;
    for (const PrintKind& kind : printKinds())
        captions.append(kind.label);
    optPrint = makeOptions(group, u"optPrint"_s, captions, buttons);
    connect(buttons, &QButtonGroup::idClicked, this, &frmPrintSisetsuSeikyu::optPrint_Click);
    auto* grid = new QGridLayout(group);
    for (int i = 0; i < optPrint.size(); ++i)
        grid->addWidget(optPrint.at(i), i % 3, i / 3);
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
    add(mnMenu, u"mnF03"_s, u"施術者検索"_s, QKeySequence(Qt::Key_F3),
        [this] { search(Search::Practitioner); });
    add(mnMenu, u"mnSerch"_s, u"患者検索"_s, QKeySequence(Qt::Key_F4), [this] { search(Search::Patient); });
    QAction* print =
        add(mnMenu, u"mnPrint"_s, u"印刷"_s, QKeySequence(Qt::Key_F9), [this] { cbPrint_Click(); });
    print->setShortcuts({QKeySequence(Qt::Key_F9), QKeySequence(Qt::CTRL | Qt::Key_P)});
    add(mnMenu, u"mnPreview"_s, u"プレビュー"_s, QKeySequence(Qt::Key_F5), [this] { cbPreview_Click(); });
    add(mnMenu, u"mnPdfFolder"_s, u"PDF(宛先別)..."_s, QKeySequence(Qt::Key_F7),
        [this] { cbPdfFolder_Click(); });
    add(mnMenu, u"mnMonthEnd"_s, u"月末一括出力..."_s, QKeySequence(Qt::Key_F8),
        [this] { mnMonthEnd_Click(); });
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
        [this] { showOnlineHelp(m_ctx, 1); });
}

} // namespace qelprn
