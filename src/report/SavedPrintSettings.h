#pragma once

#include "app/AppContext.h"
#include "report/PrintFormValues.h"

namespace qelprn {

// Puts the choices the desktop program keeps in "印刷設定.ini" of the data folder (sort order,
// printed corporation and clinic, grouping by the visiting address's facility) into values, as
// the main form shows them when it opens; a missing file or key leaves the form's defaults.
void applySavedPrintSettings(const AppContext& context, PrintFormValues& values);

} // namespace qelprn
