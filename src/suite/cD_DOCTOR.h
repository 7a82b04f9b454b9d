#pragma once

#include "suite/MasterRecord.h"

// The consenting-doctor columns as (kind, column), in the order of the record's properties; the last three
// come from the joined facility.
#define QELPRN_DOCTOR_COLUMNS(X)                                                                             \
    X(Text, cIDNo)                                                                                           \
    X(Int, nIDNo)                                                                                            \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Int, iSisetsuCode)                                                                                     \
    X(Text, cName)                                                                                           \
    X(Text, cNameKana)                                                                                       \
    X(Text, cKikan)                                                                                          \
    X(Text, cKikanKana)                                                                                      \
    X(Text, cKamoku)                                                                                         \
    X(Text, cYubinNo)                                                                                        \
    X(Text, cAddress1)                                                                                       \
    X(Text, cAddress2)                                                                                       \
    X(Text, cTelNo)                                                                                          \
    X(Text, cFaxNo)                                                                                          \
    X(Text, cComment)                                                                                        \
    X(Text, cPcName)                                                                                         \
    X(Text, tUpdateTime)                                                                                     \
    X(Text, SISETSUSHAMEI)                                                                                   \
    X(Text, SISETSUSHAMEIKANA)                                                                               \
    X(Int, nSisetsuCd)

namespace qelprn {

// One consenting doctor (table DOCTOR), keyed by the text cIDNo that holds the number, with the name of the
// facility the doctor works at (read only).
class cD_DOCTOR : public MasterRecord
{
public:
    cD_DOCTOR() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_DOCTOR_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
