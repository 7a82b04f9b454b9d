#pragma once

#include "engine/EngineError.h"
#include "engine/FormDocument.h"

#include <QString>
#include <functional>

class QPrinter;

namespace qelprn::engine {

// Reports pages done / total while a job is written; return false to stop.
using PageProgress = std::function<bool(int done, int total)>;

// Writes every page into one PDF with the fonts embedded (as PDF/A-1b when pdfa); the pages are
// painted and written one after another, so memory stays flat however many pages the job has.
bool writePdf(FormDocument& document, const QString& file, EngineError* error,
              const PageProgress& progress = {}, bool pdfa = false);
// Writes each page as "page-0001.png" ... into folder (created when missing), at dpi.
bool writePngs(FormDocument& document, const QString& folder, int dpi, EngineError* error, int maxPages = -1);
// Prints pages from..to (1-based, 0 = all) on an already set-up printer.
bool printDocument(FormDocument& document, QPrinter& printer, EngineError* error, int fromPage = 0,
                   int toPage = 0);

// Why the print dialog cannot open, or empty when it can. Windows' own dialog does not open on a
// PC without a printer (it returns as if cancelled), so the clerk would see nothing happen; Qt's
// dialog elsewhere opens and offers printing to a file.
QString printDialogBlocker();

} // namespace qelprn::engine
