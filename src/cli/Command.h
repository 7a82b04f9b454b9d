#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <memory>
#include <vector>

namespace qelprn::cli {

// A mistake on the command line, found after parsing (a missing or malformed value): reported in
// Japanese with the command's usage line, exit status 2.
struct UsageError
{
    QString message;
};

// One sub-command of qelprn-cli. Each command declares its options on a QCommandLineParser (which
// accepts "--opt value" and "--opt=value" and writes --help), and runs with the parsed result.
// Commands write to the streams they are given; messages for the user go through the command-line
// Interaction (standard error). Exit status: 0 done, 1 nothing to do (for example no data for the
// month), 2 failure or a usage error.
class Command
{
public:
    virtual ~Command() = default;
    virtual QString name() const = 0;
    virtual QString summary() const = 0;   // one line for the command list
    virtual QString arguments() const = 0; // the usage line after "qelprn-cli <name>"
    // What --help prints above the options, and below them (examples).
    virtual QString description() const = 0;
    virtual QString examples() const = 0;
    // Declares the command's options and positional arguments.
    virtual void addOptions(QCommandLineParser& parser) const = 0;
    // Runs with parser already parsed; throws UsageError for a value it cannot use.
    virtual int execute(const QCommandLineParser& parser, QTextStream& out, QTextStream& err) = 0;
};

std::unique_ptr<Command> makeInitDemoCommand(); // CmdInitDemo.cpp
std::unique_ptr<Command> makeSitesCommand();    // CmdSites.cpp
std::unique_ptr<Command> makePrintCommand();    // CmdPrint.cpp
std::unique_ptr<Command> makeMonthEndCommand(); // CmdMonthEnd.cpp
std::unique_ptr<Command> makeCheckCommand();    // CmdCheck.cpp

// Every command, in the order the help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

} // namespace qelprn::cli
