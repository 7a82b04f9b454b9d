#include "cli/Command.h"

namespace qelprn::cli {

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(makeInitDemoCommand());
    commands.push_back(makeSitesCommand());
    commands.push_back(makePrintCommand());
    commands.push_back(makeMonthEndCommand());
    commands.push_back(makeCheckCommand());
    return commands;
}

} // namespace qelprn::cli
