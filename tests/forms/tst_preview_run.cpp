#include "FormsTestData.h"
#include "demo/DemoProgramFolder.h"
#include "forms/SiteGridWidget.h"
#include "forms/frmPrintSisetsuSeikyu.h"
#include "report/PrintRun.h"
#include "support/TestInteraction.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;

namespace {

// The desktop program's print action, as its main() wires it.
void realPrintRun(qelprn::AppContext& ctx, qint16 mode, qelprn::PrintConditionSource& form)
{
    qelprn::PrintRun run(ctx);
    run.PrintSisetsuSeikyu(mode, form);
}

} // namespace

// From the form's preview button through the real print run to the engine's start, on a demo
// program folder the test writes; a stand-in engine records how it was called.
class tst_preview_run : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        const QString engine = m_dir.filePath(u"engine.sh"_s);
        QFile script(engine);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s\\n' \"$@\" >> \"$(dirname \"$0\")/engine-calls.txt\"\n");
        script.close();
        QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qelprn::DemoOptions options;
        options.folder = m_dir.filePath(u"app"_s);
        options.sites = 3;
        options.patients = 60;
        options.engineProgram = engine;
        TestInteraction ui;
        QString error;
        QVERIFY2(qelprn::DemoProgramFolder(options).create(ui, &error), qPrintable(error));
        m_app = options.folder;
    }

    void previewEachKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("csv");
        QTest::newRow("請求書") << 0 << u"施設請求データ.csv"_s;
        QTest::newRow("一部負担金一覧表") << 1 << u"施設請求データ.csv"_s;
        QTest::newRow("請求書兼領収書") << 3 << u"請求書兼領収書.csv"_s;
        QTest::newRow("拠点選択") << 5 << u"施設請求データ.csv"_s;
    }

    void previewEachKind()
    {
        QFETCH(int, kind);
        QFETCH(QString, csv);
        PoolReset pool;
        QFile::remove(m_dir.filePath(u"engine-calls.txt"_s));
        QFile::remove(m_app + u"/TMP/"_s + csv);
        TestInteraction ui;
        qelprn::AppContext ctx;
        ctx.ui = &ui;
        ctx.csAppDir = m_app;
        ctx.iBaseKyotenCd = 1;
        ctx.iBaseKyotenEb = 1;
        QDir::setCurrent(m_app);
        qelprn::frmPrintSisetsuSeikyu form(ctx, realPrintRun);
        QVERIFY(form.Form_Load());
        form.show();
        clickButton(form.optPrint[std::size_t(kind)]);
        QTest::mouseClick(form.cbPreview, Qt::LeftButton);
        QVERIFY2(ui.messages.isEmpty(), qPrintable(ui.texts().join(u'\n')));
        QCOMPARE(ui.busyDepth, 0);
        QVERIFY(QFileInfo(m_app + u"/TMP/"_s + csv).size() > 0);
        QFile calls(m_dir.filePath(u"engine-calls.txt"_s));
        QVERIFY(QTest::qWaitFor([&] { return calls.exists() && calls.size() > 0; }, 10000));
        QVERIFY(calls.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(calls.readAll()).section(u'\n', 0, 0), u"/c"_s);
        QVERIFY(form.findChild<QLabel*>(u"StatusRun"_s)->text().endsWith(u"プレビューを開きました"_s));
        if (kind == 5) {
            // All sites over both databases of the demo.
            const QList<qelprn::SelectedDatabase> chosen = form.selectedDatabases();
            QCOMPARE(chosen.size(), 2);
        }
    }

private:
    QTemporaryDir m_dir;
    QString m_app;
};

QTEST_MAIN(tst_preview_run)
#include "tst_preview_run.moc"
