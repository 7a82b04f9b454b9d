#pragma once

#include "app/AppContext.h"
#include "forms/frmPrintSisetsuSeikyu.h"

#include <functional>

namespace qelprn {

// Start-up of the desktop program: the background form, the refusal of an empty command line, the
// main form shown modally and, once it closes, the suite's menu program. whenShown runs once the
// main form is on screen (diagnostics: screenshots, start-up timing). Returns the exit status.
int Main(AppContext& ctx, const QString& commandLine, const frmPrintSisetsuSeikyu::PrintAction& print,
         const std::function<void(frmPrintSisetsuSeikyu&)>& whenShown = {});

} // namespace qelprn
