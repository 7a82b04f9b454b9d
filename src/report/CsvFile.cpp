// The file part of the print-data writers.
#include "report/PrintDataCsv.h"

#include <QFile>
#include <QFileInfo>

namespace qelprn {

CsvResult writeCsvFile(const QString& path, const std::function<CsvResult(QIODevice*)>& body)
{
    QFile file(path);
    // The previous run's file goes first, so a failure never leaves stale data for the engine.
    if (QFileInfo(path).isFile() && !file.remove())
        return CsvWriteError::cannotCreate(path, file.errorString());
    // Unbuffered: the writer keeps its own buffer, and a full disk shows at the write that hit it.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return CsvWriteError::cannotCreate(path, file.errorString());
    CsvResult result = body(&file);
    file.close();
    if (!result && file.error() != QFileDevice::NoError)
        result = CsvWriteError::writeFailed(file);
    return result;
}

} // namespace qelprn
