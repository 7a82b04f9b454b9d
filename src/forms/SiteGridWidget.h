#pragma once

#include "db/SiteRow.h"

#include <QTableWidget>

namespace qelprn {

// The main form's site grid: a check box and the site name per row, the database as a further column
// when the sites come from more than one database. Checks change only through the form's rules
// (rowClicked), never by the view on its own.
class SiteGridWidget : public QTableWidget
{
    Q_OBJECT

public:
    explicit SiteGridWidget(QWidget* parent = nullptr);

    // Shows rows, all unchecked.
    void setRows(const QList<SiteRow>& rows);

    bool isChecked(int row) const; // 0-based
    void setChecked(int row, bool on);
    void setAllChecked(bool on);
    int firstCheckedRow() const; // -1 when none
    QString siteName(int row) const;
    // The checked sites grouped by database, in grid order.
    QList<SelectedDatabase> checkedSites() const;

signals:
    // A click or Space on a row (0-based); the form applies the site-selection rule.
    void rowClicked(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QList<SiteRow> m_rows;
};

} // namespace qelprn
