#pragma once

#include "app/Interaction.h"

#include <QLockFile>
#include <QString>
#include <chrono>

namespace qelprn {

// One print run at a time per program folder. Every run writes the same file names ("WfdCom.dat",
// the CSV files) into the temporary folder, so a run holds this lock from writing its files until
// the engine has read them. A second run waits, with a notice the person can cancel, and then
// goes on; after the time limit it gives up. A lock left by a run that crashed, or by a machine
// that was switched off, is taken over.
class PrintFolderLock
{
public:
    // Failed: no lock file can be made there (a missing or read-only folder).
    enum class Outcome { Locked, Cancelled, TimedOut, Failed };

    // tmpFolder: the temporary folder as a local path.
    explicit PrintFolderLock(const QString& tmpFolder);

    // Takes the lock, waiting up to limit while another run holds it.
    Outcome acquire(Interaction& ui, std::chrono::milliseconds limit);
    void release() { m_lock.unlock(); }
    bool isLocked() const { return m_lock.isLocked(); }

    // Who holds the lock ("PC01 の qelprn（プロセス 4242）"), or "" when that cannot be read.
    QString holder() const;

    static const QString kFileName;
    // A lock older than this is taken over even when its owner cannot be checked (another
    // machine). A run holds it for seconds: writing the print data and the engine's start.
    static constexpr std::chrono::minutes kStaleAfter{10};

private:
    QString m_path;
    QLockFile m_lock;
};

} // namespace qelprn
