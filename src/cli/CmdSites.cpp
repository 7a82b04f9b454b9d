#include "app/CliInteraction.h"
#include "app/ProgramTitle.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
#include "db/AdodbIni.h"
#include "db/SiteGrid.h"
#include "db/cT_ADODB.h"
#include "db/cT_KyotenDbAcs.h"

#include <QDir>
#include <QList>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

// The site grid as rows of cell texts, printed after the load.
class TextGrid final : public SiteGrid
{
public:
    void setRowCount(int rows) override { rowsText.resize(rows); }
    void setRedraw(bool) override {}
    void setCellText(int col, int row, const QString& text) override
    {
        if (row < 1 || col < 1 || col > 4)
            return;
        if (row > rowsText.size())
            rowsText.resize(row);
        QStringList& cells = rowsText[row - 1];
        while (cells.size() < 4)
            cells.append(QString());
        cells[col - 1] = text;
    }

    QList<QStringList> rowsText;
};

class CmdSites final : public Command
{
public:
    QString name() const override { return u"sites"_s; }
    QString summary() const override { return u"list the sites of the database, or of every database"_s; }
    QString help() const override
    {
        return u"qelprn-cli sites [--app-dir DIR] [--all-databases] [--all]\n"
               "\n"
               "Prints the sites the main form's site grid would show, one a line, tab-separated:\n"
               "site name, database (with --all-databases), site code, branch number.\n"
               "\n"
               "  --app-dir DIR     the program folder (default: QELPRN_APP_DIR or the program's folder)\n"
               "  --all-databases   every database of DB.ini instead of the one of adodb.ini\n"
               "  --all             sites whatever their used flag\n"
               "\n"
               "Example: qelprn-cli sites --app-dir ~/clinic --all-databases\n"_s;
    }

    int execute(const QStringList& args, QTextStream& out, QTextStream& err) override
    {
        QString appDir;
        bool allDatabases = false;
        bool all = false;
        for (qsizetype i = 0; i < args.size(); ++i) {
            const QString& a = args.at(i);
            if (a == u"--all-databases"_s) {
                allDatabases = true;
            } else if (a == u"--all"_s) {
                all = true;
            } else if (a == u"--app-dir"_s) {
                if (i + 1 >= args.size()) {
                    err << "sites: --app-dir needs a folder" << Qt::endl;
                    return 2;
                }
                appDir = QDir(args.at(++i)).absolutePath();
            } else {
                err << "sites: unknown option '" << a << "'; see qelprn-cli help sites" << Qt::endl;
                return 2;
            }
        }

        CliInteraction ui(false, &err);
        try {
            const AppContext ctx = appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, appDir);
            TextGrid grid;
            cT_KyotenDbAcs sites(ctx);
            qint16 result = -1;
            if (allDatabases) {
                sites.iLoadKyoten_ALLDB(grid, all, result);
            } else {
                QString iniError;
                const QString cs = readAdodbConnectionString(ctx, &iniError);
                if (cs.isEmpty()) {
                    ui.messageBox(u"Form_Load() でエラー\r\n"_s +
                                      (iniError.isEmpty() ? u"接続文字列取得できません。"_s : iniError),
                                  csSeikyuTitle(), MsgIcon::Critical);
                    return 2;
                }
                cT_ADODB ado;
                if (ado.iInit(cs) != 0 || ado.iConnect() != 0) {
                    ui.messageBox(ado.sErrMsg, csSeikyuTitle(), MsgIcon::Critical);
                    return 2;
                }
                sites.iInit(&ado);
                sites.iLoadKyoten(grid, all, result);
                ado.iDisConnect();
            }
            if (result != 0)
                return 2;
            for (const QStringList& row : std::as_const(grid.rowsText))
                out << row.join(u'\t') << '\n';
            out.flush();
            return 0;
        } catch (const ProgramEnd& end) {
            return end.exitCode == 0 ? 2 : end.exitCode;
        }
    }
};

} // namespace

std::unique_ptr<Command> makeSitesCommand()
{
    return std::make_unique<CmdSites>();
}

} // namespace qelprn::cli
