// iGetSeikyuData: the facility invoice of the own database, paged for the printed form.
#include "billing/QueryConnection.h"
#include "billing/SeikyuLine.h"
#include "billing/SeikyuPager.h"
#include "billing/SeikyuSql.h"
#include "billing/modPrint施設請求書.h"

using namespace Qt::StringLiterals;

namespace qelprn {

qint16 modPrint施設請求書::iGetSeikyuData()
{
    return guarded([this]() -> qint16 {
        aSisetsuSeikyu.clear();
        QueryConnection db(context, u"iGetSeikyuData() でエラー"_s);
        if (!db.openAdodb() || !db.query(seikyuSql(jouken, context.iBaseKyotenCd, context.iBaseKyotenEb)))
            return -1;
        SeikyuPager pager(aSisetsuSeikyu);
        for (; !db.rs.isEOF(); db.rs.moveNext()) {
            SisetsuSeikyuRow line = readSeikyuMeisai(db.rs, jouken);
            readSeikyuSaki(db.rs, line);
            readCorpTiryoin(db.rs, line);
            pager.add(std::move(line));
        }
        if (!db.checkRead())
            return -1;
        if (aSisetsuSeikyu.isEmpty()) {
            showNoData();
            return 1;
        }
        pager.finish();
        return 0;
    });
}

} // namespace qelprn
