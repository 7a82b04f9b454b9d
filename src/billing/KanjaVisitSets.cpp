// treatmentDayCountsAll and calcVisitSplitsAll: the per-patient look-ups of the co-payment list
// for the whole run, one statement each.
#include "billing/KanjaSql.h"
#include "billing/QueryConnection.h"
#include "billing/RecordFields.h"
#include "billing/modPrint施設請求書.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The patient a record belongs to (the first column); nothing for a Null number, which no "= n"
// condition matches.
std::optional<qint32> patientOf(const RecordSet& rs)
{
    const QVariant id = rs.field(0);
    if (id.isNull())
        return std::nullopt;
    return nNullToLng(id);
}

} // namespace

bool modPrint施設請求書::treatmentDayCountsAll(QHash<qint32, qint32>& counts)
{
    counts.clear();
    return guarded([&]() -> qint16 {
               QueryConnection db(context, u"getSejyutuCnt() でエラー"_s);
               if (!db.openAdodb() || !db.query(sejyutuCntAllSql(jouken.nSeikyuYM, context.iBaseKyotenCd,
                                                                 context.iBaseKyotenEb)))
                   return -1;
               for (; !db.rs.isEOF(); db.rs.moveNext()) {
                   if (const auto id = patientOf(db.rs))
                       counts.insert(*id, counts.value(*id) + fieldLong(db.rs, u"J_CNT"_s));
               }
               return db.checkRead() ? 0 : -1;
           }) == 0;
}

bool modPrint施設請求書::calcVisitSplitsAll(QHash<qint32, VisitSplit>& splits)
{
    splits.clear();
    return guarded([&]() -> qint16 {
               QueryConnection db(context, u"iCalcJisseki4Down5Up() でエラー"_s);
               if (!db.openAdodb() || !db.query(cs4Down5UpAllSql(jouken.sSeikyuYM, context.iBaseKyotenCd,
                                                                 context.iBaseKyotenEb)))
                   return -1;
               // Records arrive by patient, each patient's in visit order: the numbering restarts
               // with every patient, and the shares add up in the order the per-patient walk adds
               // them, so the sums are the same to the last bit.
               std::optional<qint32> current;
               VisitSplit* split = nullptr;
               int visit = 0;
               for (; !db.rs.isEOF(); db.rs.moveNext()) {
                   const std::optional<qint32> id = patientOf(db.rs);
                   if (!id)
                       continue;
                   if (id != current) {
                       current = id;
                       split = &splits[*id];
                       visit = 0;
                   }
                   ++visit;
                   // By position: a hundred thousand records and more in a month-end run.
                   const double share = dayFutan(nNullToLng(db.rs.field(2)), nNullToLng(db.rs.field(1)));
                   (visit <= 4 ? split->dbl4Down : split->dbl5Up) += share;
               }
               return db.checkRead() ? 0 : -1;
           }) == 0;
}

} // namespace qelprn
