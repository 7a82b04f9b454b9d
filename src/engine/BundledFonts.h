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

// The programs' UI font on Windows (the desktop form, the preview and its dialogs): the system's
// own when it draws Japanese (Yu Gothic UI or Meiryo UI on a Japanese Windows); else the first
// Japanese Gothic UI face the system has; else IPAex Gothic from the font file in fontsFolder.
// Never the Mincho face that Qt's fallback picks for the Japanese text of a face without it. The
// point size stays the system's. Returns the family now in use. Needs a QApplication.
QString useJapaneseUiFont(const QString& fontsFolder);

} // namespace qelprn::engine
