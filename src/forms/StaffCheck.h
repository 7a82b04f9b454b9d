#pragma once

#include "app/AppContext.h"

#include <QString>

namespace qelprn {

// The direct code check of the facility and practitioner search classes: the own site's STAFF row
// of the code. 0 when it exists and is managed; -1 with errorText "管理対象から外れています。" for
// an ended practitioner, notFoundText when there is no row, or "iChkStaff でエラー" and the reason.
// name receives the practitioner's name whenever the row exists.
qint16 checkStaffCode(const AppContext& ctx, qint32 code, const QString& notFoundText, QString& errorText,
                      QString* name = nullptr);

} // namespace qelprn
