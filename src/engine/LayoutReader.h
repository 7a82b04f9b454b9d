#pragma once

#include "engine/CsvFile.h"
#include "engine/EngineError.h"
#include "engine/EngineJob.h"
#include "engine/Layout.h"

namespace qelprn::engine {

// Reads a ".wfd" layout (a JSON document, see layouts/README.md). Syntax errors name the line of
// the layout file; a wrong value names the line where the offending name first appears.
bool readLayout(const QString& path, Layout& layout, EngineError* error);
bool parseLayout(const QByteArray& json, const QString& path, Layout& layout, EngineError* error);

// Puts the values of "SetItemValue" into the named items ("section.item" or "item"); an item
// name the layout does not have is an error on the command file's line.
bool applyItemValues(Layout& layout, const QList<ItemValue>& values, const QString& commandFile,
                     EngineError* error);

// Resolves every column the layout names against the data file's columns; a column the file lacks
// is an error naming the data file's title line and the layout.
bool bindLayout(Layout& layout, const CsvFile& data, EngineError* error);

} // namespace qelprn::engine
