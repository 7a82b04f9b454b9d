#include "FormsTestData.h"
#include "forms/FormControls.h"
#include "forms/cls患者検索.h"
#include "forms/cls施術者検索.h"
#include "forms/cls施設検索.h"
#include "forms/frm患者検索.h"
#include "forms/frm施術者検索.h"
#include "forms/frm施設検索.h"
#include "support/TestInteraction.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

struct Fixture
{
    Fixture()
    {
        seedClinic(folder);
        ctx = folder.context(ui);
    }
    PoolReset pool;
    TestProgramFolder folder;
    TestInteraction ui;
    qelprn::AppContext ctx;
};

QTableWidget* gridOf(QWidget& dialog)
{
    return dialog.findChild<QTableWidget*>(u"spr_1ran"_s);
}

QStringList column(QWidget& dialog, int col)
{
    QTableWidget* grid = gridOf(dialog);
    QStringList out;
    for (int r = 0; r < grid->rowCount(); ++r)
        out.append(grid->item(r, col)->text());
    return out;
}

void search(QWidget& dialog)
{
    QTest::mouseClick(dialog.findChild<QPushButton*>(u"but_Read"_s), Qt::LeftButton);
}

QString summary(QWidget& dialog)
{
    return dialog.findChild<QLabel*>(u"laJouken"_s)->text();
}

} // namespace

class tst_searchdialogs : public QObject
{
    Q_OBJECT

private slots:
    void facilityListFiltersAndChooses()
    {
        Fixture f;
        qelprn::frm施設検索 dialog(f.ctx);
        QCOMPARE(dialog.iInit(0), qint16(0));
        // Institution kind 1 only: the hospital never appears.
        QCOMPARE(column(dialog, 0), (QStringList{u"100"_s, u"101"_s}));
        // Without a preselection the first row is current, so a single hit is confirmed at once.
        QVERIFY(gridOf(dialog)->item(0, 0)->isSelected());

        // An apostrophe is a character like any other in a filter.
        dialog.txt_SiboriName->setText(u"O'Neil"_s);
        search(dialog);
        QCOMPARE(column(dialog, 1), QStringList{u"O'Neil ハウス"_s});
        QCOMPARE(summary(dialog), u"抽出条件： 名称（全文一致）=O'Neil"_s);
        dialog.txt_SiboriName->clear();
        dialog.txt_SiboriKana->setText(u"ヒマワリ"_s);
        search(dialog);
        QCOMPARE(column(dialog, 0), QStringList{u"100"_s});
        dialog.txt_SiboriKana->clear();
        dialog.in_SiboriID->setValue(102);
        search(dialog);
        QCOMPARE(gridOf(dialog)->rowCount(), 0);
        QVERIFY(!dialog.findChild<QPushButton*>(u"but_Act"_s)->isEnabled());
        QCOMPARE(f.ui.messages.value(0).icon, qelprn::MsgIcon::Information);

        dialog.in_SiboriID->setValue(0);
        search(dialog);
        QTableWidget* grid = gridOf(dialog);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        for (const QLabel* caption : dialog.findChildren<QLabel*>()) // each filter's caption on its left
            QVERIFY(!caption->buddy() || caption->geometry().right() < caption->buddy()->x());
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualItemRect(grid->item(1, 1)).center());
        QTest::mouseClick(dialog.findChild<QPushButton*>(u"but_Act"_s), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        qint32 code = 0;
        QString name;
        double lat = 0;
        double lon = 0;
        dialog.vGetSeledInf(code, name, lat, lon);
        QCOMPARE(std::tuple(code, name, lat, lon), std::tuple(101, u"O'Neil ハウス"_s, 35.7, 139.6));
    }

    void preselection()
    {
        Fixture f;
        qelprn::frm施設検索 listed(f.ctx);
        listed.iInit(101);
        QCOMPARE(gridOf(listed)->currentRow(), 1);
        QVERIFY(gridOf(listed)->item(1, 0)->isSelected());
        qelprn::frm施設検索 missing(f.ctx);
        missing.iInit(999);
        QVERIFY(gridOf(missing)->selectedItems().isEmpty());
        QVERIFY(!missing.vWhenSeledOK());
        search(missing); // a search of one's own makes the first row current
        QVERIFY(gridOf(missing)->item(0, 0)->isSelected());
        // The master load lists the own site's facilities of every institution kind.
        QList<std::pair<qint32, QString>> master;
        QCOMPARE(missing.iMastDataLoad(master), qint16(0));
        QCOMPARE(master.size(), 3);
        QCOMPARE(master.last().second, u"中央病院"_s);
    }

    void keyboardSearchesAndChooses()
    {
        Fixture f;
        qelprn::frm患者検索 dialog(f.ctx, QDate(2026, 11, 15));
        QCOMPARE(dialog.iInit(0), qint16(0));
        clickButton(dialog.chkEndKanja);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QTableWidget* grid = gridOf(dialog);

        // Readings match in either kana script and width, blanks aside; Enter in a filter searches.
        const QList<std::pair<QString, QStringList>> readings = {{u"すずき"_s, {u"5"_s}},
                                                                 {u"ｽｽﾞｷ ｲﾁﾛｳ"_s, {u"5"_s}},
                                                                 {u"いとう　さぶろう"_s, {u"7"_s}},
                                                                 {u"ロウ"_s, {u"5"_s, u"6"_s, u"7"_s}}};
        for (const auto& [typed, codes] : readings) {
            dialog.txt_SiboriKana->setText(typed);
            dialog.txt_SiboriKana->setFocus();
            QTest::keyClick(dialog.txt_SiboriKana, Qt::Key_Return);
            QVERIFY2(dialog.isVisible(), qPrintable(typed));
            QCOMPARE(column(dialog, 0), codes);
            QCOMPARE(grid->currentRow(), 0);
            QCOMPARE(QApplication::focusWidget(), grid);
        }
        // Tab leaves the grid instead of walking its cells.
        QTest::keyClick(grid, Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget() != grid);
        QCOMPARE(grid->currentColumn(), 0);

        // F4 searches from anywhere; Enter in the grid chooses the current row.
        dialog.txt_SiboriKana->setText(u"ｲﾄｳ"_s);
        QTest::keyClick(&dialog, Qt::Key_F4);
        QCOMPARE(column(dialog, 0), QStringList{u"7"_s});
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        qint32 code = 0;
        QString name;
        dialog.vGetSeledInf(code, name);
        QCOMPARE(code, 7);
        QCOMPARE(name, u"伊藤　三郎"_s);

        // Esc closes without a choice; F5 on an empty result is refused and keeps the dialog.
        qelprn::frm施設検索 facility(f.ctx);
        facility.iInit(0);
        facility.show();
        QVERIFY(QTest::qWaitForWindowActive(&facility));
        facility.txt_SiboriKana->setText(u"ちゅうおう"_s); // institution kind 2: never listed
        facility.txt_SiboriKana->setFocus();
        QTest::keyClick(facility.txt_SiboriKana, Qt::Key_Enter);
        QCOMPARE(f.ui.texts(), QStringList{u"該当する施設データがありません。"_s});
        QTest::keyClick(&facility, Qt::Key_F5);
        QCOMPARE(f.ui.texts().last(), u"有効な行が選択されていません！"_s);
        QVERIFY(facility.isVisible());
        QTest::keyClick(&facility, Qt::Key_Escape);
        QVERIFY(!facility.isVisible());
        QCOMPARE(facility.result(), int(QDialog::Rejected));
    }

    void facilityClassLooksUpAndChecks()
    {
        Fixture f;
        qelprn::cls施設検索 search(f.ctx);
        QLineEdit target;
        QCOMPARE(search.iSetShisetuName3(100, target), qint16(0));
        QCOMPARE(target.text(), u"ヒマワリソウ"_s);
        QCOMPARE(search.iSetShisetuName(555, target), qint16(-1));
        // The facility class checks typed codes against STAFF, naming the facility when none is found.
        QCOMPARE(search.iChkStaff(9), qint16(-1));
        QCOMPARE(search.CsErrStr, u"対象の施設が存在しません。"_s);
        f.folder.exec(u"DROP TABLE STAFF"_s);
        QCOMPARE(search.iChkStaff(1), qint16(-1));
        QVERIFY(search.CsErrStr.startsWith(u"iChkStaff でエラー\r\n"_s));
    }

    void practitionerList()
    {
        Fixture f;
        // Two consultants of practitioner 1 must not list the practitioner twice.
        f.folder.exec(
            u"INSERT INTO SOUDAN_TANTOU (nIDNo, iKyotenCd, iKyotenEb, iStaffKyotenCd, iStaffKyotenEb, "
            u"nStaffIDNo) VALUES (501, 1, 1, 1, 1, 1), (502, 1, 1, 1, 1, 1)"_s);
        qelprn::frm施術者検索 dialog(f.ctx);
        QCOMPARE(dialog.iInit(3), qint16(0));
        QCOMPARE(column(dialog, 0), (QStringList{u"1"_s, u"3"_s}));
        // The practitioner's row, and the own sites of used flag 1.
        QCOMPARE(std::tuple(gridOf(dialog)->currentRow(), dialog.cmb_Kyoten->currentText(),
                            dialog.cmb_Kyoten->count()),
                 std::tuple(1, u"杉並本店"_s, 2));

        clickButton(dialog.chk_Chusi);
        search(dialog);
        QCOMPARE(column(dialog, 0), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
        dialog.in_SoudanID->setValue(502);
        search(dialog);
        QCOMPARE(column(dialog, 1), QStringList{u"山田　太郎"_s});
        dialog.in_SoudanID->setValue(0);
        dialog.txt_SiboriKana->setText(u"サトウ"_s);
        search(dialog);
        QCOMPARE(column(dialog, 0), QStringList{u"2"_s});
        dialog.cmb_Kyoten->setCurrentIndex(1);
        search(dialog);
        QCOMPARE(f.ui.texts(), QStringList{u"該当する施術者データがありません。"_s});

        qelprn::cls施術者検索 check(f.ctx);
        QCOMPARE(check.iChkStaff(3), qint16(0));
        QCOMPARE(check.iChkStaff(8), qint16(-1));
        QCOMPARE(check.CsErrStr, u"対象の施術者が存在しません。"_s);
    }

    void patientList()
    {
        Fixture f;
        f.folder.writeSettingsFile(u"Tovara.ini"_s,
                                   u"SYSTEM_DATA=\\DATA\nBASEID=0101\n終了患者施術期間=3\n"_s);
        qelprn::frm患者検索 dialog(f.ctx, QDate(2026, 11, 15));
        QCOMPARE(dialog.chkEndKanja->text(), u"2026/08以前に、施術の終了した利用者も表示する。"_s);
        QCOMPARE(dialog.iInit(0), qint16(0));
        // Patient 6 ended in 2020, before the bound month.
        QCOMPARE(column(dialog, 0), (QStringList{u"5"_s, u"7"_s}));
        QCOMPARE(column(dialog, 7), (QStringList{u"1-01"_s, u"1-01"_s}));
        QCOMPARE(dialog.cmb_Tantou->count(), 4);

        clickButton(dialog.chkEndKanja);
        search(dialog);
        QCOMPARE(column(dialog, 0), (QStringList{u"5"_s, u"6"_s, u"7"_s}));
        dialog.cmb_Tantou->setCurrentIndex(dialog.cmb_Tantou->findData(3));
        dialog.cmb_Sejutsu->setCurrentIndex(2);
        dialog.txt_SiboriTel->setText(u"0006"_s);
        search(dialog);
        QCOMPARE(column(dialog, 1), QStringList{u"田中　次郎"_s});
        QCOMPARE(summary(dialog),
                 u"抽出条件： TEL（全文一致）=0006 施術終了患者表示  担当施術者=高橋　誠 施術区分=鍼灸"_s);

        f.folder.writeSettingsFile(u"Tovara.ini"_s, u"SYSTEM_DATA=\\DATA\nBASEID=0101\n"_s);
        qelprn::frm患者検索 noSetting(f.ctx, QDate(2026, 11, 15));
        QCOMPARE(noSetting.boundMonth(), u"9999/12"_s);
        noSetting.iInit(0);
        // Every patient with an end date lies before 9999/12.
        QCOMPARE(column(noSetting, 0), QStringList{u"5"_s});

        qelprn::cls患者検索 names(f.ctx);
        QLineEdit target;
        QCOMPARE(names.iSetRiyouName2(7, target), qint16(0));
        QCOMPARE(target.text(), u"伊藤"_s);
        QCOMPARE(names.iSetRiyouName(99, target), qint16(-1));
        QCOMPARE(target.text(), QString());
    }
};

QTEST_MAIN(tst_searchdialogs)
#include "tst_searchdialogs.moc"
