#include "report/cls_WfdPrintExe.h"

#include "app/AtomicFile.h"
#include "app/Cp932.h"
#include "app/EngineReceipt.h"
#include "app/Paths.h"
#include "app/Platform.h"
#include "app/SpaceTrim.h"
#include "app/SysIni.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <QUuid>
#include <utility>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kCommandFile = u"WfdCom.dat"_s;

QString quoted(const QString& text)
{
    return u"\""_s + text + u"\""_s;
}

QString actionLine(cls_WfdPrintExe::Action action)
{
    switch (action) {
    case cls_WfdPrintExe::Action::Preview:
        return u"ShowWindow,2"_s;
    case cls_WfdPrintExe::Action::Print:
        return u"PrintOut"_s;
    case cls_WfdPrintExe::Action::PrintFromDialog:
        break;
    }
    return u"PrintOutFromDialog"_s;
}

} // namespace

cls_WfdPrintExe::cls_WfdPrintExe(const AppContext& context) : m_context(context) {}

QString cls_WfdPrintExe::bundledEngine()
{
#ifdef Q_OS_WIN
    const QString name = u"qelprn-engine.exe"_s;
#else
    const QString name = u"qelprn-engine"_s;
#endif
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

qint16 cls_WfdPrintExe::iInit(const QString& layoutPath, const QString& title)
{
    sErrMsg.clear();
    // FORM_ENGINE is optional: a missing key means our engine beside this program, without a message.
    const QString engine = trimSpaces(vGetSysIniValue(m_context, u"FORM_ENGINE"_s, false));
    m_engine = engine.isEmpty() ? bundledEngine() : engine;
    m_commandFolder = csTmpDir(m_context);
    m_layoutPath = layoutPath;
    m_title = title;
    m_slots = {};
    m_offsetX = 0;
    m_offsetY = 0;
    m_zoom = 2;
    m_repeatStart = 0;
    m_repeatStartSet = false;
    m_items.clear();
    return 0;
}

qint16 cls_WfdPrintExe::setData(qint16 slot, const QString& dataName, const QString& fileName, bool noTitle)
{
    if (slot < 1 || slot > kDataSlots) {
        sErrMsg = u"データ番号 "_s + QString::number(slot) + u" は 1 から 5 の範囲にありません。"_s;
        return -1;
    }
    m_slots[slot - 1] = {dataName, fileName, noTitle};
    return 0;
}

qint16 cls_WfdPrintExe::iSetDataText(qint16 slot, const QString& dataName, const QString& fileName)
{
    return setData(slot, dataName, fileName, false);
}

qint16 cls_WfdPrintExe::iSetDataTextNoTitle(qint16 slot, const QString& dataName, const QString& fileName)
{
    return setData(slot, dataName, fileName, true);
}

qint16 cls_WfdPrintExe::iSetOffset(qint32 x, qint32 y)
{
    m_offsetX = x;
    m_offsetY = y;
    return 0;
}

qint16 cls_WfdPrintExe::iSetPrintZoom(qint16 zoom)
{
    m_zoom = zoom;
    return 0;
}

qint16 cls_WfdPrintExe::iSetItemValue(const QString& item, const QString& value)
{
    m_items.append({item, value});
    return 0;
}

qint16 cls_WfdPrintExe::iSetRepeatStart(qint16 line)
{
    m_repeatStart = line;
    m_repeatStartSet = true;
    return 0;
}

QStringList cls_WfdPrintExe::dataLines(const QString& dataFolder) const
{
    QStringList lines;
    for (const DataSlot& slot : m_slots) {
        if (slot.name.isEmpty())
            continue;
        lines << u"SetDataText,"_s + quoted(slot.name) + u","_s + quoted(dataFolder + slot.file) +
                     (slot.noTitle ? u",,,1"_s : QString());
    }
    return lines;
}

QByteArray cls_WfdPrintExe::commandFileBytes(Action action, bool paper) const
{
    return commandBytes(action, paper, m_commandFolder);
}

QByteArray cls_WfdPrintExe::commandBytes(Action action, bool paper, const QString& dataFolder) const
{
    QStringList lines;
    lines << u"FileName,"_s + quoted(m_layoutPath);
    if (!m_title.isEmpty())
        lines << u"Title,"_s + quoted(m_title);
    lines << dataLines(dataFolder);
    if (m_offsetX != 0)
        lines << u"PrintOffsetX, "_s + QString::number(m_offsetX);
    if (m_offsetY != 0)
        lines << u"PrintOffsetY, "_s + QString::number(m_offsetY);
    if (m_zoom != 2)
        lines << u"PrintZoom, "_s + QString::number(m_zoom);
    if (m_repeatStartSet)
        lines << u"SectionRepeatStart, "_s + QString::number(m_repeatStart);
    // The invoice-receipts ask for A4; every other form keeps the paper its layout names.
    if (paper)
        lines << u"PrintPaper, A4"_s;
    for (const auto& [item, value] : m_items)
        lines << u"SetItemValue,"_s + quoted(item) + u","_s + quoted(value);
    lines << actionLine(action);
    return toCp932(lines.join(u"\r\n"_s) + u"\r\n"_s);
}

QByteArray cls_WfdPrintExe::jobFileBytes() const
{
    QStringList lines = {u"setTitle,"_s + quoted(m_title)};
    for (const JobReport& report : m_job)
        lines << u"setreport,"_s + quoted(report.layoutPath) << report.dataLines << u"AddReport"_s;
    return toCp932(lines.join(u"\r\n"_s) + u"\r\n"_s);
}

QString cls_WfdPrintExe::commandFilePath() const
{
    return m_commandFolder + kCommandFile;
}

bool cls_WfdPrintExe::writeFile(const QByteArray& bytes)
{
    const QString path = toLocalPath(commandFilePath());
    QString error;
    if (!writeFileAtomically(path, bytes, &error)) {
        sErrMsg = path + u" を書き込めません。"_s + error;
        return false;
    }
    return true;
}

QString cls_WfdPrintExe::resolveEngine()
{
    return resolveProgram(m_engine);
}

QString cls_WfdPrintExe::resolveProgram(const QString& program)
{
    const QString name = toLocalPath(program);
    if (name.contains(u'/') || name.contains(u'\\')) {
        const QFileInfo file(name);
        if (file.isFile() && file.isExecutable())
            return file.absoluteFilePath();
        sErrMsg = u"帳票印刷エンジン "_s + QDir::toNativeSeparators(file.absoluteFilePath()) +
                  u" が見つかりません。"_s;
        return {};
    }
    QString found = QStandardPaths::findExecutable(name);
    const QString ownFolder = QCoreApplication::applicationDirPath();
    if (found.isEmpty() && !ownFolder.isEmpty())
        found = QStandardPaths::findExecutable(name, {ownFolder});
    if (found.isEmpty())
        sErrMsg = u"帳票印刷エンジン "_s + program + u" が見つかりません。（PATH のフォルダと "_s +
                  QDir::toNativeSeparators(ownFolder) + u" を探しました）"_s;
    return found;
}

qint16 cls_WfdPrintExe::start(Action action, bool paper, const QString& program, const QString& dataFolder)
{
    sErrMsg.clear();
    // The command file first, then the engine: a missing engine leaves the job written for a retry.
    if (!writeFile(commandBytes(action, paper, dataFolder)))
        return -1;
    const QString found = resolveProgram(program);
    if (found.isEmpty())
        return -1;
    QProcess process;
    process.setProgram(found);
    process.setArguments({u"/c"_s, toLocalPath(commandFilePath())});
#ifdef Q_OS_WIN
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* args) {
        args->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
        args->startupInfo->wShowWindow = SW_SHOWMINIMIZED;
    });
#endif
    const QString receipt = prepareReceipt(process, found);
    qint64 pid = 0;
    if (!process.startDetached(&pid)) {
        sErrMsg = u"帳票印刷エンジン "_s + found + u" を起動できません。"_s + process.errorString();
        jobRead(receipt);
        return -1;
    }
    awaitJobRead(receipt, [pid] { return platform::isProcessRunning(pid); });
    return 0;
}

QString cls_WfdPrintExe::prepareReceipt(QProcess& process, const QString& program)
{
    if (!onJobRead || QFileInfo(program).completeBaseName() != QFileInfo(bundledEngine()).completeBaseName())
        return {};
    const QString receipt =
        QDir::temp().filePath(u"qelprn-job-read-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces));
    QProcessEnvironment environment = process.processEnvironment();
    if (environment.isEmpty())
        environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(kEngineReceiptVariable), receipt);
    process.setProcessEnvironment(environment);
    return receipt;
}

void cls_WfdPrintExe::awaitJobRead(const QString& receipt, const std::function<bool()>& isRunning)
{
    if (!onJobRead)
        return;
    const int limit = receipt.isEmpty() ? qMin(jobReadLimitMs, 10 * 1000) : jobReadLimitMs;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < limit && isRunning() && (receipt.isEmpty() || !QFileInfo::exists(receipt)))
        QThread::msleep(50);
    jobRead(receipt);
}

void cls_WfdPrintExe::jobRead(const QString& receipt)
{
    if (!receipt.isEmpty())
        QFile::remove(receipt);
    if (onJobRead)
        std::exchange(onJobRead, nullptr)();
}

qint16 cls_WfdPrintExe::runAndWait(const QString& program, const QStringList& arguments, int timeoutMs,
                                   bool offscreen)
{
    QProcess process;
    if (offscreen) {
        // Rendering to a file needs no screen: without a chosen platform the engine runs offscreen.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (!environment.contains(u"QT_QPA_PLATFORM"_s))
            environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        process.setProcessEnvironment(environment);
    }
    const QString receipt = prepareReceipt(process, program);
    process.start(program, arguments);
    if (!process.waitForStarted()) {
        sErrMsg = u"帳票印刷エンジン "_s + program + u" を起動できません。"_s + process.errorString();
        jobRead(receipt);
        return -1;
    }
    // The folder is free for the next run as soon as the engine has read the job, long before a
    // large PDF is written.
    awaitJobRead(receipt, [&process] {
        process.waitForFinished(0);
        return process.state() != QProcess::NotRunning;
    });
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        sErrMsg = u"帳票印刷エンジン "_s + program + u" が時間内に終わりませんでした。"_s;
        return -1;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString message = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
        sErrMsg = message.isEmpty() ? u"帳票印刷エンジンが終了コード "_s +
                                          QString::number(process.exitCode()) + u" で終わりました。"_s
                                    : message;
        return -1;
    }
    return 0;
}

qint16 cls_WfdPrintExe::iPreview(bool paper)
{
    return start(Action::Preview, paper, m_engine, m_commandFolder);
}

qint16 cls_WfdPrintExe::iPreviewData()
{
    return start(Action::Preview, false, m_engine, m_commandFolder);
}

qint16 cls_WfdPrintExe::iPreviewActX()
{
    return start(Action::Preview, false, u"WrVb6Viewer.exe"_s, u"./TMP\\"_s);
}

qint16 cls_WfdPrintExe::iPrintBk(bool paper)
{
    return start(Action::Print, paper, m_engine, m_commandFolder);
}

qint16 cls_WfdPrintExe::iPrintDialog(bool paper)
{
    return start(Action::PrintFromDialog, paper, m_engine, m_commandFolder);
}

qint16 cls_WfdPrintExe::renderToPdf(bool paper, const QString& pdfPath, int timeoutMs)
{
    sErrMsg.clear();
    if (!writeFile(commandFileBytes(Action::Preview, paper)))
        return -1;
    const QString engine = resolveEngine();
    if (engine.isEmpty())
        return -1;
    return runAndWait(engine, {u"--pdf"_s, pdfPath, u"/c"_s, toLocalPath(commandFilePath())}, timeoutMs,
                      true);
}

qint16 cls_WfdPrintExe::addToJob(bool withData)
{
    sErrMsg.clear();
    m_job.append({m_layoutPath, withData ? dataLines(m_commandFolder) : QStringList()});
    if (!writeFile(jobFileBytes()))
        return -1;
    const QString imager = resolveProgram(u"wfrimg10.exe"_s);
    if (imager.isEmpty())
        return -1;
    return runAndWait(imager, {u"/c"_s, toLocalPath(commandFilePath())}, 10 * 60 * 1000, false);
}

qint16 cls_WfdPrintExe::addPrint()
{
    return addToJob(false);
}

qint16 cls_WfdPrintExe::addPrint_addCSV()
{
    return addToJob(true);
}

} // namespace qelprn
