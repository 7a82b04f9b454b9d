#pragma once

#include <QString>

namespace qelprn {

// The program's title: the caption of its windows and of every message box it shows.
inline QString seikyuTitle()
{
    return QStringLiteral("施設請求書印刷");
}

} // namespace qelprn
