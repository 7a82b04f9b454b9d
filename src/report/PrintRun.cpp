#include "report/PrintRun.h"

#include "app/FileUtil.h"
#include "app/LayoutPath.h"
#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "app/SysIni.h"
#include "db/DbTraffic.h"
#include "report/PrintDataCsv.h"
#include "report/cls_WfdPrintExe.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kSeikyuCsv = u"施設請求データ.csv"_s;
const QString kKenRyousyuuCsv = u"請求書兼領収書.csv"_s;

// What the engine is given for a print kind: layout, data name, CSV file and the paper flag.
struct EngineJob
{
    QString layout;
    QString dataName;
    QString csvFile;
    bool paper = false;
};

EngineJob engineJob(qint16 kind)
{
    switch (kind) {
    case 1:
    case 6:
        return {u"施設別請求書.wfd"_s, u"施設請求データ"_s, kSeikyuCsv, false};
    case 2:
        return {u"一部負担金一覧表_02.wfd"_s, u"施設請求データ"_s, kSeikyuCsv, false};
    case 3:
        return {u"一部負担金一覧表_回数区分あり.wfd"_s, u"施設請求データ"_s, kSeikyuCsv, false};
    case 4:
        return {u"請求書兼領収書_回数区分あり.wfd"_s, u"請求書兼領収書"_s, kKenRyousyuuCsv, true};
    case 5:
        return {u"請求書兼領収書_回数区分あり_自費.wfd"_s, u"請求書兼領収書"_s, kKenRyousyuuCsv, true};
    default:
        return {};
    }
}

// The form's option groups: the first set option wins.
template <std::size_t N> int firstSet(const std::array<bool, N>& options)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (options[i])
            return int(i);
    }
    return -1;
}

QString rtrimmed(const QString& text)
{
    qsizetype n = text.size();
    while (n > 0 && text.at(n - 1) == u' ')
        --n;
    return text.left(n);
}

} // namespace

PrintRun::PrintRun(AppContext& ctx) : context(ctx), data(ctx) {}

void PrintRun::showInfo(const QString& text)
{
    context.interaction().messageBox(text, csSeikyuTitle(), MsgIcon::Information);
}

void PrintRun::PrintSisetsuSeikyu(qint16 mode, PrintConditionSource& form)
{
    if (iGetPrintJouken(form) == -1) {
        outcome = Outcome::ConditionsFailed;
        showInfo(u"印刷条件の取得に失敗しました。"_s);
        return;
    }
    const int result = iExecPrint(mode);
    if (result != -1)
        return;
    if (mode == 0 || mode == 1)
        showInfo(u"帳票の印刷に失敗しました。"_s);
    else if (mode == 2)
        showInfo(u"CSVの出力に失敗しました。"_s);
}

qint16 PrintRun::iGetPrintJouken(PrintConditionSource& form)
{
    PrintFormValues v;
    if (!form.readPrintFormValues(v) || !v.imD_Out.isValid() || !v.imD_Teis.isValid())
        return -1;
    PrintJouken& j = data.jouken;
    const int kind = firstSet(v.optPrint);
    j.iPrintKind = qint16(kind < 0 ? 1 : kind + 1);
    j.sSeikyuYM = v.imD_Out.toString(u"yyyy/MM"_s);
    j.nSeikyuYM = v.imD_Out.year() * 100 + v.imD_Out.month();
    j.sTeisyutuDate = v.imD_Teis.toString(u"yyyy/MM/dd"_s);
    j.nDairiCd = v.cbDairiListIndex > 0 ? v.cbDairiItemData : 0;
    j.nTiryoinCd = v.cbTiryoinListIndex > 0 ? v.cbTiryoinItemData : 0;
    j.nShisetuCdFrom = v.imNum_ShisetuCD[0];
    j.nShisetuCdTo = v.imNum_ShisetuCD[1];
    // With no sort option set the previous run's order stays.
    if (const int sort = firstSet(v.optSort); sort >= 0)
        j.iSort = qint16(sort + 1);
    j.nKanjaCd = v.imNum_CD;
    for (int k = 0; k < 2; ++k) {
        const bool chosen = v.cmbKaishaKbnEnabled[k] && v.cmbKaishaKbnListIndex[k] > 0;
        (k == 0 ? j.sSisetsuType1 : j.sSisetsuType2) = chosen ? rtrimmed(v.cmbKaishaKbnText[k]) : QString();
    }
    j.bSelSisetsuType = !v.optSelSisetsuType[0];
    j.iSortShisetsu = qint16(qMax(0, firstSet(v.optSortShisetsu)));
    j.nTantouCd = v.cbTantouListIndex > 0 ? v.cbTantouItemData : 0;
    j.selectedDatabases = form.selectedDatabases();
    return 0;
}

qint16 PrintRun::runQuery()
{
    switch (data.jouken.iPrintKind) {
    case 1:
        return data.iGetSeikyuData();
    case 2:
    case 3:
        return data.iGetSeikyuData_Kanja_New();
    case 4:
    case 5:
        return data.iGetSeikyuData_KenRyousyuu();
    case 6:
        return data.iGetSeikyuData_ALLDB();
    default:
        return 0; // no query: counts as rows found, and no writer follows
    }
}

qint16 PrintRun::runWriter()
{
    switch (data.jouken.iPrintKind) {
    case 1:
        return iWriteSeikyuCsv();
    case 2:
    case 3:
        return iWriteKanjaCsv();
    case 4:
    case 5:
        return iWriteKenRyousyuuCsv();
    case 6:
        return iWriteSeikyuCsv_ALLDB();
    default:
        return 0;
    }
}

qint16 PrintRun::iExecPrint(qint16 mode)
{
    BusyPointer busy(context.interaction());
    outcome = Outcome::NotRun;
    csvFilePath.clear();
    phaseTimes = {};

    QElapsedTimer clock;
    clock.start();
    const DbTraffic trafficBefore = dbTraffic();
    const qint16 found = runQuery();
    phaseTimes.queryMs = clock.restart();
    const DbTraffic traffic = dbTraffic() - trafficBefore;
    phaseTimes.statements = traffic.statements;
    phaseTimes.connections = traffic.connections;
    if (found == 1) {
        outcome = Outcome::NothingToPrint;
        return 1;
    }
    if (found == -1) {
        outcome = Outcome::Failed;
        showInfo(u"請求データの取得に失敗しました。"_s);
        return -1;
    }

    // The data folder's seal first, then the program folder's. The data folder already ends in "\",
    // so the joined path holds a doubled separator; the file system accepts it and it is kept.
    const QString dataSeal = csDataDir(context) + u"\\corpseal.bmp"_s;
    const QString baseSeal = context.csAppDir + u"\\corpseal.bmp"_s;
    sealImagePath = bFileExists(dataSeal) ? dataSeal : bFileExists(baseSeal) ? baseSeal : QString();

    clock.restart();
    const qint16 written = runWriter();
    phaseTimes.writeMs = clock.elapsed();
    if (written == -1) {
        outcome = Outcome::Failed;
        showInfo(u"データの出力に失敗しました。"_s);
        return -1;
    }
    if (written == 0) {
        outcome = Outcome::NothingToPrint;
        showInfo(u"出力対象データが存在しません。"_s);
        return 0;
    }
    if (handoff == Handoff::CsvOnly) {
        outcome = Outcome::CsvWritten;
        return 0;
    }
    clock.restart();
    const qint16 handed = handToEngine(mode);
    phaseTimes.engineMs = clock.elapsed();
    return handed;
}

qint16 PrintRun::handToEngine(qint16 mode)
{
    const EngineJob job = engineJob(data.jouken.iPrintKind);
    cls_WfdPrintExe wfd(context);
    const auto engineFailed = [&] {
        // Reported here with the bridge's reason; the run's result stays 0, so the entry adds nothing.
        outcome = Outcome::EngineFailed;
        context.interaction().messageBox(u"帳票の印刷に失敗しました。\r["_s + wfd.sErrMsg + u"]"_s,
                                         csSeikyuTitle(), MsgIcon::Critical);
        return qint16(0);
    };
    if (wfd.iInit(layoutFilePath(context, job.layout), csSeikyuTitle()) != 0)
        return engineFailed();
    if (wfd.iSetDataText(1, job.dataName, job.csvFile) != 0)
        return engineFailed();
    qint16 started = 0;
    if (handoff == Handoff::Pdf)
        started = wfd.iRenderPdf(job.paper, pdfPath);
    else if (mode == 0)
        started = wfd.iPreview(job.paper);
    else
        started = wfd.iPrintDialog(job.paper);
    if (started != 0)
        return engineFailed();
    outcome = Outcome::Done;
    return 0;
}

QString PrintRun::csvPath(const QString& fileName) const
{
    return csTmpDir(context) + fileName;
}

qint16 PrintRun::reportCsvResult(const std::optional<CsvWriteError>& error)
{
    if (!error)
        return 1;
    context.interaction().messageBox(error->message(), csSeikyuTitle(), MsgIcon::None, MsgButtons::Ok);
    return -1;
}

qint16 PrintRun::iWriteSeikyuCsv()
{
    csvFilePath = csvPath(kSeikyuCsv);
    return reportCsvResult(writeSeikyuCsv(toLocalPath(csvFilePath), data.aSisetsuSeikyu, sealImagePath));
}

qint16 PrintRun::iWriteSeikyuCsv_ALLDB()
{
    csvFilePath = csvPath(kSeikyuCsv);
    const SeikyuGroups groups{data.aSeikyuSisetsu, data.nSeikyuSisetsuCnt, data.aSeikyuJihi,
                              data.nSeikyuJihiCnt};
    return reportCsvResult(writeSeikyuCsvAllDb(toLocalPath(csvFilePath), groups, sealImagePath));
}

qint16 PrintRun::iWriteKanjaCsv()
{
    csvFilePath = csvPath(kSeikyuCsv);
    return reportCsvResult(
        writeKanjaCsv(toLocalPath(csvFilePath), data.aKanjaSeikyu, data.jouken, sealImagePath));
}

qint16 PrintRun::iWriteKenRyousyuuCsv()
{
    csvFilePath = csvPath(kKenRyousyuuCsv);
    return reportCsvResult(
        writeKenRyousyuuCsv(toLocalPath(csvFilePath), data.aKenRyousyuu, data.jouken, sealImagePath));
}

} // namespace qelprn
