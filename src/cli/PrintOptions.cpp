#include "cli/PrintOptions.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

namespace {

// Reads the value after option i; problem set when it is missing.
std::optional<QString> valueOf(const QStringList& args, qsizetype& i, QString& problem)
{
    if (i + 1 >= args.size()) {
        problem = args.at(i) + u" needs a value"_s;
        return std::nullopt;
    }
    return args.at(++i);
}

std::optional<qint32> numberOf(const QStringList& args, qsizetype& i, qint32 low, qint32 high,
                               QString& problem)
{
    const QString option = args.at(i);
    const std::optional<QString> text = valueOf(args, i, problem);
    if (!text)
        return std::nullopt;
    bool ok = false;
    const qint64 value = text->toLongLong(&ok);
    if (!ok || value < low || value > high) {
        problem = option + u" must be a whole number from "_s + QString::number(low) + u" to "_s +
                  QString::number(high) + u", not '"_s + *text + u"'"_s;
        return std::nullopt;
    }
    return qint32(value);
}

std::optional<QDate> dateOf(const QStringList& args, qsizetype& i, bool monthOnly, QString& problem)
{
    const QString option = args.at(i);
    const std::optional<QString> text = valueOf(args, i, problem);
    if (!text)
        return std::nullopt;
    const QDate date = monthOnly ? QDate::fromString(*text + u"/01"_s, u"yyyy/MM/dd"_s)
                                 : QDate::fromString(*text, u"yyyy/MM/dd"_s);
    if (!date.isValid()) {
        problem = option + (monthOnly ? u" must be yyyy/mm"_s : u" must be yyyy/mm/dd"_s) + u", not '"_s +
                  *text + u"'"_s;
        return std::nullopt;
    }
    return date;
}

std::optional<QList<SiteKey>> sitesOf(const QStringList& args, qsizetype& i, QString& problem)
{
    const std::optional<QString> text = valueOf(args, i, problem);
    if (!text)
        return std::nullopt;
    QList<SiteKey> sites;
    for (const QString& item : text->split(u',', Qt::SkipEmptyParts)) {
        const QStringList parts = item.trimmed().split(u'-');
        bool codeOk = false;
        bool branchOk = false;
        const int code = parts.value(0).toInt(&codeOk);
        const int branch = parts.size() == 2 ? parts.at(1).toInt(&branchOk) : 0;
        if (!codeOk || !branchOk || code < 0 || code > 99 || branch < 0 || branch > 99) {
            problem = u"--sites takes CODE-BRANCH pairs such as 1-1,2-1, not '"_s + item + u"'"_s;
            return std::nullopt;
        }
        sites.append({qint16(code), qint16(branch)});
    }
    if (sites.isEmpty()) {
        problem = u"--sites names no site"_s;
        return std::nullopt;
    }
    return sites;
}

bool setOutput(PrintOptions& options, PrintOptions::Output output, QString& problem)
{
    if (options.output != PrintOptions::Output::None) {
        problem = u"give only one of --csv-only, --preview, --print and --pdf"_s;
        return false;
    }
    options.output = output;
    return true;
}

} // namespace

bool parsePrintOptions(const QStringList& args, PrintOptions& options, QString& problem)
{
    PrintFormValues& v = options.values;
    v.imD_Teis = QDate::currentDate();
    v.optSelSisetsuType = {true, false}; // the care facility, as the form starts
    std::optional<QString> billingKind;
    std::optional<QString> serviceKind;

    for (qsizetype i = 0; i < args.size() && problem.isEmpty(); ++i) {
        const QString& a = args.at(i);
        if (a == u"--kind"_s) {
            if (const auto n = numberOf(args, i, 1, 6, problem))
                options.kind = *n;
        } else if (a == u"--month"_s) {
            if (const auto d = dateOf(args, i, true, problem))
                v.imD_Out = *d;
        } else if (a == u"--issue-date"_s) {
            if (const auto d = dateOf(args, i, false, problem))
                v.imD_Teis = *d;
        } else if (a == u"--app-dir"_s) {
            if (const auto dir = valueOf(args, i, problem))
                options.appDir = QDir(*dir).absolutePath();
        } else if (a == u"--billing-facility"_s) {
            if (const auto n = numberOf(args, i, 0, 2147483647, problem))
                v.imNum_ShisetuCD[0] = *n;
        } else if (a == u"--service-facility"_s) {
            if (const auto n = numberOf(args, i, 0, 2147483647, problem))
                v.imNum_ShisetuCD[1] = *n;
        } else if (a == u"--billing-kind"_s) {
            billingKind = valueOf(args, i, problem);
        } else if (a == u"--service-kind"_s) {
            serviceKind = valueOf(args, i, problem);
        } else if (a == u"--corp"_s) {
            if (const auto n = numberOf(args, i, 0, 2147483647, problem)) {
                v.cbDairiListIndex = 1;
                v.cbDairiItemData = *n;
            }
        } else if (a == u"--clinic"_s) {
            if (const auto n = numberOf(args, i, 0, 2147483647, problem)) {
                v.cbTiryoinListIndex = 1;
                v.cbTiryoinItemData = *n;
            }
        } else if (a == u"--practitioner"_s) {
            if (const auto n = numberOf(args, i, 0, 2147483647, problem)) {
                v.cbTantouListIndex = 1;
                v.cbTantouItemData = *n;
            }
        } else if (a == u"--patient"_s) {
            if (const auto n = numberOf(args, i, 0, 2147483647, problem))
                v.imNum_CD = *n;
        } else if (a == u"--sort"_s) {
            if (const auto n = numberOf(args, i, 1, 3, problem)) {
                v.optSort = {};
                v.optSort[*n - 1] = true;
            }
        } else if (a == u"--list-sort"_s) {
            if (const auto n = numberOf(args, i, 0, 3, problem)) {
                v.optSortShisetsu = {};
                v.optSortShisetsu[*n] = true;
            }
        } else if (a == u"--address-facility"_s) {
            v.optSelSisetsuType = {false, true};
        } else if (a == u"--sites"_s) {
            options.sites = sitesOf(args, i, problem);
        } else if (a == u"--yes"_s) {
            options.yes = true;
        } else if (a == u"--timings"_s) {
            options.timings = true;
        } else if (a == u"--csv-only"_s) {
            setOutput(options, PrintOptions::Output::CsvOnly, problem);
        } else if (a == u"--preview"_s) {
            setOutput(options, PrintOptions::Output::Preview, problem);
        } else if (a == u"--print"_s) {
            setOutput(options, PrintOptions::Output::Print, problem);
        } else if (a == u"--pdf"_s) {
            if (const auto file = valueOf(args, i, problem);
                file && setOutput(options, PrintOptions::Output::Pdf, problem))
                options.pdfFile = QFileInfo(*file).absoluteFilePath();
        } else {
            problem = u"unknown option '"_s + a + u"'"_s;
        }
    }
    if (!problem.isEmpty())
        return false;
    if (options.kind == 0)
        problem = u"--kind is missing"_s;
    else if (!v.imD_Out.isValid())
        problem = u"--month is missing"_s;
    else if (options.output == PrintOptions::Output::None)
        problem = u"say what to do: --csv-only, --preview, --print or --pdf FILE"_s;
    else if (options.sites && options.kind != 6)
        problem = u"--sites applies to kind 6 only"_s;
    if (!problem.isEmpty())
        return false;

    v.optPrint[options.kind - 1] = true;
    // The facility-kind lists are enabled on the form only for the kinds that use them.
    const bool billingKindOn = options.kind != 2 && options.kind != 3;
    const bool serviceKindOn = options.kind >= 2 && options.kind <= 5;
    if (billingKind && !billingKindOn) {
        problem = u"--billing-kind does not apply to kind "_s + QString::number(options.kind);
        return false;
    }
    if (serviceKind && !serviceKindOn) {
        problem = u"--service-kind does not apply to kind "_s + QString::number(options.kind);
        return false;
    }
    v.cmbKaishaKbnEnabled = {billingKindOn, serviceKindOn};
    if (billingKind) {
        v.cmbKaishaKbnListIndex[0] = 1;
        v.cmbKaishaKbnText[0] = *billingKind;
    }
    if (serviceKind) {
        v.cmbKaishaKbnListIndex[1] = 1;
        v.cmbKaishaKbnText[1] = *serviceKind;
    }
    return true;
}

} // namespace qelprn::cli
