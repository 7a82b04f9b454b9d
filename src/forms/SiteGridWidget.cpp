#include "forms/SiteGridWidget.h"

#include <QHeaderView>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {
enum Column { CheckColumn = 0, NameColumn, DatabaseColumn, CodeColumn, BranchColumn, ColumnCount };
}

SiteGridWidget::SiteGridWidget(QWidget* parent) : QTableWidget(parent)
{
    setColumnCount(ColumnCount);
    setHorizontalHeaderLabels({u"選択"_s, u"事業所名"_s, u"データベース"_s, u"拠点"_s, u"枝番"_s});
    setColumnHidden(CodeColumn, true);
    setColumnHidden(BranchColumn, true);
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

void SiteGridWidget::setRowCount(int rows)
{
    const int before = QTableWidget::rowCount();
    QTableWidget::setRowCount(rows);
    for (int r = before; r < rows; ++r) {
        for (int c = 0; c < ColumnCount; ++c) {
            auto* item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            setItem(r, c, item);
        }
        item(r, CheckColumn)->setCheckState(Qt::Unchecked);
    }
}

void SiteGridWidget::setRedraw(bool on)
{
    setUpdatesEnabled(on);
    if (on)
        updateDatabaseColumn();
}

void SiteGridWidget::setCellText(int col, int row, const QString& text)
{
    if (row < 1 || row > QTableWidget::rowCount() || col < 1 || col >= ColumnCount)
        return;
    item(row - 1, col)->setText(text);
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
    return text(row, NameColumn);
}

QList<SelectedDatabase> SiteGridWidget::checkedSites() const
{
    QList<SelectedDatabase> out;
    for (int r = 0; r < QTableWidget::rowCount(); ++r) {
        if (!isChecked(r))
            continue;
        const QString db = text(r, DatabaseColumn);
        auto it = std::find_if(out.begin(), out.end(),
                               [&](const SelectedDatabase& d) { return d.cDatabase == db; });
        if (it == out.end()) {
            out.append(SelectedDatabase{db, {}});
            it = std::prev(out.end());
        }
        it->sites.append(SiteKey{qint16(text(r, CodeColumn).toInt()), qint16(text(r, BranchColumn).toInt())});
    }
    return out;
}

void SiteGridWidget::updateDatabaseColumn()
{
    QString first;
    bool several = false;
    for (int r = 0; r < QTableWidget::rowCount(); ++r) {
        const QString db = text(r, DatabaseColumn);
        if (r == 0)
            first = db;
        else if (db != first)
            several = true;
    }
    setColumnHidden(DatabaseColumn, !several);
}

void SiteGridWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && currentRow() >= 0) {
        emit rowClicked(currentRow());
        return;
    }
    QTableWidget::keyPressEvent(event);
}

QString SiteGridWidget::text(int row, int column) const
{
    const QTableWidgetItem* it = item(row, column);
    return it ? it->text() : QString();
}

} // namespace qelprn
