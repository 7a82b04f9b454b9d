#pragma once

#include "suite/MasterRecord.h"

// The practitioner columns as (kind, column), in the order of the record's properties.
#define QELPRN_STAFF_COLUMNS(X)                                                                              \
    X(Int, nIDNo)                                                                                            \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Text, cName)                                                                                           \
    X(Text, cNameRyaku)                                                                                      \
    X(Text, cNameKana)                                                                                       \
    X(Int, iSex)                                                                                             \
    X(Date, tBirthday)                                                                                       \
    X(Int, iSikaku)                                                                                          \
    X(Text, cSikakuNo)                                                                                       \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAdress1)                                                                                        \
    X(Text, cAdress2)                                                                                        \
    X(Text, cTelNo)                                                                                          \
    X(Text, cMobNo)                                                                                          \
    X(Int, iChusiFlg)                                                                                        \
    X(Int, nColorCode)                                                                                       \
    X(Text, cComment)                                                                                        \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpDateTime)

namespace qelprn {

// One practitioner of a site (table STAFF).
class cD_STAFF : public MasterRecord
{
public:
    cD_STAFF() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_STAFF_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
