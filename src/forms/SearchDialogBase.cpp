#include "forms/SearchDialogBase.h"

#include "app/ProgramTitle.h"
#include "db/ScopedConnection.h"
#include "forms/FormControls.h"
#include "forms/OnlineHelp.h"
#include "forms/ReadingKey.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qelprn {

SearchDialogBase::SearchDialogBase(const AppContext& ctx, const QString& title, const QString& chooseTip,
                                   QWidget* parent)
    : QDialog(parent), m_ctx(ctx)
{
    setWindowTitle(title);
    setSizeGripEnabled(true);

    auto* frame = new QGroupBox(u"抽出条件"_s, this);
    frame->setObjectName(u"Frame1"_s);
    m_filters = new QGridLayout(frame);
    m_filters->setColumnStretch(1, 1);
    m_filters->setColumnStretch(3, 1);

    but_Read = new QPushButton(u"検索(&S)"_s, this);
    but_Read->setObjectName(u"but_Read"_s);
    but_Read->setToolTip(u"抽出条件で検索します (F4)"_s);
    connect(but_Read, &QPushButton::clicked, this, [this] { search(); });

    laJouken = new QLabel(u"抽出条件："_s, this);
    laJouken->setObjectName(u"laJouken"_s);
    laJouken->setWordWrap(true);

    spr_1ran = new QTableWidget(this);
    spr_1ran->setObjectName(u"spr_1ran"_s);
    spr_1ran->setEditTriggers(QAbstractItemView::NoEditTriggers);
    spr_1ran->setSelectionBehavior(QAbstractItemView::SelectRows);
    spr_1ran->setSelectionMode(QAbstractItemView::SingleSelection);
    spr_1ran->setAlternatingRowColors(true);
    spr_1ran->verticalHeader()->setVisible(false);
    spr_1ran->verticalHeader()->setDefaultSectionSize(spr_1ran->fontMetrics().height() + 8);
    spr_1ran->setWordWrap(false);
    spr_1ran->horizontalHeader()->setStretchLastSection(true);
    // Tab moves on to the buttons instead of walking the cells.
    spr_1ran->setTabKeyNavigation(false);
    connect(spr_1ran, &QTableWidget::cellDoubleClicked, this, [this] { vWhenSeledOK(); });

    but_Act = new QPushButton(u"確 定"_s, this);
    but_Act->setObjectName(u"but_Act"_s);
    but_Act->setToolTip(chooseTip);
    but_Act->setEnabled(false);
    but_Act->setDefault(true);
    connect(but_Act, &QPushButton::clicked, this, [this] { vWhenSeledOK(); });

    but_End = new QPushButton(u"閉じる"_s, this);
    but_End->setObjectName(u"but_End"_s);
    but_End->setToolTip(u"処理を終了します"_s);
    connect(but_End, &QPushButton::clicked, this, &QDialog::reject);

    auto* menuBar = new QMenuBar(this);
    QMenu* menu = menuBar->addMenu(u"機能(&F)"_s);
    menu->addAction(u"検索"_s, QKeySequence(Qt::Key_F4), this, [this] { search(); });
    menu->addAction(u"確定"_s, QKeySequence(Qt::Key_F5), this, [this] { vWhenSeledOK(); });
    menu->addAction(u"閉じる"_s, QKeySequence(Qt::Key_F12), this, &QDialog::reject);
    QMenu* help = menuBar->addMenu(u"ヘルプ(&H)"_s);
    help->addAction(u"オンラインヘルプ(&M)"_s, QKeySequence(Qt::Key_F1), this,
                    [this] { showOnlineHelp(m_ctx, 1); });

    auto* top = new QHBoxLayout;
    top->addWidget(frame, 1);
    top->addWidget(but_Read, 0, Qt::AlignBottom);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(but_Act);
    buttons->addWidget(but_End);
    // On a screen smaller than the dialog its body scrolls; the menu stays in view.
    auto* body = new QWidget;
    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->addLayout(top);
    bodyLayout->addWidget(laJouken);
    bodyLayout->addWidget(spr_1ran, 1);
    bodyLayout->addLayout(buttons);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(body);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setMenuBar(menuBar);
    layout->addWidget(scroll);
}

void SearchDialogBase::setColumns(const QStringList& headers, const QList<int>& widths)
{
    spr_1ran->setColumnCount(int(headers.size()));
    spr_1ran->setHorizontalHeaderLabels(headers);
    const int unit = fontMetrics().horizontalAdvance(u'０');
    for (int c = 0; c < widths.size() && c < headers.size(); ++c)
        spr_1ran->setColumnWidth(c, widths.at(c) * unit);
}

void SearchDialogBase::addFilter(int row, int col, const QString& label, QWidget* widget)
{
    auto* caption = new QLabel(label, widget->parentWidget());
    caption->setBuddy(widget);
    m_filters->addWidget(caption, row, col * 2);
    m_filters->addWidget(widget, row, col * 2 + 1);
}

void SearchDialogBase::setReadingFilter(QLineEdit* filter, int column)
{
    m_readingFilter = filter;
    m_readingColumn = column;
}

void SearchDialogBase::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        QWidget* focus = focusWidget();
        if (focus == nullptr)
            return QDialog::keyPressEvent(event);
        if (m_filters->parentWidget()->isAncestorOf(focus)) {
            search();
            return;
        }
        if (focus == spr_1ran) {
            vWhenSeledOK();
            return;
        }
    }
    QDialog::keyPressEvent(event);
}

void SearchDialogBase::showEvent(QShowEvent* event)
{
    // The dialog's own size, but never larger than the screen it opens on.
    if (!m_placed) {
        m_placed = true;
        fitWindowInto(*this, size(), availableArea(*this));
    }
    QDialog::showEvent(event);
}

qint16 SearchDialogBase::search()
{
    m_userSearch = true;
    return iDsp1ranSub();
}

QString SearchDialogBase::joiner(QString& conditions)
{
    const QString word = conditions.isEmpty() ? u" where"_s : u" and"_s;
    conditions += word;
    return word;
}

bool SearchDialogBase::acceptsRow(const QStringList&, const QStringList&) const
{
    return true;
}

void SearchDialogBase::showError(const QString& text) const
{
    m_ctx.interaction().messageBox(text, seikyuTitle(), MsgIcon::Critical);
}

bool SearchDialogBase::openReported(ScopedConnection& con, const QString& sql, const QString& header) const
{
    if (con.openAdodbQuery(m_ctx, sql))
        return true;
    showError(header + con.errorText());
    return false;
}

QLineEdit* SearchDialogBase::makeTextFilter(const QString& objectName) const
{
    auto* edit = new QLineEdit(m_filters->parentWidget());
    edit->setObjectName(objectName);
    return edit;
}

qint16 SearchDialogBase::iDsp1ranSub()
{
    spr_1ran->setRowCount(0);
    but_Act->setEnabled(false);
    const QString summary = conditionSummary();
    laJouken->setText(u"抽出条件："_s + summary);

    BusyPointer busy(m_ctx.interaction());
    ScopedConnection own;
    if (!openReported(own, listSql(), u"iDsp1ranSub() でエラー\r\n"_s))
        return -1;
    RecordSet& rs = own.rs;
    QList<QStringList> rows;
    const QString reading = m_readingFilter ? m_readingFilter->text() : QString();
    while (!rs.isEOF()) {
        QStringList cells = cellsOf(rs);
        if (readingMatches(cells.value(m_readingColumn), reading) &&
            acceptsRow(cells, rows.isEmpty() ? QStringList() : rows.constLast()))
            rows.append(std::move(cells));
        rs.moveNext();
    }
    if (rs.hasError()) {
        showError(u"iDsp1ranSub() でエラー\r\n"_s + rs.errorText());
        return -1;
    }
    if (rows.isEmpty()) {
        m_ctx.interaction().messageBox(noRowsText(), seikyuTitle(), MsgIcon::Information);
        return 1;
    }

    spr_1ran->setUpdatesEnabled(false);
    spr_1ran->setRowCount(int(rows.size()));
    int preselectRow = -1;
    for (int r = 0; r < rows.size(); ++r) {
        const QStringList& cells = rows.at(r);
        for (int c = 0; c < cells.size() && c < spr_1ran->columnCount(); ++c)
            spr_1ran->setItem(r, c, new QTableWidgetItem(cells.at(c)));
        if (m_preselect > 0 && preselectRow < 0 && cells.value(0).toLongLong() == m_preselect)
            preselectRow = r;
    }
    spr_1ran->setUpdatesEnabled(true);
    but_Act->setEnabled(true);
    // The first load keeps a caller's code that is not listed from choosing another row unseen;
    // otherwise the first row is current, so Enter or F5 confirms a single hit at once.
    const int current = preselectRow >= 0 ? preselectRow : (m_preselect > 0 && !m_userSearch) ? -1 : 0;
    if (current >= 0) {
        spr_1ran->setCurrentCell(current, 0);
        spr_1ran->selectRow(current);
        spr_1ran->scrollToItem(spr_1ran->item(current, 0));
    } else {
        spr_1ran->setCurrentIndex(QModelIndex());
        spr_1ran->clearSelection();
    }
    spr_1ran->setFocus();
    return 0;
}

bool SearchDialogBase::vWhenSeledOK()
{
    const int row = spr_1ran->currentRow();
    const QTableWidgetItem* first = row >= 0 ? spr_1ran->item(row, 0) : nullptr;
    if (first == nullptr || !first->isSelected()) {
        m_ctx.interaction().messageBox(u"有効な行が選択されていません！"_s, seikyuTitle(),
                                       MsgIcon::Exclamation);
        return false;
    }
    QStringList cells;
    for (int c = 0; c < spr_1ran->columnCount(); ++c)
        cells.append(spr_1ran->item(row, c) ? spr_1ran->item(row, c)->text() : QString());
    m_seledCode = cells.value(0).toInt();
    m_seledName = cells.value(1);
    takeChoice(cells);
    accept();
    return true;
}

} // namespace qelprn
