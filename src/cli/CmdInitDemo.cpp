#include "app/CliInteraction.h"
#include "cli/Command.h"
#include "cli/OptionValues.h"
#include "demo/DemoProgramFolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

class CmdInitDemo final : public Command
{
public:
    QString name() const override { return u"init-demo"_s; }
    QString summary() const override
    {
        return u"設定、帳票レイアウト、データのそろったデモ用プログラムフォルダを作成する"_s;
    }
    QString arguments() const override
    {
        return u"DIR [--sites N] [--patients N] [--month yyyy/mm] [--seed N] [--replace]"_s;
    }
    QString description() const override
    {
        return u"完全なプログラムフォルダを DIR に作成します：Tovara.ini、adodb.ini、DB.ini、"
               u"ServerName.zkt、\n"
               u"Halvex.Ver、フォルダ SYS（帳票レイアウト）、TMP、ICON（壁紙）、DATA（施設種類一覧、"
               u"Version.ini、\n"
               u"社印）と db（組み込みデータベース）。治療院のマスタデータと、請求月とその前月の"
               u"施術実績が入ります。"_s;
    }
    QString examples() const override
    {
        return u"  qelprn-cli init-demo demo-folder --patients 500 --month 2026/10\n"
               u"  QELPRN_APP_DIR=demo-folder qelprn-cli sites --all-databases\n"_s;
    }
    void addOptions(QCommandLineParser& parser) const override
    {
        parser.addPositionalArgument(u"DIR"_s, u"作成するプログラムフォルダ"_s);
        parser.addOptions({
            {u"sites"_s, u"データのある事業所の数、1 から 98（既定 3）。二つの事業所で一つのデータベース"_s,
             u"N"_s},
            {u"patients"_s, u"全事業所の利用者数（既定 200、50000 でベンチマーク用）"_s, u"N"_s},
            {u"month"_s, u"請求月 yyyy/mm（既定：前の月）"_s, u"yyyy/mm"_s},
            {u"seed"_s, u"データ生成の種（既定 1）。同じ種から同じデータができます"_s, u"N"_s},
            {u"replace"_s, u"空でないフォルダにも書き込み、データベースを置き換える"_s},
        });
    }

    int execute(const QCommandLineParser& parser, QTextStream& out, QTextStream& err) override
    {
        rejectExtraArguments(parser, 1);
        DemoOptions options;
        if (parser.positionalArguments().isEmpty())
            throw UsageError{u"作成するフォルダを指定してください"_s};
        options.folder = parser.positionalArguments().first();
        if (const auto n = numberOption(parser, u"sites"_s, 1, 98))
            options.sites = int(*n);
        if (const auto n = numberOption(parser, u"patients"_s, 0, 1000000))
            options.patients = int(*n);
        if (const auto n = numberOption(parser, u"seed"_s, 0, Q_INT64_C(0x7fffffffffffffff)))
            options.seed = quint64(*n);
        if (const auto month = dateOption(parser, u"month"_s, true))
            options.month = *month;
        options.replace = parser.isSet(u"replace"_s);
        options.folder = QFileInfo(options.folder).absoluteFilePath();
        // No FORM_ENGINE: the folder works with the engine beside whichever program opens it.

        QElapsedTimer timer;
        timer.start();
        DemoProgramFolder folder(options);
        CliInteraction ui(false, &err); // progress only on a terminal
        QString error;
        if (!folder.create(ui, &error)) {
            err << u"qelprn-cli init-demo: "_s << error << Qt::endl;
            return 2;
        }
        out << u"デモ用プログラムフォルダ: "_s << QDir::toNativeSeparators(options.folder) << u"\n"_s;
        out << u"請求月: "_s << folder.month().toString(u"yyyy/MM"_s) << u"\n"_s;
        for (const DemoSite& s : folder.sites())
            out << u"事業所 "_s << s.code << u"/"_s << s.branch << u" "_s << s.name << u"（データベース "_s
                << s.database << u"）: 利用者 "_s << s.patients << u" 人\n"_s;
        out << u"作成時間 "_s << timer.elapsed() << u" ms\n"_s;
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
