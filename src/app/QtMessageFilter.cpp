#include "app/QtMessageFilter.h"

#include <QtGlobal>

namespace qelprn {

namespace {

QtMessageHandler g_defaultHandler = nullptr;

void filterMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg || type == QtWarningMsg)
        return;
    if (g_defaultHandler)
        g_defaultHandler(type, context, message);
}

} // namespace

void installQtMessageFilter()
{
    if (qEnvironmentVariableIntValue("QELPRN_QT_MESSAGES") == 1)
        return;
    g_defaultHandler = qInstallMessageHandler(filterMessage);
}

} // namespace qelprn
