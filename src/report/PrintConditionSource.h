#pragma once

#include "billing/PrintJouken.h"

namespace qelprn {

// Where the print run takes its conditions from when it starts: the main form, which reads its
// controls at that moment.
class PrintConditionSource
{
public:
    virtual ~PrintConditionSource() = default;
    // Fills jouken, which holds the previous run's conditions (a sort order the form leaves unset
    // stays as it was); false when the conditions could not be read.
    virtual bool iGetPrintJouken(PrintJouken& jouken) = 0;
};

} // namespace qelprn
