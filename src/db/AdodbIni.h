#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

// The connection string of "adodb.ini" in the program folder (section "接続情報", key "接続情報"),
// cut at NUL and right-trimmed: step 1 of every query's calling sequence. Empty when the file or
// the key is missing; errorText then receives the INI reader's error text, if any.
QString readAdodbConnectionString(const AppContext& ctx, QString* errorText = nullptr);

} // namespace qelprn
