#include "forms/cls施設検索.h"

#include "forms/StaffCheck.h"
#include "forms/frm施設検索.h"
#include "master/SisetsuLoader.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 cls施設検索::iDspStart(QWidget* parent)
{
    frm施設検索 form(m_ctx, parent);
    form.iInit(nSeledCD);
    if (form.exec() != QDialog::Accepted)
        return 1;
    form.vGetSeledInf(nSeledCD, csSeledName, nLat, nLon);
    return 0;
}

qint16 cls施設検索::iChkStaff(qint32 code)
{
    return checkStaffCode(m_ctx, code, u"対象の施設が存在しません。"_s, CsErrStr);
}

qint16 cls施設検索::iSetShisetuName(qint32 code, QLineEdit& target)
{
    return setName(code, target, 1);
}

qint16 cls施設検索::iSetShisetuName2(qint32 code, QLineEdit& target)
{
    return setName(code, target, 2);
}

qint16 cls施設検索::iSetShisetuName3(qint32 code, QLineEdit& target)
{
    return setName(code, target, 3);
}

qint16 cls施設検索::setName(qint32 code, QLineEdit& target, int which)
{
    SisetsuInfo rec;
    CsErrStr.clear();
    if (code <= 0 || !loadSisetsu(m_ctx, code, rec, &CsErrStr)) {
        target.clear();
        return -1;
    }
    target.setText(which == 1 ? rec.cShamei1 : which == 2 ? rec.cShamei2 : rec.cShameiKana1);
    return 0;
}

} // namespace qelprn
