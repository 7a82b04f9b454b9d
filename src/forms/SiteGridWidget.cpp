#include "forms/SiteGridWidget.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {
enum Column { CheckColumn = 0, NameColumn, DatabaseColumn, ColumnCount };
}

SiteGridWidget::SiteGridWidget(QWidget* parent) : QTableWidget(parent)
{
    setColumnCount(ColumnCount);
    setHorizontalHeaderLabels({u"選択"_s, u"事業所名"_s, u"データベース"_s});
    setColumnHidden(DatabaseColumn, true);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    verticalHeader()->setVisible(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(CheckColumn, QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(DatabaseColumn, QHeaderView::ResizeToContents);
    connect(this, &QTableWidget::cellClicked, this, [this](int row, int) { emit rowClicked(row); });
}

void SiteGridWidget::setRows(const QList<SiteRow>& rows)
{
    m_rows = rows;
    clearContents();
    setRowCount(int(rows.size()));
    for (int r = 0; r < rowCount(); ++r) {
        const SiteRow& row = m_rows.at(r);
        for (const auto& [column, text] : {std::pair{CheckColumn, QString()}, std::pair{NameColumn, row.name},
                                           std::pair{DatabaseColumn, row.database}}) {
            auto* item = new QTableWidgetItem(text);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            setItem(r, column, item);
        }
        item(r, CheckColumn)->setCheckState(Qt::Unchecked);
    }
    // The database column only when the rows span several databases.
    const bool several = std::any_of(m_rows.cbegin(), m_rows.cend(), [&](const SiteRow& row) {
        return row.database != m_rows.first().database;
    });
    setColumnHidden(DatabaseColumn, !several);
}

bool SiteGridWidget::isChecked(int row) const
{
    const QTableWidgetItem* it = item(row, CheckColumn);
    return it && it->checkState() == Qt::Checked;
}

void SiteGridWidget::setChecked(int row, bool on)
{
    if (QTableWidgetItem* it = item(row, CheckColumn))
        it->setCheckState(on ? Qt::Checked : Qt::Unchecked);
}

void SiteGridWidget::setAllChecked(bool on)
{
    for (int r = 0; r < QTableWidget::rowCount(); ++r)
        setChecked(r, on);
}

int SiteGridWidget::firstCheckedRow() const
{
    for (int r = 0; r < QTableWidget::rowCount(); ++r) {
        if (isChecked(r))
            return r;
    }
    return -1;
}

QString SiteGridWidget::siteName(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).name : QString();
}

QList<SelectedDatabase> SiteGridWidget::checkedSites() const
{
    QList<SiteRow> checked;
    for (int r = 0; r < m_rows.size(); ++r) {
        if (isChecked(r))
            checked.append(m_rows.at(r));
    }
    return groupByDatabase(checked);
}

void SiteGridWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && currentRow() >= 0) {
        emit rowClicked(currentRow());
        return;
    }
    QTableWidget::keyPressEvent(event);
}

} // namespace qelprn
