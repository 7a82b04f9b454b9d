#pragma once

#include "billing/modPrint施設請求書.h"
#include "report/PrintDataCsv.h"

#include <QFlags>
#include <QString>
#include <span>

namespace qelprn {

// A print condition the main form offers; a kind lists the ones its query reads. The form enables
// a condition's controls, and the command line accepts its options, only for those kinds.
enum class Condition : quint16 {
    BillingFacility = 0x001, // code and kind of the billing facility
    ServiceFacility = 0x002, // code of the treated facility
    ServiceKind = 0x004,     // kind of the treated facility
    Practitioner = 0x008,    // the patients' main practitioner
    Patient = 0x010,         // one patient
    Sort = 0x020,            // order of the invoice-receipts
    ListSort = 0x040,        // order of the co-payment list
    AddressFacility = 0x080, // group by the visiting address's facility
    Corp = 0x100,            // the corporation printed as the biller
    Clinic = 0x200,          // the clinic printed on the form
    Sites = 0x400,           // the sites of a multi-database run
};
Q_DECLARE_FLAGS(Conditions, Condition)
Q_DECLARE_OPERATORS_FOR_FLAGS(Conditions)

// Everything that differs between the print kinds. A new form is one row here and one layout.
struct PrintKind
{
    // Fills the query's result arrays of data from data.jouken: 0 rows found, 1 none, -1 failed.
    using Query = qint16 (modPrint施設請求書::*)();
    // Writes the print-data file at a local path from the query's result.
    using Writer = CsvResult (*)(const QString& path, const modPrint施設請求書& data,
                                 const QString& sealPath);
    // Asked before a form of this kind is printed, with the query's result; false stops the run.
    using Confirm = bool (*)(const modPrint施設請求書& data, Interaction& ui);

    int number = 0;     // 1.., the form's option index + 1 and the command line's --kind
    QString label;      // the form's option caption, also shown by the command line's help
    QString layout;     // the layout file, looked up by layoutFilePath
    QString dataName;   // the data name the layout's fields refer to
    QString csvFile;    // the print-data file, in the temporary folder
    bool paper = false; // the engine's paper flag: print on A4 rather than the layout's own paper
    Query query = nullptr;
    Writer writer = nullptr;
    Conditions conditions;
    Confirm confirm = nullptr; // nullptr: nothing to ask
    // The days an invoice-receipt lists: those with a co-payment, or those with a self-pay fee.
    ReceiptDays receiptDays = ReceiptDays::All;

    bool reads(Condition condition) const { return conditions.testFlag(condition); }
};

// Every print kind, in number order.
std::span<const PrintKind> printKinds();
// The kind with that number, nullptr for none.
const PrintKind* printKind(int number);
// The numbers of the kinds that read condition, for help texts: "2 と 3", "2 から 5", "1, 4, 5, 6".
QString kindNumbersReading(Condition condition);

} // namespace qelprn
