#pragma once

#include "app/NullValue.h"
#include "app/RunTimeError.h"
#include "db/RecordSet.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// Field reads of the invoice queries: Null becomes "" or 0, text is right-trimmed, and a 16-bit
// field that receives a larger value raises the overflow run-time error.
inline QString fieldText(const RecordSet& rs, const QString& name)
{
    return csNullToRTrim(rs.field(name));
}

inline qint32 fieldLong(const RecordSet& rs, const QString& name)
{
    return nNullToLng(rs.field(name));
}

inline qint16 fieldInt(const RecordSet& rs, const QString& name)
{
    return toInt16(nNullToLng(rs.field(name)));
}

} // namespace qelprn
