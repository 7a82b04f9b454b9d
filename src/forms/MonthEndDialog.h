#pragma once

#include "app/AppContext.h"
#include "report/PrintConditionSource.h"

#include <QDialog>
#include <QList>
#include <functional>

class QCheckBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace qelprn {

// One PDF per addressee into a folder, with progress and a cancel button that stops between
// addressees (the files finished stay, whole, and the list names exactly them).
//
// Month end (no form given): the chosen kinds one after the other for the month, with the
// conditions the main form keeps in "印刷設定.ini", one folder per kind under the chosen folder.
// From the print step (a form given): the form's kind with the form's own conditions, into the
// chosen folder. A folder that holds an earlier run's output is replaced only after asking.
class MonthEndDialog : public QDialog
{
    Q_OBJECT

public:
    // form: the main form's conditions for a per-addressee run of its kind; nullptr for month end.
    // databases: the sites a month end prints kind 6 for (the form's conditions carry their own).
    MonthEndDialog(const AppContext& ctx, QDate month, QDate issue, PrintConditionSource* form,
                   std::function<QList<SelectedDatabase>()> databases, QWidget* parent = nullptr);

    // Starts the run (the 開始 button); returns when it ended.
    void start();
    // Asks the run to stop after the file being written (the 中止 button).
    void cancel();

    QDateEdit* imMonth = nullptr;
    QDateEdit* imIssue = nullptr;
    QList<QCheckBox*> chkKinds; // one per print kind
    QLineEdit* txtFolder = nullptr;
    QPushButton* cbBrowse = nullptr;
    QPushButton* cbStart = nullptr;
    QPushButton* cbCancel = nullptr;
    QPushButton* cbOpen = nullptr;
    QPushButton* cbClose = nullptr;
    QLabel* laProgress = nullptr;
    QProgressBar* progress = nullptr;
    QPlainTextEdit* txtSummary = nullptr;

protected:
    // While a run goes on, closing the window asks it to stop instead.
    void reject() override;

private:
    bool runKind(int number, const QString& folder, bool replace);
    void setRunning(bool running);

    const AppContext& m_ctx;
    PrintConditionSource* m_form;
    std::function<QList<SelectedDatabase>()> m_databases;
    bool m_running = false;
    bool m_cancel = false;
};

} // namespace qelprn
