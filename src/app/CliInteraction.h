#pragma once

#include "app/Interaction.h"

#include <QTextStream>

namespace qelprn {

// The command line's Interaction: every message is one line "title: text" on the error stream,
// questions are answered Yes only when the user gave --yes, progress shows only on a terminal.
class CliInteraction : public Interaction
{
public:
    // err: the stream for messages; nullptr means standard error.
    explicit CliInteraction(bool yes = false, QTextStream* err = nullptr);

    MsgResult messageBox(const QString& text, const QString& title, MsgIcon icon,
                         MsgButtons buttons = MsgButtons::Ok) override;
    void setBusy(bool busy) override;
    void progress(const QString& phase, qint64 done, qint64 total) override;
    void openUrl(const QString& url) override;
    // Throws ProgramEnd; the command-line main turns it into the exit status.
    void endProgram(int exitCode) override;

private:
    QTextStream& err();

    bool m_yes = false;
    QTextStream* m_err = nullptr;
    QTextStream m_stderr;
    bool m_progressShown = false;
};

} // namespace qelprn
