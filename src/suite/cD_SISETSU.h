#pragma once

#include "suite/MasterRecord.h"

// The facility columns as (kind, column), in the order of the record's properties.
#define QELPRN_SISETSU_COLUMNS(X)                                                                            \
    X(Int, iKikanShubetsu)                                                                                   \
    X(Text, cSisetsuType)                                                                                    \
    X(Text, cAddress1)                                                                                       \
    X(Text, cAddress2)                                                                                       \
    X(Text, cAddressKana)                                                                                    \
    X(Text, cDaihyo)                                                                                         \
    X(Text, cDouiIrai)                                                                                       \
    X(Text, cComment)                                                                                        \
    X(Text, cDaihyoKana)                                                                                     \
    X(Text, cFaxNo)                                                                                          \
    X(Text, cTelNo)                                                                                          \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cShamei1)                                                                                        \
    X(Text, cShamei2)                                                                                        \
    X(Text, cShameiKana1)                                                                                    \
    X(Text, cShameiKana2)                                                                                    \
    X(Int, iType)                                                                                            \
    X(Int, nIDNo)                                                                                            \
    X(Int, nLat)                                                                                             \
    X(Int, nLon)                                                                                             \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)                                                                                     \
    X(Int, nColorCode)                                                                                       \
    X(Int, iColorIndex)                                                                                      \
    X(Text, cShamei1Ryaku)                                                                                   \
    X(Int, iPaymentType)

namespace qelprn {

// One facility row (table Sisetsu). nIDNo -1 means "no number yet"; as a read condition it
// selects every facility.
class cD_SISETSU : public MasterRecord
{
public:
    cD_SISETSU() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_SISETSU_COLUMNS(QELPRN_PROPERTY)
    // The record type as text; "" while the type is not set.
    QString sType() const { return iType() < 0 ? QString() : QString::number(iType()); }
};

} // namespace qelprn
