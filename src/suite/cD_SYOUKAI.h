#pragma once

#include "suite/MasterRecord.h"

// The referrer columns as (kind, column), in the order of the record's properties.
#define QELPRN_SYOUKAI_COLUMNS(X)                                                                            \
    X(Int, nIDNo)                                                                                            \
    X(Text, cIDNo)                                                                                           \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Int, iSisetsuCode)                                                                                     \
    X(Text, cName)                                                                                           \
    X(Text, cNameKana)                                                                                       \
    X(Text, cKikan)                                                                                          \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAdress1)                                                                                        \
    X(Text, cAdress2)                                                                                        \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)

namespace qelprn {

// One referrer (table SYOUKAI).
class cD_SYOUKAI : public MasterRecord
{
public:
    cD_SYOUKAI() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_SYOUKAI_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
