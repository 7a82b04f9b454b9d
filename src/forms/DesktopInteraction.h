#pragma once

#include "app/Interaction.h"

#include <QElapsedTimer>
#include <QPointer>

class QProgressDialog;
class QWidget;

namespace qelprn {

// The desktop program's Interaction: real message boxes over the active window, the wait cursor,
// a progress dialog that appears only for runs longer than half a second, and the user's browser.
class DesktopInteraction : public Interaction
{
public:
    DesktopInteraction();
    ~DesktopInteraction() override;

    MsgResult messageBox(const QString& text, const QString& title, MsgIcon icon,
                         MsgButtons buttons = MsgButtons::Ok) override;
    void setBusy(bool busy) override;
    void progress(const QString& phase, qint64 done, qint64 total) override;
    // A modal notice with a 中止 button and the seconds waited; false once it was pressed.
    bool keepWaiting(const QString& text, qint64 waitedMs) override;
    void waitEnded() override;
    void openUrl(const QString& url) override;
    // Leaves the process at once, as the suite's programs do after a fatal start-up message.

private:
    void closeProgress();

    int m_busyDepth = 0;
    QPointer<QProgressDialog> m_progress;
    QPointer<QProgressDialog> m_wait;
    QElapsedTimer m_runTimer;
};

} // namespace qelprn
