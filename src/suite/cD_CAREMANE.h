#pragma once

#include "suite/MasterRecord.h"

// The care-manager columns as (kind, column), in the order of the record's properties.
#define QELPRN_CAREMANE_COLUMNS(X)                                                                           \
    X(Int, nIDNo)                                                                                            \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Int, iSisetsuCode)                                                                                     \
    X(Text, cName)                                                                                           \
    X(Text, cNameKana)                                                                                       \
    X(Text, cJigyousyoNo)                                                                                    \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAdress1)                                                                                        \
    X(Text, cAdress2)                                                                                        \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpdateTime)

namespace qelprn {

// One care manager (table CAREMANE), usually of a facility (iSisetsuCode).
class cD_CAREMANE : public MasterRecord
{
public:
    cD_CAREMANE() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_CAREMANE_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
