#include "TestInteraction.h"

using namespace Qt::StringLiterals;

namespace qelprn::test {

MsgResult TestInteraction::messageBox(const QString& text, const QString& title, MsgIcon icon,
                                      MsgButtons buttons)
{
    messages.append({text, title, icon, buttons});
    calls.append(u"message:"_s + title + u':' + text);
    if (buttons == MsgButtons::Ok)
        return MsgResult::Ok;
    return m_answers.isEmpty() ? MsgResult::Yes : m_answers.takeFirst();
}

void TestInteraction::setBusy(bool busy)
{
    busyDepth += busy ? 1 : -1;
    calls.append(busy ? u"busy:on"_s : u"busy:off"_s);
}

void TestInteraction::progress(const QString&, qint64, qint64) {}

bool TestInteraction::keepWaiting(const QString& text, qint64 waitedMs)
{
    const QString call = u"wait:"_s + text;
    if (calls.isEmpty() || calls.last() != call)
        calls.append(call);
    longestWaitMs = qMax(longestWaitMs, waitedMs);
    return cancelWaitAfterMs < 0 || waitedMs < cancelWaitAfterMs;
}

void TestInteraction::waitEnded()
{
    calls.append(u"wait:end"_s);
}

void TestInteraction::openUrl(const QString& url)
{
    openedUrls.append(url);
    calls.append(u"url:"_s + url);
}

void TestInteraction::clear()
{
    messages.clear();
    calls.clear();
    openedUrls.clear();
    busyDepth = 0;
    m_answers.clear();
}

QStringList TestInteraction::texts() const
{
    QStringList out;
    for (const Message& m : messages)
        out.append(m.text);
    return out;
}

} // namespace qelprn::test
