// The file part of the print-data writers.
#include "report/PrintDataCsv.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace qelprn {

// The data goes to a temporary file beside the target and is renamed over it when whole: an engine
// still reading the previous run's file keeps reading that one, and one starting now sees either
// the old or the new file, never a half-written one.
CsvResult writeCsvFile(const QString& path, const std::function<CsvResult(QIODevice*)>& body)
{
    QSaveFile file(path);
    // Unbuffered: the writer keeps its own buffer, and a full disk shows at the write that hit it.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return CsvWriteError::cannotCreate(path, file.errorString());
    CsvResult result = body(&file);
    if (!result && file.error() != QFileDevice::NoError)
        result = CsvWriteError::writeFailed(file);
    if (!result && !file.commit())
        result = CsvWriteError::writeFailed(file);
    if (result) {
        file.cancelWriting();
        // The previous run's file goes too, so a failed run never leaves stale data to print.
        if (QFileInfo(path).isFile())
            QFile::remove(path);
    }
    return result;
}

} // namespace qelprn
