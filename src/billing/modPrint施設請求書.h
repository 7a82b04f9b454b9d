#pragma once

#include "app/AppContext.h"
#include "billing/KanjaSeikyuRow.h"
#include "billing/KenRyousyuuRow.h"
#include "billing/KenRyousyuuSql.h"
#include "billing/PrintJouken.h"
#include "billing/SisetsuSeikyuGroup.h"
#include "billing/SisetsuSeikyuRow.h"
#include "db/DbInfo.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QtGlobal>
#include <functional>

namespace qelprn {

// The invoice data of one print run: the conditions, the queries and their results.
// The print run fills `jouken`, calls one query and reads the result arrays. Each query rebuilds
// its own result, opens and closes its own connections and tells the user about every outcome
// other than success (title "施設請求書印刷"). Results: 0 rows built, 1 no data (after
// "該当する実績データがありません。"), -1 failure (after the error message).
class modPrint施設請求書
{
public:
    explicit modPrint施設請求書(const AppContext& context);

    // Facility invoice of the own database into aSisetsuSeikyu, paged 25 lines a page.
    qint16 iGetSeikyuData();
    // Facility invoice over jouken.selectedDatabases into aSeikyuSisetsu / aSeikyuJihi, grouped by
    // billing facility name. The lists keep one empty element while their count is 0: read them
    // up to the counts.
    qint16 iGetSeikyuData_ALLDB();
    // Co-payment list lines into aKanjaSeikyu, with treatment days and the visit-count split.
    qint16 iGetSeikyuData_Kanja_New();
    // Invoice-receipt rows into aKenRyousyuu: one per patient and eleven days, of the receiptDays.
    qint16 iGetSeikyuData_KenRyousyuu();

    // Adds the patient's share of the month's visits 1 to 4 to dbl4Down and of visit 5 and later
    // to dbl5Up; 1 when the patient has no treatment day in the month.
    qint16 iCalcJisseki4Down5Up(qint32 nRiyoushaIDNo, double& dbl4Down, double& dbl5Up);
    // The patient's treatment records of the billing month; -1 after a reported failure.
    qint32 getSejyutuCnt(qint32 nRiyoushaIDNo);

    // The two above for every patient of the site's billing month, each in one statement, keyed by
    // patient number: what the per-patient functions give, without a round trip per patient. A
    // patient without treatment days is absent. false after a reported failure.
    struct VisitSplit
    {
        double dbl4Down = 0.0;
        double dbl5Up = 0.0;
    };
    bool calcVisitSplitsAll(QHash<qint32, VisitSplit>& splits);
    bool treatmentDayCountsAll(QHash<qint32, qint32>& counts);

    const AppContext& context;
    PrintJouken jouken;
    ReceiptDays receiptDays = ReceiptDays::All; // the print kind's, set by the print run
    QList<DbInfo> dbInfos;                      // the database list of the last multi-database run

    QList<SisetsuSeikyuRow> aSisetsuSeikyu;
    QList<SisetsuSeikyuGroup> aSeikyuSisetsu;
    qint16 nSeikyuSisetsuCnt = 0;
    QList<SisetsuSeikyuGroup> aSeikyuJihi;
    qint16 nSeikyuJihiCnt = 0;
    QList<KanjaSeikyuRow> aKanjaSeikyu;
    QList<KenRyousyuuRow> aKenRyousyuu;

private:
    // Runs a query body; a run-time error inside it is shown and gives -1.
    qint16 guarded(const std::function<qint16()>& body);
    void showNoData() const;
    void showError(const QString& text) const;
};

} // namespace qelprn
