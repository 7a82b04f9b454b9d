#include "forms/cls施術者検索.h"

#include "forms/StaffCheck.h"
#include "forms/frm施術者検索.h"

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 cls施術者検索::iDspStart(QWidget* parent)
{
    frm施術者検索 form(m_ctx, parent);
    form.iInit(nSeledCD);
    if (form.exec() != QDialog::Accepted)
        return 1;
    form.vGetSeledInf(nSeledCD, csSeledName);
    return 0;
}

qint16 cls施術者検索::iChkStaff(qint32 code)
{
    CsErrStr.clear();
    csSeledName.clear();
    return checkStaffCode(m_ctx, code, u"対象の施術者が存在しません。"_s, CsErrStr, &csSeledName);
}

} // namespace qelprn
