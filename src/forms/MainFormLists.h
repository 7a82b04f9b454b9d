#pragma once

#include "app/AppContext.h"
#include "db/cT_ADODB.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace qelprn {

// One entry of the main form's corporation, clinic and practitioner lists.
struct CodeName
{
    qint32 nIDNo = 0;
    QString name;
};

// What the main form's lists show: the own site's name, its corporations and clinics (the printed
// names) and its practitioners, read over the form's connection, and the facility kinds of
// "施設種類List.txt" in the data folder. A read that fails returns false and keeps its message.
class MainFormLists
{
public:
    MainFormLists(const AppContext& ctx, cT_ADODB& ado) : m_ctx(ctx), m_ado(ado) {}

    // The site's name from the site table, then the corporations and clinics; what was read before
    // a failure stays.
    bool readCorps();
    // withEnded also lists the practitioners whose management has ended.
    bool readStaff(bool withEnded);
    // The file's non-blank lines, trimmed; false when the file is not there.
    bool readFacilityKinds();

    const QString& siteName() const { return m_siteName; }
    const QList<CodeName>& corps() const { return m_corps; }
    const QList<CodeName>& clinics() const { return m_clinics; }
    const QList<CodeName>& staff() const { return m_staff; }
    const QStringList& facilityKinds() const { return m_facilityKinds; }
    const QString& errorText() const { return m_error; }

private:
    bool readList(const QString& sql, const QString& nameColumn, QList<CodeName>& out);
    QString siteCondition() const;

    const AppContext& m_ctx;
    cT_ADODB& m_ado;
    QString m_siteName;
    QList<CodeName> m_corps;
    QList<CodeName> m_clinics;
    QList<CodeName> m_staff;
    QStringList m_facilityKinds;
    QString m_error;
};

} // namespace qelprn
