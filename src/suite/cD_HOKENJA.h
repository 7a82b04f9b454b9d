#pragma once

#include "suite/MasterRecord.h"

// The insurer columns as (kind, column), in the order of the record's properties.
#define QELPRN_HOKENJA_COLUMNS(X)                                                                            \
    X(Text, cIDNo)                                                                                           \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Int, iHoken)                                                                                           \
    X(Text, cName)                                                                                           \
    X(Text, cNameKana)                                                                                       \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAddress1)                                                                                       \
    X(Text, cAddress2)                                                                                       \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Int, iIninFlg)                                                                                         \
    X(Date, tIninDay)                                                                                        \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)

namespace qelprn {

// One insurer (table HOKENJA), keyed by its number cIDNo, with the delegation flag and date.
class cD_HOKENJA : public MasterRecord
{
public:
    cD_HOKENJA() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_HOKENJA_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
