#include "billing/KenRyousyuuRemarks.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qelprn {

QString bodyPartRemark(int partCount)
{
    if (partCount <= 0)
        return QString();
    if (partCount >= 5)
        return u"マッサージ"_s + u"5部位"_s;
    return u"マッサージ"_s + QString::number(partCount) + u"部位"_s;
}

QString deformityRemark(bool henke)
{
    return henke ? u"徒手矯正"_s : QString();
}

QString sinkyuRemark(bool hari, bool kyu, bool denki)
{
    QString kind;
    if (hari && kyu)
        kind = u"はりきゅう"_s;
    else if (hari)
        kind = u"はり"_s;
    else if (kyu)
        kind = u"きゅう"_s;
    else
        return QString();
    return kind + (denki ? u"電気治療"_s : u"治療"_s);
}

QString dayContentRemark(int partCount, bool onan, bool denki)
{
    QStringList words;
    const QString parts = bodyPartRemark(partCount);
    if (!parts.isEmpty())
        words.append(parts);
    words.append(onan ? u"温あんあり"_s : u"温あんなし"_s);
    words.append(denki ? u"電気あり"_s : u"電気なし"_s);
    return words.join(u"、"_s);
}

} // namespace qelprn
