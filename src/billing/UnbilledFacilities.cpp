#include "billing/UnbilledFacilities.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QStringList facilitiesWithoutBiller(const QList<SisetsuSeikyuRow>& lines)
{
    QStringList names;
    const QString selfPay = u"(自費)"_s;
    for (const SisetsuSeikyuRow& line : lines) {
        // Filler lines carry no facility name; a self-pay line carries its facility's with "(自費)".
        QString name = line.cSejutsuName;
        if (line.iSinryouType == 1 && name.endsWith(selfPay))
            name.chop(selfPay.size());
        if (line.nSeikyuID == -1 && !name.isEmpty() && !names.contains(name))
            names.append(name);
    }
    return names;
}

} // namespace qelprn
