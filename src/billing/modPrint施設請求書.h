#pragma once

#include "app/AppContext.h"
#include "billing/KanjaSeikyuRow.h"
#include "billing/KenRyousyuuRow.h"
#include "billing/PrintJouken.h"
#include "billing/SisetsuSeikyuGroup.h"
#include "billing/SisetsuSeikyuRow.h"
#include "db/DbInfo.h"

#include <QList>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// The invoice data of one print run: the conditions, the queries and their results.
// The print run fills `jouken`, calls one query and reads the result arrays.
class modPrint施設請求書
{
public:
    explicit modPrint施設請求書(AppContext& context);

    // Facility invoice of the own database into aSisetsuSeikyu; 0 on success, -1 on failure.
    qint16 iGetSeikyuData();
    // Facility invoice over the chosen databases into aSeikyuSisetsu / aSeikyuJihi.
    qint16 iGetSeikyuData_ALLDB();
    // Co-payment list lines into aKanjaSeikyu.
    qint16 iGetSeikyuData_Kanja_New();
    // Invoice-receipt rows into aKenRyousyuu.
    qint16 iGetSeikyuData_KenRyousyuu();

    // Splits one patient's month share into visits 1 to 4 and 5 or later.
    qint16 iCalcJisseki4Down5Up(qint32 nRiyoushaID, double& dFutan4Down, double& dFutan5Up);

    AppContext& context;
    PrintJouken jouken;
    QList<DbInfo> dbInfos;

    QList<SisetsuSeikyuRow> aSisetsuSeikyu;
    QList<SisetsuSeikyuGroup> aSeikyuSisetsu;
    qint16 nSeikyuSisetsuCnt = 0;
    QList<SisetsuSeikyuGroup> aSeikyuJihi;
    qint16 nSeikyuJihiCnt = 0;
    QList<KanjaSeikyuRow> aKanjaSeikyu;
    QList<KenRyousyuuRow> aKenRyousyuu;
};

} // namespace qelprn
