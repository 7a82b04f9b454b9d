// The T-SQL to SQLite translation of every statement the program sends to the embedded database.
#include "db/TsqlTranslator.h"

#include <QString>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    qelprn::translateTsqlToSqlite(QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
