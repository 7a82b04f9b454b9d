// "DB.ini" (CSV records) and "ServerName.zkt" as the multi-site database list reads them.
#include "FuzzInput.h"
#include "app/CsvRecord.h"
#include "db/DatabaseList.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace qelprn;
    const size_t half = size / 2;
    fuzz::writeInputFile(u"DB.ini"_s, data, half);
    fuzz::writeInputFile(u"ServerName.zkt"_s, data + half, size - half);
    const AppContext ctx = fuzz::quietContext();
    cDBserverName2(ctx);
    QList<DbInfo> list;
    iDatabaseRead(ctx, list);
    for (const DbInfo& db : std::as_const(list))
        dbConnectionString(db);
    splitCsvRecord(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
