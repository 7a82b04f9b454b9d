// One print run at a time per program folder: runs started together, a run that waits for another,
// and a lock left by a run that was killed. The built programs run on real databases (SQLite, and
// SQLite through the ODBC driver manager) and the PDFs are read back.
#include "cli/PrintFixture.h"
#include "engine/EngineTestData.h"
#include "report/PrintFolderLock.h"
#include "support/StandInProgram.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <memory>

using namespace Qt::StringLiterals;
using qelprn::test::builtProgram;
using qelprn::test::PrintFixture;

namespace {

// A text only the form of each kind prints.
QString formMark(int kind)
{
    return kind == 1 ? u"施術施設名"_s : kind == 2 ? u"一部負担金一覧表"_s : u"切り取り線"_s;
}

// Another run holding the folder's lock: a program that takes it and keeps it.
struct LockHolder
{
    QProcess process;

    bool start(PrintFixture& f, int holdMs)
    {
        const QString lock = f.folder.filePath(u"TMP/"_s + qelprn::PrintFolderLock::kFileName);
        const QString program = qelprn::test::writeStandInProgram(f.folder.filePath(u"bin/holder"_s),
                                                                  {.holdLock = lock, .holdMs = holdMs});
        process.start(program, {});
        // The lock file is made first and its owner written into it after: a holder killed in
        // between leaves a file no run can tell is stale, so wait for the owner.
        const auto written = [&lock] { return QFileInfo(lock).size() > 0; };
        QElapsedTimer clock;
        clock.start();
        while (!written() && clock.elapsed() < 20000)
            QTest::qWait(20);
        return written();
    }
    ~LockHolder()
    {
        process.kill();
        process.waitForFinished();
    }
};

} // namespace

class tst_print_lock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QFileInfo(builtProgram(u"qelprn-engine"_s)).isExecutable())
            QSKIP("qelprn-engine is not built");
    }

    // Kinds 1, 2 and 4 started at the same moment on one folder, three times over: every PDF holds
    // its own form, never another run's.
    void runsStartedTogetherPrintTheirOwnForms_data() { qelprn::test::addBackEndRows(); }

    void runsStartedTogetherPrintTheirOwnForms()
    {
#ifdef Q_OS_WIN
        QSKIP("reading the PDFs back needs poppler, which Windows lacks");
#endif
        QFETCH(bool, odbc);
        PrintFixture f;
        f.useOdbc(odbc);
        const QList<int> kinds = {1, 2, 4};
        for (int round = 1; round <= 3; ++round) {
            std::vector<std::unique_ptr<QProcess>> runs;
            for (int kind : kinds) {
                auto& p = runs.emplace_back(std::make_unique<QProcess>());
                const QString pdf = f.folder.filePath(u"r%1-k%2.pdf"_s.arg(round).arg(kind));
                p->start(builtProgram(u"qelprn-cli"_s), f.args(kind, {u"--pdf"_s, pdf}));
            }
            for (qsizetype i = 0; i < kinds.size(); ++i) {
                QProcess& p = *runs[size_t(i)];
                QVERIFY(p.waitForFinished(120000));
                QVERIFY2(p.exitCode() == 0, p.readAllStandardError().constData());
                const QString text =
                    enginetest::pdfText(f.folder.filePath(u"r%1-k%2.pdf"_s.arg(round).arg(kinds[i])));
                for (int other : kinds)
                    QVERIFY2(text.contains(formMark(other)) == (other == kinds[i]),
                             qPrintable(u"round %1, kind %2: "_s.arg(round).arg(kinds[i]) + text));
            }
        }
    }

    // A run that finds the folder held waits and then runs.
    void secondRunWaitsThenRuns()
    {
        PrintFixture f;
        LockHolder holder;
        QVERIFY(holder.start(f, 1500));
        QElapsedTimer clock;
        clock.start();
        const qelprn::test::CliRun r = f.print(1, {u"--csv-only"_s});
        const qint64 waited = clock.elapsed();
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY(QFile::exists(f.folder.filePath(u"TMP/施設請求データ.csv"_s)));
        QVERIFY2(waited >= 500, qPrintable(QString::number(waited)));
        qInfo("the second run waited %lld ms", waited);
    }

    // A run that was killed leaves its lock file behind; the next run takes it over at once.
    void killedRunsLockIsTakenOver()
    {
        PrintFixture f;
        LockHolder holder;
        QVERIFY(holder.start(f, -1));
        holder.process.kill();
        QVERIFY(holder.process.waitForFinished());
        QVERIFY(QFile::exists(f.folder.filePath(u"TMP/"_s + qelprn::PrintFolderLock::kFileName)));
        const qelprn::test::CliRun r = f.print(1, {u"--csv-only"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY2(!r.err.contains(u"待っています"_s), qPrintable(r.err));
    }

    // A lock left on a shared folder by another PC that was switched off: its process cannot be
    // asked, so a lock older than ten minutes is taken over.
    void lockOfASwitchedOffMachineIsTakenOver()
    {
        PrintFixture f;
        QFile lock(f.folder.filePath(u"TMP/"_s + qelprn::PrintFolderLock::kFileName));
        QVERIFY(lock.open(QIODevice::WriteOnly) && lock.write("4242\nqelprn\nanother-pc\n") > 0 &&
                lock.flush());
        QVERIFY(lock.setFileTime(QDateTime::currentDateTime().addSecs(-11 * 60),
                                 QFileDevice::FileModificationTime));
        lock.close();
        const qelprn::test::CliRun r = f.print(1, {u"--csv-only"_s});
        QVERIFY2(r.exitCode == 0, qPrintable(r.err));
        QVERIFY2(!r.err.contains(u"待っています"_s), qPrintable(r.err));
    }
};

QTEST_GUILESS_MAIN(tst_print_lock)
#include "tst_print_lock.moc"
