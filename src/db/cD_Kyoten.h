#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

// One site of the site list. The branch number's accessors keep the suite's spelling "KyotenEd".
class cD_Kyoten
{
public:
    qint32 KyotenCd() const { return m_kyotenCd; }
    void setKyotenCd(qint32 v) { m_kyotenCd = v; }
    qint32 KyotenEd() const { return m_kyotenEd; }
    void setKyotenEd(qint32 v) { m_kyotenEd = v; }
    QString AreaName() const { return m_areaName; }
    void setAreaName(const QString& v) { m_areaName = v; }
    QString KyotenName() const { return m_kyotenName; }
    void setKyotenName(const QString& v) { m_kyotenName = v; }
    QString Comment() const { return m_comment; }
    void setComment(const QString& v) { m_comment = v; }

private:
    qint32 m_kyotenCd = 0;
    qint32 m_kyotenEd = 0;
    QString m_areaName;
    QString m_kyotenName;
    QString m_comment;
};

} // namespace qelprn
