#include "cli/CliMain.h"

#include "app/Interaction.h"
#include "app/Version.h"
#include "cli/CliTranslator.h"
#include "cli/Command.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

const QString kProgram = u"qelprn-cli"_s;

void printUsage(QTextStream& out, const std::vector<std::unique_ptr<Command>>& commands)
{
    out << u"使い方: qelprn-cli <コマンド> [オプション]\n"
           "        qelprn-cli help <コマンド>\n"
           "        qelprn-cli --version\n\n"
           "コマンド:\n"_s;
    for (const auto& c : commands)
        out << u"  "_s << c->name().leftJustified(12) << c->summary() << u"\n"_s;
    out << u"\nプログラムフォルダ（Tovara.ini のあるフォルダ）は、環境変数 QELPRN_APP_DIR、"
           "プログラムのフォルダ、\n利用者のデータフォルダの順に探します。--app-dir で指定もできます。\n"_s;
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

QString usageLine(const Command& command)
{
    return u"使い方: "_s + kProgram + u" "_s + command.name() + u" "_s + command.arguments();
}

// The parser's generated help under our own usage line (Qt's names the executable's full path and
// not the command), with the command's examples below the options.
QString helpText(const Command& command, const QCommandLineParser& parser)
{
    QString generated = parser.helpText();
    generated = generated.mid(generated.indexOf(u'\n') + 1);
    QString text = usageLine(command) + u"\n"_s + generated;
    const QString examples = command.examples();
    if (!examples.isEmpty())
        text += u"\n例:\n"_s + examples;
    return text;
}

void setUp(const Command& command, QCommandLineParser& parser)
{
    parser.setApplicationDescription(command.description());
    parser.addHelpOption();
    command.addOptions(parser);
}

int usageError(const Command& command, const QString& problem, QTextStream& err)
{
    err << kProgram << u" "_s << command.name() << u": "_s << problem << u"\n"_s << usageLine(command)
        << u"\n（詳しくは "_s << kProgram << u" help "_s << command.name() << u"）"_s << Qt::endl;
    return 2;
}

void unknownCommand(const QString& name, QTextStream& err)
{
    err << kProgram << u": 不明なコマンドです："_s << name << u"（"_s << kProgram
        << u" --help でコマンドの一覧を表示します）"_s << Qt::endl;
}

void installJapaneseParserTexts()
{
    static bool installed = false;
    if (installed || !QCoreApplication::instance())
        return;
    static CliTranslator translator;
    QCoreApplication::installTranslator(&translator);
    installed = true;
}

} // namespace

int runCli(const QStringList& args, QTextStream& out, QTextStream& err)
{
    installJapaneseParserTexts();
    const auto commands = allCommands();
    if (args.isEmpty()) {
        printUsage(err, commands);
        return 2;
    }
    const QString& first = args.first();
    if (first == u"--version"_s) {
        out << kProgram << u" "_s << productVersion() << Qt::endl;
        return 0;
    }
    Command* command = nullptr;
    QStringList rest = args.mid(1);
    if (isHelpOption(first) || first == u"help"_s) {
        if (rest.isEmpty()) {
            printUsage(out, commands);
            return 0;
        }
        command = find(commands, rest.first());
        if (!command) {
            unknownCommand(rest.first(), err);
            return 2;
        }
        rest = {u"--help"_s};
    } else {
        command = find(commands, first);
        if (!command) {
            unknownCommand(first, err);
            return 2;
        }
    }

    QCommandLineParser parser;
    setUp(*command, parser);
    if (!parser.parse(QStringList{kProgram} + rest))
        return usageError(*command, parser.errorText(), err);
    if (parser.isSet(u"help"_s) || parser.isSet(u"help-all"_s)) {
        out << helpText(*command, parser);
        out.flush();
        return 0;
    }
    try {
        const int status = command->execute(parser, out, err);
        out.flush();
        err.flush();
        return status;
    } catch (const UsageError& usage) {
        out.flush();
        return usageError(*command, usage.message, err);
    }
}

} // namespace qelprn::cli
