#pragma once

#include "app/Interaction.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// The process-wide settings, set at start-up and handed to the code that needs them (rather than
// globals). Member names are the suite's own.
struct AppContext
{
    // Program folder without a trailing separator (see findAppDir()).
    QString csAppDir;
    qint16 iBaseKyotenCd = 0; // own site code (BASEID characters 1-2)
    qint16 iBaseKyotenEb = 0; // own site branch number (BASEID characters 3-4)
    qint16 iStartMode = 0;    // the suite's start-up mode; chooses the site used-flag condition
    Interaction* ui = nullptr;

    Interaction& interaction() const { return *ui; }
};

} // namespace qelprn
