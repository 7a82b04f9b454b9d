#include "app/VersionHistory.h"

#include "app/Cp932.h"
#include "app/CsvRecord.h"

#include <QFileInfo>

namespace qelprn {

VersionHistory readVersionHistory(const QString& path, int minVersion)
{
    VersionHistory result;
    if (!QFileInfo(path).isFile())
        return result;
    bool first = true;
    for (const QString& line : readTextLines(path)) {
        if (line.trimmed().isEmpty())
            continue;
        const QStringList fields = splitCsvRecord(line);
        const QString description = fields.value(1);
        if (first) {
            result.current = description;
            first = false;
            continue;
        }
        if (minVersion > 0 && fields.value(0).trimmed().toInt() < minVersion)
            continue;
        result.history.append(description.trimmed());
    }
    return result;
}

} // namespace qelprn
