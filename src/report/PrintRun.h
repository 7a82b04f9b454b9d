#pragma once

#include "app/AppContext.h"
#include "billing/modPrint施設請求書.h"
#include "report/PrintConditionSource.h"

#include <QString>
#include <QtGlobal>
#include <chrono>

namespace qelprn {

struct PrintKind;
struct FolderOutput;
class cls_WfdPrintExe;
class PrintFolderLock;

// The print run: takes the print conditions from its caller (the main form, the command line or the
// month end), runs the query of the chosen print kind, writes the print-data CSV file and hands it with the
// kind's layout to the form-print engine. Every outcome is told to the user through the interaction
// interface under the title "施設請求書印刷"; the caller learns how the run ended from its Result.
class PrintRun
{
public:
    // What the run does after the CSV: start the engine (the desktop program), stop (the command
    // line's --csv-only), or have the engine render a PDF and wait for it (--pdf), or one PDF per
    // addressee into a folder (--pdf-dir, month end; see setFolderOutput).
    enum class Handoff { Engine, CsvOnly, Pdf, PdfFolder };

    // How a run ended, finer than the suite's result codes (which report some failures as 0): the
    // command line turns it into its exit status.
    enum class Outcome {
        NotRun,
        ConditionsFailed, // the conditions could not be read, or lack the month or issue date
        NothingToPrint,   // the query found nothing, or the writer wrote no data line
        Failed,           // query or CSV writer failed
        EngineFailed,     // the engine could not be started, or failed to render
        Declined,         // the person answered No to the kind's question before printing
        WaitCancelled,    // another run held the temporary folder and the person stopped waiting
        FolderBusy,       // another run held the temporary folder past the time limit
        CsvWritten,       // stopped after the CSV (Handoff::CsvOnly)
        Done,             // handed to the engine (or rendered to PDF)
        Cancelled,        // the person stopped a per-addressee run (the finished files stay)
    };

    // Wall-clock milliseconds of a run's phases; -1 for a phase that did not run. The engine's share
    // is known only when the run waits for it (Handoff::Pdf).
    struct PhaseTimes
    {
        qint64 queryMs = -1;
        qint64 writeMs = -1;
        qint64 engineMs = -1;
        qint64 statements = 0;  // statements sent to the databases by the run
        qint64 connections = 0; // connections the run opened (not taken from the pool)
    };

    struct Result
    {
        Outcome outcome = Outcome::NotRun;
        PrintJouken jouken;    // the conditions the run was given
        QString csvFilePath;   // the CSV file written, in the suite's spelling; "" when none was
        QString sealImagePath; // the seal image the CSV names; "" when none exists
        PhaseTimes times;
    };

    // pdfPath: the file the engine renders to, for Handoff::Pdf.
    explicit PrintRun(const AppContext& context, Handoff handoff = Handoff::Engine, QString pdfPath = {});

    // Runs in mode 0 preview, 1 print or 2 CSV output with the conditions form gives. The sort
    // order of the invoice-receipts stays from the previous run of this object when form sets none.
    Result PrintSisetsuSeikyu(qint16 mode, PrintConditionSource& form);
    // The same with conditions already built.
    Result PrintSisetsuSeikyu(qint16 mode, const PrintJouken& jouken);

    // The folder, options and results of Handoff::PdfFolder; output must outlive the run.
    void setFolderOutput(FolderOutput* output) { m_folder = output; }
    // How long a run waits for another run that holds the temporary folder.
    void setFolderWaitLimit(std::chrono::milliseconds limit) { m_folderWaitLimit = limit; }

private:
    bool iGetPrintJouken(PrintConditionSource& form);
    void iExecPrint(qint16 mode, Result& result);
    void handToEngine(const PrintKind& kind, qint16 mode, Result& result, PrintFolderLock& lock);
    void writeFolder(cls_WfdPrintExe& wfd, const PrintKind& kind, Result& result);
    bool lockFolder(PrintFolderLock& lock, Result& result);
    void showInfo(const QString& text);

    const AppContext& m_context;
    Handoff m_handoff;
    QString m_pdfPath;
    modPrint施設請求書 m_data; // conditions, query results
    FolderOutput* m_folder = nullptr;
    std::chrono::milliseconds m_folderWaitLimit = std::chrono::minutes(2);
};

} // namespace qelprn
