#include "engine/FormDocument.h"

using namespace Qt::StringLiterals;

namespace qelprn::engine {

std::pair<int, int> FormDocument::groupPages(int group) const
{
    const Group& g = m_groups.at(group);
    return {g.firstPage, g.pageCount};
}

bool FormDocument::addressee(int group, AddresseeKey& key, EngineError* error)
{
    if (!m_amountLooked) {
        m_amountLooked = true;
        const QString wanted = m_layout.addressee.amountItem;
        const qsizetype dot = wanted.indexOf(u'.');
        const QString section = dot < 0 ? QString() : wanted.left(dot);
        const QString name = dot < 0 ? wanted : wanted.mid(dot + 1);
        auto find = [&](const LayoutBand& band, bool detail) {
            for (const LayoutItem& item : band.items) {
                if (m_amountItem || item.kind != LayoutItem::Kind::Field)
                    continue;
                const bool match = wanted.isEmpty()
                                       ? item.format.startsWith(u"yen"_s)
                                       : item.name == name && (section.isEmpty() || section == band.name);
                if (match) {
                    m_amountItem = &item;
                    m_amountInDetail = detail;
                }
            }
        };
        for (const LayoutBand& band : std::as_const(m_layout.bands))
            find(band, false);
        find(m_layout.detail, true);
        if (!m_amountItem && wanted.isEmpty()) {
            // A list without a yen field: the group total of its footer's last sum.
            for (const LayoutBand& band : std::as_const(m_layout.bands)) {
                if (band.name != u"groupFooter"_s)
                    continue;
                for (const LayoutItem& item : band.items) {
                    if (item.kind == LayoutItem::Kind::Field && item.source == LayoutItem::Source::Sum)
                        m_amountItem = &item;
                }
            }
        }
    }

    const Group& g = m_groups.at(group);
    if (!readRows(g, 0, 1, error))
        return false;
    const LayoutAddressee& spec = m_layout.addressee;
    key.id = spec.idIndex < 0 ? QString() : m_rows[0].at(spec.idIndex).trimmed();
    key.name = spec.nameIndex < 0 ? QString() : m_rows[0].at(spec.nameIndex).trimmed();
    key.issuer = spec.issuerIndex < 0 ? QString() : m_rows[0].at(spec.issuerIndex).trimmed();
    key.amount.clear();
    if (!m_amountItem)
        return true;

    // The amount as printed on the group's last page: on its row for a detail item, else with the
    // first row of that page, as the bands read it.
    const int rows = m_layout.detail.rows;
    const qint64 lastPageRow = qMax<qint64>(0, qint64(g.pageCount - 1) * rows - g.startSlot);
    const qint64 row = m_amountInDetail ? g.rowCount - 1 : lastPageRow;
    if (!readRows(g, row, 1, error))
        return false;
    Context context;
    context.row = &m_rows[0];
    context.group = &g;
    context.groupIndex = group;
    context.page = g.pageCount;
    context.pages = g.pageCount;
    context.sheet = g.firstPage + g.pageCount;
    context.rowNumber = row + 1;
    QString text = itemText(*m_amountItem, context);
    if (text.startsWith(m_amountItem->prefix))
        text.remove(0, m_amountItem->prefix.size());
    if (text.endsWith(m_amountItem->suffix))
        text.chop(m_amountItem->suffix.size());
    key.amount = plainAmount(text);
    return true;
}

} // namespace qelprn::engine
