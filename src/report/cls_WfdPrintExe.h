#pragma once

#include "app/AppContext.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QtGlobal>
#include <array>
#include <functional>

class QProcess;

namespace qelprn {

// The program's only contact with the form-print engine: it writes the engine's command file
// "WfdCom.dat" (CP932, CR LF) into the temporary folder and starts the engine program with "/c" and
// that file, without waiting for it. The engine is our own, installed beside this program
// (bundledEngine()), unless "Tovara.ini" names another with FORM_ENGINE ("wfrfv10.exe", say); a
// name without a folder is looked up on the PATH and next to this program.
// Every operation returns 0 on success and non-zero on failure, with the reason in sErrMsg; the
// bridge never shows a message itself.
class cls_WfdPrintExe
{
public:
    explicit cls_WfdPrintExe(const AppContext& context);

    QString sErrMsg;

    // Called once when the engine has read the job (the command file and its data), so the print
    // run can give the temporary folder to the next run. Our engine says so itself; for another
    // engine, or one that ended or did not answer within jobReadLimitMs, it is called then. With
    // it set, iPreview and iPrintDialog return only after it was called.
    std::function<void()> onJobRead;
    int jobReadLimitMs = 60 * 1000;

    enum class Action { Preview, Print, PrintFromDialog };
    static constexpr int kDataSlots = 5;

    // Resets every setting: layout and title, empty data slots, no offsets, zoom 2 (the layout's
    // own), no repeat start, no items; reads the engine program and the command folder.
    qint16 iInit(const QString& layoutPath, const QString& title);
    // Slot 1..5: the layout's data name and the data file (a name in the command folder).
    qint16 iSetDataText(qint16 slot, const QString& dataName, const QString& fileName);
    // The same for a data file without a title line.
    qint16 iSetDataTextNoTitle(qint16 slot, const QString& dataName, const QString& fileName);
    qint16 iSetOffset(qint32 x, qint32 y);
    qint16 iSetPrintZoom(qint16 zoom);
    // item: an item name, or a section name and an item name joined by ".".
    qint16 iSetItemValue(const QString& item, const QString& value);
    qint16 iSetRepeatStart(qint16 line);

    // Write the command file with the action and start the engine; paper true asks for A4.
    qint16 iPreview(bool paper);
    qint16 iPreviewData(); // preview with the data already set, on the layout's own paper
    // Preview through the engine's viewer program "WrVb6Viewer.exe", which takes the data files
    // from "./TMP\" (the program folder's temporary folder, the viewer's working folder).
    qint16 iPreviewActX();
    qint16 iPrintBk(bool paper);
    qint16 iPrintDialog(bool paper);
    // Renders the job to pdfPath instead of its action: the command file of a preview, the engine
    // started with "--pdf pdfPath /c <command file>" and waited for (at most timeoutMs). The engine's
    // own message becomes sErrMsg when it fails.
    qint16 renderToPdf(bool paper, const QString& pdfPath, int timeoutMs = 30 * 60 * 1000);

    // Join several reports into one job: each call adds the report set up since iInit (layout; with
    // addPrint_addCSV also its data files) to the job, writes the image program's command file
    // ("setTitle," the title, then per report "setreport," the layout, its "SetDataText," lines and
    // "AddReport") and runs "wfrimg10.exe /c" on it, waiting for it to build "tmp.wfd" in the
    // command folder; preview or print that layout afterwards.
    qint16 addPrint();
    qint16 addPrint_addCSV();

    // The command file's text for an action, as written (CP932, CR LF).
    QByteArray commandFileBytes(Action action, bool paper) const;
    // The image program's command file for the reports added so far.
    QByteArray jobFileBytes() const;
    // The command file in the suite's spelling (command folder + "WfdCom.dat").
    QString commandFilePath() const;
    // The engine program that would be started, or "" with sErrMsg (naming where it was looked
    // for) when it cannot be found.
    QString resolveEngine();
    // Our engine beside this program: "qelprn-engine" ("qelprn-engine.exe" on Windows).
    static QString bundledEngine();

private:
    struct DataSlot
    {
        QString name;
        QString file; // found in the data folder (the command folder, or the viewer's)
        bool noTitle = false;
    };
    struct JobReport
    {
        QString layoutPath;
        QStringList dataLines;
    };

    qint16 setData(qint16 slot, const QString& dataName, const QString& fileName, bool noTitle);
    QStringList dataLines(const QString& dataFolder) const;
    QByteArray commandBytes(Action action, bool paper, const QString& dataFolder) const;
    bool writeFile(const QByteArray& bytes);
    QString resolveProgram(const QString& program);
    qint16 start(Action action, bool paper, const QString& program, const QString& dataFolder);
    // Runs program with arguments and waits; its message on standard error becomes sErrMsg.
    qint16 runAndWait(const QString& program, const QStringList& arguments, int timeoutMs, bool offscreen);
    qint16 addToJob(bool withData);
    // The receipt file our engine creates when it has read the job (see EngineReceipt.h); "" when
    // nobody waits for it.
    QString prepareReceipt(QProcess& process, const QString& program);
    // Calls onJobRead once the receipt exists or isRunning turns false, at most jobReadLimitMs
    // (10 s for an engine that gives no receipt) after the start.
    void awaitJobRead(const QString& receipt, const std::function<bool()>& isRunning);
    void jobRead(const QString& receipt);
    const AppContext& m_context;
    QString m_engine;        // FORM_ENGINE, or bundledEngine()
    QString m_commandFolder; // SYSTEM_TMP folder with a trailing "\"
    QString m_layoutPath;
    QString m_title;
    std::array<DataSlot, kDataSlots> m_slots;
    qint32 m_offsetX = 0;
    qint32 m_offsetY = 0;
    qint16 m_zoom = 2;
    qint16 m_repeatStart = 0;
    bool m_repeatStartSet = false;
    QList<QPair<QString, QString>> m_items;
    QList<JobReport> m_job;
};

} // namespace qelprn
