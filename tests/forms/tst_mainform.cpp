#include "FormsTestData.h"
#include "app/Cp932.h"
#include "forms/SiteGridWidget.h"
#include "forms/frmPrintSisetsuSeikyu.h"
#include "support/TestInteraction.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTimer>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::frmPrintSisetsuSeikyu;
using qelprn::MsgResult;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

// The print runs a form started: mode and the control values the run read.
struct Runs
{
    QList<qint16> modes;
    QList<qelprn::PrintFormValues> values;
    QList<QList<qelprn::SelectedDatabase>> sites;

    frmPrintSisetsuSeikyu::PrintAction action()
    {
        return [this](qelprn::AppContext&, qint16 mode, qelprn::PrintConditionSource& form) {
            modes.append(mode);
            qelprn::PrintFormValues v;
            form.readPrintFormValues(v);
            values.append(v);
            sites.append(form.selectedDatabases());
        };
    }
};

struct Fixture
{
    explicit Fixture(bool withStaff = true, QDate today = QDate(2026, 11, 15))
    {
        seedClinic(folder, withStaff);
        ctx = folder.context(ui);
        form = std::make_unique<frmPrintSisetsuSeikyu>(ctx, runs.action(), today);
    }
    bool load()
    {
        const bool ok = form->Form_Load();
        form->show();
        form->activateWindow();
        return ok && QTest::qWaitForWindowActive(form.get());
    }
    // "title: text" of every message shown.
    QStringList shown() const
    {
        QStringList out;
        for (const TestInteraction::Message& m : ui.messages)
            out.append(m.title + u": "_s + m.text);
        return out;
    }
    QStringList comboTexts(QComboBox* box) const
    {
        QStringList out;
        for (int i = 0; i < box->count(); ++i)
            out.append(box->itemText(i));
        return out;
    }
    void clickSiteRow(int row)
    {
        qelprn::SiteGridWidget* grid = form->sprKyoten;
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualItemRect(grid->item(row, 1)).center());
    }
    QList<bool> siteChecks() const
    {
        QList<bool> out;
        for (int r = 0; r < form->sprKyoten->rowCount(); ++r)
            out.append(form->sprKyoten->isChecked(r));
        return out;
    }
    void chooseKind(int index)
    {
        clickButton(form->optPrint[std::size_t(index)]);
        QVERIFY(form->optPrint[std::size_t(index)]->isChecked());
    }

    PoolReset pool;
    TestProgramFolder folder;
    TestInteraction ui;
    qelprn::AppContext ctx;
    Runs runs;
    std::unique_ptr<frmPrintSisetsuSeikyu> form;
};

} // namespace

class tst_mainform : public QObject
{
    Q_OBJECT

private slots:
    void loadFillsListsAndDefaults()
    {
        Fixture f;
        QVERIFY(f.load());
        QVERIFY2(f.ui.messages.isEmpty(), qPrintable(f.ui.texts().join(u'\n')));
        QCOMPARE(f.ui.busyDepth, 0);
        QCOMPARE(f.form->imD_Out->date(), QDate(2026, 10, 1));
        QCOMPARE(f.form->imD_Out->text(), u"2026/10/01"_s);
        QCOMPARE(f.form->imD_Teis->date(), QDate(2026, 11, 15));
        QCOMPARE(f.comboTexts(f.form->cbDairi), (QStringList{u"（指定なし）"_s, u"株式会社ほほえみ"_s}));
        QCOMPARE(f.form->cbDairi->itemData(1).toInt(), 11);
        QCOMPARE(f.comboTexts(f.form->cbTiryoin),
                 (QStringList{u"（指定なし）"_s, u"ほほえみ治療院"_s, u"ほほえみ鍼灸院"_s}));
        QCOMPARE(f.comboTexts(f.form->cbTantou),
                 (QStringList{u"（指定なし）"_s, u"山田　太郎"_s, u"高橋　誠"_s}));
        QCOMPARE(f.form->cbTantou->itemData(0).toInt(), 0);
        QVERIFY(f.form->optPrint[1]->isChecked());
        QCOMPARE(f.form->txtSelKanja->text(), u"(全員)"_s);
        // Ended practitioners come in only on request.
        f.chooseKind(3);
        f.form->cbTantou->setCurrentIndex(2);
        clickButton(f.form->chkChushi);
        QCOMPARE(f.form->cbTantou->count(), 4);
        QCOMPARE(f.form->cbTantou->currentData().toInt(), 3);
        for (QComboBox* kinds : f.form->cmbKaishaKbn) {
            QCOMPARE(f.comboTexts(kinds), (QStringList{u"特別養護老人ホーム"_s, u"グループホーム"_s}));
            QCOMPARE(kinds->currentIndex(), -1);
        }
        // Own sites only (used flag 1), never a branch 0.
        QCOMPARE(f.form->sprKyoten->rowCount(), 2);
        QCOMPARE(f.form->sprKyoten->siteName(0), u"杉並本店"_s);
        QCOMPARE(f.form->sprKyoten->siteName(1), u"三鷹支店"_s);
        QCOMPARE(f.form->findChild<QLabel*>(u"StatusDatabase"_s)->text(), u"データベース：suite"_s);
        QCOMPARE(f.form->findChild<QLabel*>(u"StatusSite"_s)->text(), u"拠点：01-01 杉並本店"_s);
    }

    void januaryDefaultsToDecember()
    {
        Fixture f(true, QDate(2027, 1, 10));
        QVERIFY(f.load());
        QCOMPARE(f.form->imD_Out->date(), QDate(2026, 12, 1));
    }

    void loadFailures()
    {
        {
            Fixture f(false);
            QVERIFY(!f.form->Form_Load());
            QCOMPARE(f.shown(),
                     QStringList{u"往療費内訳書印刷: スタッフが存在しません。メイン画面に戻ります"_s});
        }
        {
            Fixture f;
            QVERIFY(QFile::remove(f.folder.filePath(u"DATA/施設種類List.txt"_s)));
            QVERIFY(f.load());
            QCOMPARE(f.ui.messages.size(), 1);
            QVERIFY(f.ui.messages[0].text.endsWith(u"DATA/施設種類List.txtがありません。"_s));
        }
        {
            Fixture f;
            f.folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=\n"_s);
            QVERIFY(f.load());
            QCOMPARE(f.shown(),
                     QStringList{u"施設請求書印刷: Form_Load() でエラー\r\n接続文字列取得できません。"_s});
        }
    }

    void controlStatesPerKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("patient");
        QTest::addColumn<bool>("service");
        QTest::addColumn<bool>("billing");
        QTest::addColumn<bool>("sites");
        QTest::addColumn<int>("job");
        QTest::newRow("0 請求書") << 0 << false << false << true << false << 0;
        QTest::newRow("1 一覧表") << 1 << false << true << false << false << 0;
        QTest::newRow("2 回数区分") << 2 << false << true << false << false << 0;
        QTest::newRow("3 兼領収書") << 3 << true << true << true << false << 0;
        QTest::newRow("4 自費") << 4 << true << true << true << false << 0;
        QTest::newRow("5 拠点選択") << 5 << false << false << true << true << 2;
    }

    void controlStatesPerKind()
    {
        QFETCH(int, kind);
        QFETCH(bool, patient);
        QFETCH(bool, service);
        QFETCH(bool, billing);
        QFETCH(bool, sites);
        QFETCH(int, job);
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(kind);
        const auto enabled = [&](const QString& name) {
            QWidget* w = f.form->findChild<QWidget*>(name);
            if (!w)
                qFatal("no control %s", qPrintable(name));
            return w->isEnabled();
        };
        for (const QString& name : {u"frmAbsRiyousha"_s, u"imNum_CD_0"_s, u"btn_KanjaSelect_0"_s,
                                    u"txtSelKanja_0"_s, u"frmSort"_s, u"optSort_2"_s})
            QVERIFY2(enabled(name) == patient, qPrintable(name));
        for (const QString& name : {u"frmAbsSejutsuSisetsu"_s, u"imNum_ShisetuCD_1"_s, u"btnSelShisetu_1"_s,
                                    u"cmbKaishaKbn_1"_s, u"cbTantou"_s})
            QVERIFY2(enabled(name) == service, qPrintable(name));
        for (const QString& name : {u"frmAbsSeikyuSisetsu"_s, u"imNum_ShisetuCD_0"_s, u"btnSelShisetu_0"_s,
                                    u"cmbKaishaKbn_0"_s, u"laTitleShisetu_3"_s})
            QVERIFY2(enabled(name) == billing, qPrintable(name));
        for (const QString& name : {u"cbDairi"_s, u"cbTiryoin"_s, u"Label2_2"_s})
            QVERIFY2(enabled(name), qPrintable(name));
        for (const QString& name : {u"FraCorpFc"_s, u"optSelCorp_1"_s, u"FraKyoten"_s, u"optSelJob_1"_s,
                                    u"sprKyoten"_s, u"LblSetKyoten"_s})
            QVERIFY2(enabled(name) == sites, qPrintable(name));
        QVERIFY(f.form->optSelJob[std::size_t(job)]->isChecked());
        QCOMPARE(f.siteChecks(), (QList<bool>{sites, sites}));
    }

    void siteSelectionRules()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(5);
        QCOMPARE(f.form->LblSetKyoten->text(), u"【全拠点選択中】"_s);
        // Under "全事業所" a click cannot uncheck a site.
        f.clickSiteRow(0);
        QCOMPARE(f.siteChecks(), (QList<bool>{true, true}));

        clickButton(f.form->optSelJob[1]);
        QCOMPARE(f.form->LblSetKyoten->text(), u"【複数拠点選択中】"_s);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, false}));
        // Nothing checked: preview and print stop before the run.
        f.ui.setNextAnswers({MsgResult::Yes});
        QTest::mouseClick(f.form->cbPreview, Qt::LeftButton);
        QTest::mouseClick(f.form->cbPrint, Qt::LeftButton);
        QCOMPARE(f.shown(), (QStringList{u"選択エラー: 処理の対象となる事業所の選択を行ってください。"_s,
                                         u"選択エラー: 処理の対象となる事業所の選択を行ってください。"_s}));
        QVERIFY(f.runs.modes.isEmpty());

        f.clickSiteRow(1);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, true}));
        f.clickSiteRow(0);
        f.clickSiteRow(1);
        QCOMPARE(f.siteChecks(), (QList<bool>{true, false}));

        clickButton(f.form->optSelJob[0]);
        f.clickSiteRow(1);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, true}));
        QCOMPARE(f.form->LblSetKyoten->text(), u"三鷹支店"_s);
        QTest::mouseClick(f.form->cbPreview, Qt::LeftButton);
        QCOMPARE(f.runs.modes, QList<qint16>{0});
        const QList<qelprn::SelectedDatabase> chosen = f.runs.sites.first();
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen[0].cDatabase, u"suite"_s);
        QCOMPARE(chosen[0].sites, (QList<qelprn::SiteKey>{{2, 1}}));
    }

    void siteKindReloadsGrid()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(5);
        clickButton(f.form->optSelCorp[1]);
        QVERIFY2(f.ui.messages.isEmpty(), qPrintable(f.shown().join(u'\n')));
        QCOMPARE(f.form->sprKyoten->rowCount(), 1);
        QCOMPARE(f.form->sprKyoten->siteName(0), u"練馬ＦＣ"_s);
        QCOMPARE(f.siteChecks(), QList<bool>{true});
        clickButton(f.form->optSelCorp[2]);
        QCOMPARE(f.form->sprKyoten->rowCount(), 3);
        QVERIFY(f.ui.messages.isEmpty());
    }

    void previewSavesChoicesInOrder()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(3);
        clickButton(f.form->optSort[2]);
        f.form->cbDairi->setCurrentIndex(1);
        f.form->cbTiryoin->setCurrentIndex(2);
        clickButton(f.form->optSelSisetsuType[1]);
        f.form->imNum_CD->setValue(5);
        QTest::keyClick(f.form.get(), Qt::Key_F5);
        QCOMPARE(f.runs.modes, QList<qint16>{0});
        QVERIFY(f.ui.messages.isEmpty());

        const qelprn::PrintFormValues& v = f.runs.values.first();
        QVERIFY(v.optPrint[3]);
        QCOMPARE(v.imD_Out, QDate(2026, 10, 1));
        QCOMPARE(v.cbDairiItemData, 11);
        QCOMPARE(v.cbTiryoinItemData, 13);
        QCOMPARE(v.imNum_CD, 5);
        QVERIFY(v.optSort[2]);
        QVERIFY(v.optSelSisetsuType[1]);
        QCOMPARE(v.cmbKaishaKbnEnabled, (std::array<bool, 2>{true, true}));

        bool ok = false;
        const QStringList lines = qelprn::readTextLines(f.folder.filePath(u"DATA/印刷設定.ini"_s), &ok);
        QVERIFY(ok);
        QCOMPARE(lines, (QStringList{u"[施設請求書]"_s, u"並び順=2"_s, u"印字社名=11"_s, u"印字治療院名=13"_s,
                                     u"対象施設=-1"_s}));

        // The next start restores them.
        frmPrintSisetsuSeikyu again(f.ctx, f.runs.action());
        QVERIFY(again.Form_Load());
        QVERIFY(again.optSort[2]->isChecked());
        QCOMPARE(again.cbDairi->currentData().toInt(), 11);
        QCOMPARE(again.cbTiryoin->currentData().toInt(), 13);
        QVERIFY(again.optSelSisetsuType[1]->isChecked());
    }

    void printAsksFirst()
    {
        Fixture f;
        QVERIFY(f.load());
        f.ui.setNextAnswers({MsgResult::No, MsgResult::Yes});
        QTest::mouseClick(f.form->cbPrint, Qt::LeftButton);
        QVERIFY(f.runs.modes.isEmpty());
        QVERIFY(!QFile::exists(f.folder.filePath(u"DATA/印刷設定.ini"_s)));
        QTest::mouseClick(f.form->cbPrint, Qt::LeftButton);
        QCOMPARE(f.runs.modes, QList<qint16>{1});
        QCOMPARE(f.ui.messages.size(), 2);
        QCOMPARE(f.ui.messages[0].title, u"印刷確認"_s);
        QCOMPARE(f.ui.messages[0].text, u"印刷処理を実行します。よろしいですか？"_s);
        QCOMPARE(f.ui.messages[0].icon, qelprn::MsgIcon::Question);
        QCOMPARE(f.ui.messages[0].buttons, qelprn::MsgButtons::YesNo);
        QVERIFY(QFile::exists(f.folder.filePath(u"DATA/印刷設定.ini"_s)));
    }

    void statusShowsTheRunsOutcome()
    {
        PoolReset pool;
        TestProgramFolder folder;
        seedClinic(folder);
        TestInteraction ui;
        qelprn::AppContext ctx = folder.context(ui);
        frmPrintSisetsuSeikyu form(ctx, [](qelprn::AppContext& c, qint16, qelprn::PrintConditionSource&) {
            c.interaction().messageBox(u"該当する実績データがありません。"_s, u"施設請求書印刷"_s,
                                       qelprn::MsgIcon::Information);
        });
        QVERIFY(form.Form_Load());
        form.cbPreview_Click();
        QVERIFY(
            form.findChild<QLabel*>(u"StatusRun"_s)->text().endsWith(u"該当する実績データがありません。"_s));
        QCOMPARE(ctx.ui, &ui);
        QCOMPARE(ui.messages.size(), 1);
    }

    void codesShowTheirNames()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(3);
        f.form->imNum_ShisetuCD[0]->setValue(100);
        QCOMPARE(f.form->txtShisetu[0]->text(), u"ひまわり荘"_s);
        f.form->imNum_ShisetuCD[0]->setValue(999);
        QCOMPARE(f.form->txtShisetu[0]->text(), QString());
        f.form->imNum_CD->setValue(5);
        QCOMPARE(f.form->txtSelKanja->text(), u"鈴木　一郎"_s);
        f.form->imNum_CD->setValue(0);
        QCOMPARE(f.form->txtSelKanja->text(), u"(全員)"_s);
        f.form->imNum_StaffNo->setValue(1);
        QCOMPARE(f.form->txtSelStaff->text(), u"山田　太郎"_s);
        f.form->imNum_StaffNo->setValue(2);
        emit f.form->imNum_StaffNo->editingFinished();
        emit f.form->imNum_StaffNo->editingFinished();
        QCOMPARE(f.shown(), QStringList{u"施設請求書印刷: 管理対象から外れています。"_s});
        // Disabled for kinds 1 and 2, the billing code still reaches the run.
        f.form->imNum_ShisetuCD[0]->setValue(100);
        f.chooseKind(1);
        qelprn::PrintFormValues v;
        QVERIFY(f.form->readPrintFormValues(v));
        QCOMPARE(v.imNum_ShisetuCD[0], 100);
        QCOMPARE(v.cmbKaishaKbnEnabled, (std::array<bool, 2>{false, true}));
    }

    void keyboardOnTheForm()
    {
        Fixture f;
        QVERIFY(f.load());
        // A stray Esc keeps the form and its conditions; nothing runs.
        QTest::keyClick(f.form.get(), Qt::Key_Escape);
        QTest::keyClick(f.form->imD_Out, Qt::Key_Escape);
        QVERIFY(f.form->isVisible());
        QVERIFY(f.runs.modes.isEmpty());
        // The buttons show the keys that press them.
        QVERIFY(f.form->cbPreview->text().startsWith(u"F5 "_s));
        QVERIFY(f.form->cbPrint->text().startsWith(u"F9 "_s));
        QVERIFY(f.form->cbReturn->text().startsWith(u"F12 "_s));

        // A click into the year and typing replaces the year.
        QDateEdit* month = f.form->imD_Out;
        auto* monthText = month->findChild<QLineEdit*>();
        QTest::mouseClick(
            monthText, Qt::LeftButton, {},
            QPoint(monthText->fontMetrics().horizontalAdvance(u"20"_s) + 4, monthText->height() / 2));
        QTRY_COMPARE(monthText->selectedText(), u"2026"_s);
        QTest::keyClicks(month, u"2025"_s);
        QCOMPARE(month->date(), QDate(2025, 10, 1));

        // A long name shows its start.
        f.form->txtShisetu[0]->setText(u"社会福祉法人　やすらぎ会　特別養護老人ホーム　やすらぎの郷　本館"_s);
        QCOMPARE(f.form->txtShisetu[0]->cursorPosition(), 0);

        // F4 under kind 6 opens no search and fills nothing into the greyed patient box.
        f.chooseKind(5);
        bool opened = false;
        QTimer::singleShot(200, [&opened] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                opened = true;
                modal->close();
            }
        });
        QTest::keyClick(f.form.get(), Qt::Key_F4);
        QTest::keyClick(f.form.get(), Qt::Key_F3);
        QTest::qWait(300);
        QVERIFY(!opened);
        f.chooseKind(3);
        qelprn::PrintFormValues v;
        f.form->readPrintFormValues(v);
        QCOMPARE(v.imNum_CD, 0);

        // F5 runs one preview; the status bar tells what the run did, not more.
        QTest::keyClick(f.form.get(), Qt::Key_F5);
        QCOMPARE(f.runs.modes, QList<qint16>{0});
        QVERIFY(f.form->findChild<QLabel*>(u"StatusRun"_s)->text().endsWith(u"プレビューを開きました"_s));
        f.ui.setNextAnswers({MsgResult::Yes});
        QTest::keyClick(f.form.get(), Qt::Key_F9);
        QCOMPARE(f.runs.modes, (QList<qint16>{0, 1}));
        QVERIFY(f.form->findChild<QLabel*>(u"StatusRun"_s)->text().endsWith(u"印刷ダイアログを開きました"_s));

        // F12 is 戻る: the form closes for the menu with " 2".
        QTest::keyClick(f.form.get(), Qt::Key_F12);
        QVERIFY(!f.form->isVisible());
        QVERIFY(!f.form->bMenuReturn);
    }

    void formFitsTheScreen()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(5);
        auto* scroll = f.form->findChild<QScrollArea*>(u"FormScroll"_s);
        // 1366×768 at 100 % and 1920×1080 at 150 %, less a 48 px task bar: all of the form shows.
        for (const QRect& screen : {QRect(0, 0, 1366, 720), QRect(0, 0, 1280, 688)}) {
            f.form->fitInto(screen);
            QVERIFY(screen.contains(f.form->geometry()));
            QTRY_COMPARE(scroll->verticalScrollBar()->maximum(), 0);
            QCOMPARE(scroll->horizontalScrollBar()->maximum(), 0);
        }
        // Smaller: the form stays inside and its body scrolls to the buttons; the status bar stays.
        const QRect tiny(0, 0, 800, 450);
        f.form->fitInto(tiny);
        QVERIFY(tiny.contains(f.form->geometry()));
        QTRY_VERIFY(scroll->verticalScrollBar()->maximum() > 0);
        scroll->ensureWidgetVisible(f.form->cbPreview);
        QVERIFY(!f.form->cbPreview->visibleRegion().isEmpty());
        QVERIFY(f.form->rect().contains(f.form->StatusBar1->geometry()));
    }

    void closingChoosesTheMenuArgument()
    {
        Fixture f;
        QVERIFY(f.load());
        QTest::mouseClick(f.form->cmdMenu, Qt::LeftButton);
        QVERIFY(f.form->bMenuReturn);
        QVERIFY(!f.form->isVisible());
        f.form->show();
        QTest::mouseClick(f.form->cbReturn, Qt::LeftButton);
        QVERIFY(!f.form->bMenuReturn);
    }
};

QTEST_MAIN(tst_mainform)
#include "tst_mainform.moc"
