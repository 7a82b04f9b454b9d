#pragma once

#include "app/AppContext.h"
#include "db/cT_ADODB.h"
#include "report/PrintConditionSource.h"

#include <QDate>
#include <QDialog>
#include <array>
#include <functional>

class QAction;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QStatusBar;

namespace qelprn {

class SiteGridWidget;

// The program's working window. It collects the print conditions (form kind, billing month, issue
// date, facility, patient and practitioner filters, printed names, sort order and, for the
// multi-site invoice, the sites), applies the control-state rules of each form kind, starts the
// print run in preview or print mode and keeps the last choices in "印刷設定.ini". Controls carry
// the suite's names as object names; arrays are "name_index" (optPrint_0, optPrint_1, ...).
class frmPrintSisetsuSeikyu : public QDialog, public PrintConditionSource
{
    Q_OBJECT

public:
    // The print run: mode 0 preview, 1 print; the form is the run's source of conditions.
    using PrintAction = std::function<void(const AppContext&, qint16 mode, PrintConditionSource&)>;

    // today: the day the billing month and issue date defaults are taken from.
    frmPrintSisetsuSeikyu(const AppContext& ctx, PrintAction print, QDate today = QDate::currentDate(),
                          QWidget* parent = nullptr);

    // The loading steps. False when the form must unload at once (no practitioners, a failed list).
    bool Form_Load();

    // The conditions the controls show, with the suite form's rules: the first checked option of
    // a group, a list's item data only past its "no choice" entry 0, a facility-kind list only
    // while it is on; the checked sites of the grid.
    bool iGetPrintJouken(PrintJouken& jouken) override;

    // Selects form kind index (0-based) and applies its control states.
    void chooseKind(int index);
    void optPrint_Click(int index);
    void optSelJob_Click(int index);
    void optSelCorp_Click(int index);
    void sprKyoten_Click(int row); // 0-based grid row
    void chkChushi_Click();
    void cbPreview_Click();
    void cbPrint_Click();
    // One PDF per addressee of the form's kind and conditions into a folder (F7), or the month end
    // of several kinds with the saved conditions (F8); both in MonthEndDialog.
    void cbPdfFolder_Click();
    void mnMonthEnd_Click();
    // The saved choices: sort order, printed names and the facility grouping; false when the file
    // could not be written.
    bool savePrintSettings();
    void loadPrintSettings();

    // Sizes the window to its contents, at most the free area of a screen, and centres it there.
    void fitInto(const QRect& available);

    // Set by メインメニュー (true) and 戻る (false); the program starts the menu accordingly.
    bool bMenuReturn = false;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // 0 when the computer's name is known (it stamps the suite's writes), -1 otherwise.
    qint16 iGetComputerName();

    // The form's connection, opened at loading and again when the site kind changes, and the
    // last error text of its lists.
    cT_ADODB cADO;
    QString sErrMsg;

    void buildControls();
    QWidget* buildKindGroup();
    QWidget* buildDateGroup();
    void buildConditionFrames();
    void buildSiteFrames();
    void buildMenu(QWidget* menuHost);
    void connectControls();

    bool openConnection(const QString& header);
    bool loadCorpLists();
    bool loadStaffList();
    bool loadFacilityKinds();
    void loadSiteGrid();
    void runPrint(qint16 mode);
    // True when the chosen kind prints for the sites checked in the grid.
    bool needsSites() const;
    int selectedJob() const;
    void showLoadMessage(const QString& text, MsgIcon icon) const;
    void updateStatus();

    // The three searches share one handler: open the dialog on the code box's value, and a choice
    // fills the code and name boxes.
    enum class Search { BillingFacility, ServiceFacility, Practitioner, Patient };
    void search(Search what);
    template <class Dialog>
    void runSearch(Dialog& dialog, QPushButton& button, QSpinBox& code, QLineEdit& name, const QString& what);
    void lookUpFacility(int index);
    void lookUpPatient();
    void lookUpStaff(bool report);
    void showVersion();

    // The controls, by the suite's names; built in frmPrintSisetsuSeikyuLayout.cpp.
    QList<QRadioButton*> optPrint; // one per row of the kind table
    QDateEdit* imD_Out = nullptr;
    QDateEdit* imD_Teis = nullptr;
    QGroupBox* Frame5 = nullptr;
    std::array<QRadioButton*, 2> optSelSisetsuType{};
    QGroupBox* frmAbsSeikyuSisetsu = nullptr;
    QGroupBox* frmAbsSejutsuSisetsu = nullptr;
    QGroupBox* frmAbsRiyousha = nullptr;
    QGroupBox* frmPrintSisetsu = nullptr;
    std::array<QLabel*, 6> laTitleShisetu{};
    std::array<QSpinBox*, 2> imNum_ShisetuCD{};
    std::array<QLineEdit*, 2> txtShisetu{};
    std::array<QPushButton*, 2> btnSelShisetu{};
    std::array<QComboBox*, 2> cmbKaishaKbn{};
    QComboBox* cbTantou = nullptr;
    QSpinBox* imNum_CD = nullptr; // imNum_CD(0)
    QLineEdit* txtSelKanja = nullptr;
    QPushButton* btn_KanjaSelect = nullptr;
    std::array<QLabel*, 3> Label2{};
    QSpinBox* imNum_StaffNo = nullptr;
    QLineEdit* txtSelStaff = nullptr; // the practitioner's name beside imNum_StaffNo
    QPushButton* btn_StaffSelect = nullptr;
    QCheckBox* chkChushi = nullptr;
    QComboBox* cbDairi = nullptr;
    QComboBox* cbTiryoin = nullptr;
    QGroupBox* frmSort = nullptr;
    std::array<QRadioButton*, 3> optSort{};
    QGroupBox* frmSelectSisetsu = nullptr;
    std::array<QRadioButton*, 4> optSortShisetsu{};
    QGroupBox* FraCorpFc = nullptr;
    std::array<QRadioButton*, 3> optSelCorp{};
    QGroupBox* FraKyoten = nullptr;
    std::array<QRadioButton*, 3> optSelJob{};
    QGroupBox* FrmSelKyoten = nullptr;
    QLabel* LblSetKyoten = nullptr;
    SiteGridWidget* sprKyoten = nullptr;
    QPushButton* cbPreview = nullptr;
    QPushButton* cbPrint = nullptr;
    QPushButton* cbPdfFolder = nullptr;
    QPushButton* cbReturn = nullptr;
    QPushButton* cmdMenu = nullptr;
    QStatusBar* StatusBar1 = nullptr;

    const AppContext& m_ctx;
    PrintAction m_print;
    QDate m_today;
    QLabel* m_statusDb = nullptr;
    QLabel* m_statusSite = nullptr;
    QLabel* m_statusRun = nullptr;
    QString m_siteName;
    qint32 m_staffReported = 0;
    QString m_computerName;
};

} // namespace qelprn
