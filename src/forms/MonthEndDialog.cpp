#include "forms/MonthEndDialog.h"

#include "app/AddresseeFileName.h"
#include "app/ProgramTitle.h"
#include "report/AddresseeFolder.h"
#include "report/PrintKind.h"
#include "report/PrintRun.h"
#include "report/SavedPrintSettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString kindFolderName(const PrintKind& kind)
{
    return QString::number(kind.number) + u'_' + fileNamePart(kind.label);
}

} // namespace

MonthEndDialog::MonthEndDialog(const AppContext& ctx, QDate month, QDate issue, PrintConditionSource* form,
                               std::function<QList<SelectedDatabase>()> databases, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_form(form), m_databases(std::move(databases))
{
    setObjectName(u"MonthEndDialog"_s);
    setWindowTitle(form ? u"宛先ごとの PDF 出力"_s : u"月末一括出力"_s);

    imMonth = new QDateEdit(month, this);
    imMonth->setObjectName(u"imMonth"_s);
    imMonth->setDisplayFormat(u"yyyy/MM"_s);
    imIssue = new QDateEdit(issue, this);
    imIssue->setObjectName(u"imIssue"_s);
    imIssue->setDisplayFormat(u"yyyy/MM/dd"_s);
    imIssue->setCalendarPopup(true);

    auto* kinds = new QGroupBox(u"帳票"_s, this);
    auto* kindGrid = new QGridLayout(kinds);
    PrintJouken current;
    if (form)
        form->iGetPrintJouken(current);
    for (const PrintKind& kind : printKinds()) {
        auto* box = new QCheckBox(QString::number(kind.number) + u' ' + kind.label, kinds);
        box->setObjectName(u"chkKind_%1"_s.arg(kind.number));
        const bool chosen =
            form ? current.iPrintKind == kind.number : QList<int>{1, 2, 4, 5}.contains(kind.number);
        box->setChecked(chosen);
        box->setEnabled(!form);
        kindGrid->addWidget(box, (kind.number - 1) % 3, (kind.number - 1) / 3);
        chkKinds.append(box);
    }
    if (form) {
        imMonth->setEnabled(false);
        imIssue->setEnabled(false);
        imMonth->setDate(month);
        imIssue->setDate(issue);
    }

    txtFolder = new QLineEdit(this);
    txtFolder->setObjectName(u"txtFolder"_s);
    txtFolder->setMinimumWidth(fontMetrics().horizontalAdvance(u'あ') * 28);
    cbBrowse = new QPushButton(u"参照..."_s, this);
    cbBrowse->setObjectName(u"cbBrowse"_s);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(txtFolder, 1);
    folderRow->addWidget(cbBrowse);

    auto* fields = new QFormLayout;
    fields->addRow(u"請求月"_s, imMonth);
    fields->addRow(u"発行日"_s, imIssue);
    fields->addRow(u"出力先フォルダ"_s, folderRow);

    auto* note =
        new QLabel(form ? u"画面の条件で、宛先（請求先施設・施設・利用者）ごとに一つの PDF と送付一覧.csv を"
                          u"フォルダに書きます。"_s
                        : u"選んだ帳票を保存された条件（並び順・印字社名・印字治療院名・対象施設）で順に"
                          u"出力します。帳票ごとのフォルダに、宛先ごとの PDF と送付一覧.csv を書きます。"_s,
                   this);
    note->setWordWrap(true);

    laProgress = new QLabel(u" "_s, this);
    laProgress->setObjectName(u"laProgress"_s);
    progress = new QProgressBar(this);
    progress->setObjectName(u"progress"_s);
    progress->setRange(0, 1);
    progress->setValue(0);
    txtSummary = new QPlainTextEdit(this);
    txtSummary->setObjectName(u"txtSummary"_s);
    txtSummary->setReadOnly(true);
    txtSummary->setMinimumHeight(fontMetrics().height() * 6);

    cbStart = new QPushButton(u"開始"_s, this);
    cbStart->setObjectName(u"cbStart"_s);
    cbStart->setDefault(true);
    cbCancel = new QPushButton(u"中止"_s, this);
    cbCancel->setObjectName(u"cbCancel"_s);
    cbCancel->setEnabled(false);
    cbOpen = new QPushButton(u"フォルダを開く"_s, this);
    cbOpen->setObjectName(u"cbOpen"_s);
    cbOpen->setEnabled(false);
    cbClose = new QPushButton(u"閉じる"_s, this);
    cbClose->setObjectName(u"cbClose"_s);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cbOpen);
    buttons->addStretch(1);
    buttons->addWidget(cbStart);
    buttons->addWidget(cbCancel);
    buttons->addWidget(cbClose);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(note);
    layout->addLayout(fields);
    layout->addWidget(kinds);
    layout->addWidget(laProgress);
    layout->addWidget(progress);
    layout->addWidget(txtSummary, 1);
    layout->addLayout(buttons);

    // Until a folder is chosen, the documents folder's 施設請求書/<month> (and the kind's folder for
    // one kind), following the month.
    const auto defaultFolder = [this, form] {
        QString folder = QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                             .filePath(u"施設請求書/"_s + imMonth->date().toString(u"yyyy-MM"_s));
        for (qsizetype i = 0; form && i < chkKinds.size(); ++i) {
            if (chkKinds[i]->isChecked())
                folder = QDir(folder).filePath(kindFolderName(*printKind(int(i) + 1)));
        }
        return QDir::toNativeSeparators(folder);
    };
    txtFolder->setText(defaultFolder());
    connect(imMonth, &QDateEdit::dateChanged, this, [this, defaultFolder] {
        if (!txtFolder->isModified())
            txtFolder->setText(defaultFolder());
    });
    connect(cbBrowse, &QPushButton::clicked, this, [this] {
        const QString chosen =
            QFileDialog::getExistingDirectory(this, u"出力先フォルダ"_s, txtFolder->text());
        if (!chosen.isEmpty()) {
            txtFolder->setText(QDir::toNativeSeparators(chosen));
            txtFolder->setModified(true);
        }
    });
    connect(cbStart, &QPushButton::clicked, this, &MonthEndDialog::start);
    connect(cbCancel, &QPushButton::clicked, this, &MonthEndDialog::cancel);
    connect(cbClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(cbOpen, &QPushButton::clicked, this, [this] {
        QDesktopServices::openUrl(QUrl::fromLocalFile(QDir::fromNativeSeparators(txtFolder->text())));
    });
}

void MonthEndDialog::setRunning(bool running)
{
    m_running = running;
    for (QWidget* w : std::initializer_list<QWidget*>{cbStart, cbClose, cbBrowse, txtFolder})
        w->setEnabled(!running);
    // The form's own run keeps its kind and dates fixed; the month end's are locked while it runs.
    for (QWidget* w : std::initializer_list<QWidget*>{imMonth, imIssue})
        w->setEnabled(!running && !m_form);
    for (QCheckBox* box : std::as_const(chkKinds))
        box->setEnabled(!running && !m_form);
    cbCancel->setEnabled(running);
    cbOpen->setEnabled(!running && QDir(QDir::fromNativeSeparators(txtFolder->text())).exists());
}

void MonthEndDialog::reject()
{
    if (m_running)
        cancel();
    else
        QDialog::reject();
}

void MonthEndDialog::cancel()
{
    if (!m_running)
        return;
    m_cancel = true;
    cbCancel->setEnabled(false);
    laProgress->setText(u"中止します（書いている PDF を書き終えたところで止まります）..."_s);
}

void MonthEndDialog::start()
{
    if (m_running)
        return;
    const QString folder = QDir::fromNativeSeparators(txtFolder->text().trimmed());
    Interaction& ui = m_ctx.interaction();
    if (folder.isEmpty()) {
        ui.messageBox(u"出力先フォルダを指定してください。"_s, windowTitle(), MsgIcon::Exclamation);
        return;
    }
    QList<int> numbers;
    for (qsizetype i = 0; i < chkKinds.size(); ++i) {
        if (chkKinds[i]->isChecked())
            numbers.append(int(i) + 1);
    }
    if (numbers.isEmpty()) {
        ui.messageBox(u"帳票を選んでください。"_s, windowTitle(), MsgIcon::Exclamation);
        return;
    }
    // Folders holding an earlier run's output are replaced only when the person says so.
    QStringList used;
    for (int number : numbers) {
        const QString target = m_form ? folder : QDir(folder).filePath(kindFolderName(*printKind(number)));
        if (folderHasOutput(target))
            used << QDir::toNativeSeparators(target);
    }
    if (!used.isEmpty() &&
        ui.messageBox(u"前回の出力があります：\r"_s + used.join(u"\r"_s) +
                          u"\r\r送付一覧.csv とそれが挙げる PDF を置き換えますか？"_s,
                      windowTitle(), MsgIcon::Question, MsgButtons::YesNo) != MsgResult::Yes)
        return;

    m_cancel = false;
    txtSummary->clear();
    setRunning(true);
    for (int number : numbers) {
        const QString target = m_form ? folder : QDir(folder).filePath(kindFolderName(*printKind(number)));
        if (!runKind(number, target, !used.isEmpty()) || m_cancel)
            break;
    }
    setRunning(false);
    laProgress->setText(m_cancel ? u"中止しました。できた PDF は送付一覧.csv にあります。"_s
                                 : u"終わりました。"_s);
}

bool MonthEndDialog::runKind(int number, const QString& folder, bool replace)
{
    const PrintKind& kind = *printKind(number);
    PrintJouken jouken;
    if (m_form) {
        m_form->iGetPrintJouken(jouken);
    } else {
        jouken = monthEndJouken(m_ctx, number, imMonth->date(), imIssue->date());
        if (kind.reads(Condition::Sites) && m_databases)
            jouken.selectedDatabases = m_databases();
    }
    FolderOutput output;
    output.folder = folder;
    output.replace = replace;
    const QString head = QString::number(number) + u' ' + kind.label;
    laProgress->setText(head + u"：検索しています..."_s);
    progress->setRange(0, 0);
    QApplication::processEvents();
    output.progress = [&](const FolderProgress& done) {
        if (done.maximum() > 0) {
            progress->setRange(0, done.maximum());
            progress->setValue(done.value());
            if (!m_cancel)
                laProgress->setText(head + u"："_s + done.text());
        }
        QApplication::processEvents();
        return !m_cancel;
    };
    PrintRun run(m_ctx, PrintRun::Handoff::PdfFolder);
    run.setFolderOutput(&output);
    const PrintRun::Result result = run.PrintSisetsuSeikyu(0, jouken);
    progress->setRange(0, 1);
    progress->setValue(1);
    const QLocale locale(QLocale::Japanese, QLocale::Japan);
    switch (result.outcome) {
    case PrintRun::Outcome::NothingToPrint:
        txtSummary->appendPlainText(head + u"：印刷するデータはありません"_s);
        return true;
    case PrintRun::Outcome::Done:
    case PrintRun::Outcome::Cancelled:
        txtSummary->appendPlainText(head +
                                    u"：宛先 %1 件、%2 枚、請求金額合計 %3 円%4"_s.arg(output.files.size())
                                        .arg(output.totalPages())
                                        .arg(locale.toString(output.totalAmount()))
                                        .arg(output.cancelled ? u"（中止）"_s : QString()));
        return true;
    default:
        txtSummary->appendPlainText(
            head + u"：失敗しました"_s +
            (output.files.isEmpty()
                 ? QString()
                 : u"（できた %1 件は送付一覧.csv にあります）"_s.arg(output.files.size())));
        return false;
    }
}

} // namespace qelprn
