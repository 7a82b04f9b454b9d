#pragma once

#include <QDate>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// What the demo program folder holds. The same options and seed always give the same folder.
struct DemoOptions
{
    QString folder;        // the program folder to write
    int sites = 3;         // sites with data; they are spread over two databases when there are two or more
    int patients = 200;    // patients over all sites
    QDate month;           // first day of the billing month; invalid = the previous calendar month
    quint64 seed = 1;      // the data generator's seed
    QString engineProgram; // FORM_ENGINE of "Tovara.ini": the form-print engine program
    bool replace = false;  // write into a folder that already holds files, replacing the databases
};

// One site of the demo data and the database it lives in.
struct DemoSite
{
    int code = 0;
    int branch = 0;
    QString name;
    QString database;
    int patients = 0;
};

} // namespace qelprn
