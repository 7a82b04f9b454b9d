#pragma once

#include "app/AppContext.h"
#include "master/LoaderFields.h"
#include "master/RiyoushaColumns.h"

namespace qelprn {

// One patient row as the patient search shows it: a plain structure with a text, 32-bit integer
// or date field per column, in the loader's reading order.
struct RiyoushaInfo
{
#define QELPRN_LOADER_FIELD(kind, name) field::kind name{};
    QELPRN_RIYOUSHA_LOADER_COLUMNS(QELPRN_LOADER_FIELD)
#undef QELPRN_LOADER_FIELD
};

// "SELECT * FROM RIYOUSHA WHERE nIDNo = … and iKyotenCd = … and iKyotenEb = …" for the own site.
QString riyoushaLoaderStatement(const AppContext& ctx, qint32 nIDNo);

// Reads patient nIDNo of the own site on a connection of its own. True when found: rec then
// holds the row as a whole (a Null number or date keeps the value rec had). Otherwise rec is
// unchanged; a connection or read failure leaves the connection's message in errorText.
bool loadRiyousha(const AppContext& ctx, qint32 nIDNo, RiyoushaInfo& rec, QString* errorText = nullptr);

} // namespace qelprn
