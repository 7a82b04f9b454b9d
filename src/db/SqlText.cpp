#include "db/SqlText.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString sqlText(const QString& value)
{
    QString out = value;
    out.replace(u"'"_s, u"''"_s);
    return out;
}

} // namespace qelprn
