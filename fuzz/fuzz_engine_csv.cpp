// The engine's reader of the print-data CSV files (CP932, CR LF, unescaped quotes).
#include "FuzzInput.h"
#include "engine/CsvFile.h"
#include "engine/CsvLine.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace qelprn::engine;
    const QString path = qelprn::fuzz::writeInputFile(u"data.csv"_s, data, size);
    for (const bool noTitle : {false, true}) {
        CsvFile file;
        EngineError error;
        if (!file.open(path, noTitle, &error))
            continue;
        file.columnIndex(u"施設名"_s);
        QStringList fields;
        const qint64 start = file.position();
        while (file.next(fields, &error)) {
        }
        file.seek(start, 0);
        file.next(fields, &error);
    }
    QStringList fields;
    splitCsvLine(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)), fields);
    return 0;
}
