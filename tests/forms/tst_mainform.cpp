// The main form on the offscreen platform, its controls found by their names: loading, the
// control states of each form kind, the site selection, the keyboard, the saved choices and what
// the status bar says after a run.
#include "FormsTestData.h"
#include "forms/ConnectionStatus.h"
#include "forms/SiteGridWidget.h"
#include "forms/frmPrintSisetsuSeikyu.h"
#include "support/Controls.h"
#include "support/TestInteraction.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::frmPrintSisetsuSeikyu;
using qelprn::MsgResult;
using qelprn::SiteGridWidget;
using qelprn::test::control;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

// The print runs a form started: mode and the conditions the run read.
struct Runs
{
    QList<qint16> modes;
    QList<qelprn::PrintJouken> conditions;
    QString tell; // what the run tells, if anything

    frmPrintSisetsuSeikyu::PrintAction action()
    {
        return [this](const qelprn::AppContext& ctx, qint16 mode, qelprn::PrintConditionSource& form) {
            modes.append(mode);
            qelprn::PrintJouken j;
            form.iGetPrintJouken(j);
            conditions.append(j);
            if (!tell.isEmpty())
                ctx.interaction().messageBox(tell, u"施設請求書印刷"_s, qelprn::MsgIcon::Information);
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
    template <class T> T* c(const QString& name) const { return control<T>(*form, name); }
    QRadioButton* option(const QString& group, int index) const
    {
        return c<QRadioButton>(group + u'_' + QString::number(index));
    }
    SiteGridWidget* grid() const { return c<SiteGridWidget>(u"sprKyoten"_s); }
    QString status() const { return c<QLabel>(u"StatusRun"_s)->text(); }
    // "title: text" of every message shown.
    QStringList shown() const
    {
        QStringList out;
        for (const TestInteraction::Message& m : ui.messages)
            out.append(m.title + u": "_s + m.text);
        return out;
    }
    QStringList comboTexts(const QString& name) const
    {
        QStringList out;
        for (int i = 0; i < c<QComboBox>(name)->count(); ++i)
            out.append(c<QComboBox>(name)->itemText(i));
        return out;
    }
    void clickSiteRow(int row)
    {
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {},
                          grid()->visualItemRect(grid()->item(row, 1)).center());
    }
    QList<bool> siteChecks() const
    {
        QList<bool> out;
        for (int r = 0; r < grid()->rowCount(); ++r)
            out.append(grid()->isChecked(r));
        return out;
    }
    void chooseKind(int index)
    {
        clickButton(option(u"optPrint"_s, index));
        QVERIFY(option(u"optPrint"_s, index)->isChecked());
    }
    void click(const QString& button) { QTest::mouseClick(c<QPushButton>(button), Qt::LeftButton); }

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
        QCOMPARE(f.c<QDateEdit>(u"imD_Out"_s)->text(), u"2026/10/01"_s);
        QCOMPARE(f.c<QDateEdit>(u"imD_Teis"_s)->date(), QDate(2026, 11, 15));
        QCOMPARE(f.comboTexts(u"cbDairi"_s), (QStringList{u"（指定なし）"_s, u"株式会社ほほえみ"_s}));
        QCOMPARE(f.comboTexts(u"cbTiryoin"_s),
                 (QStringList{u"（指定なし）"_s, u"ほほえみ治療院"_s, u"ほほえみ鍼灸院"_s}));
        QCOMPARE(f.comboTexts(u"cbTantou"_s),
                 (QStringList{u"（指定なし）"_s, u"山田　太郎"_s, u"高橋　誠"_s}));
        QVERIFY(f.option(u"optPrint"_s, 1)->isChecked() && f.option(u"optSelCorp"_s, 0)->isChecked());
        QCOMPARE(f.c<QLineEdit>(u"txtSelKanja_0"_s)->text(), u"(全員)"_s);
        // Ended practitioners come in only on request.
        f.chooseKind(3);
        auto* staff = f.c<QComboBox>(u"cbTantou"_s);
        staff->setCurrentIndex(2);
        clickButton(f.c<QCheckBox>(u"chkChushi"_s));
        QCOMPARE(staff->count(), 4);
        QCOMPARE(staff->currentData().toInt(), 3);
        for (const QString& name : {u"cmbKaishaKbn_0"_s, u"cmbKaishaKbn_1"_s}) {
            QCOMPARE(f.comboTexts(name), (QStringList{u"特別養護老人ホーム"_s, u"グループホーム"_s}));
            QCOMPARE(f.c<QComboBox>(name)->currentIndex(), -1);
        }
        // Own sites only (used flag 1), never a branch 0.
        QCOMPARE(f.grid()->rowCount(), 2);
        QCOMPARE(f.c<QLabel>(u"StatusDatabase"_s)->text(), u"データベース：suite"_s);
        QCOMPARE(f.c<QLabel>(u"StatusSite"_s)->text(), u"拠点：01-01 杉並本店"_s);
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
            QVERIFY(f.ui.messages[0].text.endsWith(QDir::toNativeSeparators(u"DATA/施設種類List.txt"_s) +
                                                   u"がありません。"_s));
        }
        {
            // Without the site table: no site name, no printed names, no site grid; the form opens.
            Fixture f;
            f.folder.exec(u"DROP TABLE KYOTEN"_s);
            QVERIFY(f.load());
            QCOMPARE(f.shown().value(0), u"往療費内訳書印刷: 本店/支店データの取得に失敗しました。"_s);
            QCOMPARE(f.comboTexts(u"cbDairi"_s), QStringList{u"（指定なし）"_s});
            QCOMPARE(f.c<QLabel>(u"StatusSite"_s)->text(), u"拠点：01-01"_s);
            QCOMPARE(qelprn::databaseStatusText(u"Provider=SQLOLEDB;Data Source=srv"_s),
                     u"データベース：－"_s);
            // The practitioner list read again for the ended ones: a failed query is reported.
            f.chooseKind(3);
            f.folder.exec(u"DROP TABLE STAFF"_s);
            clickButton(f.c<QCheckBox>(u"chkChushi"_s));
            QVERIFY2(f.shown().last().contains(u"STAFF"_s), qPrintable(f.shown().join(u'\n')));
        }
        {
            Fixture f;
            f.folder.exec(u"DROP TABLE CORP"_s);
            QVERIFY(f.load());
            QCOMPARE(f.shown().value(0), u"往療費内訳書印刷: 本店/支店データの取得に失敗しました。"_s);
        }
        {
            Fixture f;
            f.folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=\n"_s);
            QVERIFY(f.load());
            QCOMPARE(f.shown(),
                     QStringList{u"施設請求書印刷: Form_Load() でエラー\r\n接続文字列取得できません。"_s});
            // A database that cannot be opened: its reason, and nothing more is tried.
            f.ui.clear();
            f.folder.writeSettingsFile(u"adodb.ini"_s,
                                       u"[接続情報]\n接続情報=Data Source=sqlite:none/none;Database=x\n"_s);
            QVERIFY(f.form->Form_Load());
            QCOMPARE(f.shown().size(), 1);
            QVERIFY(f.shown()[0].startsWith(u"施設請求書印刷: Form_Load() でエラー\r\n"_s));
        }
    }

    // A condition's controls are on only for the kinds whose query reads it.
    void controlStatesPerKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("on"); // B billing, S service code, K service kind, T practitioner,
                                         // P patient and sort, X sites
        QTest::newRow("0 請求書") << 0 << u"B"_s;
        QTest::newRow("1 一覧表") << 1 << u"SKT"_s;
        QTest::newRow("2 回数区分") << 2 << u"SKT"_s;
        QTest::newRow("3 兼領収書") << 3 << u"BKP"_s;
        QTest::newRow("4 自費") << 4 << u"BKP"_s;
        QTest::newRow("5 拠点選択") << 5 << u"BX"_s;
    }

    void controlStatesPerKind()
    {
        QFETCH(int, kind);
        QFETCH(QString, on);
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(kind);
        const QList<std::pair<QChar, QStringList>> groups = {
            {u'B',
             {u"frmAbsSeikyuSisetsu"_s, u"imNum_ShisetuCD_0"_s, u"btnSelShisetu_0"_s, u"cmbKaishaKbn_0"_s}},
            {u'S', {u"imNum_ShisetuCD_1"_s, u"btnSelShisetu_1"_s, u"txtShisetu_1"_s, u"laTitleShisetu_1"_s}},
            {u'K', {u"frmAbsSejutsuSisetsu"_s, u"cmbKaishaKbn_1"_s, u"laTitleShisetu_4"_s}},
            {u'T', {u"cbTantou"_s, u"laTitleShisetu_5"_s}},
            {u'P',
             {u"frmAbsRiyousha"_s, u"imNum_CD_0"_s, u"btn_KanjaSelect_0"_s, u"frmSort"_s, u"optSort_2"_s}},
            {u'X', {u"FraCorpFc"_s, u"optSelCorp_1"_s, u"FraKyoten"_s, u"optSelJob_1"_s, u"sprKyoten"_s}},
            {u'*',
             {u"cbDairi"_s, u"cbTiryoin"_s, u"Label2_2"_s, u"optSortShisetsu_1"_s, u"optSelSisetsuType_1"_s}},
        };
        for (const auto& [group, names] : groups) {
            for (const QString& name : names)
                QVERIFY2(f.c<QWidget>(name)->isEnabled() == (group == u'*' || on.contains(group)),
                         qPrintable(name));
        }
        const bool sites = on.contains(u'X');
        QVERIFY(f.option(u"optSelJob"_s, sites ? 2 : 0)->isChecked());
        QCOMPARE(f.siteChecks(), (QList<bool>{sites, sites}));
        // What the run reads: the kind, and the facility-kind lists only where they are on.
        for (int i = 0; i < 2; ++i)
            f.c<QComboBox>(u"cmbKaishaKbn_%1"_s.arg(i))->setCurrentIndex(1);
        qelprn::PrintJouken j;
        QVERIFY(f.form->iGetPrintJouken(j));
        QCOMPARE(j.iPrintKind, qint16(kind + 1));
        QCOMPARE(j.sSisetsuType1, on.contains(u'B') ? u"グループホーム"_s : QString());
        QCOMPARE(j.sSisetsuType2, on.contains(u'K') ? u"グループホーム"_s : QString());
    }

    void siteSelectionRules()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(5);
        auto* label = f.c<QLabel>(u"LblSetKyoten"_s);
        QCOMPARE(label->text(), u"【全拠点選択中】"_s);
        // Under "全事業所" a click cannot uncheck a site.
        f.clickSiteRow(0);
        QCOMPARE(f.siteChecks(), (QList<bool>{true, true}));

        clickButton(f.option(u"optSelJob"_s, 1));
        QCOMPARE(label->text(), u"【複数拠点選択中】"_s);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, false}));
        // Nothing checked: the run stops before it starts.
        f.click(u"cbPreview"_s);
        QCOMPARE(f.shown(), QStringList{u"選択エラー: 処理の対象となる事業所の選択を行ってください。"_s});
        QVERIFY(f.runs.modes.isEmpty());

        f.clickSiteRow(1);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, true}));
        f.clickSiteRow(0);
        f.clickSiteRow(1);
        QCOMPARE(f.siteChecks(), (QList<bool>{true, false}));
        // Space on the current row works as a click, on the first row too.
        f.grid()->setCurrentCell(0, 1);
        QTest::keyClick(f.grid(), Qt::Key_Space);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, false}));
        QTest::keyClick(f.grid(), Qt::Key_Space);

        clickButton(f.option(u"optSelJob"_s, 0));
        QCOMPARE(f.siteChecks(), (QList<bool>{true, false})); // one site: the first checked stays
        f.clickSiteRow(1);
        QCOMPARE(f.siteChecks(), (QList<bool>{false, true}));
        QCOMPARE(label->text(), u"三鷹支店"_s);
        f.click(u"cbPreview"_s);
        QCOMPARE(f.runs.modes, QList<qint16>{0});
        const QList<qelprn::SelectedDatabase>& sites = f.runs.conditions.first().selectedDatabases;
        QCOMPARE(sites.size(), 1);
        QCOMPARE(sites.at(0).cDatabase, u"suite"_s);
        QCOMPARE(sites.at(0).sites, (QList<qelprn::SiteKey>{{2, 1}}));

        // The site kind reloads the grid: franchise sites, then all.
        f.ui.clear();
        clickButton(f.option(u"optSelCorp"_s, 1));
        QVERIFY2(f.ui.messages.isEmpty(), qPrintable(f.shown().join(u'\n')));
        QCOMPARE(f.grid()->rowCount(), 1);
        QCOMPARE(f.grid()->siteName(0), u"練馬ＦＣ"_s);
        clickButton(f.option(u"optSelCorp"_s, 2));
        QCOMPARE(f.grid()->rowCount(), 3);
    }

    void previewSavesChoicesInOrder()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(3);
        clickButton(f.option(u"optSort"_s, 2));
        f.c<QComboBox>(u"cbDairi"_s)->setCurrentIndex(1);
        f.c<QComboBox>(u"cbTiryoin"_s)->setCurrentIndex(2);
        clickButton(f.option(u"optSelSisetsuType"_s, 1));
        f.c<QSpinBox>(u"imNum_CD_0"_s)->setValue(5);
        QTest::keyClick(f.form.get(), Qt::Key_F5);
        QCOMPARE(f.runs.modes, QList<qint16>{0});
        QVERIFY(f.ui.messages.isEmpty());

        const qelprn::PrintJouken& j = f.runs.conditions.first();
        QCOMPARE(std::tuple(j.iPrintKind, j.sSeikyuYM, j.nSeikyuYM, j.sTeisyutuDate),
                 std::tuple(qint16(4), u"2026/10"_s, 202610, u"2026/11/15"_s));
        QCOMPARE(std::tuple(j.nDairiCd, j.nTiryoinCd, j.nKanjaCd, j.iSort, j.bSelSisetsuType),
                 std::tuple(11, 13, 5, qint16(3), true));

        // The next start restores them.
        frmPrintSisetsuSeikyu again(f.ctx, f.runs.action());
        QVERIFY(again.Form_Load());
        QVERIFY(control<QRadioButton>(again, u"optSort_2"_s)->isChecked());
        QCOMPARE(control<QComboBox>(again, u"cbDairi"_s)->currentData().toInt(), 11);
        QCOMPARE(control<QComboBox>(again, u"cbTiryoin"_s)->currentData().toInt(), 13);
        QVERIFY(control<QRadioButton>(again, u"optSelSisetsuType_1"_s)->isChecked());
    }

    void printAsksFirst()
    {
        Fixture f;
        QVERIFY(f.load());
        f.ui.setNextAnswers({MsgResult::No, MsgResult::Yes});
        f.click(u"cbPrint"_s);
        QVERIFY(f.runs.modes.isEmpty());
        QVERIFY(!QFile::exists(f.folder.filePath(u"DATA/印刷設定.ini"_s)));
        f.click(u"cbPrint"_s);
        QCOMPARE(f.runs.modes, QList<qint16>{1});
        QCOMPARE(f.shown().first(), u"印刷確認: 印刷処理を実行します。よろしいですか？"_s);
        QVERIFY(QFile::exists(f.folder.filePath(u"DATA/印刷設定.ini"_s)));
        QVERIFY(f.status().endsWith(u"印刷ダイアログを開きました"_s));
    }

    // A code shows its name; a search dialog's choice fills code and name.
    void codesAndSearches()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(3);
        auto* billing = f.c<QSpinBox>(u"imNum_ShisetuCD_0"_s);
        auto* billingName = f.c<QLineEdit>(u"txtShisetu_0"_s);
        billing->setValue(100);
        QCOMPARE(billingName->text(), u"ひまわり荘"_s);
        billing->setValue(999);
        QCOMPARE(billingName->text(), QString());
        f.c<QSpinBox>(u"imNum_CD_0"_s)->setValue(5);
        QCOMPARE(f.c<QLineEdit>(u"txtSelKanja_0"_s)->text(), u"鈴木　一郎"_s);
        auto* staff = f.c<QSpinBox>(u"imNum_StaffNo"_s);
        staff->setValue(1);
        QCOMPARE(f.c<QLineEdit>(u"txtSelStaff"_s)->text(), u"山田　太郎"_s);
        staff->setValue(2);
        emit staff->editingFinished();
        emit staff->editingFinished();
        QCOMPARE(f.shown(), QStringList{u"施設請求書印刷: 管理対象から外れています。"_s});

        // Each search opens its dialog on the box's code; the chosen row fills code and name.
        const QList<std::tuple<QString, QString, QString, int, QString>> searches = {
            {u"btnSelShisetu_0"_s, u"imNum_ShisetuCD_0"_s, u"txtShisetu_0"_s, 100, u"ひまわり荘"_s},
            {u"btn_StaffSelect"_s, u"imNum_StaffNo"_s, u"txtSelStaff"_s, 1, u"山田　太郎"_s},
            {u"btn_KanjaSelect_0"_s, u"imNum_CD_0"_s, u"txtSelKanja_0"_s, 5, u"鈴木　一郎"_s},
        };
        for (const auto& [button, code, name, chosen, text] : searches) {
            f.c<QSpinBox>(code)->setValue(chosen);
            f.c<QLineEdit>(name)->clear();
            QTimer::singleShot(0, [] {
                auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                QVERIFY(dialog && QTest::qWaitForWindowActive(dialog));
                QTest::mouseClick(dialog->findChild<QPushButton*>(u"but_Act"_s), Qt::LeftButton);
                if (dialog->isVisible())
                    dialog->reject(); // never leave the test hanging in the dialog
            });
            f.click(button);
            QCOMPARE(f.c<QSpinBox>(code)->value(), chosen);
            QCOMPARE(f.c<QLineEdit>(name)->text(), text);
        }
        QCOMPARE(f.ui.messages.size(), 1);
    }

    void keyboardOnTheForm()
    {
        Fixture f;
        QVERIFY(f.load());
        // A stray Esc keeps the form and its conditions; nothing runs.
        auto* month = f.c<QDateEdit>(u"imD_Out"_s);
        QTest::keyClick(f.form.get(), Qt::Key_Escape);
        QTest::keyClick(month, Qt::Key_Escape);
        QVERIFY(f.form->isVisible());
        QVERIFY(f.runs.modes.isEmpty());
        // F4 and F3 under kind 6 open no search and fill nothing into the greyed boxes.
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

        // F5 previews; the status bar tells what the run did, not more.
        QTest::keyClick(f.form.get(), Qt::Key_F5);
        QVERIFY(f.status().endsWith(u"プレビューを開きました"_s));
        // A run that tells something puts its last message there instead; the form's own
        // interaction saw it too.
        f.runs.tell = u"該当する実績データがありません。"_s;
        QTest::keyClick(f.form.get(), Qt::Key_F5);
        QVERIFY(f.status().endsWith(u"該当する実績データがありません。"_s));
        QCOMPARE(f.ui.texts(), QStringList{f.runs.tell});

        // F12 is 戻る: the form closes, not for the menu.
        QTest::keyClick(f.form.get(), Qt::Key_F12);
        QVERIFY(!f.form->isVisible());
        QVERIFY(!f.form->bMenuReturn);
    }

    void formFitsTheScreen()
    {
        Fixture f;
        QVERIFY(f.load());
        f.chooseKind(5);
        auto* scroll = f.c<QScrollArea>(u"FormScroll"_s);
        // 1920×1080 at 150 %, less a 48 px task bar: all of the form shows.
        const QRect screen(0, 0, 1280, 688);
        f.form->fitInto(screen);
        QVERIFY(screen.contains(f.form->geometry()));
        QTRY_COMPARE(scroll->verticalScrollBar()->maximum(), 0);
        QCOMPARE(scroll->horizontalScrollBar()->maximum(), 0);
        // Smaller: the form stays inside and its body scrolls to the buttons; the status bar stays.
        const QRect tiny(0, 0, 800, 450);
        f.form->fitInto(tiny);
        QVERIFY(tiny.contains(f.form->geometry()));
        QTRY_VERIFY(scroll->verticalScrollBar()->maximum() > 0);
        auto* preview = f.c<QPushButton>(u"cbPreview"_s);
        scroll->ensureWidgetVisible(preview);
        QVERIFY(!preview->visibleRegion().isEmpty());
        QVERIFY(f.form->rect().contains(f.c<QStatusBar>(u"StatusBar1"_s)->geometry()));
    }

    // Both dates show whole in every style of the platform (Windows' own style cut the issue date
    // to "2026/11/2").
    void datesShowWhole()
    {
        const QString before = QApplication::style()->name();
        const auto restore = qScopeGuard([&] { QApplication::setStyle(before); });
        for (const QString& style : QStyleFactory::keys()) {
            QApplication::setStyle(style);
            Fixture f;
            QVERIFY(f.load());
            for (const QString& name : {u"imD_Out"_s, u"imD_Teis"_s}) {
                auto* text = f.c<QDateEdit>(name)->findChild<QLineEdit*>();
                QVERIFY(text);
                // A line edit keeps 2 px free on either side of its text.
                const int needed = text->fontMetrics().horizontalAdvance(text->text()) + 4;
                QVERIFY2(text->width() >= needed,
                         qPrintable(u"%1 in %2: %3 px for %4 px"_s.arg(
                             name, style, QString::number(text->width()), QString::number(needed))));
            }
        }
    }
};

QTEST_MAIN(tst_mainform)
#include "tst_mainform.moc"
