#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

class frmPrintSisetsuSeikyu;

// Saves pictures of the running program into a folder: the main form for each form kind, the three
// search dialogs with their lists loaded, the version dialog and the background; then closes the
// main form. Used to keep the documentation's screenshots current. Returns the files written.
QStringList saveScreenshots(AppContext& ctx, frmPrintSisetsuSeikyu& form, const QString& folder,
                            const QString& suffix);

} // namespace qelprn
