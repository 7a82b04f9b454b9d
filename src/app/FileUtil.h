#pragma once

#include <QString>

namespace qelprn {

// Makes path the current directory and returns the current directory afterwards.
QString csChangeDir(const QString& path);
// True when path (suite or local form) names an existing file; false for a folder.
bool bFileExists(const QString& path);

} // namespace qelprn
