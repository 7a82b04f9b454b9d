// Figures for the form-print engine: the program qelprn-engine renders the facility invoices and
// the co-payment list of a 50,000-patient month to PDF; pages per second (wall clock and CPU), PDF
// bytes per page and peak memory, at two job sizes to show that memory does not grow with the
// page count. Beside it, in the same run, ReportLab (Debian's python3-reportlab under
// /usr/bin/python3) draws the same facility-invoice page (bench/reportlab_peer.py).
//
// Usage: bench_engine [--pages N]   (facility invoice pages of the large job, default 2000)
// Build in Release: the engine program is taken from <build>/bin.

#include "engine/EngineTestData.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

using namespace Qt::StringLiterals;
using namespace enginetest;

namespace {

struct Measure
{
    bool ok = false;
    double wall = 0; // seconds
    double cpu = 0;  // user + system seconds
    long peakKb = 0;
    QString output; // what the program printed (the peer prints its own figures)
};

// Runs a program, waits, and takes its time from wait4. Its peak memory comes from /usr/bin/time
// in between: a process started straight from this one would inherit this process's own peak (the
// data it generated) into its figure.
Measure measure(const QStringList& program, const QString& outputFile = {})
{
    static const QTemporaryDir scratch;
    const QString peakFile = scratch.filePath(u"peak"_s);
    const bool viaTime = QFileInfo::exists(u"/usr/bin/time"_s);
    QStringList command = program;
    if (viaTime)
        command = QStringList{u"/usr/bin/time"_s, u"-f"_s, u"%M"_s, u"-o"_s, peakFile} + program;
    QList<QByteArray> storage;
    QList<char*> argv;
    for (const QString& a : command)
        storage.append(a.toLocal8Bit());
    for (QByteArray& s : storage)
        argv.append(s.data());
    argv.append(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const QByteArray out = outputFile.toLocal8Bit();
    if (!outputFile.isEmpty())
        posix_spawn_file_actions_addopen(&actions, 1, out.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    Measure m;
    QElapsedTimer timer;
    timer.start();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
        posix_spawn_file_actions_destroy(&actions);
        return m;
    }
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    m.wall = timer.nsecsElapsed() / 1e9;
    m.cpu = usage.ru_utime.tv_sec + usage.ru_utime.tv_usec / 1e6 + usage.ru_stime.tv_sec +
            usage.ru_stime.tv_usec / 1e6;
    m.peakKb = usage.ru_maxrss;
    if (viaTime) {
        QFile f(peakFile);
        m.peakKb = f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()).trimmed().toLong() : 0;
    }
    m.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (!outputFile.isEmpty()) {
        QFile f(outputFile);
        if (f.open(QIODevice::ReadOnly))
            m.output = QString::fromUtf8(f.readAll()).trimmed();
    }
    return m;
}

const QStringList kFamily = {u"佐藤"_s, u"鈴木"_s, u"高橋"_s, u"田中"_s, u"伊藤"_s, u"渡辺"_s,
                             u"山本"_s, u"中村"_s, u"小林"_s, u"加藤"_s, u"吉田"_s, u"山田"_s};
const QStringList kGiven = {u"花子"_s, u"太郎"_s, u"一郎"_s, u"幸子"_s, u"美智子"_s,
                            u"博"_s,   u"清"_s,   u"和子"_s, u"節子"_s, u"茂"_s};

QString randomName(QRandomGenerator& rnd)
{
    return kFamily[rnd.bounded(int(kFamily.size()))] + u' ' + kGiven[rnd.bounded(int(kGiven.size()))];
}

// Billing facilities with 20 treated-facility lines and 5 self-pay lines each: one full page apiece,
// the same page the peer draws.
bool writeFacilityInvoices(const QString& file, int pages, const QString& seal)
{
    QRandomGenerator rnd(1);
    QStringList lines = {header(facilityTitles)};
    lines.reserve(pages * 25 + 1);
    for (int f = 0; f < pages; ++f) {
        const QString name = u"特別養護老人ホーム さくら苑 第%1"_s.arg(f);
        for (int r = 0; r < 25; ++r) {
            if (r < 20)
                lines << facilityRow(r + 1, f + 1, name, 0, u"さくら苑 %1号館"_s.arg(r), rnd.bounded(1, 31),
                                     rnd.bounded(10000, 2000000), rnd.bounded(1000, 200000), {}, seal);
            else
                lines << facilityRow(r + 1, f + 1, name, 1, u"さくら苑(自費)"_s, 0, 0,
                                     rnd.bounded(1000, 200000), randomName(rnd) + u" 様"_s, seal);
        }
    }
    return writeCp932(file, lines);
}

// 50,000 patients in 2,000 facilities of 25: the co-payment list prints two pages per facility.
bool writePatients(const QString& file, int patients, const QString& seal)
{
    QRandomGenerator rnd(2);
    QStringList lines = {header(patientTitles)};
    lines.reserve(patients + 1);
    for (int i = 0; i < patients; ++i) {
        const int facility = i / 25;
        lines << patientRow(i % 25 + 1, facility + 1, u"介護付き有料老人ホーム あおば 第%1"_s.arg(facility),
                            randomName(rnd), rnd.bounded(20000, 90000), rnd.bounded(2000, 9000), seal);
    }
    return writeCp932(file, lines);
}

void report(const char* what, int pages, const Measure& m, qint64 bytes)
{
    std::printf(
        "%-34s %6d pages  %6.2f s wall %7.0f pages/s   %6.2f s CPU %7.0f pages/CPU-s   %6.0f bytes/page   "
        "peak %6.1f MB\n",
        what, pages, m.wall, pages / m.wall, m.cpu, pages / m.cpu, double(bytes) / pages, m.peakKb / 1024.0);
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    int pages = 2000;
    const QStringList args = app.arguments();
    if (const qsizetype i = args.indexOf(u"--pages"_s); i > 0 && i + 1 < args.size())
        pages = qMax(10, args[i + 1].toInt());
    const QString engine = QDir(app.applicationDirPath()).filePath(u"../bin/qelprn-engine"_s);
    const QDir benchDir = QFileInfo(QString::fromUtf8(__FILE__)).dir();
    const QString peer = benchDir.filePath(u"reportlab_peer.py"_s);
    if (qEnvironmentVariableIsEmpty("QELPRN_SOURCE_DIR")) // the layouts are read from the source tree
        qputenv("QELPRN_SOURCE_DIR", QDir::cleanPath(benchDir.filePath(u".."_s)).toLocal8Bit());
    if (!QFileInfo::exists(engine)) {
        std::fprintf(stderr, "bench_engine: %s is missing; build the qelprn-engine target\n",
                     qPrintable(engine));
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir dir;
    auto path = [&](const QString& name) { return dir.filePath(name); };

    auto runJob = [&](const QString& name, const QString& layout, const QString& dataName,
                      const QString& csv) {
        writeCommandFile(path(name + u".dat"_s), layoutPath(layout), dataName, csv);
        return measure({engine, u"--pdf"_s, path(name + u".pdf"_s), u"/c"_s, path(name + u".dat"_s)});
    };

    std::printf("Form-print engine, PDF output (%d-page facility invoice job; the machine is shared, so CPU "
                "seconds are the steadier figure)\n",
                pages);
    if (!writeFacilityInvoices(path(u"small.csv"_s), pages / 4, {}) ||
        !writeFacilityInvoices(path(u"large.csv"_s), pages, {}) ||
        !writePatients(path(u"patients.csv"_s), 50000, {})) {
        std::fprintf(stderr, "bench_engine: cannot write the data files\n");
        return 2;
    }
    const Measure small = runJob(u"small"_s, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"small.csv"_s);
    const Measure large = runJob(u"large"_s, u"施設別請求書.wfd"_s, u"施設請求データ"_s, u"large.csv"_s);
    const Measure list =
        runJob(u"list"_s, u"一部負担金一覧表_02.wfd"_s, u"施設請求データ"_s, u"patients.csv"_s);
    if (!small.ok || !large.ok || !list.ok) {
        std::fprintf(stderr, "bench_engine: the engine failed\n");
        return 2;
    }
    report("facility invoice (qelprn-engine)", pages / 4, small, QFileInfo(path(u"small.pdf"_s)).size());
    report("facility invoice (qelprn-engine)", pages, large, QFileInfo(path(u"large.pdf"_s)).size());
    const int listPages = pdfPages(path(u"list.pdf"_s));
    report("co-payment list, 50,000 patients", listPages, list, QFileInfo(path(u"list.pdf"_s)).size());
    std::printf("memory: %.1f MB at %d pages, %.1f MB at %d pages\n", small.peakKb / 1024.0, pages / 4,
                large.peakKb / 1024.0, pages);

    const Measure rl =
        measure({u"/usr/bin/python3"_s, peer, QString::number(pages), path(u"rl.pdf"_s)}, path(u"rl.txt"_s));
    if (!rl.ok) {
        std::printf(
            "ReportLab peer: not run (python3-reportlab missing? apt-get install python3-reportlab)\n");
        return 0;
    }
    const qint64 rlBytes = QFileInfo(path(u"rl.pdf"_s)).size();
    report("facility invoice (ReportLab)", pages, rl, rlBytes);
    std::printf("ReportLab's own timing of its drawing loop: %s\n", qPrintable(rl.output));
    const double ours = pages / large.cpu;
    const double theirs = pages / rl.cpu;
    const double oursBytes = double(QFileInfo(path(u"large.pdf"_s)).size()) / pages;
    std::printf("engine / ReportLab: %.2fx pages per CPU second, %.2fx pages per wall second (target >= 2), "
                "%.2fx bytes per page (target <= 1)\n",
                ours / theirs, (pages / large.wall) / (pages / rl.wall),
                oursBytes / (double(rlBytes) / pages));
    return 0;
}
