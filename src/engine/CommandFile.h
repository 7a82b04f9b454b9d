#pragma once

#include "engine/EngineError.h"
#include "engine/EngineJob.h"

#include <QByteArray>
#include <QString>

namespace qelprn::engine {

// Reads the command file "WfdCom.dat" (CP932, one command a line, CR LF) into a job. Every problem
// (unreadable file, unknown command, a bad number, a missing layout or action) names the line.
// Relative paths (the layout, data files named without a folder) are taken from the command file's
// folder.
bool readCommandFile(const QString& path, EngineJob& job, EngineError* error);
// The same over bytes already read; path names the file in messages and anchors relative paths.
bool parseCommandFile(const QByteArray& bytes, const QString& path, EngineJob& job, EngineError* error);

} // namespace qelprn::engine
