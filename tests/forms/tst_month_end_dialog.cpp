// The month-end dialog on Qt's offscreen platform: opened from the main form for its one kind;
// on the demo month with the built engine, a run of one kind into a fresh folder, a second run that
// asks before replacing, and the 中止 button pressed while the invoice-receipts are written, which
// leaves whole files and a list of them.
#include "app/Cp932.h"
#include "app/StartupCheck.h"
#include "demo/DemoProgramFolder.h"
#include "forms/MonthEndDialog.h"
#include "support/CliRun.h"
#include "support/FileBytes.h"
#include "support/TestInteraction.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

int listedFiles(const QString& folder)
{
    const QByteArray list = qelprn::test::readAll(QDir(folder).filePath(u"送付一覧.csv"_s));
    return int(qelprn::fromCp932(list).split(u"\r\n"_s, Qt::SkipEmptyParts).size()) - 1;
}

} // namespace

class tst_MonthEndDialog : public QObject
{
    Q_OBJECT

private slots:
    // From the main form (F7): only the form's kind, month and issue date, none of them to change,
    // and the kind's own folder under the month's; on its own the dialog offers the month's folder.
    void kindFromTheForm()
    {
        struct Form : qelprn::PrintConditionSource
        {
            bool iGetPrintJouken(qelprn::PrintJouken& j) override
            {
                j.iPrintKind = 4;
                return true;
            }
        } form;
        qelprn::test::TestInteraction ui;
        qelprn::AppContext ctx;
        ctx.ui = &ui;
        qelprn::MonthEndDialog fromForm(ctx, QDate(2026, 10, 1), QDate(2026, 11, 5), &form, {});
        for (qsizetype i = 0; i < fromForm.chkKinds.size(); ++i) {
            QCOMPARE(fromForm.chkKinds[i]->isChecked(), i == 3);
            QVERIFY(!fromForm.chkKinds[i]->isEnabled());
        }
        QVERIFY(!fromForm.imMonth->isEnabled() && !fromForm.imIssue->isEnabled());
        const QString month = QDir::toNativeSeparators(u"/施設請求書/2026-10"_s);
        QVERIFY2(fromForm.txtFolder->text().endsWith(month + QDir::separator() + u"4_請求書兼領収書"_s),
                 qPrintable(fromForm.txtFolder->text()));
        qelprn::MonthEndDialog alone(ctx, QDate(2026, 10, 1), QDate(2026, 11, 5), nullptr, {});
        QVERIFY2(alone.txtFolder->text().endsWith(month), qPrintable(alone.txtFolder->text()));
    }

    void runAskCancel()
    {
        const QString engine = qelprn::test::builtProgram(u"qelprn-engine"_s);
        if (!QFileInfo(engine).isExecutable())
            QSKIP("qelprn-engine is not built");
        QTemporaryDir dir;
        qelprn::test::TestInteraction ui;
        qelprn::DemoOptions options;
        options.folder = dir.filePath(u"demo"_s);
        options.month = QDate(2026, 10, 1);
        options.engineProgram = engine;
        QString error;
        QVERIFY2(qelprn::DemoProgramFolder(options).create(ui, &error), qPrintable(error));
        qelprn::AppContext ctx = qelprn::loadAppContext(ui, options.folder).value();

        qelprn::MonthEndDialog dialog(ctx, QDate(2026, 10, 1), QDate(2026, 11, 5), nullptr, {});
        dialog.show();
        QVERIFY(!dialog.cbCancel->isEnabled()); // nothing to stop yet
        const QString out = dir.filePath(u"out"_s);
        dialog.txtFolder->setText(QDir::toNativeSeparators(out));
        for (QCheckBox* box : std::as_const(dialog.chkKinds))
            box->setChecked(box == dialog.chkKinds[0]);
        QTest::mouseClick(dialog.cbStart, Qt::LeftButton);
        const QString kind1 = QDir(out).filePath(u"1_請求書(施設請求先別)"_s);
        QVERIFY2(dialog.txtSummary->toPlainText().startsWith(u"1 請求書(施設請求先別)：宛先 3 件、3 枚"_s),
                 qPrintable(dialog.txtSummary->toPlainText() + ui.texts().join(u'\n')));
        QVERIFY(dialog.txtSummary->isReadOnly()); // a record of the run, not a note to edit
        QCOMPARE(listedFiles(kind1), 3);
        QVERIFY(dialog.cbOpen->isEnabled());

        // Into the same folder again: the dialog asks, and "no" leaves everything as it was.
        ui.clear();
        ui.setNextAnswers({qelprn::MsgResult::No});
        const QDateTime listTime = QFileInfo(QDir(kind1).filePath(u"送付一覧.csv"_s)).lastModified();
        QTest::mouseClick(dialog.cbStart, Qt::LeftButton);
        QCOMPARE(ui.messages.size(), 1);
        QVERIFY(ui.messages[0].text.contains(u"置き換えますか"_s));
        QCOMPARE(QFileInfo(QDir(kind1).filePath(u"送付一覧.csv"_s)).lastModified(), listTime);

        // The invoice-receipts (67 addressees), stopped once the third file is there.
        for (QCheckBox* box : std::as_const(dialog.chkKinds))
            box->setChecked(box == dialog.chkKinds[3]);
        const QString kind4 = QDir(out).filePath(u"4_請求書兼領収書"_s);
        QTimer watch;
        bool openWhileRunning = false; // the folder is opened on what is finished, not half written
        QObject::connect(&watch, &QTimer::timeout, &dialog, [&] {
            openWhileRunning = openWhileRunning || dialog.cbOpen->isEnabled();
            if (QDir(kind4).entryList({u"*.pdf"_s}, QDir::Files).size() >= 3 && dialog.cbCancel->isEnabled())
                QTest::mouseClick(dialog.cbCancel, Qt::LeftButton);
        });
        watch.start(5);
        QTest::mouseClick(dialog.cbStart, Qt::LeftButton);
        watch.stop();
        QVERIFY(!openWhileRunning);
        QVERIFY2(dialog.txtSummary->toPlainText().contains(u"（中止）"_s),
                 qPrintable(dialog.txtSummary->toPlainText()));
        const QStringList pdfs = QDir(kind4).entryList({u"*.pdf"_s}, QDir::Files);
        QVERIFY2(pdfs.size() >= 3 && pdfs.size() < 67, qPrintable(QString::number(pdfs.size())));
        QVERIFY(dialog.cbStart->isEnabled() && dialog.imMonth->isEnabled()); // ready for another run
    }
};

QTEST_MAIN(tst_MonthEndDialog)
#include "tst_month_end_dialog.moc"
