#include "app/SpaceTrim.h"

namespace qelprn {

QString csRTrim(QStringView text)
{
    qsizetype n = text.size();
    while (n > 0 && text.at(n - 1) == u' ')
        --n;
    return text.left(n).toString();
}

QString csTrim(QStringView text)
{
    qsizetype begin = 0;
    while (begin < text.size() && text.at(begin) == u' ')
        ++begin;
    return csRTrim(text.sliced(begin));
}

} // namespace qelprn
