#include "forms/RunOutcomeInteraction.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace qelprn {

MsgResult RunOutcomeInteraction::messageBox(const QString& text, const QString& title, MsgIcon icon,
                                            MsgButtons buttons)
{
    const bool error = icon == MsgIcon::Critical || icon == MsgIcon::Exclamation;
    // The first failure is the one worth showing; the first line names the failing step.
    if (buttons == MsgButtons::Ok && !m_failed) {
        m_message = text.section(QRegularExpression(u"[\r\n]+"_s), 0, 0, QString::SectionSkipEmpty);
        m_failed = error;
    }
    const MsgResult answer = m_inner.messageBox(text, title, icon, buttons);
    // A question answered No before anything was printed stops the run.
    if (buttons == MsgButtons::YesNo && answer == MsgResult::No && !m_failed)
        m_message = u"中止しました"_s;
    return answer;
}

bool RunOutcomeInteraction::keepWaiting(const QString& text, qint64 waitedMs)
{
    const bool goOn = m_inner.keepWaiting(text, waitedMs);
    if (!goOn && !m_failed)
        m_message = u"中止しました（他の印刷を待つのをやめました）"_s;
    return goOn;
}

QString RunOutcomeInteraction::outcome() const
{
    return m_message.isEmpty() ? u"完了"_s : m_message;
}

} // namespace qelprn
