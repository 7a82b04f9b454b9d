#pragma once

#include "suite/MasterRecord.h"

// The application-form setting columns as (kind, column), in the order of the record's properties.
#define QELPRN_SHINSEISYO_COLUMNS(X)                                                                         \
    X(Int, iTekiyouStaff)                                                                                    \
    X(Int, iKanagawaStaffPrint)                                                                              \
    X(Int, iKyotenCd)                                                                                        \
    X(Int, iKyotenEb)                                                                                        \
    X(Int, nIDNo)                                                                                            \
    X(Text, cFileName)                                                                                       \
    X(Text, cDispName)                                                                                       \
    X(Int, iSejutsuKubun)                                                                                    \
    X(Int, iHokenType)                                                                                       \
    X(Int, iDelFlg)                                                                                          \
    X(Int, iSinseiTP)                                                                                        \
    X(Int, iSoufushoTP)                                                                                      \
    X(Int, iDuplexFlg)                                                                                       \
    X(Int, iStateNo)                                                                                         \
    X(Int, iRiyouHokenKbn)                                                                                   \
    X(Text, tUpDateTime)                                                                                     \
    X(Text, cPcName)

namespace qelprn {

// One application-form setting of a site (table SHINSEISYO): which form file prints for which treatment and
// insurance.
class cD_SHINSEISYO : public MasterRecord
{
public:
    cD_SHINSEISYO() : MasterRecord(table()) {}
    static const TableDef& table();

    QELPRN_SHINSEISYO_COLUMNS(QELPRN_PROPERTY)
};

} // namespace qelprn
