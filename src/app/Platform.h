#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

// The few operating-system calls Qt does not offer, with one branch for Windows and one for POSIX.
namespace qelprn::platform {

// What a file looked like at one moment: another time, size or file (a replaced file) means it
// changed. fileId is the inode on POSIX and the NTFS file index on Windows.
struct FileStamp
{
    qint64 modifiedNs = 0;
    qint64 size = 0;
    quint64 fileId = 0;
    bool operator==(const FileStamp&) const = default;
};

// The stamp of the file at localPath (a native path), or nothing when it cannot be examined.
std::optional<FileStamp> fileStamp(const QString& localPath);

// A suite path in Windows form: '/' becomes a backslash and runs of separators become one, except
// the two that open a UNC share (\\server\suite) or a \\?\ long path. Drive letters stay.
QString windowsPath(const QString& path);

// True when the C runtime descriptor fd (a QFile's handle()) is an interactive terminal (a console
// window on Windows), not a file or pipe.
bool isTerminal(int fd);

// True while the process pid exists (a detached program we started has not ended yet).
bool isProcessRunning(qint64 pid);

// While it lives, a Windows console shows the program's output, which Qt writes in UTF-8, as
// UTF-8; the console's own code page comes back after it, for what a batch file runs next.
// Nothing happens elsewhere, or without a console.
class Utf8Console
{
public:
    Utf8Console();
    ~Utf8Console();
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

private:
    [[maybe_unused]] unsigned m_previous = 0; // the code page to restore; 0 for none
};

} // namespace qelprn::platform
