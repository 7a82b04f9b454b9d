#pragma once

#include "demo/DemoOptions.h"
#include "demo/DemoRandom.h"

#include <QList>
#include <QString>
#include <functional>

namespace qelprn {

// Fills one SQLite database of the demo folder with a clinic's master data and two months of
// treatment results (the billing month and the month before) for the given sites. Amounts are
// kept coherent with how the invoice queries read them: a day's fee is the apportioned total when
// iAnbunUmu is 1, the patient's share of a day is that fee times (burden code - 1) / 10, and the
// month row of 月間実績 sums the days of JISSEKI.
class DemoDatabaseBuilder
{
public:
    using Progress = std::function<void(int patientsDone)>;

    // sites: the sites of this database; all get the same month. A closed site (iUsedFlg 0, no
    // data) is added when closedSite is true.
    DemoDatabaseBuilder(QString sqliteFile, QList<DemoSite> sites, QDate month, quint64 seed,
                        bool closedSite);

    // Creates the schema and the data in one transaction; false with the reason in *error.
    bool build(const Progress& progress, QString* error);

private:
    QString m_file;
    QList<DemoSite> m_sites;
    QDate m_month;
    quint64 m_seed;
    bool m_closedSite;
};

} // namespace qelprn
