#pragma once

#include "db/DbInfo.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QtGlobal>
#include <array>
#include <utility>

namespace qelprn {

// The raw state of the main form's controls that the print run reads, in the form's own terms
// (option values, list indexes, item data, box values). iGetPrintJouken turns them into PrintJouken
// with the form's rules; the desktop form and the command line each fill one.
struct PrintFormValues
{
    std::array<bool, 6> optPrint{}; // form kind options
    QDate imD_Out;                  // billing month (any day of it)
    QDate imD_Teis;                 // issue date
    int cbDairiListIndex = -1;
    qint32 cbDairiItemData = 0;
    int cbTiryoinListIndex = -1;
    qint32 cbTiryoinItemData = 0;
    std::array<qint32, 2> imNum_ShisetuCD{}; // null boxes read as 0
    std::array<bool, 3> optSort{};
    qint32 imNum_CD = 0; // patient code
    std::array<bool, 2> cmbKaishaKbnEnabled{};
    std::array<int, 2> cmbKaishaKbnListIndex{-1, -1};
    std::array<QString, 2> cmbKaishaKbnText;
    std::array<bool, 2> optSelSisetsuType{};
    std::array<bool, 4> optSortShisetsu{};
    int cbTantouListIndex = -1;
    qint32 cbTantouItemData = 0;
};

// What the print run asks of its caller: the control values, and for kind 6 the chosen sites.
// Returning false means the values could not be read.
class PrintConditionSource
{
public:
    virtual ~PrintConditionSource() = default;
    virtual bool readPrintFormValues(PrintFormValues& values) = 0;
    // The databases and sites chosen for a multi-site run (kind 6), in grid order.
    virtual QList<SelectedDatabase> selectedDatabases() = 0;
};

// Conditions given as values rather than read from the form's controls: the command line's
// options, or the conditions a month end runs with.
class FixedPrintConditions final : public PrintConditionSource
{
public:
    FixedPrintConditions(PrintFormValues values, QList<SelectedDatabase> databases)
        : m_values(std::move(values)), m_databases(std::move(databases))
    {}
    bool readPrintFormValues(PrintFormValues& values) override
    {
        values = m_values;
        return true;
    }
    QList<SelectedDatabase> selectedDatabases() override { return m_databases; }

private:
    PrintFormValues m_values;
    QList<SelectedDatabase> m_databases;
};

} // namespace qelprn
