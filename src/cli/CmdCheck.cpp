#include "app/CliInteraction.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
#include "cli/OptionValues.h"
#include "db/ConnectionReport.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

// 接続確認: the connections of the program folder, as ConnectionReport finds them.
class CmdCheck final : public Command
{
public:
    QString name() const override { return u"check"_s; }
    QString summary() const override
    {
        return u"接続確認：adodb.ini のデータベースと DB.ini のすべてのデータベースに接続する"_s;
    }
    QString arguments() const override { return u"[--app-dir DIR]"_s; }
    QString description() const override
    {
        return u"adodb.ini "
               u"の接続文字列（パスワードは伏せる）、ドライバー、接続できたかどうかとサーバーの製品名と\n"
               u"バージョン、続いて DB.ini "
               u"の各データベースに接続できたかどうかとその事業所の数を出力します。\n"
               u"応答しないサーバーは Tovara.ini の DB_LOGIN_TIMEOUT 秒（既定 8 秒）で失敗とします。\n"
               u"終了コード: 0 すべて接続できた、2 それ以外。"_s;
    }
    QString examples() const override { return u"  qelprn-cli check --app-dir ~/clinic\n"_s; }
    void addOptions(QCommandLineParser& parser) const override
    {
        parser.addOption(
            {u"app-dir"_s,
             u"プログラムフォルダ（既定：QELPRN_APP_DIR、プログラムのフォルダ、利用者のデータフォルダ）"_s,
             u"DIR"_s});
    }

    int execute(const QCommandLineParser& parser, QTextStream& out, QTextStream& err) override
    {
        rejectExtraArguments(parser, 0);
        const QString appDir =
            parser.isSet(u"app-dir"_s) ? QDir(parser.value(u"app-dir"_s)).absolutePath() : QString();
        CliInteraction ui(false, &err);
        const std::optional<AppContext> loaded =
            appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, appDir);
        if (!loaded)
            return 2;
        const AppContext& ctx = *loaded;
        const ConnectionReport report = checkConnections(ctx);
        for (const QString& line : report.lines())
            out << line << '\n';
        out.flush();
        return report.allOpened() ? 0 : 2;
    }
};

} // namespace

std::unique_ptr<Command> makeCheckCommand()
{
    return std::make_unique<CmdCheck>();
}

} // namespace qelprn::cli
