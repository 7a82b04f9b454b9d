#include "FormsTestData.h"
#include "forms/DesktopInteraction.h"
#include "forms/MenuProgram.h"
#include "forms/OnlineHelp.h"
#include "forms/ProgramFolderSetup.h"
#include "forms/RunOutcomeInteraction.h"
#include "forms/frmBack.h"
#include "forms/frmVer.h"
#include "forms/mod施設請求書Main.h"
#include "support/StandInProgram.h"
#include "support/TestInteraction.h"

#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

// A stand-in menu program: appends its argument count and arguments to "menu-args.txt" beside it.
void writeMenuProgram(const TestProgramFolder& folder)
{
    qelprn::test::writeStandInProgram(folder.filePath(u"Main.exe"_s),
                                      {.argsFile = folder.filePath(u"menu-args.txt"_s)});
}

} // namespace

class tst_auxforms : public QObject
{
    Q_OBJECT

private slots:
    // What the status bar says of a run: the first line of its first failure, a question answered
    // No before anything failed, or nothing.
    void runOutcome()
    {
        using qelprn::MsgButtons;
        using qelprn::MsgIcon;
        using qelprn::MsgResult;
        TestInteraction ui;
        ui.setNextAnswers({MsgResult::No, MsgResult::Yes, MsgResult::No});
        qelprn::RunOutcomeInteraction declined(ui);
        QCOMPARE(declined.messageBox(u"続けますか？"_s, u"確認"_s, MsgIcon::Question, MsgButtons::YesNo),
                 MsgResult::No);
        QCOMPARE(declined.outcome(), u"中止しました"_s);
        qelprn::RunOutcomeInteraction agreed(ui);
        agreed.messageBox(u"続けますか？"_s, u"確認"_s, MsgIcon::Question, MsgButtons::YesNo);
        QVERIFY(!agreed.hasMessage());
        QCOMPARE(agreed.outcome(), u"完了"_s);
        qelprn::RunOutcomeInteraction failed(ui);
        failed.messageBox(u"接続できません\r\n詳しい理由"_s, u"t"_s, MsgIcon::Critical);
        failed.messageBox(u"続けますか？"_s, u"確認"_s, MsgIcon::Question, MsgButtons::YesNo);
        failed.messageBox(u"後の知らせ"_s, u"t"_s, MsgIcon::Information);
        QVERIFY(failed.failed());
        QCOMPARE(failed.outcome(), u"接続できません"_s);
    }

    // The desktop's own interaction: a message box readable under the wait cursor, with line ends
    // as new lines, Japanese Yes/No buttons and a title that fits; the wait cursor nests; progress
    // shows only after half a second; the waiting notice ends when 中止 is pressed.
    void desktopInteraction()
    {
        using qelprn::MsgButtons;
        using qelprn::MsgIcon;
        using qelprn::MsgResult;
        std::optional<qelprn::DesktopInteraction> ui(std::in_place);
        const QString title = u"施設請求書印刷 — とても長い題名の確認"_s;
        // The override pointer's shape, -1 for none.
        static const auto pointer = [] {
            const QCursor* c = QApplication::overrideCursor();
            return c ? int(c->shape()) : -1;
        };
        // What the box showed ("text|button|pointer|wide enough"), read before it is answered.
        QString seen;
        auto answer = [&](QMessageBox::StandardButton button) {
            QTimer::singleShot(0, [&seen, &title, button] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                QAbstractButton* pressed = box ? box->button(button) : nullptr;
                seen = pressed
                           ? box->text() + u'|' + pressed->text() + u'|' + QString::number(pointer()) + u'|' +
                                 QString::number(box->width() >
                                                 box->fontMetrics().horizontalAdvance(title) + 100)
                           : QString();
                if (pressed)
                    pressed->click();
                else if (box)
                    box->reject();
            });
        };
        const QString text = u"一行目\r\n二行目\r三行目"_s, shown = u"一行目\n二行目\n三行目|"_s;
        answer(QMessageBox::No);
        QCOMPARE(ui->messageBox(text, title, MsgIcon::Question, MsgButtons::YesNo), MsgResult::No);
        QCOMPARE(seen, shown + u"いいえ(&N)|-1|1"_s);
        ui->setBusy(true);
        QCOMPARE(pointer(), int(Qt::WaitCursor));
        ui->setBusy(true);
        answer(QMessageBox::Yes);
        QCOMPARE(ui->messageBox(text, title, MsgIcon::Question, MsgButtons::YesNo), MsgResult::Yes);
        QCOMPARE(seen, shown + u"はい(&Y)|0|1"_s);
        answer(QMessageBox::Ok);
        QCOMPARE(ui->messageBox(text, title, MsgIcon::Critical), MsgResult::Ok);
        QCOMPARE(seen, shown + u"OK|0|1"_s);
        QCOMPARE(pointer(), int(Qt::WaitCursor));
        ui->setBusy(false);
        QCOMPARE(pointer(), int(Qt::WaitCursor));

        ui->progress(u"集計"_s, 1, 4);
        QVERIFY(!QApplication::activeModalWidget());
        QTest::qWait(600);
        ui->progress(u"集計"_s, 1, 4);
        auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
        QVERIFY(progress);
        QCOMPARE(progress->labelText(), u"集計"_s);
        QCOMPARE(progress->value(), 250);
        ui->progress(u"書込"_s, 0, 0);
        QCOMPARE(progress->maximum(), 0);
        QVERIFY(ui->keepWaiting(u"待っています"_s, 3000));
        auto* wait = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
        QVERIFY(wait && wait != progress);
        QCOMPARE(wait->labelText(), u"待っています\n（3 秒）"_s);
        wait->cancel();
        QVERIFY(!ui->keepWaiting(u"待っています"_s, 4000));
        ui->waitEnded();
        ui.reset(); // still busy: the pointer is given back
        QCOMPARE(pointer(), -1);
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }

    void versionDialog()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        const qelprn::AppContext ctx = folder.context(ui);
        folder.writeSettingsFile(u"DATA/Version.ini"_s,
                                 u"350,\"V3.5 複数拠点\"\n340,\" 回数区分 \"\n300,初版\n"_s);
        qelprn::frmVer all(ctx, u"施設請求書印刷"_s);
        QCOMPARE(all.lstVer->count(), 2);
        QCOMPARE(QStringList({all.windowTitle(), all.laVer->text(), all.lstVer->item(0)->text()}),
                 QStringList({u"施設請求書印刷"_s, u"V3.5 複数拠点"_s, u"回数区分"_s}));
        qelprn::frmVer recent(ctx, u"x"_s, 320);
        QCOMPARE(recent.lstVer->count(), 1);
        QFile::remove(folder.filePath(u"DATA/Version.ini"_s));
        qelprn::frmVer none(ctx, u"x"_s);
        QCOMPARE(none.laVer->text(), QString());
        QCOMPARE(none.lstVer->count(), 0);
        QVERIFY(ui.messages.isEmpty());
    }

    void onlineHelpAddress()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        const qelprn::AppContext ctx = folder.context(ui);
        folder.writeSettingsFile(u"Halvex.Ver"_s,
                                 u"[OnlineHelp]\nADDRESS= https://help.example.jp/seikyu \n"_s);
        // Without the map-service user file the address is still opened.
        qelprn::showOnlineHelp(ctx, 0);
        folder.writeSettingsFile(u"EmapUser.ini"_s, u"ZENRIN_USER=resu\nZENRIN_PWD=4321ssap\n"_s);
        qelprn::showOnlineHelp(ctx, 1);
        QCOMPARE(ui.openedUrls, (QStringList{u"https://help.example.jp/seikyu?zi=&zp=&lk=1"_s,
                                             u"https://help.example.jp/seikyu?zi=user&zp=pass1234&lk=1"_s}));
        QCOMPARE(ui.busyDepth, 0);

        folder.writeSettingsFile(u"Halvex.Ver"_s, u"[OnlineHelp]\nADDRESS=ftp://help.example.jp/\n"_s);
        qelprn::showOnlineHelp(ctx, 1);
        QFile::remove(folder.filePath(u"Halvex.Ver"_s));
        qelprn::showOnlineHelp(ctx, 1);
        QCOMPARE(ui.openedUrls.size(), 2);
        QCOMPARE(ui.messages.size(), 2);
        QCOMPARE(ui.messages[1].text, u"環境ファイルの取得に失敗しました。"_s);
        QCOMPARE(ui.messages[1].title, u"データ参照エラー"_s);
        QCOMPARE(ui.messages[1].icon, qelprn::MsgIcon::Critical);
    }

    void backgroundForm()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        qelprn::AppContext ctx = folder.context(ui);
        folder.writeSettingsFile(u"Tovara.ini"_s, u"SYSTEM_ICON=\\ICON\nWALLPAPER=wall.png\nBASEID=0203\n"_s);
        QImage picture(40, 30, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QVERIFY(picture.save(folder.filePath(u"ICON/wall.png"_s)));
        qelprn::frmBack back(ctx);
        back.Form_Load();
        QCOMPARE(ctx.iBaseKyotenEb, qint16(3));
        QCOMPARE(back.ImgWall->pixmap().size(), QSize(40, 30));
        back.resize(300, 200);
        back.show();
        QCOMPARE(back.ImgWall->geometry(), QRect(0, 0, 300, 200));
        QCOMPARE(ui.calls, (QStringList{u"busy:on"_s, u"busy:off"_s}));
    }

    void emptyCommandLineIsRefused()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        qelprn::AppContext ctx = folder.context(ui);
        writeMenuProgram(folder);
        bool formShown = false;
        const int status =
            qelprn::Main(ctx, QString(), {}, [&](qelprn::frmPrintSisetsuSeikyu&) { formShown = true; });
        QCOMPARE(status, 1);
        QVERIFY(!formShown);
        QCOMPARE(ui.texts(), (QStringList{u"処理モードが設定されていません。"_s, u"起動できません！"_s}));
        QCOMPARE(std::tuple(ui.messages[0].title, ui.messages[0].icon, ui.messages[1].icon),
                 std::tuple(u"　エラー！！"_s, qelprn::MsgIcon::Exclamation, qelprn::MsgIcon::Critical));
        QVERIFY(!QFile::exists(folder.filePath(u"menu-args.txt"_s)));
    }

    void mainReturnsToTheMenu_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("args");
        QTest::newRow("メインメニュー") << u"cmdMenu"_s << u"0\n"_s;
        QTest::newRow("戻る") << u"cbReturn"_s << u"1\n2\n"_s;
    }

    void mainReturnsToTheMenu()
    {
        QFETCH(QString, button);
        QFETCH(QString, args);
        PoolReset pool;
        TestProgramFolder folder;
        seedClinic(folder);
        TestInteraction ui;
        qelprn::AppContext ctx = folder.context(ui);
        ctx.iBaseKyotenCd = 0; // the background form reads the own site from BASEID
        writeMenuProgram(folder);
        const int status = qelprn::Main(ctx, u" "_s, {}, [&](qelprn::frmPrintSisetsuSeikyu& form) {
            QVERIFY(form.isVisible());
            QTest::mouseClick(form.findChild<QPushButton*>(button), Qt::LeftButton);
        });
        QCOMPARE(status, 0);
        QCOMPARE(ctx.iBaseKyotenCd, qint16(1));
        QVERIFY2(ui.messages.isEmpty(), qPrintable(ui.texts().join(u'\n')));
        QCOMPARE(qelprn::test::waitForArgs(folder.filePath(u"menu-args.txt"_s), int(args.count(u'\n')))
                         .join(u'\n') +
                     u'\n',
                 args);
    }

    // No program folder: the folder tried is named, and on "yes" the demo is written there.
    void offersTheDemoFolderWhenNoneIsFound()
    {
        QTemporaryDir dir;
        const QString chosen = dir.filePath(u"clinic"_s);
        qputenv("QELPRN_APP_DIR", QFile::encodeName(chosen));
        const auto restore = qScopeGuard([] { qunsetenv("QELPRN_APP_DIR"); });

        TestInteraction ui;
        ui.setNextAnswers({qelprn::MsgResult::No});
        QCOMPARE(qelprn::chooseProgramFolder(ui), QString());
        QCOMPARE(ui.messages.size(), 1);
        QVERIFY2(
            ui.messages[0].text.contains(u"環境変数 QELPRN_APP_DIR："_s + QDir::toNativeSeparators(chosen)),
            qPrintable(ui.messages[0].text));
        QVERIFY(ui.messages[0].text.contains(u"デモ プログラムフォルダ"_s));
        QCOMPARE(ui.messages[0].buttons, qelprn::MsgButtons::YesNo);
        QVERIFY(!QFile::exists(chosen));

        ui.clear();
        ui.setNextAnswers({qelprn::MsgResult::Yes});
        QCOMPARE(qelprn::chooseProgramFolder(ui), chosen);
        QCOMPARE(ui.busyDepth, 0);
        QVERIFY(QFile::exists(chosen + u"/SYS/施設別請求書.wfd"_s));

        // Found now: no question.
        ui.clear();
        QCOMPARE(qelprn::chooseProgramFolder(ui), chosen);
        QVERIFY(ui.messages.isEmpty());
    }
};

QTEST_MAIN(tst_auxforms)
#include "tst_auxforms.moc"
