#pragma once

#include <QString>

namespace qelprn {

// Seconds a database login may take before it fails, so that an unreachable server is reported
// within seconds instead of after the driver's own long wait. "Tovara.ini" DB_LOGIN_TIMEOUT
// (whole seconds, 1 to 300) overrides the default; the program folder's settings set it at
// start-up and every connection opened afterwards uses it.
constexpr int kDefaultDbLoginTimeout = 8;
constexpr int kMaxDbLoginTimeout = 300;

int dbLoginTimeout();
// Takes the DB_LOGIN_TIMEOUT value as written; anything but a whole number in range gives the
// default.
void setDbLoginTimeout(const QString& value);

} // namespace qelprn
