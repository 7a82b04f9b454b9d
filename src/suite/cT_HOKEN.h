#pragma once

#include "suite/MasterTable.h"
#include "suite/cD_HOKEN.h"

namespace qelprn {

// The insurance kinds of the site: reads and writes of the shared pattern, keyed by type code.
class cT_HOKEN : public MasterTableOf<cD_HOKEN>
{
public:
    const cD_HOKEN& clsHOKEN(int i) const { return record(i); }
};

} // namespace qelprn
