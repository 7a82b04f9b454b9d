#pragma once

namespace qelprn {

// The print run starts the form-print engine with this environment variable naming a file. The
// engine creates that file once it has read its command file and taken its own copies of the data
// files (or has failed to), so the run knows when the temporary folder is free for the next job.
inline constexpr char kEngineReceiptVariable[] = "QELPRN_ENGINE_RECEIPT";

} // namespace qelprn
