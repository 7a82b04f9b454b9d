#include "report/PrintRun.h"

#include "app/FileUtil.h"
#include "app/LayoutPath.h"
#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "app/SpaceTrim.h"
#include "app/SysIni.h"
#include "db/DbTraffic.h"
#include "report/AddresseeFolder.h"
#include "report/PrintFolderLock.h"
#include "report/PrintKind.h"
#include "report/cls_WfdPrintExe.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The form's option groups: the first set option wins.
template <std::size_t N> int firstSet(const std::array<bool, N>& options)
{
    for (std::size_t i = 0; i < N; ++i) {
        if (options[i])
            return int(i);
    }
    return -1;
}

} // namespace

PrintRun::PrintRun(AppContext& context, Handoff handoff, QString pdfPath)
    : m_context(context), m_handoff(handoff), m_pdfPath(std::move(pdfPath)), m_data(context)
{}

void PrintRun::showInfo(const QString& text)
{
    m_context.interaction().messageBox(text, csSeikyuTitle(), MsgIcon::Information);
}

PrintRun::Result PrintRun::PrintSisetsuSeikyu(qint16 mode, PrintConditionSource& form)
{
    Result result;
    if (!iGetPrintJouken(form)) {
        result.outcome = Outcome::ConditionsFailed;
        showInfo(u"印刷条件の取得に失敗しました。"_s);
        return result;
    }
    result.jouken = m_data.jouken;
    iExecPrint(mode, result);
    // Failures the run reported with a result code of -1 get the entry's own closing message; an
    // engine failure was reported with its reason already.
    const bool failed = result.outcome == Outcome::Failed;
    if (failed && (mode == 0 || mode == 1))
        showInfo(u"帳票の印刷に失敗しました。"_s);
    else if (failed && mode == 2)
        showInfo(u"CSVの出力に失敗しました。"_s);
    return result;
}

bool PrintRun::iGetPrintJouken(PrintConditionSource& form)
{
    PrintFormValues v;
    if (!form.readPrintFormValues(v) || !v.imD_Out.isValid() || !v.imD_Teis.isValid())
        return false;
    PrintJouken& j = m_data.jouken;
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
        (k == 0 ? j.sSisetsuType1 : j.sSisetsuType2) = chosen ? csRTrim(v.cmbKaishaKbnText[k]) : QString();
    }
    j.bSelSisetsuType = !v.optSelSisetsuType[0];
    j.iSortShisetsu = qint16(qMax(0, firstSet(v.optSortShisetsu)));
    j.nTantouCd = v.cbTantouListIndex > 0 ? v.cbTantouItemData : 0;
    j.selectedDatabases = form.selectedDatabases();
    return true;
}

void PrintRun::iExecPrint(qint16 mode, Result& result)
{
    BusyPointer busy(m_context.interaction());
    // Every kind iGetPrintJouken can choose has a row in the table.
    const PrintKind& kind = *printKind(m_data.jouken.iPrintKind);

    QElapsedTimer clock;
    clock.start();
    const DbTraffic trafficBefore = dbTraffic();
    const qint16 found = (m_data.*kind.query)();
    result.times.queryMs = clock.restart();
    const DbTraffic traffic = dbTraffic() - trafficBefore;
    result.times.statements = traffic.statements;
    result.times.connections = traffic.connections;
    if (found == 1) {
        result.outcome = Outcome::NothingToPrint;
        return;
    }
    if (found == -1) {
        result.outcome = Outcome::Failed;
        showInfo(u"請求データの取得に失敗しました。"_s);
        return;
    }

    if (kind.confirm && m_handoff != Handoff::CsvOnly && !kind.confirm(m_data, m_context.interaction())) {
        result.outcome = Outcome::Declined;
        return;
    }

    // The data folder's seal first, then the program folder's. The data folder already ends in "\",
    // so the joined path holds a doubled separator; the file system accepts it and it is kept.
    const QString dataSeal = csDataDir(m_context) + u"\\corpseal.bmp"_s;
    const QString baseSeal = m_context.csAppDir + u"\\corpseal.bmp"_s;
    result.sealImagePath = bFileExists(dataSeal) ? dataSeal : bFileExists(baseSeal) ? baseSeal : QString();

    // From here until the engine has read them, this run's files in the temporary folder are its own.
    PrintFolderLock lock(toLocalPath(csTmpDir(m_context)));
    if (!lockFolder(lock, result))
        return;
    clock.restart();
    result.csvFilePath = csTmpDir(m_context) + kind.csvFile;
    const CsvResult written = kind.writer(toLocalPath(result.csvFilePath), m_data, result.sealImagePath);
    result.times.writeMs = clock.elapsed();
    if (written) {
        m_context.interaction().messageBox(written->message(), csSeikyuTitle(), MsgIcon::None,
                                           MsgButtons::Ok);
        result.outcome = Outcome::Failed;
        showInfo(u"データの出力に失敗しました。"_s);
        return;
    }
    if (m_handoff == Handoff::CsvOnly) {
        result.outcome = Outcome::CsvWritten;
        return;
    }
    clock.restart();
    handToEngine(kind, mode, result, lock);
    result.times.engineMs = clock.elapsed();
}

bool PrintRun::lockFolder(PrintFolderLock& lock, Result& result)
{
    switch (lock.acquire(m_context.interaction(), m_folderWaitLimit)) {
    case PrintFolderLock::Outcome::Locked:
        return true;
    case PrintFolderLock::Outcome::Cancelled:
        result.outcome = Outcome::WaitCancelled;
        return false;
    case PrintFolderLock::Outcome::TimedOut: {
        const QString holder = lock.holder();
        result.outcome = Outcome::FolderBusy;
        m_context.interaction().messageBox(
            u"他の印刷が終わらないため、印刷を中止しました。"_s +
                (holder.isEmpty() ? QString() : u"\r\n（印刷中: "_s + holder + u"）"_s) +
                u"\r\nしばらくしてから、もう一度印刷してください。"_s,
            csSeikyuTitle(), MsgIcon::Exclamation);
        return false;
    }
    case PrintFolderLock::Outcome::Failed:
        // No lock file can be made (a read-only folder): the writer cannot write either, and says
        // so in the suite's words.
        break;
    }
    return true;
}

void PrintRun::handToEngine(const PrintKind& kind, qint16 mode, Result& result, PrintFolderLock& lock)
{
    cls_WfdPrintExe wfd(m_context);
    wfd.onJobRead = [&lock] { lock.release(); };
    const auto engineFailed = [&] {
        // Reported here with the bridge's reason; the run's result code stays 0, so the entry adds
        // nothing.
        result.outcome = Outcome::EngineFailed;
        m_context.interaction().messageBox(u"帳票の印刷に失敗しました。\r["_s + wfd.sErrMsg + u"]"_s,
                                           csSeikyuTitle(), MsgIcon::Critical);
    };
    if (wfd.iInit(layoutFilePath(m_context, kind.layout), csSeikyuTitle()) != 0 ||
        wfd.iSetDataText(1, kind.dataName, kind.csvFile) != 0)
        return engineFailed();
    if (m_handoff == Handoff::PdfFolder && m_folder)
        return writeFolder(wfd, kind, result);
    qint16 started = 0;
    if (m_handoff == Handoff::Pdf)
        started = wfd.iRenderPdf(kind.paper, m_pdfPath);
    else if (mode == 0)
        started = wfd.iPreview(kind.paper);
    else
        started = wfd.iPrintDialog(kind.paper);
    if (started != 0)
        return engineFailed();
    result.outcome = Outcome::Done;
}

void PrintRun::writeFolder(cls_WfdPrintExe& wfd, const PrintKind& kind, Result& result)
{
    if (writeAddresseeFolder(m_context, wfd, kind, m_data.jouken, *m_folder) != 0) {
        result.outcome = Outcome::EngineFailed;
        m_context.interaction().messageBox(u"帳票の出力に失敗しました。\r["_s + m_folder->error + u"]"_s,
                                           csSeikyuTitle(), MsgIcon::Critical);
        return;
    }
    result.outcome = m_folder->cancelled ? Outcome::Cancelled : Outcome::Done;
}

} // namespace qelprn
