#pragma once

#include "app/AppContext.h"

#include <QString>

class QLineEdit;
class QWidget;

namespace qelprn {

// What the main form asks about facilities: the pick-list (iDspStart), the check of a typed code and
// the name of a typed code. nSeledCD goes in as the preselection and comes back as the choice.
class cls施設検索
{
public:
    explicit cls施設検索(const AppContext& ctx) : m_ctx(ctx) {}

    QString CsErrStr;
    qint32 nSeledCD = 0;
    QString csSeledName;
    double nLat = 0;
    double nLon = 0;

    // Shows the pick-list modally; 0 when a facility was chosen, 1 when closed without a choice.
    qint16 iDspStart(QWidget* parent = nullptr);
    // The STAFF check the suite's facility class runs for a typed code (see checkStaffCode).
    qint16 iChkStaff(qint32 code);
    // The own site's facility code into target: its name (1), its second name line (2) or its
    // reading (3); "" and -1 when there is no such facility (CsErrStr holds a failure's reason).
    qint16 iSetShisetuName(qint32 code, QLineEdit& target);
    qint16 iSetShisetuName2(qint32 code, QLineEdit& target);
    qint16 iSetShisetuName3(qint32 code, QLineEdit& target);

private:
    qint16 setName(qint32 code, QLineEdit& target, int which);

    const AppContext& m_ctx;
};

} // namespace qelprn
