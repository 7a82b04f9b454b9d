#pragma once

#include "suite/MasterRecord.h"

// The clinic / corporation columns as (kind, column), in the order of the record's properties.
#define QELPRN_CORP_COLUMNS(X)                                                                               \
    X(Int, nIDNo)                                                                                            \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Int, iType)                                                                                            \
    X(Text, cShamei1)                                                                                        \
    X(Text, cShamei2)                                                                                        \
    X(Text, cShameiKana1)                                                                                    \
    X(Text, cShameiKana2)                                                                                    \
    X(Text, cShamei1Ryaku)                                                                                   \
    X(Text, cDaihyo)                                                                                         \
    X(Text, cDaihyoKana)                                                                                     \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAddress1)                                                                                       \
    X(Text, cAddress2)                                                                                       \
    X(Text, cAddressKana)                                                                                    \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Text, cKikanNo)                                                                                        \
    X(Int, iKinSyubetsu)                                                                                     \
    X(Text, cKinyuName)                                                                                      \
    X(Int, iKinSiten)                                                                                        \
    X(Text, cKinyuSiten)                                                                                     \
    X(Int, iKozaType)                                                                                        \
    X(Text, cKozaBangou)                                                                                     \
    X(Text, cKozaMeigi1)                                                                                     \
    X(Text, cKozaMeigi2)                                                                                     \
    X(Text, cKozaKana)                                                                                       \
    X(Int, nLat)                                                                                             \
    X(Int, nLon)                                                                                             \
    X(Text, cComment)                                                                                        \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)

namespace qelprn {

// One clinic / corporation row of a site (table CORP); type 0 is the site's main corporation.
class cD_CORP : public MasterRecord
{
public:
    cD_CORP() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_CORP_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
