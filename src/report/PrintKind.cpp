#include "report/PrintKind.h"

#include "billing/UnbilledFacilities.h"

#include <array>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

CsvResult seikyuCsv(const QString& path, const modPrint施設請求書& data, const QString& seal)
{
    return writeSeikyuCsv(path, data.aSisetsuSeikyu, seal);
}

CsvResult seikyuCsvAllDb(const QString& path, const modPrint施設請求書& data, const QString& seal)
{
    const SeikyuGroups groups{data.aSeikyuSisetsu, data.nSeikyuSisetsuCnt, data.aSeikyuJihi,
                              data.nSeikyuJihiCnt};
    return writeSeikyuCsvAllDb(path, groups, seal);
}

CsvResult kanjaCsv(const QString& path, const modPrint施設請求書& data, const QString& seal)
{
    return writeKanjaCsv(path, data.aKanjaSeikyu, data.jouken, seal);
}

CsvResult kenRyousyuuCsv(const QString& path, const modPrint施設請求書& data, const QString& seal)
{
    return writeKenRyousyuuCsv(path, data.aKenRyousyuu, data.jouken, seal);
}

// The lines of treated facilities without a billing facility come under ID -1 with no name, and
// their invoice would go to nobody: the clerk hears which facilities they are before printing.
bool confirmUnbilledFacilities(const modPrint施設請求書& data, Interaction& ui)
{
    const QStringList facilities = facilitiesWithoutBiller(data.aSisetsuSeikyu);
    if (facilities.isEmpty())
        return true;
    constexpr qsizetype kListed = 15;
    QStringList lines;
    for (qsizetype i = 0; i < facilities.size() && i < kListed; ++i)
        lines.append(u"　・"_s + facilities[i]);
    if (facilities.size() > kListed)
        lines.append(u"　ほか %1 施設"_s.arg(facilities.size() - kListed));
    const QString text = u"請求先施設が設定されていない施設が %1 件あります。\r\n"_s.arg(facilities.size()) +
                         lines.join(u"\r\n"_s) +
                         u"\r\nこの明細は、宛名「【請求先未設定】」の請求書に印刷されます。"
                         u"\r\n施設マスタで請求先施設を設定すると、請求先ごとに分かれます。"
                         u"\r\n\r\nこのまま印刷しますか？"_s;
    return ui.messageBox(text, u"請求先の確認"_s, MsgIcon::Exclamation, MsgButtons::YesNo) == MsgResult::Yes;
}

using C = Condition;
using M = modPrint施設請求書;

const QString kSeikyuData = u"施設請求データ"_s;
const QString kSeikyuCsv = u"施設請求データ.csv"_s;
const QString kKenRyousyuu = u"請求書兼領収書"_s;
const QString kKenRyousyuuCsv = u"請求書兼領収書.csv"_s;

// What each query reads of the conditions: the invoices the billing facility and the printed names;
// the co-payment lists the treated facility, the practitioner, the address grouping and their own
// order; the invoice-receipts both facility kinds, the billing facility, one patient and their order.
const Conditions kInvoice = C::BillingFacility | C::Corp | C::Clinic;
const Conditions kList =
    C::ServiceFacility | C::ServiceKind | C::Practitioner | C::ListSort | C::AddressFacility | C::Clinic;
const Conditions kReceipt = C::BillingFacility | C::ServiceKind | C::Patient | C::Sort | C::Corp | C::Clinic;

std::span<const PrintKind> table()
{
    static const auto kinds = std::to_array<PrintKind>({
        {1, u"請求書(施設請求先別)"_s, u"施設別請求書.wfd"_s, kSeikyuData, kSeikyuCsv, false,
         &M::iGetSeikyuData, seikyuCsv, kInvoice, confirmUnbilledFacilities},
        {2, u"一部負担金一覧表"_s, u"一部負担金一覧表_02.wfd"_s, kSeikyuData, kSeikyuCsv, false,
         &M::iGetSeikyuData_Kanja_New, kanjaCsv, kList},
        {3, u"一部負担金一覧表(回数区分あり)"_s, u"一部負担金一覧表_回数区分あり.wfd"_s, kSeikyuData,
         kSeikyuCsv, false, &M::iGetSeikyuData_Kanja_New, kanjaCsv, kList},
        {4, u"請求書兼領収書"_s, u"請求書兼領収書_回数区分あり.wfd"_s, kKenRyousyuu, kKenRyousyuuCsv, true,
         &M::iGetSeikyuData_KenRyousyuu, kenRyousyuuCsv, kReceipt, nullptr, ReceiptDays::CoPayment},
        {5, u"請求書兼領収書(自費分)"_s, u"請求書兼領収書_回数区分あり_自費.wfd"_s, kKenRyousyuu,
         kKenRyousyuuCsv, true, &M::iGetSeikyuData_KenRyousyuu, kenRyousyuuCsv, kReceipt, nullptr,
         ReceiptDays::SelfPay},
        {6, u"請求書(施設請求先別・拠点選択)"_s, u"施設別請求書.wfd"_s, kSeikyuData, kSeikyuCsv, false,
         &M::iGetSeikyuData_ALLDB, seikyuCsvAllDb, kInvoice | C::Sites},
    });
    return kinds;
}

} // namespace

std::span<const PrintKind> printKinds()
{
    return table();
}

const PrintKind* printKind(int number)
{
    for (const PrintKind& kind : table()) {
        if (kind.number == number)
            return &kind;
    }
    return nullptr;
}

QString kindNumbersReading(Condition condition)
{
    QList<int> numbers;
    for (const PrintKind& kind : table()) {
        if (kind.reads(condition))
            numbers.append(kind.number);
    }
    const bool run = numbers.size() > 2 && numbers.last() - numbers.first() == numbers.size() - 1;
    if (run)
        return QString::number(numbers.first()) + u" から "_s + QString::number(numbers.last());
    QStringList texts;
    for (int n : numbers)
        texts.append(QString::number(n));
    return texts.join(numbers.size() == 2 ? u" と "_s : u", "_s);
}

} // namespace qelprn
