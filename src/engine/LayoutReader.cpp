#include "engine/LayoutReader.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

int lineAtOffset(const QByteArray& text, qsizetype offset)
{
    return int(text.left(offset).count('\n')) + 1;
}

// The line where "needle" (as a JSON string) first appears, so a message can point at it.
int lineOfName(const QByteArray& text, const QString& needle)
{
    const qsizetype at = text.indexOf(u"\""_s.append(needle).append(u'"').toUtf8());
    return at < 0 ? 0 : lineAtOffset(text, at);
}

class Parser
{
public:
    Parser(const QByteArray& text, const QString& path, Layout& layout)
        : m_text(text), m_path(path), m_layout(layout)
    {}

    bool parse(const QJsonObject& root, EngineError* error)
    {
        m_layout.name = root.value(u"name"_s).toString(QFileInfo(m_path).completeBaseName());
        m_layout.dataName = root.value(u"data"_s).toString();
        if (!readPaper(root.value(u"paper"_s).toObject()) || !readFonts(root.value(u"fonts"_s).toArray()))
            return report(error);
        const QString dates = root.value(u"dates"_s).toString(u"western"_s);
        if (dates != u"western"_s && dates != u"era"_s) {
            fail(u"dates は era（和暦）か western（西暦）です"_s, u"dates"_s);
            return report(error);
        }
        m_layout.dateStyle = dates == u"era"_s ? DateStyle::Era : DateStyle::Western;
        static const QHash<QString, YenRounding> roundings = {{u"none"_s, YenRounding::None},
                                                              {u"up"_s, YenRounding::Up},
                                                              {u"half-up"_s, YenRounding::HalfUp},
                                                              {u"down"_s, YenRounding::Down}};
        const QString round = root.value(u"round"_s).toString(u"none"_s);
        if (!roundings.contains(round)) {
            fail(u"round は up（切り上げ）, half-up（四捨五入）, down（切り捨て）, none のどれかです"_s,
                 u"round"_s);
            return report(error);
        }
        m_layout.rounding = roundings.value(round);
        for (const QJsonValue& k : root.value(u"groupBy"_s).toArray())
            m_layout.groupKey.append(k.toString());
        if (root.value(u"groupBy"_s).isString())
            m_layout.groupKey.append(root.value(u"groupBy"_s).toString());
        const QJsonObject addressee = root.value(u"addressee"_s).toObject();
        m_layout.addressee.nameColumn =
            addressee.value(u"name"_s).toString(m_layout.groupKey.value(m_layout.groupKey.size() - 1));
        m_layout.addressee.idColumn = addressee.value(u"id"_s).toString(m_layout.groupKey.value(0));
        m_layout.addressee.amountItem = addressee.value(u"amount"_s).toString();
        m_layout.addressee.issuerColumn = addressee.value(u"issuer"_s).toString();

        static const char16_t* const bandNames[] = {u"pageHeader", u"groupHeader", u"groupFooter",
                                                    u"pageFooter"};
        for (const char16_t* bandName : bandNames) {
            const QString key = QString::fromUtf16(bandName);
            if (!root.contains(key))
                continue;
            LayoutBand band;
            if (!readBand(key, root.value(key).toObject(), band))
                return report(error);
            m_layout.bands.append(band);
        }
        const QJsonObject detail = root.value(u"detail"_s).toObject();
        if (!readBand(u"detail"_s, detail, m_layout.detail))
            return report(error);
        m_layout.detail.rows = detail.value(u"rows"_s).toInt(1);
        m_layout.detail.rowHeight = detail.value(u"rowHeight"_s).toDouble(6);
        m_layout.detail.frameColumn = detail.value(u"frameColumn"_s).toString();
        m_layout.detail.frameEmptySlots = detail.value(u"frameEmptySlots"_s).toBool(true);
        if (m_layout.detail.rows < 1 || m_layout.detail.rows > 1000 || m_layout.detail.rowHeight <= 0) {
            fail(u"detail の rows は 1 から 1000、rowHeight は正の数にしてください"_s, u"rows"_s);
            return report(error);
        }
        if (!readItems(u"detail.frame"_s, detail.value(u"frame"_s).toArray(), m_layout.detail.frame))
            return report(error);
        return true;
    }

private:
    void fail(const QString& message, const QString& near)
    {
        if (m_problem.isEmpty()) {
            m_problem = message;
            m_line = lineOfName(m_text, near);
        }
    }
    bool report(EngineError* error)
    {
        *error = {m_path, m_line, m_problem};
        return false;
    }

    bool readPaper(const QJsonObject& paper)
    {
        const QString size = paper.value(u"size"_s).toString(u"A4"_s).toUpper();
        if (size == u"A4"_s)
            m_layout.pageSize = QPageSize(QPageSize::A4);
        else if (size == u"A5"_s)
            m_layout.pageSize = QPageSize(QPageSize::A5);
        else if (size == u"B5"_s)
            m_layout.pageSize = QPageSize(QPageSize::JisB5);
        else if (size == u"A3"_s)
            m_layout.pageSize = QPageSize(QPageSize::A3);
        else {
            fail(u"用紙サイズ \"%1\" は使えません（A3, A4, A5, B5）"_s.arg(size), u"size"_s);
            return false;
        }
        const QString orientation = paper.value(u"orientation"_s).toString(u"portrait"_s);
        if (orientation != u"portrait"_s && orientation != u"landscape"_s) {
            fail(u"orientation は portrait か landscape です"_s, u"orientation"_s);
            return false;
        }
        m_layout.orientation = orientation == u"landscape"_s ? QPageLayout::Landscape : QPageLayout::Portrait;
        const QJsonObject m = paper.value(u"margins"_s).toObject();
        m_layout.margins = QMarginsF(m.value(u"left"_s).toDouble(10), m.value(u"top"_s).toDouble(10),
                                     m.value(u"right"_s).toDouble(10), m.value(u"bottom"_s).toDouble(10));
        return true;
    }

    bool readFonts(const QJsonArray& fonts)
    {
        for (const QJsonValue& v : fonts) {
            const QJsonObject o = v.toObject();
            LayoutFont f;
            f.name = o.value(u"name"_s).toString();
            f.family = o.value(u"family"_s).toString(u"IPAexGothic"_s);
            f.size = o.value(u"size"_s).toDouble(9);
            f.bold = o.value(u"bold"_s).toBool(false);
            if (f.name.isEmpty() || f.size < 3 || f.size > 200) {
                fail(u"フォントには name と 3 から 200 までの size が必要です"_s,
                     f.name.isEmpty() ? u"fonts"_s : f.name);
                return false;
            }
            m_layout.fonts.append(f);
        }
        if (m_layout.fonts.isEmpty())
            m_layout.fonts.append({u"本文"_s, u"IPAexGothic"_s, 9, false});
        return true;
    }

    bool readBand(const QString& name, const QJsonObject& o, LayoutBand& band)
    {
        band.name = o.value(u"name"_s).toString(name);
        band.top = o.value(u"top"_s).toDouble(0);
        const QString print =
            o.value(u"print"_s).toString(name == u"groupFooter"_s ? u"lastPage"_s : u"everyPage"_s);
        if (print == u"everyPage"_s)
            band.print = LayoutBand::Print::EveryPage;
        else if (print == u"firstPage"_s)
            band.print = LayoutBand::Print::FirstPage;
        else if (print == u"lastPage"_s)
            band.print = LayoutBand::Print::LastPage;
        else {
            fail(name + u" の print は everyPage, firstPage, lastPage のどれかです"_s, print);
            return false;
        }
        if (!readItems(band.name, o.value(u"items"_s).toArray(), band.items))
            return false;
        for (LayoutItem& item : band.items) {
            if (item.follow.isEmpty())
                continue;
            for (qsizetype i = 0; i < band.items.size(); ++i) {
                const LayoutItem& other = band.items[i];
                if (other.name == item.follow &&
                    (other.kind == LayoutItem::Kind::Text || other.kind == LayoutItem::Kind::Field))
                    item.followIndex = int(i);
            }
            if (item.followIndex < 0) {
                fail(name +
                         u" の項目 \"%1\" の follow \"%2\" は同じ帯の文字の項目の name ではありません"_s.arg(
                             item.name, item.follow),
                     item.follow);
                return false;
            }
        }
        return true;
    }

    bool readItems(const QString& where, const QJsonArray& items, QList<LayoutItem>& out)
    {
        for (const QJsonValue& v : items) {
            const QJsonObject o = v.toObject();
            const QJsonObject repeat = o.value(u"repeat"_s).toObject();
            const int count = repeat.isEmpty() ? 1 : repeat.value(u"count"_s).toInt(1);
            for (int n = 1; n <= count; ++n) {
                LayoutItem item;
                const QPointF step((n - 1) * repeat.value(u"dx"_s).toDouble(0),
                                   (n - 1) * repeat.value(u"dy"_s).toDouble(0));
                if (!readItem(where, o, repeat.isEmpty() ? QString() : QString::number(n), item))
                    return false;
                if (item.kind == LayoutItem::Kind::Line)
                    item.rect = QRectF(item.rect.topLeft() + step, item.rect.bottomRight() + step);
                else
                    item.rect.translate(step);
                out.append(item);
            }
        }
        return true;
    }

    // n replaces "{n}" in names, texts and columns of a repeated item.
    bool readItem(const QString& where, const QJsonObject& o, const QString& n, LayoutItem& item)
    {
        auto str = [&](const QString& key, const QString& def = QString()) {
            QString s = o.value(key).toString(def);
            if (!n.isEmpty())
                s.replace(u"{n}"_s, n);
            return s;
        };
        const QString type = o.value(u"type"_s).toString();
        item.name = str(u"name"_s);
        const QString near = item.name.isEmpty() ? type : item.name;
        item.line = lineOfName(m_text, near);
        static const QHash<QString, LayoutItem::Kind> kinds = {{u"text"_s, LayoutItem::Kind::Text},
                                                               {u"field"_s, LayoutItem::Kind::Field},
                                                               {u"line"_s, LayoutItem::Kind::Line},
                                                               {u"box"_s, LayoutItem::Kind::Box},
                                                               {u"image"_s, LayoutItem::Kind::Image}};
        if (!kinds.contains(type)) {
            fail(where + u" の項目の type \"%1\" は使えません（text, field, line, box, image）"_s.arg(type),
                 type.isEmpty() ? u"items"_s : type);
            return false;
        }
        item.kind = kinds.value(type);
        if (item.kind == LayoutItem::Kind::Line) {
            item.rect = QRectF(QPointF(o.value(u"x1"_s).toDouble(), o.value(u"y1"_s).toDouble()),
                               QPointF(o.value(u"x2"_s).toDouble(), o.value(u"y2"_s).toDouble()));
        } else {
            item.rect = QRectF(o.value(u"x"_s).toDouble(), o.value(u"y"_s).toDouble(),
                               o.value(u"w"_s).toDouble(), o.value(u"h"_s).toDouble());
            if (item.rect.width() <= 0 || item.rect.height() <= 0) {
                fail(where + u" の項目 \"%1\" の w と h は正の数にしてください"_s.arg(near), near);
                return false;
            }
        }
        item.lineWidth = o.value(u"width"_s).toDouble(0.2);
        item.dashed = o.value(u"dash"_s).toBool(false);
        item.color = QColor(str(u"color"_s, u"#000000"_s));
        if (o.contains(u"fill"_s))
            item.fill = QColor(str(u"fill"_s));
        if (!item.color.isValid() || (o.contains(u"fill"_s) && !item.fill.isValid())) {
            fail(where + u" の項目 \"%1\" の色が読めません（#rrggbb）"_s.arg(near), near);
            return false;
        }
        item.text = str(u"text"_s);
        item.format = str(u"format"_s, u"text"_s);
        static const QStringList formats = {u"text"_s,      u"number"_s,   u"yen"_s, u"date"_s, u"month"_s,
                                            u"era-month"_s, u"era-date"_s, u"md"_s,  u"share"_s};
        if (!formats.contains(item.format)) {
            fail(where + u" の format \"%1\" は使えません（%2）"_s.arg(item.format, formats.join(u", "_s)),
                 item.format);
            return false;
        }
        item.format = formatForDateStyle(item.format, m_layout.dateStyle);
        item.hasContinued = o.contains(u"continued"_s);
        item.continued = str(u"continued"_s);
        item.prefix = str(u"prefix"_s);
        item.suffix = str(u"suffix"_s);
        item.blankZero = o.value(u"zero"_s).toString() == u"blank"_s;
        if (o.contains(u"column"_s)) {
            item.source = LayoutItem::Source::Column;
            item.columns = {str(u"column"_s)};
        } else if (o.contains(u"sum"_s)) {
            item.source = LayoutItem::Source::Sum;
            item.columns = {str(u"sum"_s)};
            if (o.value(u"sum"_s).isArray()) {
                item.columns.clear();
                for (const QJsonValue& c : o.value(u"sum"_s).toArray())
                    item.columns.append(c.toString());
                if (item.columns.isEmpty()) {
                    fail(where + u" の項目 \"%1\" の sum に列がありません"_s.arg(near), u"sum"_s);
                    return false;
                }
            }
        } else if (o.value(u"rowNumber"_s).toBool(false)) {
            item.source = LayoutItem::Source::RowNumber;
        } else if (o.contains(u"add"_s)) {
            item.source = LayoutItem::Source::Columns;
            for (const QJsonValue& c : o.value(u"add"_s).toArray())
                item.columns.append(n.isEmpty() ? c.toString() : c.toString().replace(u"{n}"_s, n));
        }
        if ((item.kind == LayoutItem::Kind::Field || item.kind == LayoutItem::Kind::Image) &&
            item.source == LayoutItem::Source::None) {
            fail(where + u" の項目 \"%1\" には column, sum, add, rowNumber のどれかが必要です"_s.arg(near),
                 near);
            return false;
        }
        if (item.kind == LayoutItem::Kind::Image && item.source != LayoutItem::Source::Column) {
            fail(where + u" の image は column でファイルのパスの列を指定します"_s, near);
            return false;
        }
        const QString fontName = str(u"font"_s);
        item.font = 0;
        if (!fontName.isEmpty()) {
            item.font = -1;
            for (int i = 0; i < m_layout.fonts.size(); ++i) {
                if (m_layout.fonts[i].name == fontName)
                    item.font = i;
            }
            if (item.font < 0) {
                fail(where + u" の項目 \"%1\" のフォント \"%2\" が fonts にありません"_s.arg(near, fontName),
                     fontName);
                return false;
            }
        }
        const QString align = str(u"align"_s, u"left"_s);
        const QString valign = str(u"valign"_s, u"middle"_s);
        Qt::Alignment h = align == u"center"_s  ? Qt::AlignHCenter
                          : align == u"right"_s ? Qt::AlignRight
                                                : Qt::AlignLeft;
        Qt::Alignment v = valign == u"top"_s      ? Qt::AlignTop
                          : valign == u"bottom"_s ? Qt::AlignBottom
                                                  : Qt::AlignVCenter;
        item.align = h | v;
        item.wrap = o.value(u"wrap"_s).toBool(false);
        item.shrink = o.value(u"shrink"_s).toBool(true);
        item.transparentWhite = o.value(u"transparentWhite"_s).toBool(true);
        if (item.kind == LayoutItem::Kind::Image)
            item.follow = str(u"follow"_s);
        const QJsonObject when = o.value(u"when"_s).toObject();
        if (!when.isEmpty()) {
            item.when.column = when.value(u"column"_s).toString();
            item.when.negate = when.contains(u"notEquals"_s);
            item.when.value =
                when.value(item.when.negate ? u"notEquals"_s : u"equals"_s).toVariant().toString();
        }
        return true;
    }

    const QByteArray& m_text;
    QString m_path;
    Layout& m_layout;
    QString m_problem;
    int m_line = 0;
};

QList<LayoutItem*> allItems(Layout& layout, bool withFrame)
{
    QList<LayoutItem*> list;
    for (LayoutBand& band : layout.bands) {
        for (LayoutItem& item : band.items)
            list.append(&item);
    }
    for (LayoutItem& item : layout.detail.items)
        list.append(&item);
    if (withFrame) {
        for (LayoutItem& item : layout.detail.frame)
            list.append(&item);
    }
    return list;
}

} // namespace

bool readLayout(const QString& path, Layout& layout, EngineError* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = {path, 0, u"レイアウトファイルを開けません（%1）"_s.arg(file.errorString())};
        return false;
    }
    return parseLayout(file.readAll(), path, layout, error);
}

bool parseLayout(const QByteArray& json, const QString& path, Layout& layout, EngineError* error)
{
    layout = Layout{};
    layout.path = path;
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = {path, lineAtOffset(json, parseError.offset),
                  u"レイアウトの JSON が読めません（%1）"_s.arg(parseError.errorString())};
        return false;
    }
    if (!doc.isObject()) {
        *error = {path, 1, u"レイアウトは JSON のオブジェクト { ... } で書きます"_s};
        return false;
    }
    return Parser(json, path, layout).parse(doc.object(), error);
}

bool applyItemValues(Layout& layout, const QList<ItemValue>& values, const QString& commandFile,
                     EngineError* error)
{
    for (const ItemValue& v : values) {
        const qsizetype dot = v.item.indexOf(u'.');
        const QString section = dot < 0 ? QString() : v.item.left(dot);
        const QString name = dot < 0 ? v.item : v.item.mid(dot + 1);
        bool found = false;
        auto apply = [&](const QString& bandName, QList<LayoutItem>& items) {
            if (!section.isEmpty() && section != bandName)
                return;
            for (LayoutItem& item : items) {
                if (item.name != name)
                    continue;
                found = true;
                if (item.kind == LayoutItem::Kind::Text) {
                    item.text = v.value;
                } else {
                    item.setValue = v.value;
                    item.hasSetValue = true;
                }
            }
        };
        for (LayoutBand& band : layout.bands)
            apply(band.name, band.items);
        apply(layout.detail.name, layout.detail.items);
        if (!found) {
            *error = {commandFile, v.line,
                      u"レイアウト %1 に項目 \"%2\" がありません"_s.arg(layout.path, v.item)};
            return false;
        }
    }
    return true;
}

bool bindLayout(Layout& layout, const CsvFile& data, EngineError* error)
{
    QByteArray text;
    auto missing = [&](const QString& column, int layoutLine) {
        QString where = layout.path;
        if (layoutLine > 0)
            where += u':' + QString::number(layoutLine);
        *error = {data.path(), 1,
                  u"レイアウト %1 の列「%2」がデータファイルにありません"_s.arg(where, column)};
        return false;
    };
    auto resolve = [&](const QString& column, int layoutLine, int& index) {
        index = data.columnIndex(column);
        return index >= 0 || missing(column, layoutLine);
    };
    layout.groupKeyIndexes.clear();
    for (const QString& key : layout.groupKey) {
        int index = -1;
        if (!resolve(key, 0, index))
            return false;
        layout.groupKeyIndexes.append(index);
    }
    LayoutAddressee& addressee = layout.addressee;
    for (auto [column, index] : {std::pair{&addressee.nameColumn, &addressee.nameIndex},
                                 std::pair{&addressee.idColumn, &addressee.idIndex},
                                 std::pair{&addressee.issuerColumn, &addressee.issuerIndex}}) {
        *index = -1;
        if (!column->isEmpty() && !resolve(*column, 0, *index))
            return false;
    }
    if (!layout.detail.frameColumn.isEmpty() &&
        !resolve(layout.detail.frameColumn, 0, layout.detail.frameIndex))
        return false;
    layout.sumColumns.clear();
    layout.sumIndexes.clear();
    for (LayoutItem* item : allItems(layout, true)) {
        if (!item->when.column.isEmpty() && !resolve(item->when.column, item->line, item->when.index))
            return false;
        item->indexes.clear();
        for (const QString& column : item->columns) {
            int index = -1;
            if (!resolve(column, item->line, index))
                return false;
            if (item->source == LayoutItem::Source::Sum) {
                qsizetype slot = layout.sumIndexes.indexOf(index);
                if (slot < 0) {
                    slot = layout.sumIndexes.size();
                    layout.sumIndexes.append(index);
                    layout.sumColumns.append(column);
                }
                index = int(slot);
            }
            item->indexes.append(index);
        }
    }
    return true;
}

} // namespace qelprn::engine
