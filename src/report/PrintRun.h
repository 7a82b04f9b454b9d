#pragma once

#include "app/AppContext.h"
#include "billing/modPrint施設請求書.h"
#include "report/CsvWriteError.h"
#include "report/PrintFormValues.h"

#include <QString>
#include <QtGlobal>
#include <optional>

namespace qelprn {

// The print run: reads the print conditions from its caller (the main form or the command line),
// runs the query of the chosen print kind, writes the print-data CSV file, chooses the layout and
// hands both to the form-print engine. Every outcome is told to the user through the interaction
// interface under the title "施設請求書印刷".
class PrintRun
{
public:
    explicit PrintRun(AppContext& context);

    // Output modes: 0 preview, 1 print, 2 CSV output.
    void PrintSisetsuSeikyu(qint16 mode, PrintConditionSource& form);
    qint16 iGetPrintJouken(PrintConditionSource& form);
    qint16 iExecPrint(qint16 mode);

    // The CSV writers of the print kinds; each reads the query's result in `data` and the seal image
    // path, writes its file into the temporary folder and returns 1, or shows the run-time error and
    // returns -1.
    qint16 iWriteSeikyuCsv();
    qint16 iWriteSeikyuCsv_ALLDB();
    qint16 iWriteKanjaCsv();
    qint16 iWriteKenRyousyuuCsv();

    AppContext& context;
    modPrint施設請求書 data; // conditions, query results
    QString sealImagePath;   // "" when no seal image exists

    // How the last run ended, finer than the result codes (which report some failures as 0): the
    // command line turns it into its exit status.
    enum class Outcome {
        NotRun,
        ConditionsFailed, // iGetPrintJouken failed
        NothingToPrint,   // the query found nothing, or the writer wrote no data line
        Failed,           // query or CSV writer failed
        EngineFailed,     // the engine could not be initialised or started
        CsvWritten,       // stopped after the CSV (handoff CsvOnly)
        Done,             // handed to the engine (or rendered to PDF)
    };
    Outcome outcome = Outcome::NotRun;

    // What the run does after the CSV: start the engine (the desktop program), stop (the command
    // line's --csv-only), or have the engine render a PDF and wait for it (--pdf).
    enum class Handoff { Engine, CsvOnly, Pdf };
    Handoff handoff = Handoff::Engine;
    QString pdfPath;     // for Handoff::Pdf
    QString csvFilePath; // the CSV file of the last run, in the suite's spelling

    // Wall-clock milliseconds of the last run's phases; -1 for a phase that did not run. The
    // engine's share is known only when the run waits for it (Handoff::Pdf).
    struct PhaseTimes
    {
        qint64 queryMs = -1;
        qint64 writeMs = -1;
        qint64 engineMs = -1;
        qint64 statements = 0;  // statements sent to the databases by the run
        qint64 connections = 0; // connections the run opened (not taken from the pool)
    };
    PhaseTimes phaseTimes;

private:
    void showInfo(const QString& text);
    qint16 runQuery();
    qint16 runWriter();
    qint16 handToEngine(qint16 mode);
    QString csvPath(const QString& fileName) const;
    qint16 reportCsvResult(const std::optional<CsvWriteError>& error);
};

} // namespace qelprn
