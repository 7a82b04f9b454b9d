#pragma once

#include "app/AppContext.h"
#include "master/LoaderFields.h"

namespace qelprn {

// The facility columns the facility search reads, in the order they are read: (kind, column).
#define QELPRN_SISETSU_LOADER_COLUMNS(X)                                                                     \
    X(Int, nIDNo)                                                                                            \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Text, cSisetsuType)                                                                                    \
    X(Text, cShamei1)                                                                                        \
    X(Text, cShameiKana1)                                                                                    \
    X(Text, cShamei2)                                                                                        \
    X(Text, cShameiKana2)                                                                                    \
    X(Text, cDaihyo)                                                                                         \
    X(Text, cDaihyoKana)                                                                                     \
    X(Text, cAddress1)                                                                                       \
    X(Text, cAddress2)                                                                                       \
    X(Text, cAddressKana)                                                                                    \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Int, nLat)                                                                                             \
    X(Int, nLon)                                                                                             \
    X(Text, cPcName)                                                                                         \
    X(DateTime, tUpDateTime)                                                                                 \
    X(Int, iKikanShubetsu)

// One facility row as the facility search shows it: a plain structure, one field per column.
struct SisetsuInfo
{
#define QELPRN_LOADER_FIELD(kind, name) field::kind name{};
    QELPRN_SISETSU_LOADER_COLUMNS(QELPRN_LOADER_FIELD)
#undef QELPRN_LOADER_FIELD
};

// "SELECT * FROM SISETSU WHERE nIDNo = … and iKyotenCd = … and iKyotenEb = …" for the own site.
QString sisetsuLoaderStatement(const AppContext& ctx, qint32 nIDNo);

// Reads facility nIDNo of the own site on a connection of its own. True when found: rec then
// holds the row (a Null number or date keeps the value rec had). Otherwise rec is unchanged; a
// connection or read failure leaves the connection's message in errorText.
bool loadSisetsu(const AppContext& ctx, qint32 nIDNo, SisetsuInfo& rec, QString* errorText = nullptr);

} // namespace qelprn
