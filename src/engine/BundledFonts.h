#pragma once

#include <QString>

namespace qelprn::engine {

// The fonts that travel with the program: on Windows the IPAex font files lie in "fonts" beside the
// program and are loaded at start, so a form looks the same on every machine. On Linux the folder
// is absent and Debian's font packages provide the same families.

// Loads the "fonts" folder beside the program once per process (later calls do nothing).
void loadBundledFonts();

// True when the family can be drawn as it is, without another font standing in for it.
bool fontFamilyAvailable(const QString& family);

} // namespace qelprn::engine
