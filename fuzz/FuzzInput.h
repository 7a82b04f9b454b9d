#pragma once

#include "app/AppContext.h"

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>

namespace qelprn::fuzz {

// The fuzzer's bytes as a file of a throw-away program folder, for the readers that take a path.
// The folder lives for the whole fuzzing process; each input overwrites the file.
QString writeInputFile(const QString& name, const uint8_t* data, size_t size);
QString programFolder();
// A context on the program folder whose messages go nowhere and whose questions are answered No.
AppContext quietContext();

} // namespace qelprn::fuzz
