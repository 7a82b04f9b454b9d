#pragma once

#include "app/Interaction.h"

namespace qelprn {

// Passes every call on to the real interaction and remembers the first failure of a run (or its last
// notice), so the main form can show the last run's outcome in its status bar.
class RunOutcomeInteraction : public Interaction
{
public:
    explicit RunOutcomeInteraction(Interaction& inner) : m_inner(inner) {}

    MsgResult messageBox(const QString& text, const QString& title, MsgIcon icon,
                         MsgButtons buttons = MsgButtons::Ok) override;
    void setBusy(bool busy) override { m_inner.setBusy(busy); }
    void progress(const QString& phase, qint64 done, qint64 total) override
    {
        m_inner.progress(phase, done, total);
    }
    bool keepWaiting(const QString& text, qint64 waitedMs) override;
    void waitEnded() override { m_inner.waitEnded(); }
    void openUrl(const QString& url) override { m_inner.openUrl(url); }

    // "完了" when the run said nothing, else the first line of its most serious message.
    QString outcome() const;
    bool failed() const { return m_failed; }
    bool hasMessage() const { return !m_message.isEmpty(); }

private:
    Interaction& m_inner;
    QString m_message;
    bool m_failed = false;
};

} // namespace qelprn
