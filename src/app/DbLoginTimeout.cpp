#include "app/DbLoginTimeout.h"

#include <atomic>

namespace qelprn {

namespace {

std::atomic<int> loginTimeout{kDefaultDbLoginTimeout};

} // namespace

int dbLoginTimeout()
{
    return loginTimeout.load();
}

void setDbLoginTimeout(const QString& value)
{
    bool ok = false;
    const int seconds = value.trimmed().toInt(&ok);
    loginTimeout = ok && seconds >= 1 && seconds <= kMaxDbLoginTimeout ? seconds : kDefaultDbLoginTimeout;
}

} // namespace qelprn
