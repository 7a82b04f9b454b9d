#include "app/Kiriage.h"

#include "app/RunTimeError.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace qelprn {

qint32 nKiriage(const Kiriage& rule, double value, Interaction* ui)
{
    if (rule.iKiriageKeta == 0) {
        if (ui)
            ui->messageBox(u"切り上げ桁が設定されていません。"_s, u"警告！"_s, MsgIcon::Critical);
        return 0;
    }
    double x = value / rule.iKiriageKeta;
    switch (rule.iKiriageKbn) {
    case 0:
        return 0;
    case 1:
        // Not 1: exact whole amounts must stay unchanged.
        x += 0.999999999;
        break;
    case 3:
        x += 0.5;
        break;
    default:
        break;
    }
    return toInt32(std::floor(x) * rule.iKiriageKeta);
}

} // namespace qelprn
