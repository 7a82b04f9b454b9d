#include "forms/DesktopInteraction.h"

#include "app/ProgramTitle.h"

#include <QApplication>
#include <QDesktopServices>
#include <QGridLayout>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QMessageBox::Icon iconOf(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// A short message makes a narrow box whose title bar cuts the title ("エ… 印刷"): the box is made
// at least as wide as its title with room for the title bar's buttons.
void keepTitleVisible(QMessageBox& box)
{
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (!grid)
        return;
    QFont titleFont = box.font();
    titleFont.setBold(true);
    const int width = QFontMetrics(titleFont).horizontalAdvance(box.windowTitle()) + 160;
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0, 1,
                  grid->columnCount());
}

// Progress shows only after this long, so quick runs never flash a dialog.
constexpr int kProgressDelayMs = 500;

} // namespace

DesktopInteraction::DesktopInteraction() = default;

DesktopInteraction::~DesktopInteraction()
{
    closeProgress();
    while (m_busyDepth > 0)
        setBusy(false);
}

MsgResult DesktopInteraction::messageBox(const QString& text, const QString& title, MsgIcon icon,
                                         MsgButtons buttons)
{
    // A message must be readable even while a run holds the wait cursor.
    const bool busy = m_busyDepth > 0;
    if (busy)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    QString shown = text;
    shown.replace(u"\r\n"_s, u"\n"_s);
    shown.replace(u'\r', u'\n');
    QMessageBox box(iconOf(icon), title, shown,
                    buttons == MsgButtons::YesNo ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok,
                    QApplication::activeWindow());
    if (buttons == MsgButtons::YesNo) {
        box.button(QMessageBox::Yes)->setText(u"はい(&Y)"_s);
        box.button(QMessageBox::No)->setText(u"いいえ(&N)"_s);
    }
    keepTitleVisible(box);
    const int answer = box.exec();
    if (busy)
        QApplication::restoreOverrideCursor();
    if (buttons == MsgButtons::Ok)
        return MsgResult::Ok;
    return answer == QMessageBox::Yes ? MsgResult::Yes : MsgResult::No;
}

void DesktopInteraction::setBusy(bool busy)
{
    if (busy) {
        if (m_busyDepth++ == 0) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            m_runTimer.start();
        }
        return;
    }
    if (m_busyDepth == 0)
        return;
    if (--m_busyDepth == 0) {
        QApplication::restoreOverrideCursor();
        closeProgress();
    }
}

void DesktopInteraction::progress(const QString& phase, qint64 done, qint64 total)
{
    if (!m_runTimer.isValid())
        m_runTimer.start();
    if (!m_progress && m_runTimer.elapsed() < kProgressDelayMs)
        return;
    if (!m_progress) {
        m_progress = new QProgressDialog(QApplication::activeWindow());
        m_progress->setWindowTitle(seikyuTitle());
        m_progress->setCancelButton(nullptr);
        m_progress->setMinimumDuration(0);
        m_progress->setWindowModality(Qt::ApplicationModal);
        m_progress->setAttribute(Qt::WA_DeleteOnClose);
    }
    // Units can exceed int; the dialog only needs the proportion.
    const int scale = total > 0 ? 1000 : 0;
    m_progress->setLabelText(phase);
    m_progress->setRange(0, scale);
    m_progress->setValue(total > 0 ? int(qBound(qint64(0), done * 1000 / total, qint64(1000))) : 0);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool DesktopInteraction::keepWaiting(const QString& text, qint64 waitedMs)
{
    if (!m_wait) {
        m_wait = new QProgressDialog(QApplication::activeWindow());
        m_wait->setWindowTitle(seikyuTitle());
        m_wait->setCancelButtonText(u"中止"_s);
        m_wait->setRange(0, 0);
        m_wait->setMinimumDuration(0);
        m_wait->setWindowModality(Qt::ApplicationModal);
        m_wait->setAttribute(Qt::WA_DeleteOnClose);
        m_wait->show();
    }
    m_wait->setLabelText(text + u"\n（%1 秒）"_s.arg(waitedMs / 1000));
    // The pointer stays busy over the rest of the window; the 中止 button must still take a click.
    QApplication::processEvents();
    return !m_wait->wasCanceled();
}

void DesktopInteraction::waitEnded()
{
    if (m_wait)
        m_wait->close();
    m_wait = nullptr;
}

void DesktopInteraction::openUrl(const QString& url)
{
    if (!QDesktopServices::openUrl(QUrl(url)))
        messageBox(url + u"\r\nを開けませんでした。"_s, seikyuTitle(), MsgIcon::Exclamation);
}

void DesktopInteraction::closeProgress()
{
    if (m_progress)
        m_progress->close();
    m_progress = nullptr;
    m_runTimer.invalidate();
}

} // namespace qelprn
