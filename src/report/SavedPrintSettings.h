#pragma once

#include "app/AppContext.h"
#include "billing/PrintJouken.h"

#include <QDate>
#include <optional>

namespace qelprn {

// The choices the desktop program keeps between runs in "印刷設定.ini" of the data folder, section
// "施設請求書". A month end prints with them.
struct SavedPrintChoices
{
    int sortIndex = 0;            // 0..2: by ID, reading, room
    qint32 corpCode = 0;          // the printed corporation; 0 none
    qint32 clinicCode = 0;        // the printed clinic; 0 none
    bool addressFacility = false; // group by the visiting address's facility
};

// The saved choices; nullopt when there is no file. A missing key keeps its default, and so does a
// sort index out of range.
std::optional<SavedPrintChoices> readSavedPrintChoices(const AppContext& context);
// Writes "並び順", "印字社名", "印字治療院名", "対象施設" in that order (a file that is not there is
// made); false at the first failed write.
bool writeSavedPrintChoices(const AppContext& context, const SavedPrintChoices& choices);

// The conditions a month end prints kind with: the saved choices (a printed name only when its
// code is above 0), the month and the issue date; every filter open.
PrintJouken monthEndJouken(const AppContext& context, int kind, QDate month, QDate issue);

} // namespace qelprn
