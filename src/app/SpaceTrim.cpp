#include "app/SpaceTrim.h"

namespace qelprn {

QString trimRightSpaces(QStringView text)
{
    qsizetype n = text.size();
    while (n > 0 && text.at(n - 1) == u' ')
        --n;
    return text.left(n).toString();
}

QString trimSpaces(QStringView text)
{
    qsizetype begin = 0;
    while (begin < text.size() && text.at(begin) == u' ')
        ++begin;
    return trimRightSpaces(text.sliced(begin));
}

} // namespace qelprn
