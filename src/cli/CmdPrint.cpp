#include "app/CliInteraction.h"
#include "app/Paths.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
#include "cli/PrintOptions.h"
#include "cli/StopRequest.h"
#include "db/cT_KyotenDbAcs.h"
#include "report/AddresseeFolder.h"
#include "report/PrintKind.h"
#include "report/PrintRun.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

// The databases and sites of a kind 6 run: the named sites, or every site of the list (the main
// form's "全事業所"). false after the reason was told.
bool chooseSites(const AppContext& ctx, const std::optional<QList<SiteKey>>& named,
                 QList<SelectedDatabase>& databases, QTextStream& err)
{
    QList<SiteRow> grid;
    cT_KyotenDbAcs sites(ctx);
    qint16 result = -1;
    sites.iLoadKyoten_ALLDB(grid, false, result);
    if (result != 0)
        return false; // the loader has shown its message
    QList<SiteRow> chosen = grid;
    if (named) {
        chosen.clear();
        for (const SiteKey& site : *named) {
            const qsizetype before = chosen.size();
            for (const SiteRow& row : std::as_const(grid)) {
                if (row.site == site)
                    chosen.append(row);
            }
            if (chosen.size() == before) {
                err << u"qelprn-cli print: 事業所 "_s << site.iKyotenCd << '-' << site.iKyotenEb
                    << u" は事業所一覧にありません（qelprn-cli sites --all-databases で確認できます）"_s
                    << Qt::endl;
                return false;
            }
        }
    }
    databases = groupByDatabase(chosen);
    if (databases.isEmpty()) {
        ctx.interaction().messageBox(u"処理の対象となる事業所の選択を行ってください。"_s, u"選択エラー"_s,
                                     MsgIcon::Exclamation);
        return false;
    }
    return true;
}

namespace {

// One line an administrator or a benchmark can read: "timings: query 1.234 s (3 statements,
// 1 connections), csv 0.456 s (2890305 bytes), engine 3.210 s"; phases that did not run are left
// out.
void printTimings(const PrintRun::Result& run, QTextStream& err)
{
    const auto seconds = [](qint64 ms) { return QString::number(double(ms) / 1000.0, 'f', 3) + u" s"_s; };
    QStringList parts;
    if (run.times.queryMs >= 0)
        parts << u"query "_s + seconds(run.times.queryMs) + u" ("_s + QString::number(run.times.statements) +
                     u" statements, "_s + QString::number(run.times.connections) + u" connections)"_s;
    if (run.times.writeMs >= 0) {
        const QFileInfo csv(toLocalPath(run.csvFilePath));
        parts << u"csv "_s + seconds(run.times.writeMs) +
                     (csv.isFile() ? u" ("_s + QString::number(csv.size()) + u" bytes)"_s : QString());
    }
    if (run.times.engineMs >= 0)
        parts << u"engine "_s + seconds(run.times.engineMs);
    err << u"timings: "_s << parts.join(u", "_s) << Qt::endl;
}

int exitStatus(const PrintRun::Result& run)
{
    switch (run.outcome) {
    case PrintRun::Outcome::Done:
    case PrintRun::Outcome::CsvWritten:
        return 0;
    case PrintRun::Outcome::NothingToPrint:
    case PrintRun::Outcome::Declined:
    case PrintRun::Outcome::WaitCancelled:
        return 1;
    default:
        return 2;
    }
}

class CmdPrint final : public Command
{
public:
    QString name() const override { return u"print"_s; }
    QString summary() const override { return u"請求月の請求書を印刷する、またはその CSV データを書く"_s; }
    QString arguments() const override
    {
        return u"--kind 1..%1 --month yyyy/mm [オプション] (--csv-only | --preview | --print | --pdf FILE | --pdf-dir DIR)"_s
            .arg(int(printKinds().size()));
    }
    QString description() const override
    {
        return u"画面の印刷処理を、オプションで指定した条件で実行します：帳票の種類の検索、\n"
               u"一時フォルダへの CSV 印刷データ、帳票印刷エンジン。\n"
               u"メッセージは標準エラーに出ます。終了コード: 0 印刷または出力した、1 印刷するものがない"
               u"（または確認に\n「いいえ」と答えた）、2 失敗。"_s;
    }
    QString examples() const override
    {
        return u"  qelprn-cli print --app-dir ~/clinic --kind 2 --month 2026/10 --list-sort 2 --pdf "
               u"list.pdf\n"
               u"  qelprn-cli print --kind 6 --month=2026/10 --sites 1-1,2-1 --csv-only\n"_s;
    }
    void addOptions(QCommandLineParser& parser) const override { addPrintOptions(parser); }

    int execute(const QCommandLineParser& parser, QTextStream& out, QTextStream& err) override
    {
        PrintOptions options = readPrintOptions(parser);

        CliInteraction ui(options.yes, &err);
        const std::optional<AppContext> loaded =
            options.appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, options.appDir);
        if (!loaded)
            return 2;
        const AppContext& ctx = *loaded;
        if (printKind(options.kind)->reads(Condition::Sites) &&
            !chooseSites(ctx, options.sites, options.jouken.selectedDatabases, err))
            return 2;
        if (options.output == PrintOptions::Output::Print &&
            ui.messageBox(u"印刷処理を実行します。よろしいですか？"_s, u"印刷確認"_s, MsgIcon::Question,
                          MsgButtons::YesNo) != MsgResult::Yes)
            return 1;

        qint16 mode = 0;
        PrintRun::Handoff handoff = PrintRun::Handoff::Engine;
        switch (options.output) {
        case PrintOptions::Output::CsvOnly:
            handoff = PrintRun::Handoff::CsvOnly;
            mode = 2;
            break;
        case PrintOptions::Output::Print:
            mode = 1;
            break;
        case PrintOptions::Output::Pdf:
            handoff = PrintRun::Handoff::Pdf;
            break;
        case PrintOptions::Output::PdfDir:
            handoff = PrintRun::Handoff::PdfFolder;
            if (folderHasOutput(options.pdfDir) && !options.replace) {
                err << u"qelprn-cli print: "_s << QDir::toNativeSeparators(options.pdfDir)
                    << u" には前回の出力があります。置き換えるには --replace を付けてください"_s << Qt::endl;
                return 2;
            }
            break;
        default:
            break;
        }
        FolderOutput folder;
        folder.folder = options.pdfDir;
        folder.replace = options.replace;
        folder.stopRequested = &StopRequest::requested;
        const StopRequest stop;
        PrintRun printRun(ctx, handoff, options.pdfFile);
        printRun.setFolderOutput(&folder);
        const PrintRun::Result run = printRun.PrintSisetsuSeikyu(mode, options.jouken);
        if (options.timings)
            printTimings(run, err);
        if (run.outcome == PrintRun::Outcome::CsvWritten)
            out << QDir::toNativeSeparators(toLocalPath(run.csvFilePath)) << Qt::endl;
        else if (run.outcome == PrintRun::Outcome::Done && options.output == PrintOptions::Output::Pdf)
            out << QDir::toNativeSeparators(options.pdfFile) << Qt::endl;
        else if (options.output == PrintOptions::Output::PdfDir && !folder.listPath.isEmpty() &&
                 QFileInfo::exists(folder.listPath))
            out << QDir::toNativeSeparators(folder.listPath) << Qt::endl;
        return exitStatus(run);
    }
};

} // namespace

std::unique_ptr<Command> makePrintCommand()
{
    return std::make_unique<CmdPrint>();
}

} // namespace qelprn::cli
