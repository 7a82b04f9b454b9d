#pragma once

#include "billing/SisetsuSeikyuRow.h"

#include <QList>
#include <QStringList>

namespace qelprn {

// The treated facilities whose invoice lines have no billing facility (ID -1), each name once, in
// the order of the lines.
QStringList facilitiesWithoutBiller(const QList<SisetsuSeikyuRow>& lines);

} // namespace qelprn
