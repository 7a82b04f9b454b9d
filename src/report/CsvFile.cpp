// The file part of the print-data writers.
#include "app/RunTimeError.h"
#include "report/PrintDataCsv.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace qelprn {

// The data goes to a temporary file beside the target and is renamed over it when whole: an engine
// still reading the previous run's file keeps reading that one, and one starting now sees either
// the old or the new file, never a half-written one. No flush to disk: the file is scratch data
// for the engine, and waiting for the disk would halve the writer's speed.
CsvResult writeCsvFile(const QString& path, const std::function<CsvResult(QIODevice*)>& body)
{
    const QString part = path + u'.' + QString::number(QCoreApplication::applicationPid()) + u".part"_s;
    QFile file(part);
    // Unbuffered: the writer keeps its own buffer, and a full disk shows at the write that hit it.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return CsvWriteError::cannotCreate(path, file.errorString());
    CsvResult result;
    try {
        result = body(&file);
    } catch (const RunTimeError& error) {
        // A value the suite's arithmetic cannot hold ends the file as any other write failure does.
        result = CsvWriteError{error.number, error.description};
    }
    file.close();
    if (!result && file.error() != QFileDevice::NoError)
        result = CsvWriteError::writeFailed(file);
    if (!result) {
        std::error_code error;
        // From UTF-16: on Windows a narrow path would pass through the ANSI code page, which may
        // not hold the Japanese file names. Unlike QFile::rename, this replaces the target.
        std::filesystem::rename(part.toStdU16String(), path.toStdU16String(), error);
        if (error) {
            const QString reason = QString::fromLocal8Bit(error.message());
            result = QFileInfo(path).isFile() ? CsvWriteError::cannotReplace(path, reason)
                                              : CsvWriteError::cannotCreate(path, reason);
        }
    }
    if (result) {
        // The clerk knows the file by its own name, not the temporary one.
        result->description.replace(part, path);
        QFile::remove(part);
        // The previous run's file goes too, so a failed run never leaves stale data to print.
        if (QFileInfo(path).isFile())
            QFile::remove(path);
    }
    return result;
}

} // namespace qelprn
