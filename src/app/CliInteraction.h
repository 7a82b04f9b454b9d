#pragma once

#include "app/Interaction.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <memory>
#include <optional>

namespace qelprn {

// The command line's Interaction: every message is one line "title: text" on the error stream,
// questions are answered Yes when the user gave --yes, else asked at the terminal when there is one,
// else answered No. Progress is a one-line counter on the
// error stream, shown only when that stream is a terminal and the run has taken over a second.
class CliInteraction : public Interaction
{
public:
    // err: the stream for messages; nullptr means standard error.
    // in: where a question's answer is read; nullptr means standard input, asked only when it and
    // the error stream are a terminal.
    explicit CliInteraction(bool yes = false, QTextStream* err = nullptr, QTextStream* in = nullptr);
    ~CliInteraction() override;
    CliInteraction(const CliInteraction&) = delete;
    CliInteraction& operator=(const CliInteraction&) = delete;

    MsgResult messageBox(const QString& text, const QString& title, MsgIcon icon,
                         MsgButtons buttons = MsgButtons::Ok) override;
    void setBusy(bool busy) override;
    void progress(const QString& phase, qint64 done, qint64 total) override;
    // Says once that the run waits; Ctrl+C ends the wait with the program.
    bool keepWaiting(const QString& text, qint64 waitedMs) override;
    void waitEnded() override;
    void openUrl(const QString& url) override;

private:
    QTextStream& err();
    bool errIsTerminal();
    QTextStream* questionInput();

    bool m_yes = false;
    QTextStream* m_err = nullptr;
    QTextStream* m_in = nullptr;
    QTextStream m_stderr;
    std::unique_ptr<QTextStream> m_stdin;
    bool m_progressShown = false;
    bool m_waitShown = false;
    std::optional<bool> m_terminal;
    QElapsedTimer m_runTimer;
    QElapsedTimer m_lastShown;
};

} // namespace qelprn
