#include "report/PrintRun.h"

#include "app/FileUtil.h"
#include "app/LayoutPath.h"
#include "app/Paths.h"
#include "app/ProgramTitle.h"
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

// Conditions handed over as a value.
class GivenConditions final : public PrintConditionSource
{
public:
    explicit GivenConditions(const PrintJouken& jouken) : m_jouken(jouken) {}
    bool iGetPrintJouken(PrintJouken& jouken) override
    {
        jouken = m_jouken;
        return true;
    }

private:
    const PrintJouken& m_jouken;
};

} // namespace

PrintRun::PrintRun(const AppContext& context, Handoff handoff, QString pdfPath)
    : m_context(context), m_handoff(handoff), m_pdfPath(std::move(pdfPath)), m_data(context)
{}

void PrintRun::showInfo(const QString& text)
{
    m_context.interaction().messageBox(text, seikyuTitle(), MsgIcon::Information);
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

PrintRun::Result PrintRun::PrintSisetsuSeikyu(qint16 mode, const PrintJouken& jouken)
{
    GivenConditions given(jouken);
    return PrintSisetsuSeikyu(mode, given);
}

bool PrintRun::iGetPrintJouken(PrintConditionSource& form)
{
    PrintJouken read = m_data.jouken;
    if (!form.iGetPrintJouken(read) || read.sSeikyuYM.isEmpty() || read.sTeisyutuDate.isEmpty() ||
        !printKind(read.iPrintKind))
        return false;
    m_data.jouken = std::move(read);
    return true;
}

void PrintRun::iExecPrint(qint16 mode, Result& result)
{
    BusyPointer busy(m_context.interaction());
    // iGetPrintJouken let only kinds of the table through.
    const PrintKind& kind = *printKind(m_data.jouken.iPrintKind);
    m_data.receiptDays = kind.receiptDays;

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

    // Without "Tovara.ini" (removed while the program ran; the person was told) there is no
    // temporary folder to write to.
    const QString tmpDir = csTmpDir(m_context);
    if (tmpDir.isEmpty()) {
        result.outcome = Outcome::Failed;
        return;
    }
    // The data folder's seal first, then the program folder's. The data folder already ends in "\",
    // so the joined path holds a doubled separator; the file system accepts it and it is kept.
    const QString dataSeal = csDataDir(m_context) + u"\\corpseal.bmp"_s;
    const QString baseSeal = m_context.csAppDir + u"\\corpseal.bmp"_s;
    result.sealImagePath = bFileExists(dataSeal) ? dataSeal : bFileExists(baseSeal) ? baseSeal : QString();

    // From here until the engine has read them, this run's files in the temporary folder are its own.
    PrintFolderLock lock(toLocalPath(tmpDir));
    if (!lockFolder(lock, result))
        return;
    clock.restart();
    result.csvFilePath = tmpDir + kind.csvFile;
    const CsvResult written = kind.writer(toLocalPath(result.csvFilePath), m_data, result.sealImagePath);
    result.times.writeMs = clock.elapsed();
    if (written) {
        m_context.interaction().messageBox(written->message(), seikyuTitle(), MsgIcon::None, MsgButtons::Ok);
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
            seikyuTitle(), MsgIcon::Exclamation);
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
                                           seikyuTitle(), MsgIcon::Critical);
    };
    if (wfd.iInit(layoutFilePath(m_context, kind.layout), seikyuTitle()) != 0 ||
        wfd.iSetDataText(1, kind.dataName, kind.csvFile) != 0)
        return engineFailed();
    if (m_handoff == Handoff::PdfFolder && m_folder)
        return writeFolder(wfd, kind, result);
    qint16 started = 0;
    if (m_handoff == Handoff::Pdf)
        started = wfd.renderToPdf(kind.paper, m_pdfPath);
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
                                           seikyuTitle(), MsgIcon::Critical);
        return;
    }
    result.outcome = m_folder->cancelled ? Outcome::Cancelled : Outcome::Done;
}

} // namespace qelprn
