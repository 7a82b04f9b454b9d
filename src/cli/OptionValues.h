#pragma once

#include "cli/Command.h"

#include <QDate>
#include <optional>

namespace qelprn::cli {

// Typed values of parsed options; a malformed value throws UsageError with a Japanese message
// naming the option. An option that was not given yields std::nullopt.
std::optional<qint64> numberOption(const QCommandLineParser& parser, const QString& name, qint64 low,
                                   qint64 high);
// "yyyy/mm" (monthOnly) or "yyyy/mm/dd".
std::optional<QDate> dateOption(const QCommandLineParser& parser, const QString& name, bool monthOnly);
// Positional arguments beyond the first `allowed` are a usage error.
void rejectExtraArguments(const QCommandLineParser& parser, qsizetype allowed);

} // namespace qelprn::cli
