#include "cli/CliMain.h"

#include "app/Interaction.h"
#include "cli/Command.h"

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

void printUsage(QTextStream& out, const std::vector<std::unique_ptr<Command>>& commands)
{
    out << u"usage: qelprn-cli <command> [options]\n"
           "       qelprn-cli help <command>\n\n"
           "commands:\n"_s;
    for (const auto& c : commands)
        out << u"  "_s << c->name().leftJustified(12) << c->summary() << u"\n"_s;
    out << u"\nThe program folder is QELPRN_APP_DIR, or the folder of the program.\n"_s;
    out.flush();
}

Command* find(const std::vector<std::unique_ptr<Command>>& commands, const QString& name)
{
    for (const auto& c : commands) {
        if (c->name() == name)
            return c.get();
    }
    return nullptr;
}

bool isHelpOption(const QString& arg)
{
    return arg == u"--help"_s || arg == u"-h"_s;
}

} // namespace

int runCli(const QStringList& args, QTextStream& out, QTextStream& err)
{
    const auto commands = allCommands();
    if (args.isEmpty()) {
        printUsage(err, commands);
        return 2;
    }
    const QString& first = args.first();
    if (isHelpOption(first) || first == u"help"_s) {
        if (args.size() < 2) {
            printUsage(out, commands);
            return 0;
        }
        if (Command* c = find(commands, args.at(1))) {
            out << c->help();
            out.flush();
            return 0;
        }
        err << u"qelprn-cli: unknown command '"_s << args.at(1) << u"'; see qelprn-cli --help\n"_s;
        err.flush();
        return 2;
    }
    Command* command = find(commands, first);
    if (!command) {
        err << u"qelprn-cli: unknown command '"_s << first << u"'; see qelprn-cli --help\n"_s;
        err.flush();
        return 2;
    }
    const QStringList rest = args.mid(1);
    if (rest.size() == 1 && isHelpOption(rest.first())) {
        out << command->help();
        out.flush();
        return 0;
    }
    try {
        const int status = command->execute(rest, out, err);
        out.flush();
        err.flush();
        return status;
    } catch (const ProgramEnd& end) {
        out.flush();
        err.flush();
        return end.exitCode;
    }
}

} // namespace qelprn::cli
