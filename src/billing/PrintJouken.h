#pragma once

#include "db/DbInfo.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// The print conditions of one run: built by the main form, the command line or the month end,
// handed to the print run and read by the invoice queries and the CSV writers.
struct PrintJouken
{
    // The billing month (any day of it) and the issue date in the fields' own formats; an invalid
    // date leaves its fields empty.
    void setMonthAndIssue(QDate month, QDate issue);

    qint16 iPrintKind = 1;        // 1..6
    QString sSeikyuYM;            // billing month "yyyy/mm"
    qint32 nSeikyuYM = 0;         // billing month yyyymm
    QString sTeisyutuDate;        // issue date "yyyy/mm/dd"
    qint32 nDairiCd = 0;          // invoicing corporation (CORP.nIDNo); below 1: the site's main one
    qint32 nTiryoinCd = 0;        // clinic (CORP.nIDNo); below 1: the site's main one
    qint32 nShisetuCdFrom = 0;    // billing facility code; 0 = all
    qint32 nShisetuCdTo = 0;      // service facility code; 0 = all
    qint16 iSort = 1;             // 1..3: ID, reading, room
    qint32 nKanjaCd = 0;          // patient code; 0 = all
    QString sSisetsuType1;        // billing facility kind; "" = all
    QString sSisetsuType2;        // service facility kind; "" = all
    bool bSelSisetsuType = false; // true: the visit-address facility, false: the care facility
    qint16 iSortShisetsu = 0;     // 0..3 order of the co-payment list
    qint32 nTantouCd = 0;         // practitioner; 0 = all

    // Kind 6: the databases of the run and the sites chosen in each, in grid order.
    QList<SelectedDatabase> selectedDatabases;
};

} // namespace qelprn
