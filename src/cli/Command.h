#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <memory>
#include <vector>

namespace qelprn::cli {

// One sub-command of qelprn-cli. Commands write to the streams they are given, so tests run them
// in process; messages for the user go through the command-line Interaction (standard error).
// Exit status: 0 done, 1 nothing to do (for example no data for the month), 2 failure.
class Command
{
public:
    virtual ~Command() = default;
    virtual QString name() const = 0;
    virtual QString summary() const = 0; // one line for the command list
    virtual QString help() const = 0;    // full usage with every option and an example
    // args excludes the program and the command name.
    virtual int execute(const QStringList& args, QTextStream& out, QTextStream& err) = 0;
};

std::unique_ptr<Command> makeInitDemoCommand(); // CmdInitDemo.cpp
std::unique_ptr<Command> makeSitesCommand();    // CmdSites.cpp
std::unique_ptr<Command> makePrintCommand();    // CmdPrint.cpp
std::unique_ptr<Command> makeCheckCommand();    // CmdCheck.cpp

// Every command, in the order the help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

} // namespace qelprn::cli
