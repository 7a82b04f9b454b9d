#pragma once

#include <QByteArray>
#include <QString>

namespace qelprn {

// Writes bytes to a sibling temporary file, flushes it and renames it over path, so a reader never
// sees a half-written file and an interrupted write leaves the old file intact.
bool writeFileAtomically(const QString& path, const QByteArray& bytes, QString* error = nullptr);

} // namespace qelprn
