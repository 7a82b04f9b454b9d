#include "app/CliInteraction.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
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
        return u"check the connection to the database and to every database of DB.ini"_s;
    }
    QString help() const override
    {
        return u"qelprn-cli check [--app-dir DIR]\n"
               "\n"
               "接続確認: prints the connection string of adodb.ini (password masked), the driver, whether\n"
               "the connection opened and the server's product and version, then every database of DB.ini\n"
               "with whether it opened and its number of sites. A server that does not answer fails after\n"
               "DB_LOGIN_TIMEOUT seconds of Tovara.ini (default 8).\n"
               "\n"
               "  --app-dir DIR     the program folder (default: QELPRN_APP_DIR or the program's folder)\n"
               "\n"
               "Exit status: 0 every connection opened, 2 otherwise.\n"
               "\n"
               "Example: qelprn-cli check --app-dir ~/clinic\n"_s;
    }

    int execute(const QStringList& args, QTextStream& out, QTextStream& err) override
    {
        QString appDir;
        for (qsizetype i = 0; i < args.size(); ++i) {
            if (args.at(i) == u"--app-dir"_s && i + 1 < args.size()) {
                appDir = QDir(args.at(++i)).absolutePath();
            } else {
                err << "check: unknown option '" << args.at(i) << "'; see qelprn-cli help check" << Qt::endl;
                return 2;
            }
        }
        CliInteraction ui(false, &err);
        try {
            const AppContext ctx = appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, appDir);
            const ConnectionReport report = checkConnections(ctx);
            for (const QString& line : report.lines())
                out << line << '\n';
            out.flush();
            return report.allOpened() ? 0 : 2;
        } catch (const ProgramEnd& end) {
            return end.exitCode == 0 ? 2 : end.exitCode;
        }
    }
};

} // namespace

std::unique_ptr<Command> makeCheckCommand()
{
    return std::make_unique<CmdCheck>();
}

} // namespace qelprn::cli
