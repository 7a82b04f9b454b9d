#include "app/CliInteraction.h"
#include "cli/Command.h"
#include "demo/DemoProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

bool readNumber(const QStringList& args, qsizetype& i, qint64 low, qint64 high, qint64& value,
                QString& problem)
{
    const QString option = args.at(i);
    if (i + 1 >= args.size()) {
        problem = option + u" needs a value"_s;
        return false;
    }
    bool ok = false;
    value = args.at(++i).toLongLong(&ok);
    if (!ok || value < low || value > high) {
        problem = option + u" must be a whole number from "_s + QString::number(low) + u" to "_s +
                  QString::number(high) + u", not '"_s + args.at(i) + u"'"_s;
        return false;
    }
    return true;
}

class CmdInitDemo final : public Command
{
public:
    QString name() const override { return u"init-demo"_s; }
    QString summary() const override
    {
        return u"write a demo program folder with settings, layouts and data"_s;
    }
    QString help() const override
    {
        return u"qelprn-cli init-demo DIR [--sites N] [--patients N] [--month yyyy/mm] [--seed N] "
               u"[--replace]\n"
               "\n"
               "Writes a complete program folder into DIR: Tovara.ini, adodb.ini, DB.ini, ServerName.zkt,\n"
               "Halvex.Ver, the folders SYS (layouts), TMP, ICON (wallpaper), DATA (facility kinds,\n"
               "Version.ini, company seal) and db (the embedded databases), filled with a clinic's\n"
               "master data and the treatment results of the billing month and the month before.\n"
               "\n"
               "  --sites N      sites with data, 1 to 98 (default 3); two sites share a database\n"
               "  --patients N   patients over all sites (default 200; 50000 makes the benchmark set)\n"
               "  --month M      billing month yyyy/mm (default: the previous calendar month)\n"
               "  --seed N       seed of the data generator (default 1); the same seed gives the same data\n"
               "  --replace      write into a folder that is not empty, replacing its databases\n"
               "\n"
               "Example:\n"
               "  qelprn-cli init-demo demo-folder --patients 500 --month 2026/10\n"
               "  QELPRN_APP_DIR=demo-folder qelprn-cli sites --all-databases\n"_s;
    }

    int execute(const QStringList& args, QTextStream& out, QTextStream& err) override
    {
        DemoOptions options;
        QString problem;
        for (qsizetype i = 0; i < args.size() && problem.isEmpty(); ++i) {
            const QString& a = args.at(i);
            qint64 value = 0;
            if (a == u"--sites"_s) {
                if (readNumber(args, i, 1, 98, value, problem))
                    options.sites = int(value);
            } else if (a == u"--patients"_s) {
                if (readNumber(args, i, 0, 1000000, value, problem))
                    options.patients = int(value);
            } else if (a == u"--seed"_s) {
                if (readNumber(args, i, 0, Q_INT64_C(0x7fffffffffffffff), value, problem))
                    options.seed = quint64(value);
            } else if (a == u"--month"_s) {
                if (i + 1 >= args.size()) {
                    problem = u"--month needs a value"_s;
                } else {
                    options.month = QDate::fromString(args.at(++i) + u"/01"_s, u"yyyy/MM/dd"_s);
                    if (!options.month.isValid())
                        problem = u"--month must be yyyy/mm, not '"_s + args.at(i) + u"'"_s;
                }
            } else if (a == u"--replace"_s) {
                options.replace = true;
            } else if (a.startsWith(u'-')) {
                problem = u"unknown option "_s + a;
            } else if (options.folder.isEmpty()) {
                options.folder = a;
            } else {
                problem = u"only one folder may be given"_s;
            }
        }
        if (problem.isEmpty() && options.folder.isEmpty())
            problem = u"the folder to write is missing"_s;
        if (!problem.isEmpty()) {
            err << u"init-demo: "_s << problem << u"\nusage: "_s << help().section(u'\n', 0, 0) << Qt::endl;
            return 2;
        }
        options.folder = QFileInfo(options.folder).absoluteFilePath();
        // The form-print engine is installed next to this program.
        options.engineProgram = QDir(QCoreApplication::applicationDirPath()).filePath(u"qelprn-engine"_s);

        QElapsedTimer timer;
        timer.start();
        DemoProgramFolder folder(options);
        CliInteraction ui(false, &err); // progress only on a terminal
        QString error;
        if (!folder.create(ui, &error)) {
            err << u"init-demo: "_s << error << Qt::endl;
            return 2;
        }
        out << u"Demo program folder: "_s << QDir::toNativeSeparators(options.folder) << u"\n"_s;
        out << u"Billing month: "_s << folder.month().toString(u"yyyy/MM"_s) << u"\n"_s;
        for (const DemoSite& s : folder.sites())
            out << u"Site "_s << s.code << u"/"_s << s.branch << u" "_s << s.name << u" (database "_s
                << s.database << u"): "_s << s.patients << u" patients\n"_s;
        out << u"Written in "_s << timer.elapsed() << u" ms\n"_s;
        out.flush();
        return 0;
    }
};

} // namespace

std::unique_ptr<Command> makeInitDemoCommand()
{
    return std::make_unique<CmdInitDemo>();
}

} // namespace qelprn::cli
