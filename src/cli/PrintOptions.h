#pragma once

#include "db/DbInfo.h"
#include "report/PrintFormValues.h"

#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace qelprn::cli {

// The options of `qelprn-cli print`, turned into the values of the main form's controls, so that
// the print run reads them with the form's own rules.
struct PrintOptions
{
    enum class Output { None, CsvOnly, Preview, Print, Pdf };

    PrintFormValues values;
    int kind = 0;
    QString appDir;                      // "" = the default program folder
    std::optional<QList<SiteKey>> sites; // kind 6: the sites named by --sites; none = every site
    Output output = Output::None;
    QString pdfFile; // absolute
    bool yes = false;
    bool timings = false; // --timings: the phases' times on standard error
};

// Declares the options of `print` on parser.
void addPrintOptions(QCommandLineParser& parser);
// The options of a parsed command line; throws UsageError when one is malformed, missing or does not
// apply to the chosen kind.
PrintOptions readPrintOptions(const QCommandLineParser& parser);

// The command line's stand-in for the main form.
class CliPrintForm : public PrintConditionSource
{
public:
    CliPrintForm(PrintFormValues values, QList<SelectedDatabase> databases)
        : m_values(std::move(values)), m_databases(std::move(databases))
    {}
    bool readPrintFormValues(PrintFormValues& values) override
    {
        values = m_values;
        return true;
    }
    QList<SelectedDatabase> selectedDatabases() override { return m_databases; }

private:
    PrintFormValues m_values;
    QList<SelectedDatabase> m_databases;
};

} // namespace qelprn::cli
