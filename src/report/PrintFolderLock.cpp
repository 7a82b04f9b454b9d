#include "report/PrintFolderLock.h"

#include <QDir>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace qelprn {

const QString PrintFolderLock::kFileName = u"qelprn-print.lock"_s;

PrintFolderLock::PrintFolderLock(const QString& tmpFolder)
    : m_path(QDir(tmpFolder).filePath(kFileName)), m_lock(m_path)
{
    m_lock.setStaleLockTime(std::chrono::duration_cast<std::chrono::milliseconds>(kStaleAfter).count());
}

PrintFolderLock::Outcome PrintFolderLock::acquire(Interaction& ui, std::chrono::milliseconds limit)
{
    if (m_lock.tryLock(0))
        return Outcome::Locked;
    if (m_lock.error() != QLockFile::LockFailedError)
        return Outcome::Failed;
    QElapsedTimer waited;
    waited.start();
    Outcome outcome = Outcome::TimedOut;
    const QString text = u"他の印刷が終わるのを待っています"_s;
    while (waited.elapsed() < limit.count()) {
        if (!ui.keepWaiting(text, waited.elapsed())) {
            outcome = Outcome::Cancelled;
            break;
        }
        if (m_lock.tryLock(200)) {
            outcome = Outcome::Locked;
            break;
        }
        if (m_lock.error() != QLockFile::LockFailedError) {
            outcome = Outcome::Failed;
            break;
        }
    }
    ui.waitEnded();
    return outcome;
}

QString PrintFolderLock::holder() const
{
    qint64 pid = 0;
    QString host;
    QString program;
    if (!m_lock.getLockInfo(&pid, &host, &program))
        return {};
    return u"%1 の %2（プロセス %3）"_s.arg(host, program, QString::number(pid));
}

} // namespace qelprn
