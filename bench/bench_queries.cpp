// Figures for the invoice queries on the 50,000-patient demo data: per query the rows built,
// seconds, rows per second and the process's peak memory so far.
//
//   bench_queries [FOLDER [QUERY...]]
//
// FOLDER defaults to build/bench-data; the demo folder is written there once and reused while its
// marker file is present. QUERY picks some of seikyu, alldb, kanja, kenryousyuu (default all).
#include "app/CliInteraction.h"
#include "billing/modPrint施設請求書.h"
#include "db/DbTraffic.h"
#include "demo/DemoProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <functional>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

const QString kMarker = u"bench-queries.ready"_s;
constexpr int kPatients = 50000;
const QDate kMonth(2026, 10, 1);

// User plus system time of the process: on a shared machine the wall clock also counts the time
// other processes held the cores.
double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double peakRssMb()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0; // kilobytes on Linux
}

bool ensureDemoFolder(const QString& folder, QList<DemoSite>& sites)
{
    DemoOptions options;
    options.folder = folder;
    options.patients = kPatients;
    options.month = kMonth;
    options.replace = true;
    DemoProgramFolder demo(options);
    sites = demo.sites();
    if (QFile::exists(QDir(folder).filePath(kMarker))) {
        std::printf("reusing the demo folder %s\n", qPrintable(folder));
        return true;
    }
    std::printf("writing the demo folder %s (%d patients) ...\n", qPrintable(folder), kPatients);
    std::fflush(stdout);
    QDir().mkpath(folder);
    CliInteraction ui(false);
    QString error;
    QElapsedTimer timer;
    timer.start();
    if (!demo.create(ui, &error)) {
        std::fprintf(stderr, "bench_queries: %s\n", qPrintable(error));
        return false;
    }
    std::printf("written in %.1f s\n", double(timer.elapsed()) / 1000.0);
    QFile marker(QDir(folder).filePath(kMarker));
    return marker.open(QIODevice::WriteOnly);
}

void measure(const char* name, const std::function<qint16()>& query, const std::function<qsizetype()>& rows)
{
    QElapsedTimer timer;
    timer.start();
    const double cpuBefore = cpuSeconds();
    const DbTraffic trafficBefore = dbTraffic();
    const qint16 result = query();
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    const double cpu = cpuSeconds() - cpuBefore;
    const DbTraffic traffic = dbTraffic() - trafficBefore;
    const qsizetype n = rows();
    std::printf("%-36s result %2d  rows %6lld  %7.2f s %8.0f rows/s  cpu %7.2f s %8.0f rows/cpu-s  %6lld "
                "statements  peak RSS %6.1f MB\n",
                name, result, static_cast<long long>(n), seconds, seconds > 0 ? double(n) / seconds : 0.0,
                cpu, cpu > 0 ? double(n) / cpu : 0.0, static_cast<long long>(traffic.statements),
                peakRssMb());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const QString folder = QDir(args.size() > 1 ? args.at(1) : u"build/bench-data"_s).absolutePath();
    QList<DemoSite> sites;
    if (!ensureDemoFolder(folder, sites))
        return 1;
    QDir::setCurrent(folder); // "adodb.ini" names the embedded databases relative to the program folder

    CliInteraction ui(false);
    AppContext ctx;
    ctx.csAppDir = folder;
    ctx.iBaseKyotenCd = 1;
    ctx.iBaseKyotenEb = 1;
    ctx.ui = &ui;
    modPrint施設請求書 mod(ctx);
    mod.jouken.sSeikyuYM = kMonth.toString(u"yyyy/MM"_s);
    mod.jouken.nSeikyuYM = kMonth.year() * 100 + kMonth.month();
    mod.jouken.sTeisyutuDate = kMonth.addMonths(1).toString(u"yyyy/MM/dd"_s);
    for (const DemoSite& s : std::as_const(sites)) {
        if (mod.jouken.selectedDatabases.isEmpty() ||
            mod.jouken.selectedDatabases.last().cDatabase != s.database)
            mod.jouken.selectedDatabases.append({s.database, {}});
        mod.jouken.selectedDatabases.last().sites.append({qint16(s.code), qint16(s.branch)});
    }
    int basePatients = 0;
    for (const DemoSite& s : std::as_const(sites))
        basePatients += s.code == 1 && s.branch == 1 ? s.patients : 0;
    std::printf("billing month %s, base site 1/1 with %d of %d patients, %lld sites\n",
                qPrintable(mod.jouken.sSeikyuYM), basePatients, kPatients,
                static_cast<long long>(sites.size()));

    const QStringList picked = args.mid(2);
    const auto wanted = [&](const QString& key) { return picked.isEmpty() || picked.contains(key); };

    if (wanted(u"seikyu"_s)) {
        measure(
            "iGetSeikyuData (lines, paged)", [&] { return mod.iGetSeikyuData(); },
            [&] { return mod.aSisetsuSeikyu.size(); });
    }
    if (wanted(u"alldb"_s)) {
        measure(
            "iGetSeikyuData_ALLDB (lines)", [&] { return mod.iGetSeikyuData_ALLDB(); },
            [&] {
                qsizetype n = 0;
                for (int i = 0; i < mod.nSeikyuSisetsuCnt; ++i)
                    n += mod.aSeikyuSisetsu.at(i).iMeisaiCnt;
                for (int i = 0; i < mod.nSeikyuJihiCnt; ++i)
                    n += mod.aSeikyuJihi.at(i).iMeisaiCnt;
                return n;
            });
    }
    if (wanted(u"kanja"_s)) {
        // The two look-ups of the list alone, for every patient of the month.
        QHash<qint32, qint32> counts;
        QHash<qint32, modPrint施設請求書::VisitSplit> splits;
        measure(
            "treatmentDayCountsAll (patients)",
            [&] { return qint16(mod.treatmentDayCountsAll(counts) ? 0 : -1); },
            [&] { return counts.size(); });
        measure(
            "calcVisitSplitsAll (patients)", [&] { return qint16(mod.calcVisitSplitsAll(splits) ? 0 : -1); },
            [&] { return splits.size(); });
        // What the list cost when every line sent both look-ups itself: the lines of the run, each
        // with getSejyutuCnt and iCalcJisseki4Down5Up.
        mod.jouken.iSortShisetsu = 0;
        mod.iGetSeikyuData_Kanja_New();
        measure(
            "per-line look-ups (lines)",
            [&] {
                for (KanjaSeikyuRow& row : mod.aKanjaSeikyu) {
                    row.J_CNT = mod.getSejyutuCnt(row.RIYOUSHA_ID);
                    double down = 0;
                    double up = 0;
                    if (mod.iCalcJisseki4Down5Up(row.RIYOUSHA_ID, down, up) == -1)
                        return qint16(-1);
                }
                return qint16(0);
            },
            [&] { return mod.aKanjaSeikyu.size(); });
        for (qint16 sort : {qint16(0), qint16(3)}) {
            mod.jouken.iSortShisetsu = sort;
            measure(
                sort == 0 ? "iGetSeikyuData_Kanja_New (sort 0)" : "iGetSeikyuData_Kanja_New (sort 3)",
                [&] { return mod.iGetSeikyuData_Kanja_New(); }, [&] { return mod.aKanjaSeikyu.size(); });
        }
    }
    if (wanted(u"kenryousyuu"_s)) {
        for (qint16 kind : {qint16(4), qint16(5)}) {
            mod.receiptDays = kind == 4 ? ReceiptDays::CoPayment : ReceiptDays::SelfPay;
            measure(
                kind == 4 ? "iGetSeikyuData_KenRyousyuu (kind 4)" : "iGetSeikyuData_KenRyousyuu (kind 5)",
                [&] { return mod.iGetSeikyuData_KenRyousyuu(); }, [&] { return mod.aKenRyousyuu.size(); });
        }
    }
    return 0;
}
