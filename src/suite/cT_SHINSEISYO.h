#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_SHINSEISYO.h"

namespace qelprn {

// The application-form settings of the site: reads, numbers and writes of the shared pattern.
class cT_SHINSEISYO : public MasterTableOf<cD_SHINSEISYO>
{
public:
    const cD_SHINSEISYO& clsSHINSEISYO(int i) const { return record(i); }
};

} // namespace qelprn
