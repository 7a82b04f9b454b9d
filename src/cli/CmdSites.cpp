#include "app/CliInteraction.h"
#include "app/ProgramTitle.h"
#include "app/StartupCheck.h"
#include "cli/Command.h"
#include "cli/OptionValues.h"
#include "db/AdodbIni.h"
#include "db/cT_ADODB.h"
#include "db/cT_KyotenDbAcs.h"

#include <QDir>
#include <QList>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

class CmdSites final : public Command
{
public:
    QString name() const override { return u"sites"_s; }
    QString summary() const override
    {
        return u"データベースの事業所、またはすべてのデータベースの事業所を一覧する"_s;
    }
    QString arguments() const override { return u"[--app-dir DIR] [--all-databases] [--all]"_s; }
    QString description() const override
    {
        return u"メイン画面の事業所一覧に出る事業所を一行に一つ、タブ区切りで出力します：\n"
               u"事業所名、データベース（--all-databases のとき）、事業所コード、枝番。"_s;
    }
    QString examples() const override { return u"  qelprn-cli sites --app-dir ~/clinic --all-databases\n"_s; }
    void addOptions(QCommandLineParser& parser) const override
    {
        parser.addOptions({
            {u"app-dir"_s,
             u"プログラムフォルダ（既定：QELPRN_APP_DIR、プログラムのフォルダ、利用者のデータフォルダ）"_s,
             u"DIR"_s},
            {u"all-databases"_s, u"adodb.ini のデータベースではなく DB.ini のすべてのデータベース"_s},
            {u"all"_s, u"使用フラグにかかわらずすべての事業所"_s},
        });
    }

    int execute(const QCommandLineParser& parser, QTextStream& out, QTextStream& err) override
    {
        rejectExtraArguments(parser, 0);
        const QString appDir =
            parser.isSet(u"app-dir"_s) ? QDir(parser.value(u"app-dir"_s)).absolutePath() : QString();
        const bool allDatabases = parser.isSet(u"all-databases"_s);
        const bool all = parser.isSet(u"all"_s);

        CliInteraction ui(false, &err);
        const std::optional<AppContext> loaded =
            appDir.isEmpty() ? loadAppContext(ui) : loadAppContext(ui, appDir);
        if (!loaded)
            return 2;
        const AppContext& ctx = *loaded;
        QList<SiteRow> grid;
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
                              seikyuTitle(), MsgIcon::Critical);
                return 2;
            }
            cT_ADODB ado;
            if (ado.iInit(cs) != 0 || ado.iConnect() != 0) {
                ui.messageBox(ado.sErrMsg, seikyuTitle(), MsgIcon::Critical);
                return 2;
            }
            sites.iInit(&ado);
            sites.iLoadKyoten(grid, all, result);
            ado.iDisConnect();
        }
        if (result != 0)
            return 2;
        for (const SiteRow& row : std::as_const(grid))
            out << row.name << '\t' << row.database << '\t' << row.site.iKyotenCd << '\t'
                << row.site.iKyotenEb << '\n';
        out.flush();
        return 0;
    }
};

} // namespace

std::unique_ptr<Command> makeSitesCommand()
{
    return std::make_unique<CmdSites>();
}

} // namespace qelprn::cli
