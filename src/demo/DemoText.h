#pragma once

#include <QDate>
#include <QString>

namespace qelprn {

// The text forms of the demo data, as the suite stores them: dates "yyyy/mm/dd", date-times
// "yyyy/mm/dd hh:mm:ss", and the computer that wrote the rows.
inline QString demoDate(const QDate& d)
{
    return d.toString(QStringLiteral("yyyy/MM/dd"));
}

inline QString demoStamp(const QDate& d, int minutes)
{
    return demoDate(d) + QStringLiteral(" %1:%2:00")
                             .arg(minutes / 60, 2, 10, QChar(u'0'))
                             .arg(minutes % 60, 2, 10, QChar(u'0'));
}

inline QString demoPcName()
{
    return QStringLiteral("DEMO-PC");
}

} // namespace qelprn
