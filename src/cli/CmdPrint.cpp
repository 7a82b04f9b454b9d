#include "cli/Command.h"

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

// The print command is listed so scripts see it, but the print run is not built yet:
// it refuses with a clear message and the failure status instead of pretending to print.
class CmdPrint final : public Command
{
public:
    QString name() const override { return u"print"_s; }
    QString summary() const override { return u"print a month's invoices (not available yet)"_s; }
    QString help() const override
    {
        return u"qelprn-cli print --kind 1..6 --month yyyy/mm (--csv-only | --preview | --print | --pdf "
               u"FILE)\n"
               u"The print run is not available in this build; the command exits with status 2.\n"_s;
    }
    int execute(const QStringList&, QTextStream&, QTextStream& err) override
    {
        err << u"print: the print run is not available in this build"_s << Qt::endl;
        return 2;
    }
};

} // namespace

std::unique_ptr<Command> makePrintCommand()
{
    return std::make_unique<CmdPrint>();
}

} // namespace qelprn::cli
