#pragma once

#include "master/RiyoushaColumns.h"
#include "suite/MasterRecord.h"

// The address-set group: where the patient is visited, kept with the record but not a column of
// RIYOUSHA (the supplement and address tables hold it).
#define QELPRN_RIYOUSHA_ADDRESS_SET(X)                                                                       \
    X(Int, iAddressSet)                                                                                      \
    X(Text, cSisetsuName)                                                                                    \
    X(Text, cSisetsuAddress)                                                                                 \
    X(Int, nSisetsuCd)

namespace qelprn {

// One patient row (table RIYOUSHA), the widest record of the suite. After creation every text is
// "", every integer code and number -1 (not set) and the amounts 0.
class cD_RIYOUSHA : public MasterRecord
{
public:
    cD_RIYOUSHA() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_RIYOUSHA_LOADER_COLUMNS(QELPRN_PROPERTY)
    QELPRN_RIYOUSHA_EXTRA_COLUMNS(QELPRN_PROPERTY)
    QELPRN_RIYOUSHA_ADDRESS_SET(QELPRN_PROPERTY)
};

} // namespace qelprn
