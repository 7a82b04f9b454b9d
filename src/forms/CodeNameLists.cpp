#include "forms/CodeNameLists.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

namespace qelprn {

void fillCodeCombo(QComboBox& box, const QList<CodeName>& list)
{
    const QSignalBlocker block(box);
    box.clear();
    box.addItem(u"（指定なし）"_s, 0);
    for (const CodeName& entry : list)
        box.addItem(entry.name, entry.nIDNo);
    box.setCurrentIndex(0);
}

bool selectItemData(QComboBox& box, qint32 code)
{
    const int index = box.findData(code);
    if (index < 0)
        return false;
    box.setCurrentIndex(index);
    return true;
}

qint32 selectedItemData(const QComboBox& box)
{
    return box.currentIndex() < 0 ? 0 : box.currentData().toInt();
}

} // namespace qelprn
