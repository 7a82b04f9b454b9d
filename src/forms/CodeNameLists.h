#pragma once

#include "app/AppContext.h"
#include "db/cT_ADODB.h"

#include <QList>
#include <QString>

class QComboBox;

namespace qelprn {

// One entry of the main form's corporation, clinic and practitioner lists.
struct CodeName
{
    qint32 nIDNo = 0;
    QString name;
};

// The own site's CORP rows of one kind (0 the corporation, 1 its clinics), by code.
qint16 readCorpList(cT_ADODB& ado, const AppContext& ctx, int iType, QList<CodeName>& out, QString& sErrMsg);
// The own site's practitioners by code; withEnded also lists those whose management has ended.
qint16 readStaffList(cT_ADODB& ado, const AppContext& ctx, bool withEnded, QList<CodeName>& out,
                     QString& sErrMsg);

// "（指定なし）" with item data 0, then one entry per row with its code as item data.
void fillCodeCombo(QComboBox& box, const QList<CodeName>& list);
// Selects the entry whose item data is code; false (and no change) when there is none.
bool selectItemData(QComboBox& box, qint32 code);
// The item data of the selected entry, 0 when nothing is selected.
qint32 selectedItemData(const QComboBox& box);

} // namespace qelprn
