#pragma once

#include "engine/ValueFormat.h"

#include <QColor>
#include <QList>
#include <QPageLayout>
#include <QPageSize>
#include <QRectF>
#include <QString>
#include <QStringList>

namespace qelprn::engine {

// A form layout as read from its ".wfd" JSON document (the format is described in
// layouts/README.md). Lengths are in millimetres on the page; item positions are relative to the
// top of their band (for the detail band: to the top of the row slot).
struct LayoutFont
{
    QString name;
    QString family;
    qreal size = 9; // points
    bool bold = false;
};

// Shows an item only when a column of the row equals (or, negated, differs from) a value.
struct ItemCondition
{
    QString column;
    QString value;
    bool negate = false;
    int index = -1; // resolved column index
};

struct LayoutItem
{
    enum class Kind { Text, Field, Line, Box, Image };
    enum class Source { None, Column, Sum, Columns, RowNumber };

    Kind kind = Kind::Text;
    QString name;             // for SetItemValue
    QRectF rect;              // text, field, box and image; a line runs from topLeft to bottomRight
    qreal lineWidth = 0.2;    // mm
    bool dashed = false;      // lines and boxes: a dashed pen (a cutting line)
    QColor color = Qt::black; // text and line colour
    QColor fill;              // box fill; invalid = none
    QString text;             // text: fixed text, may hold {page} {pages} {sheet} {sheets}
    Source source = Source::None;
    QStringList columns; // field: the column, the summed columns, or the columns to add up
    QList<int> indexes;  // resolved column indexes (Sum: the indexes into the group's sums)
    QString format;      // text, number, yen, date, month, era-month, era-date, md, share
    QString prefix, suffix;
    bool blankZero = false; // a value of 0 prints nothing
    // On every page of a group but its last, the item prints this text instead (a month total on a
    // form that goes on: "次頁へ続く", or nothing).
    bool hasContinued = false;
    QString continued;
    QString setValue; // value given by SetItemValue
    bool hasSetValue = false;
    int font = 0;
    Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter;
    bool wrap = false;
    bool shrink = true;           // squeeze a too-long single line into its box
    bool transparentWhite = true; // images: white pixels do not cover what lies below (the seal)
    // Images: the text item of the same band whose printed end the image lies over (the seal over
    // the end of the company name); x is then the rightmost place for the image's left edge.
    QString follow;
    int followIndex = -1;
    ItemCondition when;
    int line = 0; // line in the layout file, for messages

    bool isStatic() const
    {
        if (kind == Kind::Line || kind == Kind::Box)
            return when.column.isEmpty();
        if (kind == Kind::Text)
            return when.column.isEmpty() && !hasContinued && !text.contains(u'{');
        return false;
    }
};

struct LayoutBand
{
    enum class Print { EveryPage, FirstPage, LastPage };

    QString name;
    qreal top = 0; // mm from the top of the printable area
    Print print = Print::EveryPage;
    QList<LayoutItem> items;
};

struct DetailBand : LayoutBand
{
    int rows = 1;        // fixed slots per page
    qreal rowHeight = 6; // mm
    QString frameColumn; // frames are drawn for rows whose column is "1"; empty = always
    int frameIndex = -1;
    bool frameEmptySlots = true; // slots without a row get their frame too
    QList<LayoutItem> frame;     // the row's frame lines and boxes, positions relative to the slot
};

// Whom each group of the form is addressed to, for one file per addressee ("addressee" in the
// layout): the columns of the addressee's name and ID, and the item that prints the amount
// requested ("band.item" or "item"; none: the first field whose format begins with yen, else the
// last sum of the group footer) and the column of the issuer.
struct LayoutAddressee
{
    QString nameColumn; // default: the last groupBy column
    QString idColumn;   // default: the first groupBy column
    QString amountItem;
    QString issuerColumn; // the issuing clinic, the files' author
    int nameIndex = -1;
    int idIndex = -1;
    int issuerIndex = -1;
};

struct Layout
{
    QString path;
    QString name;
    QString dataName;
    DateStyle dateStyle = DateStyle::Western; // every date of the form in this style
    YenRounding rounding = YenRounding::None; // amounts in whole yen by this rule
    QPageSize pageSize{QPageSize::A4};
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QMarginsF margins{10, 10, 10, 10}; // mm
    QList<LayoutFont> fonts;
    QStringList groupKey;
    QList<int> groupKeyIndexes;
    QList<LayoutBand> bands; // page header, group header, group footer, page footer
    DetailBand detail;
    LayoutAddressee addressee;
    QStringList sumColumns; // columns summed over a group, in the order of the sum slots
    QList<int> sumIndexes;

    QSizeF paperSizeMm() const
    {
        const QSizeF s = pageSize.size(QPageSize::Millimeter);
        return orientation == QPageLayout::Landscape ? s.transposed() : s;
    }
};

} // namespace qelprn::engine
