#include "billing/PrintJouken.h"

using namespace Qt::StringLiterals;

namespace qelprn {

void PrintJouken::setMonthAndIssue(QDate month, QDate issue)
{
    sSeikyuYM = month.isValid() ? month.toString(u"yyyy/MM"_s) : QString();
    nSeikyuYM = month.isValid() ? month.year() * 100 + month.month() : 0;
    sTeisyutuDate = issue.isValid() ? issue.toString(u"yyyy/MM/dd"_s) : QString();
}

} // namespace qelprn
