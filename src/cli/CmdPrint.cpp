#include "app/CliInteraction.h"
#include "app/Paths.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
#include "cli/PrintOptions.h"
#include "db/SiteGrid.h"
#include "db/cT_KyotenDbAcs.h"
#include "report/PrintRun.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

// The multi-database site list as (database, site) pairs in grid order.
class SiteRows final : public SiteGrid
{
public:
    struct Row
    {
        QString database;
        SiteKey site;
    };

    void setRowCount(int rows) override { m_rows.resize(rows); }
    void setRedraw(bool) override {}
    void setCellText(int col, int row, const QString& text) override
    {
        if (row < 1 || row > m_rows.size())
            return;
        Row& r = m_rows[row - 1];
        if (col == 2)
            r.database = text;
        else if (col == 3)
            r.site.iKyotenCd = qint16(text.toInt());
        else if (col == 4)
            r.site.iKyotenEb = qint16(text.toInt());
    }
    const QList<Row>& rows() const { return m_rows; }

private:
    QList<Row> m_rows;
};

void addSite(QList<SelectedDatabase>& databases, const QString& database, const SiteKey& site)
{
    for (SelectedDatabase& db : databases) {
        if (db.cDatabase == database) {
            if (!db.sites.contains(site))
                db.sites.append(site);
            return;
        }
    }
    databases.append({database, {site}});
}

// The databases and sites of a kind 6 run: the named sites, or every site of the list (the main
// form's "全事業所"). false after the reason was told.
bool chooseSites(const AppContext& ctx, const std::optional<QList<SiteKey>>& named,
                 QList<SelectedDatabase>& databases, QTextStream& err)
{
    SiteRows grid;
    cT_KyotenDbAcs sites(ctx);
    qint16 result = -1;
    sites.iLoadKyoten_ALLDB(grid, false, result);
    if (result != 0)
        return false; // the loader has shown its message
    if (!named) {
        for (const SiteRows::Row& row : grid.rows())
            addSite(databases, row.database, row.site);
    } else {
        for (const SiteKey& site : *named) {
            bool found = false;
            for (const SiteRows::Row& row : grid.rows()) {
                if (row.site == site) {
                    addSite(databases, row.database, row.site);
                    found = true;
                }
            }
            if (!found) {
                err << u"print: site "_s << site.iKyotenCd << '-' << site.iKyotenEb
                    << u" is not in the site list (see qelprn-cli sites --all-databases)"_s << Qt::endl;
                return false;
            }
        }
    }
    if (databases.isEmpty()) {
        ctx.interaction().messageBox(u"処理の対象となる事業所の選択を行ってください。"_s, u"選択エラー"_s,
                                     MsgIcon::Exclamation);
        return false;
    }
    return true;
}

// One line an administrator or a benchmark can read: "timings: query 1.234 s (3 statements,
// 1 connections), csv 0.456 s (2890305 bytes), engine 3.210 s"; phases that did not run are left
// out.
void printTimings(const PrintRun& run, QTextStream& err)
{
    const auto seconds = [](qint64 ms) { return QString::number(double(ms) / 1000.0, 'f', 3) + u" s"_s; };
    QStringList parts;
    if (run.phaseTimes.queryMs >= 0)
        parts << u"query "_s + seconds(run.phaseTimes.queryMs) + u" ("_s +
                     QString::number(run.phaseTimes.statements) + u" statements, "_s +
                     QString::number(run.phaseTimes.connections) + u" connections)"_s;
    if (run.phaseTimes.writeMs >= 0) {
        const QFileInfo csv(toLocalPath(run.csvFilePath));
        parts << u"csv "_s + seconds(run.phaseTimes.writeMs) +
                     (csv.isFile() ? u" ("_s + QString::number(csv.size()) + u" bytes)"_s : QString());
    }
    if (run.phaseTimes.engineMs >= 0)
        parts << u"engine "_s + seconds(run.phaseTimes.engineMs);
    err << u"timings: "_s << parts.join(u", "_s) << Qt::endl;
}

int exitStatus(const PrintRun& run)
{
    switch (run.outcome) {
    case PrintRun::Outcome::Done:
    case PrintRun::Outcome::CsvWritten:
        return 0;
    case PrintRun::Outcome::NothingToPrint:
        return 1;
    default:
        return 2;
    }
}

class CmdPrint final : public Command
{
public:
    QString name() const override { return u"print"_s; }
    QString summary() const override { return u"print a month's invoices, or write their CSV data"_s; }
    QString help() const override
    {
        return u"qelprn-cli print --kind 1..6 --month yyyy/mm [options] (--csv-only | --preview | --print | "
               u"--pdf FILE)\n"
               "\n"
               "Runs the desktop program's print run with the conditions given as options: the query of the\n"
               "print kind, the CSV print data in the temporary folder, and the form-print engine.\n"
               "\n"
               "  --kind N               1 請求書(施設請求先別), 2 一部負担金一覧表, 3 "
               "一部負担金一覧表(回数区分あり),\n"
               "                         4 請求書兼領収書, 5 請求書兼領収書(自費分), 6 "
               "請求書(施設請求先別・拠点選択)\n"
               "  --month yyyy/mm        the billing month\n"
               "  --issue-date yyyy/mm/dd  the issue date printed on the forms (default: today)\n"
               "  --app-dir DIR          the program folder (default: QELPRN_APP_DIR or the program's "
               "folder)\n"
               "  --billing-facility N   only this billing facility (code; 0 = all)\n"
               "  --service-facility N   only this treated facility (kinds 2 to 5; 0 = all)\n"
               "  --billing-kind TEXT    only billing facilities of this kind (kinds 1, 4, 5, 6)\n"
               "  --service-kind TEXT    only treated facilities of this kind (kinds 2 to 5)\n"
               "  --corp N               the corporation printed as the invoicing body (default: the site's "
               "main one)\n"
               "  --clinic N             the clinic printed on the forms (default: the site's main one)\n"
               "  --practitioner N       only patients of this practitioner (kinds 2 and 3)\n"
               "  --patient N            only this patient (kinds 4 and 5)\n"
               "  --sort 1..3            invoice-receipt order: 1 ID, 2 reading, 3 room (default 1)\n"
               "  --list-sort 0..3       co-payment list order: 0 reading, 1 ID, 2 room then reading,\n"
               "                         3 room then ID (default 0)\n"
               "  --address-facility     group patients by the facility of their visit address instead of\n"
               "                         their care facility\n"
               "  --sites CODE-BRANCH,...  the sites of a kind 6 run, from the list of every database\n"
               "                         (default: every site of the list)\n"
               "  --yes                  answer yes to the confirmation of --print\n"
               "  --timings              print the time of the query (with the statements it sent and the\n"
               "                         connections it opened), the CSV file and the engine on\n"
               "                         standard error when the run ends\n"
               "  --csv-only             stop after the CSV file and print its path\n"
               "  --preview              start the engine's preview, as the desktop program's preview "
               "button\n"
               "  --print                start the engine's print dialog, after the confirmation\n"
               "  --pdf FILE             have the engine render the forms to FILE and wait for it\n"
               "\n"
               "Messages go to standard error. Exit status: 0 printed or written, 1 nothing to print (or "
               "the\n"
               "confirmation was declined), 2 failure.\n"
               "\n"
               "Example:\n"
               "  qelprn-cli print --app-dir ~/clinic --kind 2 --month 2026/10 --list-sort 2 --pdf list.pdf\n"
               "  qelprn-cli print --kind 6 --month 2026/10 --sites 1-1,2-1 --csv-only\n"_s;
    }

    int execute(const QStringList& args, QTextStream& out, QTextStream& err) override
    {
        PrintOptions options;
        QString problem;
        if (!parsePrintOptions(args, options, problem)) {
            err << u"print: "_s << problem << u"\nusage: "_s << help().section(u'\n', 0, 0) << Qt::endl;
            return 2;
        }

        CliInteraction ui(options.yes, &err);
        try {
            AppContext ctx =
                options.appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, options.appDir);
            QList<SelectedDatabase> databases;
            if (options.kind == 6 && !chooseSites(ctx, options.sites, databases, err))
                return 2;
            if (options.output == PrintOptions::Output::Print &&
                ui.messageBox(u"印刷処理を実行します。よろしいですか？"_s, u"印刷確認"_s, MsgIcon::Question,
                              MsgButtons::YesNo) != MsgResult::Yes)
                return 1;

            PrintRun run(ctx);
            qint16 mode = 0;
            switch (options.output) {
            case PrintOptions::Output::CsvOnly:
                run.handoff = PrintRun::Handoff::CsvOnly;
                mode = 2;
                break;
            case PrintOptions::Output::Print:
                mode = 1;
                break;
            case PrintOptions::Output::Pdf:
                run.handoff = PrintRun::Handoff::Pdf;
                run.pdfPath = options.pdfFile;
                break;
            default:
                break;
            }
            CliPrintForm form(options.values, databases);
            run.PrintSisetsuSeikyu(mode, form);
            if (options.timings)
                printTimings(run, err);
            if (run.outcome == PrintRun::Outcome::CsvWritten)
                out << QDir::toNativeSeparators(toLocalPath(run.csvFilePath)) << Qt::endl;
            else if (run.outcome == PrintRun::Outcome::Done && options.output == PrintOptions::Output::Pdf)
                out << QDir::toNativeSeparators(options.pdfFile) << Qt::endl;
            return exitStatus(run);
        } catch (const ProgramEnd& end) {
            return end.exitCode == 0 ? 2 : end.exitCode;
        }
    }
};

} // namespace

std::unique_ptr<Command> makePrintCommand()
{
    return std::make_unique<CmdPrint>();
}

} // namespace qelprn::cli
