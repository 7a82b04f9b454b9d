#include "forms/mod施設請求書Main.h"

#include "app/StartupCheck.h"
#include "forms/FormControls.h"
#include "forms/MenuProgram.h"
#include "forms/frmBack.h"

#include <QTimer>

namespace qelprn {

int Main(AppContext& ctx, const QString& commandLine, const frmPrintSisetsuSeikyu::PrintAction& print,
         const std::function<void(frmPrintSisetsuSeikyu&)>& whenShown)
{
    frmBack back(ctx);
    // Without the suite's settings file the program ends here, after the message.
    if (!back.Form_Load())
        return 2;
    back.showMaximized();
    if (!checkCommandLine(ctx.interaction(), commandLine))
        return 1;

    frmPrintSisetsuSeikyu form(ctx, print, QDate::currentDate(), &back);
    if (form.Form_Load()) {
        form.fitInto(availableArea(form));
        if (whenShown)
            QTimer::singleShot(0, &form, [&form, &whenShown] { whenShown(form); });
        form.exec();
    }
    // Closing the form returns to the suite's menu; without the menu program the program just ends.
    startMenuProgram(ctx, form.bMenuReturn);
    return 0;
}

} // namespace qelprn
