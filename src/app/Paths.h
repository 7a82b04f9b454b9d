#pragma once

#include <QString>

namespace qelprn {

// Settings hold folder values the Windows way ("\TMP"); on other systems backslashes become '/'.
QString toLocalPath(const QString& suitePath);
// The program folder without a trailing separator: QELPRN_APP_DIR when set, else the executable's.
QString defaultAppDir();

} // namespace qelprn
