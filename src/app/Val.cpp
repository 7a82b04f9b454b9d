#include "app/Val.h"

namespace qelprn {

qint32 leadingNumber(QStringView v)
{
    qsizetype i = 0;
    // Val skips blanks, tabs and line feeds, and the ideographic space U+3000, nothing else.
    const auto skipped = [](QChar c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\u3000'; };
    while (i < v.size() && skipped(v.at(i)))
        ++i;
    bool negative = false;
    if (i < v.size() && (v.at(i) == u'-' || v.at(i) == u'+')) {
        negative = v.at(i) == u'-';
        ++i;
    }
    qint64 n = 0;
    for (; i < v.size() && v.at(i) >= u'0' && v.at(i) <= u'9'; ++i)
        n = qMin<qint64>(n * 10 + (v.at(i).unicode() - u'0'), 0x7fffffffLL + 1);
    n = negative ? -n : n;
    return qint32(qBound<qint64>(-0x7fffffffLL - 1, n, 0x7fffffffLL));
}

} // namespace qelprn
