#include "app/Version.h"

#include <cstring>

#ifndef QELPRN_VERSION
#define QELPRN_VERSION "0.0.0"
#endif

namespace qelprn {

QString productVersion()
{
    return QStringLiteral(QELPRN_VERSION);
}

bool asksForVersion(int argc, char* argv[])
{
    return argc == 2 && std::strcmp(argv[1], "--version") == 0;
}

} // namespace qelprn
