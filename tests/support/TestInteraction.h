#pragma once

#include "app/Interaction.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace qelprn::test {

// Records every call in order and answers questions from a script, so a test can assert the exact
// sequence the user would have seen.
class TestInteraction : public Interaction
{
public:
    struct Message
    {
        QString text;
        QString title;
        MsgIcon icon = MsgIcon::None;
        MsgButtons buttons = MsgButtons::Ok;
    };

    MsgResult messageBox(const QString& text, const QString& title, MsgIcon icon,
                         MsgButtons buttons) override;
    void setBusy(bool busy) override;
    void progress(const QString& phase, qint64 done, qint64 total) override;
    bool keepWaiting(const QString& text, qint64 waitedMs) override;
    void waitEnded() override;
    void openUrl(const QString& url) override;

    // Answers for the next Yes/No questions, in order; Yes when the script is empty.
    void setNextAnswers(QList<MsgResult> answers) { m_answers = std::move(answers); }
    void clear();

    QList<Message> messages;
    QStringList calls; // "message:<title>:<text>", "busy:on", "busy:off", "url:<address>"
    QStringList openedUrls;
    int busyDepth = 0; // busy on minus busy off; 0 after every balanced run
    // A wait is shown once as "wait:<text>"; the person gives up after this many milliseconds
    // (never when negative). longestWaitMs is the longest wait seen.
    qint64 cancelWaitAfterMs = -1;
    qint64 longestWaitMs = 0;

    // Titles and texts alone, for compact comparisons.
    QStringList texts() const;

private:
    QList<MsgResult> m_answers;
};

} // namespace qelprn::test
