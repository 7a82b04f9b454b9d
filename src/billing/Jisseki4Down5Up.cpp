// iCalcJisseki4Down5Up: a patient's month share split into visits 1 to 4 and 5 or later.
#include "billing/KanjaSql.h"
#include "billing/QueryConnection.h"
#include "billing/RecordFields.h"
#include "billing/modPrint施設請求書.h"

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 modPrint施設請求書::iCalcJisseki4Down5Up(qint32 nRiyoushaIDNo, double& dbl4Down, double& dbl5Up)
{
    return guarded([&]() -> qint16 {
        QueryConnection db(context, u"iCalcJisseki4Down5Up() でエラー"_s);
        if (!db.openAdodb() || !db.query(cs4Down5UpSql(nRiyoushaIDNo, jouken.sSeikyuYM, context.iBaseKyotenCd,
                                                       context.iBaseKyotenEb)))
            return -1;
        if (db.rs.isEOF()) {
            showNoData();
            return 1;
        }
        // Every record counts, two visits on one day as two; the fifth and later go to dbl5Up.
        int visit = 0;
        for (; !db.rs.isEOF(); db.rs.moveNext()) {
            ++visit;
            const double share =
                dayFutan(fieldLong(db.rs, u"DAY_GOKEIKIN"_s), fieldLong(db.rs, u"RIYOUSHA_FUTANWARIAI"_s));
            (visit <= 4 ? dbl4Down : dbl5Up) += share;
        }
        return db.checkRead() ? 0 : -1;
    });
}

} // namespace qelprn
