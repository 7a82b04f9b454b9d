#pragma once

#include "suite/MasterRecord.h"

// The insurance-kind columns as (kind, column), in the order of the record's properties.
#define QELPRN_HOKEN_COLUMNS(X)                                                                              \
    X(Text, cName)                                                                                           \
    X(Text, cRyaku)                                                                                          \
    X(Text, cType)                                                                                           \
    X(Int, iType)                                                                                            \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)

namespace qelprn {

// One insurance kind of a site (table HOKEN), keyed by its type code.
class cD_HOKEN : public MasterRecord
{
public:
    cD_HOKEN() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_HOKEN_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
