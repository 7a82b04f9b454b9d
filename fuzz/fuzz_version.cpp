// "Version.ini" as the version dialog reads it: the current version and the filtered history.
#include "FuzzInput.h"
#include "app/VersionHistory.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace qelprn;
    const QString path = fuzz::writeInputFile(u"Version.ini"_s, data, size);
    readVersionHistory(path, 0);
    readVersionHistory(path, 2);
    return 0;
}
