#pragma once

#include "app/AppContext.h"
#include "billing/PrintJouken.h"

#include <QDate>

namespace qelprn {

// The conditions a month end prints kind with: the choices the desktop program keeps in
// "印刷設定.ini" of the data folder (sort order, printed corporation and clinic, grouping by the
// visiting address's facility; a missing file or key leaves the defaults), the month and the issue
// date; every filter open.
PrintJouken monthEndJouken(const AppContext& context, int kind, QDate month, QDate issue);

} // namespace qelprn
