#pragma once

#include "app/AppContext.h"

#include <QString>

class QWidget;

namespace qelprn {

// What the main form asks about practitioners: the pick-list and the check of a typed code.
class cls施術者検索
{
public:
    explicit cls施術者検索(const AppContext& ctx) : m_ctx(ctx) {}

    QString CsErrStr;
    qint32 nSeledCD = 0;
    QString csSeledName;

    // Shows the pick-list modally; 0 when a practitioner was chosen, 1 when closed without a choice.
    qint16 iDspStart(QWidget* parent = nullptr);
    // 0 when code is a managed practitioner of the own site (csSeledName then holds the name).
    qint16 iChkStaff(qint32 code);

private:
    const AppContext& m_ctx;
};

} // namespace qelprn
