#include "app/CliInteraction.h"

#include "app/Platform.h"
#include "app/ProgramTitle.h"

#include <QFile>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace qelprn {

CliInteraction::CliInteraction(bool yes, QTextStream* err, QTextStream* in)
    : m_yes(yes), m_err(err), m_in(in), m_stderr(stderr)
{
    m_runTimer.start();
}

CliInteraction::~CliInteraction()
{
    // The counter line is ended, so what follows starts on a line of its own.
    if (m_progressShown) {
        err() << '\n';
        err().flush();
    }
}

bool CliInteraction::errIsTerminal()
{
    // The stream given by the command-line program writes to standard error through a QFile; a
    // test's string stream has no file and never gets the counter.
    const auto* file = qobject_cast<const QFile*>(err().device());
    return file && platform::isTerminal(file->handle());
}

QTextStream& CliInteraction::err()
{
    return m_err ? *m_err : m_stderr;
}

MsgResult CliInteraction::messageBox(const QString& text, const QString& title, MsgIcon, MsgButtons buttons)
{
    QString shown = text;
    shown.replace(u"\r\n"_s, u"\n"_s);
    shown.replace(u'\r', u'\n');
    if (m_progressShown) {
        err() << '\n';
        m_progressShown = false;
    }
    err() << title.trimmed() << ": " << shown << '\n';
    MsgResult result = MsgResult::Ok;
    if (buttons == MsgButtons::YesNo) {
        if (m_yes) {
            result = MsgResult::Yes;
            err() << u"  -> はい (--yes)"_s << '\n';
        } else if (QTextStream* answers = questionInput()) {
            err() << u"  はい / いいえ (y/N): "_s;
            err().flush();
            const QString answer = answers->readLine().trimmed().toLower();
            result = answer == u"y"_s || answer == u"yes"_s || answer == u"はい"_s ? MsgResult::Yes
                                                                                   : MsgResult::No;
        } else {
            result = MsgResult::No;
            err() << u"  -> いいえ (--yes で「はい」)"_s << '\n';
        }
    }
    err().flush();
    return result;
}

void CliInteraction::setBusy(bool) {}

void CliInteraction::progress(const QString& phase, qint64 done, qint64 total)
{
    // Only a person at a terminal wants a moving counter, and only once a run takes longer than a
    // second; logs stay clean. Updates are limited to ten a second.
    if (m_runTimer.elapsed() < 1000 ||
        (m_lastShown.isValid() && m_lastShown.elapsed() < 100 && done != total))
        return;
    if (!m_terminal)
        m_terminal = errIsTerminal();
    if (!*m_terminal)
        return;
    m_lastShown.start();
    err() << '\r' << phase << ' ' << done;
    if (total > 0)
        err() << '/' << total;
    err() << "   ";
    err().flush();
    m_progressShown = true;
}

QTextStream* CliInteraction::questionInput()
{
    if (m_in)
        return m_in;
    // Only a person at a terminal is asked; a script or a log gets the --yes rule.
    if (!platform::isTerminal(0) || !errIsTerminal())
        return nullptr;
    if (!m_stdin)
        m_stdin = std::make_unique<QTextStream>(stdin);
    return m_stdin.get();
}

bool CliInteraction::keepWaiting(const QString& text, qint64)
{
    if (!m_waitShown) {
        messageBox(text + u"（Ctrl+C で中止）"_s, seikyuTitle(), MsgIcon::Information);
        m_waitShown = true;
    }
    return true;
}

void CliInteraction::waitEnded()
{
    m_waitShown = false;
}

void CliInteraction::openUrl(const QString& url)
{
    err() << url << '\n';
    err().flush();
}

} // namespace qelprn
