#include "cli/PrintOptions.h"

#include "app/SpaceTrim.h"
#include "cli/OptionValues.h"
#include "report/PrintKind.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

constexpr qint64 kMaxCode = 2147483647;

// The options of the conditions only some kinds read; %1 stands for those kinds.
struct ConditionOption
{
    QString name;
    Condition condition;
    QString help;
    QString valueName; // "" for a switch
};

const ConditionOption kConditionOptions[] = {
    {u"billing-facility"_s, Condition::BillingFacility, u"この請求先施設だけ（%1、0 = すべて）"_s, u"N"_s},
    {u"service-facility"_s, Condition::ServiceFacility, u"この施術先施設だけ（%1、0 = すべて）"_s, u"N"_s},
    {u"billing-kind"_s, Condition::BillingFacility, u"この種類の請求先施設だけ（%1）"_s, u"TYPE"_s},
    {u"service-kind"_s, Condition::ServiceKind, u"この種類の施術先施設だけ（%1）"_s, u"TYPE"_s},
    {u"corp"_s, Condition::Corp, u"請求元として印刷する法人（%1、既定：事業所の主な法人）"_s, u"N"_s},
    {u"practitioner"_s, Condition::Practitioner, u"この施術者の利用者だけ（%1）"_s, u"N"_s},
    {u"patient"_s, Condition::Patient, u"この利用者だけ（%1）"_s, u"N"_s},
    {u"sort"_s, Condition::Sort, u"請求書兼領収書の並び順: 1 ID, 2 フリガナ, 3 部屋（%1、既定 1）"_s,
     u"1..3"_s},
    {u"list-sort"_s, Condition::ListSort,
     u"一部負担金一覧表の並び順: 0 フリガナ, 1 ID, 2 部屋とフリガナ, 3 部屋と ID（%1、既定 0）"_s, u"0..3"_s},
    {u"address-facility"_s, Condition::AddressFacility,
     u"利用者を入所施設ではなく訪問先住所の施設でまとめる（%1）"_s, QString()},
    {u"sites"_s, Condition::Sites, u"%1 の事業所、全データベースの一覧から（既定：一覧のすべての事業所）"_s,
     u"CODE-BRANCH,..."_s},
};

QList<SiteKey> sitesOf(const QString& text)
{
    QList<SiteKey> sites;
    for (const QString& item : text.split(u',', Qt::SkipEmptyParts)) {
        const QStringList parts = item.trimmed().split(u'-');
        bool codeOk = false;
        bool branchOk = false;
        const int code = parts.value(0).toInt(&codeOk);
        const int branch = parts.size() == 2 ? parts.at(1).toInt(&branchOk) : 0;
        if (!codeOk || !branchOk || code < 0 || code > 99 || branch < 0 || branch > 99)
            throw UsageError{u"--sites には 1-1,2-1 のように「コード-枝番」を並べてください（指定値：'"_s +
                             item + u"'）"_s};
        sites.append({qint16(code), qint16(branch)});
    }
    if (sites.isEmpty())
        throw UsageError{u"--sites に事業所が一つもありません"_s};
    return sites;
}

PrintOptions::Output outputOf(const QCommandLineParser& parser)
{
    const QList<QPair<QString, PrintOptions::Output>> outputs = {
        {u"csv-only"_s, PrintOptions::Output::CsvOnly}, {u"preview"_s, PrintOptions::Output::Preview},
        {u"print"_s, PrintOptions::Output::Print},      {u"pdf"_s, PrintOptions::Output::Pdf},
        {u"pdf-dir"_s, PrintOptions::Output::PdfDir},
    };
    PrintOptions::Output chosen = PrintOptions::Output::None;
    for (const auto& [name, output] : outputs) {
        if (!parser.isSet(name))
            continue;
        if (chosen != PrintOptions::Output::None)
            throw UsageError{
                u"--csv-only、--preview、--print、--pdf、--pdf-dir はどれか一つだけ指定してください"_s};
        chosen = output;
    }
    if (chosen == PrintOptions::Output::None)
        throw UsageError{
            u"何をするかを指定してください：--csv-only、--preview、--print、--pdf FILE、--pdf-dir DIR"_s};
    return chosen;
}

} // namespace

void addPrintOptions(QCommandLineParser& parser)
{
    QStringList kinds;
    for (const PrintKind& kind : printKinds())
        kinds.append(QString::number(kind.number) + u' ' + kind.label);
    parser.addOptions({
        {u"kind"_s, u"帳票の種類: "_s + kinds.join(u", "_s), u"1..%1"_s.arg(int(printKinds().size()))},
        {u"month"_s, u"請求月"_s, u"yyyy/mm"_s},
        {u"issue-date"_s, u"帳票に印刷する発行日（既定：今日）"_s, u"yyyy/mm/dd"_s},
        {u"app-dir"_s,
         u"プログラムフォルダ（既定：QELPRN_APP_DIR、プログラムのフォルダ、利用者のデータフォルダ）"_s,
         u"DIR"_s},
        {u"clinic"_s, u"帳票に印刷する治療院（既定：事業所の主な治療院）"_s, u"N"_s},
    });
    // The options of the conditions a kind reads name those kinds, as the checks apply them.
    for (const ConditionOption& option : kConditionOptions) {
        const QString kindsText = u"種類 "_s + kindNumbersReading(option.condition);
        parser.addOption(option.valueName.isEmpty()
                             ? QCommandLineOption(option.name, option.help.arg(kindsText))
                             : QCommandLineOption(option.name, option.help.arg(kindsText), option.valueName));
    }
    parser.addOptions({
        {u"yes"_s,
         u"確認にすべて「はい」と答える（--print の確認、請求先施設のない施設の確認）。端末では聞かれたときに答えられる"_s},
        {u"timings"_s,
         u"終わったときに、検索の時間（送った文の数と開いた接続の数つき）、CSV ファイルとエンジンの時間を標準エラーに出力する"_s},
        {u"csv-only"_s, u"CSV ファイルを書いたところで止め、そのパスを出力する"_s},
        {u"preview"_s, u"エンジンのプレビューを開く（画面のプレビューボタンと同じ）"_s},
        {u"print"_s, u"確認のあと、エンジンの印刷ダイアログを開く"_s},
        {u"pdf"_s, u"エンジンに帳票をファイルへ書かせ、終わるまで待つ"_s, u"FILE"_s},
        {u"pdf-dir"_s, u"宛先（請求先施設・施設・利用者）ごとに一つの PDF と送付一覧.csv をフォルダへ書く"_s,
         u"DIR"_s},
        {u"replace"_s,
         u"--pdf-dir のフォルダにある前回の出力（送付一覧.csv とそれが挙げる PDF）を置き換える"_s},
    });
}

PrintOptions readPrintOptions(const QCommandLineParser& parser)
{
    rejectExtraArguments(parser, 0);
    PrintOptions options;
    PrintJouken& j = options.jouken;

    const auto number = numberOption(parser, u"kind"_s, 1, qint64(printKinds().size()));
    if (!number)
        throw UsageError{u"--kind を指定してください"_s};
    options.kind = int(*number);
    j.iPrintKind = qint16(options.kind);
    const auto month = dateOption(parser, u"month"_s, true);
    if (!month)
        throw UsageError{u"--month を指定してください"_s};
    j.setMonthAndIssue(*month, dateOption(parser, u"issue-date"_s, false).value_or(QDate::currentDate()));
    if (parser.isSet(u"app-dir"_s))
        options.appDir = QDir(parser.value(u"app-dir"_s)).absolutePath();
    if (const auto n = numberOption(parser, u"billing-facility"_s, 0, kMaxCode))
        j.nShisetuCdFrom = qint32(*n);
    if (const auto n = numberOption(parser, u"service-facility"_s, 0, kMaxCode))
        j.nShisetuCdTo = qint32(*n);
    if (const auto n = numberOption(parser, u"corp"_s, 0, kMaxCode))
        j.nDairiCd = qint32(*n);
    if (const auto n = numberOption(parser, u"clinic"_s, 0, kMaxCode))
        j.nTiryoinCd = qint32(*n);
    if (const auto n = numberOption(parser, u"practitioner"_s, 0, kMaxCode))
        j.nTantouCd = qint32(*n);
    if (const auto n = numberOption(parser, u"patient"_s, 0, kMaxCode))
        j.nKanjaCd = qint32(*n);
    if (const auto n = numberOption(parser, u"sort"_s, 1, 3))
        j.iSort = qint16(*n);
    if (const auto n = numberOption(parser, u"list-sort"_s, 0, 3))
        j.iSortShisetsu = qint16(*n);
    j.bSelSisetsuType = parser.isSet(u"address-facility"_s);
    if (parser.isSet(u"sites"_s))
        options.sites = sitesOf(parser.value(u"sites"_s));
    options.yes = parser.isSet(u"yes"_s);
    options.timings = parser.isSet(u"timings"_s);
    options.output = outputOf(parser);
    if (options.output == PrintOptions::Output::Pdf)
        options.pdfFile = QFileInfo(parser.value(u"pdf"_s)).absoluteFilePath();
    if (options.output == PrintOptions::Output::PdfDir)
        options.pdfDir = QDir(parser.value(u"pdf-dir"_s)).absolutePath();
    options.replace = parser.isSet(u"replace"_s);
    if (options.replace && options.output != PrintOptions::Output::PdfDir)
        throw UsageError{u"--replace は --pdf-dir と一緒に使います"_s};
    // A condition the chosen kind does not read would be ignored without a word: refuse it.
    const PrintKind& kind = *printKind(options.kind);
    for (const ConditionOption& option : kConditionOptions) {
        if (parser.isSet(option.name) && !kind.reads(option.condition))
            throw UsageError{u"--"_s + option.name + u" は種類 "_s + QString::number(options.kind) +
                             u" には使えません（"_s + u"種類 "_s + kindNumbersReading(option.condition) +
                             u" だけ）"_s};
    }

    if (parser.isSet(u"billing-kind"_s))
        j.sSisetsuType1 = trimRightSpaces(parser.value(u"billing-kind"_s));
    if (parser.isSet(u"service-kind"_s))
        j.sSisetsuType2 = trimRightSpaces(parser.value(u"service-kind"_s));
    return options;
}

} // namespace qelprn::cli
