#pragma once

#include "suite/MasterRecord.h"

// The patient-address columns as (kind, column), in the order of the record's properties.
#define QELPRN_ADDRESS_COLUMNS(X)                                                                            \
    X(Int, nKanjaCD)                                                                                         \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Date, tStartDay)                                                                                       \
    X(Text, csKanjaName)                                                                                     \
    X(Int, iAddressSet)                                                                                      \
    X(Text, csSelectAddress)                                                                                 \
    X(Text, csAddress1)                                                                                      \
    X(Text, csAddress2)                                                                                      \
    X(Text, csAddress3)                                                                                      \
    X(Text, csStation1)                                                                                      \
    X(Text, csStation2)                                                                                      \
    X(Text, csStation3)                                                                                      \
    X(Int, nHokui1)                                                                                          \
    X(Int, nHokui2)                                                                                          \
    X(Int, nHokui3)                                                                                          \
    X(Int, nToukei1)                                                                                         \
    X(Int, nToukei2)                                                                                         \
    X(Int, nToukei3)                                                                                         \
    X(Int, nLen1)                                                                                            \
    X(Int, nLen2)                                                                                            \
    X(Int, nLen3)                                                                                            \
    X(Text, cSisetsuName)                                                                                    \
    X(Int, nSisetsuCd)                                                                                       \
    X(Text, cSisetsuAddress)                                                                                 \
    X(Int, nLimit)                                                                                           \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)

namespace qelprn {

// The visit addresses of a patient from a start day on (table ADDRESS): up to three addresses with their
// nearest stations, positions and distances, and the one chosen.
class cD_Address : public MasterRecord
{
public:
    cD_Address() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_ADDRESS_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
