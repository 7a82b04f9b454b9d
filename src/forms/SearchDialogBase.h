#pragma once

#include "app/AppContext.h"
#include "db/RecordSet.h"

#include <QDialog>
#include <QStringList>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace qelprn {

class ScopedConnection;

// The pattern the three search dialogs share: a frame "抽出条件" of filters with a search button,
// a summary of the active filters, the result grid (one row per record, the code in column 1), the
// choose button "確 定" and a close button, with F4 search, F5 choose and F12 close. Enter searches
// from the filters and chooses from the grid; after a search the preselected row, else the first,
// is current and the grid has the focus, and Tab leaves the grid. Each dialog
// supplies its statement, its cells and its texts; this class runs the statement on a connection of
// its own, fills the grid, preselects the caller's code and hands the chosen row back.
class SearchDialogBase : public QDialog
{
    Q_OBJECT

public:
    QString CsErrStr;

    // Loads the list with the current filters (the dialog's iDsp1ranSub). 0 with rows, 1 without,
    // -1 on failure (already shown).
    qint16 iDsp1ranSub();
    // A search asked for by the user (search button, F4, Enter in a filter): unlike the first load,
    // the first row becomes current when the preselected code is not listed.
    qint16 search();
    // Takes the grid's active row and closes the dialog; false (with a message) when there is none.
    bool vWhenSeledOK();
    // The code to select when it is listed (0: none).
    void setPreselection(qint32 code) { m_preselect = code; }

    qint32 seledCode() const { return m_seledCode; }
    QString seledName() const { return m_seledName; }

protected:
    SearchDialogBase(const AppContext& ctx, const QString& title, const QString& chooseTip, QWidget* parent);

    const AppContext& m_ctx;
    QGridLayout* filterLayout() const { return m_filters; }
    void setColumns(const QStringList& headers, const QList<int>& widths);
    // Adds a labelled filter widget in the filter frame at row, column pair col.
    void addFilter(int row, int col, const QString& label, QWidget* widget);
    // The reading filter: rows whose cell at column does not contain its text, compared by
    // readingKey() (kana script and width do not matter), are left out.
    void setReadingFilter(QLineEdit* filter, int column);
    // " where" for the first condition, " and" after it.
    static QString joiner(QString& conditions);

    virtual QString listSql() const = 0;
    // The cells of the current record, column 1 first (the code).
    virtual QStringList cellsOf(const RecordSet& rs) const = 0;
    virtual QString noRowsText() const = 0;
    // The active filters after "抽出条件："; empty for none.
    virtual QString conditionSummary() const = 0;
    // Keeps what the caller needs beyond code and name (coordinates) from the chosen row's cells.
    virtual void takeChoice(const QStringList& cells) { Q_UNUSED(cells) }
    // Whether a fetched row is shown (the practitioner list drops repeated codes).
    virtual bool acceptsRow(const QStringList& cells, const QStringList& previous) const;

    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void showError(const QString& text) const;
    // Opens sql on a connection of the dialog's own; a failure is shown as header + the reason.
    bool openReported(ScopedConnection& con, const QString& sql, const QString& header) const;
    // A text filter in the filter frame.
    QLineEdit* makeTextFilter(const QString& objectName) const;

    QTableWidget* spr_1ran = nullptr;
    QPushButton* but_Read = nullptr;
    QPushButton* but_Act = nullptr;
    QPushButton* but_End = nullptr;
    QLabel* laJouken = nullptr;

private:
    QGridLayout* m_filters = nullptr;
    QLineEdit* m_readingFilter = nullptr;
    int m_readingColumn = -1;
    bool m_userSearch = false;
    bool m_placed = false;
    qint32 m_preselect = 0;
    qint32 m_seledCode = 0;
    QString m_seledName;
};

} // namespace qelprn
