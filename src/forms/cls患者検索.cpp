#include "forms/cls患者検索.h"

#include "forms/frm患者検索.h"
#include "master/RiyoushaLoader.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {
const QString kAll = u"(全員)"_s;
}

qint16 cls患者検索::iDspStart(QWidget* parent)
{
    frm患者検索 form(m_ctx, QDate::currentDate(), parent);
    form.iArea = iArea;
    form.iInit(nSeledCD, nTantouCD);
    if (form.exec() != QDialog::Accepted)
        return 1;
    form.vGetSeledInf(nSeledCD, csSeledName);
    return 0;
}

QString cls患者検索::csSetRiyouName_Text(qint32 code)
{
    CsErrStr.clear();
    if (code == 0)
        return kAll;
    RiyoushaInfo rec;
    if (code < 0 || !loadRiyousha(m_ctx, code, rec, &CsErrStr))
        return QString();
    return rec.cName;
}

qint16 cls患者検索::iSetRiyouName(qint32 code, QLineEdit& target)
{
    const QString name = csSetRiyouName_Text(code);
    target.setText(name);
    return name.isEmpty() ? qint16(-1) : qint16(0);
}

qint16 cls患者検索::iSetRiyouName2(qint32 code, QLineEdit& target)
{
    CsErrStr.clear();
    if (code == 0) {
        target.setText(kAll);
        return 0;
    }
    RiyoushaInfo rec;
    if (code < 0 || !loadRiyousha(m_ctx, code, rec, &CsErrStr)) {
        target.clear();
        return -1;
    }
    target.setText(rec.cNameRyaku.isEmpty() ? rec.cName : rec.cNameRyaku);
    return 0;
}

} // namespace qelprn
