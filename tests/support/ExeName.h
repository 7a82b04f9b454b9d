#pragma once

#include <QString>

namespace qelprn::test {

// The file name of a program: ".exe" added on Windows, the name as it is elsewhere.
inline QString exeName(const QString& base)
{
#ifdef Q_OS_WIN
    return base + QStringLiteral(".exe");
#else
    return base;
#endif
}

} // namespace qelprn::test
