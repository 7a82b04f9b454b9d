#pragma once

#include "app/AppContext.h"
#include "billing/PrintJouken.h"
#include "db/DbInfo.h"

#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <optional>

namespace qelprn::cli {

// The options of `qelprn-cli print`: the print conditions they give, and what to do with them.
struct PrintOptions
{
    enum class Output { None, CsvOnly, Preview, Print, Pdf, PdfDir };

    PrintJouken jouken; // without the sites of kind 6, which chooseSites finds
    int kind = 0;
    QString appDir;                      // "" = the default program folder
    std::optional<QList<SiteKey>> sites; // kind 6: the sites named by --sites; none = every site
    Output output = Output::None;
    QString pdfFile; // absolute
    bool yes = false;
    bool timings = false; // --timings: the phases' times on standard error

    // --pdf-dir: one PDF per addressee and the list into this folder (absolute); --replace: an
    // earlier run's files there may be replaced.
    QString pdfDir;
    bool replace = false;
};

// Declares the options of `print` on parser.
void addPrintOptions(QCommandLineParser& parser);
// The options of a parsed command line; throws UsageError when one is malformed, missing or does not
// apply to the chosen kind.
PrintOptions readPrintOptions(const QCommandLineParser& parser);

// The databases and sites of a kind 6 run: the named sites, or every site of the list (the main
// form's "全事業所"). false after the reason was told.
bool chooseSites(const AppContext& ctx, const std::optional<QList<SiteKey>>& named,
                 QList<SelectedDatabase>& databases, QTextStream& err);

} // namespace qelprn::cli
