#pragma once

#include "demo/DemoInserter.h"
#include "demo/DemoOptions.h"
#include "demo/DemoRandom.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <functional>

namespace qelprn {

struct DemoPatient;

// Writes one site's rows into an open demo database: the site (and the head-office row of its
// code), the corporation and clinics, practitioners, facilities, doctors and other contacts,
// patients, and their treatment days and month totals for the billing month and the month before.
// Amounts follow how the invoice queries read them: a day's fee is the apportioned total when
// iAnbunUmu is 1, the patient's share of a day is that fee times (burden code - 1) / 10, and the
// month row of 月間実績 sums the days of JISSEKI.
class DemoSiteWriter
{
public:
    DemoSiteWriter(QSqlDatabase& db, DemoRandom& rng, QDate month);

    // firstOfCode: the first site of its code in this database; it also gets the head-office row
    // and the database's insurance kinds. False after the first failure, with error() set.
    bool write(const DemoSite& site, bool firstOfCode, const std::function<void()>& patientDone);
    QString error() const { return m_error; }

private:
    struct Home
    {
        qint64 id;
        QString address1, address2, yubin;
    };
    struct Doctor
    {
        qint64 id;
        QString name, kikan;
    };

    void writeSiteRows(bool firstOfCode);
    void writeCorporation();
    void writeStaff();
    void writeFacilities();
    void writeContacts();
    bool writePatients(const std::function<void()>& patientDone);
    void writeMonth(const DemoPatient& p, QDate month);
    void fail(const QString& e);
    void check(const DemoInserter& ins) { fail(ins.error()); }

    QSqlDatabase& m_db;
    DemoRandom& m_rng;
    QDate m_month;
    DemoInserter m_jisseki;
    DemoInserter m_monthRows;
    DemoSite m_site;
    qint64 m_base4 = 0; // site code, two-digit branch and a four-digit serial
    QString m_now;
    QList<qint64> m_activeStaff;
    QList<Home> m_homes;
    QList<qint64> m_hospitals;
    QList<Doctor> m_doctors;
    QList<qint64> m_caremanes;
    QString m_error;
};

} // namespace qelprn
