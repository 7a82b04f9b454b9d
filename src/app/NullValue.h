#pragma once

#include <QString>
#include <QVariant>

namespace qelprn {

// Database fields may be Null: an invalid QVariant or one whose isNull() is true.
QString csNullToStr(const QVariant& value);
QString csNullToRTrim(const QVariant& value);
// 0 for Null or a non-number; beyond 32 bits throws RunTimeError 6 (overflow).
qint32 nNullToLng(const QVariant& value);
// The text up to the first NUL (INI reads come back NUL-padded).
QString csCutNull(const QString& text);

} // namespace qelprn
