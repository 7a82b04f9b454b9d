#pragma once

namespace qelprn {

// Keeps Qt's own debug, info and warning messages (platform plugin noise such as
// "propagateSizeHints", font fallbacks) off the user's terminal and out of the engine's error text,
// which its callers show to the user. Critical and fatal messages still pass. Setting the
// environment variable QELPRN_QT_MESSAGES=1 keeps every message, for debugging.
void installQtMessageFilter();

} // namespace qelprn
