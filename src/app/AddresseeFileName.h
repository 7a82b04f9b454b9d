#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace qelprn {

// One addressee of a run split into files: who the invoice goes to and what the form asks of them.
struct AddresseeKey
{
    QString id;     // the addressee's code in the data ("請求先施設ID", "施設ID", "利用者ID")
    QString name;   // the name printed as the addressee
    QString amount; // the amount requested as printed, in plain digits ("123450", "-500")
    QString issuer; // who issues the invoice (the clinic or corporation printed as the biller)
};

// The file name part for text: characters Windows forbids in file names (\ / : * ? " < > |) become
// their full-width forms (＼ ／ ： ＊ ？ ” ＜ ＞ ｜), control characters a space, runs of blanks one
// space; leading and trailing blanks and dots go; at most 60 characters; "" becomes "宛名なし".
QString fileNamePart(const QString& text);

// The PDF file names of a run's addressees, in their order:
// "<date>_<addressee>_<amount>.pdf", date as yyyymmdd. Addressees whose name part is shared by
// another addressee of the run get their ID in brackets ("寿(12)"); names that still meet (compared
// without regard to case, as Windows does) get "(2)", "(3)", ... after the name in their order.
QStringList addresseeFileNames(const QString& date, const QList<AddresseeKey>& addressees);

// The plain-digit amount of a printed money text ("¥1,234,567-" -> "1234567", "-1,200" -> "-1200",
// "1,234.50" -> "1234.5");
// "" when the text holds no number.
QString plainAmount(const QString& printed);

} // namespace qelprn
