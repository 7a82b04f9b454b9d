#pragma once

#include "db/DbInfo.h"
#include "db/SiteGrid.h"

#include <QTableWidget>

namespace qelprn {

// The main form's site grid: a check box and the site name per row, the database as a further column
// when the sites come from more than one database; site code and branch number ride along in hidden
// columns. The site loaders fill it through SiteGrid (1-based columns: name, database, code,
// branch). Checks change only through the form's rules (rowClicked), never by the view on its own.
class SiteGridWidget : public QTableWidget, public SiteGrid
{
    Q_OBJECT

public:
    explicit SiteGridWidget(QWidget* parent = nullptr);

    void setRowCount(int rows) override;
    void setRedraw(bool on) override;
    void setCellText(int col, int row, const QString& text) override;

    bool isChecked(int row) const; // 0-based
    void setChecked(int row, bool on);
    void setAllChecked(bool on);
    int firstCheckedRow() const; // -1 when none
    QString siteName(int row) const;
    // The checked sites grouped by database, in grid order.
    QList<SelectedDatabase> checkedSites() const;
    // Shows the database column only when the rows span several databases.
    void updateDatabaseColumn();

signals:
    // A click or Space on a row (0-based); the form applies the site-selection rule.
    void rowClicked(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString text(int row, int column) const;
};

} // namespace qelprn
