#pragma once

#include "forms/MainFormLists.h"

class QComboBox;

namespace qelprn {

// "（指定なし）" with item data 0, then one entry per row with its code as item data.
void fillCodeCombo(QComboBox& box, const QList<CodeName>& list);
// Selects the entry whose item data is code; false (and no change) when there is none.
bool selectItemData(QComboBox& box, qint32 code);
// The item data of the selected entry, 0 when nothing is selected.
qint32 selectedItemData(const QComboBox& box);

} // namespace qelprn
