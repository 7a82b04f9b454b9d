#include "app/Platform.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <io.h>
#include <windows.h>
#else
#include <QFile>
#include <cerrno>
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace qelprn::platform {

QString windowsPath(const QString& path)
{
    QString out;
    out.reserve(path.size());
    for (qsizetype i = 0; i < path.size(); ++i) {
        const QChar c = path.at(i) == u'/' ? QChar(u'\\') : path.at(i);
        // A separator after a separator is dropped, but never the second one of a leading pair.
        if (c == u'\\' && out.endsWith(u'\\') && out.size() != 1)
            continue;
        out.append(c);
    }
    return out;
}

#ifdef _WIN32

std::optional<FileStamp> fileStamp(const QString& localPath)
{
    // Opening for no access still gives the file's attributes, and shares everything so that a
    // writer at the same moment is not disturbed.
    const HANDLE h = CreateFileW(reinterpret_cast<const wchar_t*>(localPath.utf16()), 0,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION info{};
    const bool ok = GetFileInformationByHandle(h, &info) != 0;
    CloseHandle(h);
    if (!ok)
        return std::nullopt;
    const quint64 ticks =
        (quint64(info.ftLastWriteTime.dwHighDateTime) << 32) | info.ftLastWriteTime.dwLowDateTime;
    return FileStamp{qint64(ticks) * 100, qint64((quint64(info.nFileSizeHigh) << 32) | info.nFileSizeLow),
                     (quint64(info.nFileIndexHigh) << 32) | info.nFileIndexLow};
}

bool isTerminal(int fd)
{
    return fd >= 0 && _isatty(fd) != 0;
}

bool isProcessRunning(qint64 pid)
{
    const HANDLE h = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, DWORD(pid));
    if (!h)
        return GetLastError() == ERROR_ACCESS_DENIED; // exists, but belongs to someone else
    DWORD code = 0;
    const bool running = GetExitCodeProcess(h, &code) != 0 && code == STILL_ACTIVE;
    CloseHandle(h);
    return running;
}

Utf8Console::Utf8Console()
{
    const UINT current = GetConsoleOutputCP(); // 0 without a console
    if (current != 0 && current != CP_UTF8 && SetConsoleOutputCP(CP_UTF8))
        m_previous = current;
}

Utf8Console::~Utf8Console()
{
    if (m_previous != 0)
        SetConsoleOutputCP(m_previous);
}

#else

std::optional<FileStamp> fileStamp(const QString& localPath)
{
    struct stat st
    {
    };
    if (::stat(QFile::encodeName(localPath).constData(), &st) != 0)
        return std::nullopt;
    return FileStamp{qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec, qint64(st.st_size),
                     quint64(st.st_ino)};
}

bool isTerminal(int fd)
{
    return fd >= 0 && isatty(fd) != 0;
}

bool isProcessRunning(qint64 pid)
{
    if (pid <= 0 || (::kill(pid_t(pid), 0) != 0 && errno != EPERM))
        return false;
    // A program that ended but was not yet reaped (a container whose first process reaps nothing)
    // still answers kill(); Linux tells it apart by its state "Z".
    QFile stat(u"/proc/%1/stat"_s.arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    const qsizetype end = line.lastIndexOf(')'); // the program's name may hold blanks
    return end < 0 || line.mid(end + 2, 1) != "Z";
}

Utf8Console::Utf8Console() = default;

Utf8Console::~Utf8Console() = default;

#endif

} // namespace qelprn::platform
