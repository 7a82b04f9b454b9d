#include "app/AddresseeFileName.h"
#include "app/CliInteraction.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
#include "cli/OptionValues.h"
#include "cli/PrintOptions.h"
#include "cli/StopRequest.h"
#include "report/AddresseeFolder.h"
#include "report/PrintKind.h"
#include "report/PrintRun.h"
#include "report/SavedPrintSettings.h"

#include <QDir>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

const QList<int> kDefaultKinds = {1, 2, 4, 5};

QList<int> kindsOf(const QString& text)
{
    QList<int> kinds;
    for (const QString& item : text.split(u',', Qt::SkipEmptyParts)) {
        bool ok = false;
        const int kind = item.trimmed().toInt(&ok);
        if (!ok || !printKind(kind))
            throw UsageError{
                u"--kinds には 1,2,4,5 のように帳票の種類（1 から %1）を並べてください（指定値：'"_s.arg(
                    int(printKinds().size())) +
                item + u"'）"_s};
        if (!kinds.contains(kind))
            kinds.append(kind);
    }
    if (kinds.isEmpty())
        throw UsageError{u"--kinds に帳票の種類が一つもありません"_s};
    return kinds;
}

// The folder of a kind under the month-end folder: "4_請求書兼領収書".
QString kindFolder(const QString& out, const PrintKind& kind)
{
    return QDir(out).filePath(QString::number(kind.number) + u'_' + fileNamePart(kind.label));
}

class CmdMonthEnd final : public Command
{
public:
    QString name() const override { return u"month-end"_s; }
    QString summary() const override
    {
        return u"月末の帳票をまとめて出力する（宛先ごとの PDF と送付一覧）"_s;
    }
    QString arguments() const override
    {
        return u"--month yyyy/mm --out DIR [--kinds 1,2,4,5] [--pdf-dir | --print] [--replace]"_s;
    }
    QString description() const override
    {
        return u"選んだ帳票の種類を順に、画面が保存している条件（印刷設定.ini：並び順、印字社名、\n"
               u"印字治療院名、対象施設）で実行します。--pdf-dir（既定）では種類ごとのフォルダ\n"
               u"（DIR/1_請求書(施設請求先別) など）に宛先ごとの PDF と送付一覧.csv を書き、最後に\n"
               u"種類ごとの宛先の数、枚数、請求金額の合計を出力します。種類 6 はすべての事業所です。\n"
               u"前回の出力があるフォルダには --replace が要ります。\n"
               u"終了コード: 0 出力した、1 どの種類にも印刷するものがない、2 失敗または中止。"_s;
    }
    QString examples() const override
    {
        return u"  qelprn-cli month-end --month 2026/10 --out ~/請求/2026-10\n"
               u"  qelprn-cli month-end --month 2026/10 --out ~/請求/2026-10 --kinds 1,4 --replace\n"_s;
    }
    void addOptions(QCommandLineParser& parser) const override
    {
        parser.addOptions({
            {u"month"_s, u"請求月"_s, u"yyyy/mm"_s},
            {u"out"_s, u"出力フォルダ（種類ごとのフォルダがこの下にできる）"_s, u"DIR"_s},
            {u"kinds"_s, u"帳票の種類（既定 1,2,4,5）"_s, u"N,..."_s},
            {u"issue-date"_s, u"帳票に印刷する発行日（既定：今日）"_s, u"yyyy/mm/dd"_s},
            {u"app-dir"_s,
             u"プログラムフォルダ（既定：QELPRN_APP_DIR、プログラムのフォルダ、利用者のデータフォルダ）"_s,
             u"DIR"_s},
            {u"pdf-dir"_s, u"宛先ごとの PDF と送付一覧.csv を書く（既定）"_s},
            {u"print"_s, u"確認のあと、種類ごとにエンジンの印刷ダイアログを開く"_s},
            {u"replace"_s, u"前回の出力（送付一覧.csv とそれが挙げる PDF）を置き換える"_s},
            {u"yes"_s, u"--print の確認に「はい」と答える"_s},
        });
    }

    int execute(const QCommandLineParser& parser, QTextStream& out, QTextStream& err) override
    {
        rejectExtraArguments(parser, 0);
        const auto month = dateOption(parser, u"month"_s, true);
        if (!month)
            throw UsageError{u"--month を指定してください"_s};
        const QDate issue = dateOption(parser, u"issue-date"_s, false).value_or(QDate::currentDate());
        const QList<int> kinds = parser.isSet(u"kinds"_s) ? kindsOf(parser.value(u"kinds"_s)) : kDefaultKinds;
        if (parser.isSet(u"print"_s) && parser.isSet(u"pdf-dir"_s))
            throw UsageError{u"--pdf-dir と --print はどちらか一つだけ指定してください"_s};
        const bool print = parser.isSet(u"print"_s);
        if (!print && !parser.isSet(u"out"_s))
            throw UsageError{u"--out を指定してください"_s};
        const QString outDir = QDir(parser.value(u"out"_s)).absolutePath();
        const bool replace = parser.isSet(u"replace"_s);

        if (!print && !replace) {
            QStringList used;
            for (int number : kinds) {
                const QString folder = kindFolder(outDir, *printKind(number));
                if (folderHasOutput(folder))
                    used << QDir::toNativeSeparators(folder);
            }
            if (!used.isEmpty()) {
                err << u"qelprn-cli month-end: 前回の出力があります：\n  "_s << used.join(u"\n  "_s)
                    << u"\n置き換えるには --replace を付けてください"_s << Qt::endl;
                return 2;
            }
        }

        CliInteraction ui(parser.isSet(u"yes"_s), &err);
        const QString appDir = parser.value(u"app-dir"_s);
        const std::optional<AppContext> loaded =
            appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, QDir(appDir).absolutePath());
        if (!loaded)
            return 2;
        const AppContext& ctx = *loaded;
        if (print && ui.messageBox(u"印刷処理を実行します。よろしいですか？"_s, u"印刷確認"_s,
                                   MsgIcon::Question, MsgButtons::YesNo) != MsgResult::Yes)
            return 1;
        const QLocale locale(QLocale::Japanese, QLocale::Japan);
        const StopRequest stop;
        int failed = 0;
        int done = 0;
        QStringList summary;
        for (int number : kinds) {
            const PrintKind& kind = *printKind(number);
            err << number << u" "_s << kind.label << u" ..."_s << Qt::endl;
            PrintJouken jouken = monthEndJouken(ctx, number, *month, issue);
            if (kind.reads(Condition::Sites) &&
                !chooseSites(ctx, std::nullopt, jouken.selectedDatabases, err)) {
                ++failed;
                summary << u"%1 %2: 失敗（事業所）"_s.arg(number).arg(kind.label);
                continue;
            }
            FolderOutput folder;
            folder.folder = kindFolder(outDir, kind);
            folder.replace = replace;
            folder.stopRequested = &StopRequest::requested;
            PrintRun run(ctx, print ? PrintRun::Handoff::Engine : PrintRun::Handoff::PdfFolder);
            run.setFolderOutput(&folder);
            const PrintRun::Result result = run.PrintSisetsuSeikyu(print ? 1 : 0, jouken);
            const bool stopped = StopRequest::requested();
            const QString head = u"%1 %2: "_s.arg(number).arg(kind.label);
            switch (result.outcome) {
            case PrintRun::Outcome::NothingToPrint:
                summary << head + u"印刷するデータなし"_s;
                break;
            case PrintRun::Outcome::Declined:
                ++failed;
                summary << head + u"確認に「いいえ」と答えたので出力していません（--yes で「はい」）"_s;
                break;
            case PrintRun::Outcome::Done:
            case PrintRun::Outcome::Cancelled:
                ++done;
                if (print) {
                    summary << head + u"印刷に渡しました"_s;
                    break;
                }
                summary << head + u"宛先 %1 件、%2 枚、請求金額合計 %3 円%4  %5"_s.arg(folder.files.size())
                                      .arg(folder.totalPages())
                                      .arg(locale.toString(folder.totalAmount()))
                                      .arg(folder.cancelled ? u"（中止）"_s : QString())
                                      .arg(QDir::toNativeSeparators(folder.folder));
                if (folder.cancelled)
                    ++failed;
                break;
            default:
                ++failed;
                summary << head + (stopped ? u"中止"_s : u"失敗"_s) +
                               (folder.files.isEmpty()
                                    ? QString()
                                    : u"（できた %1 件は送付一覧にあります）"_s.arg(folder.files.size()));
                break;
            }
            if (stopped) {
                summary << u"中止しました（Ctrl+C）。できた PDF は各フォルダの送付一覧.csv にあります"_s;
                ++failed;
                break;
            }
        }
        out << summary.join(u'\n') << Qt::endl;
        if (failed > 0)
            return 2;
        return done > 0 ? 0 : 1;
    }
};

} // namespace

std::unique_ptr<Command> makeMonthEndCommand()
{
    return std::make_unique<CmdMonthEnd>();
}

} // namespace qelprn::cli
