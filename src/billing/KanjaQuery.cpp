// iGetSeikyuData_Kanja_New and getSejyutuCnt: the lines of the co-payment lists.
#include "billing/BillingMonth.h"
#include "billing/KanjaSql.h"
#include "billing/QueryConnection.h"
#include "billing/RecordFields.h"
#include "billing/modPrint施設請求書.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// The insurance label: the short insurance name, or the kind of public subsidy.
QString hokenLabel(qint32 iRiyouJoseiUmu, qint32 iSyogai, const QString& hokenRyaku)
{
    if (iRiyouJoseiUmu <= 0)
        return hokenRyaku;
    switch (iSyogai) {
    case 2:
        return u"福祉"_s;
    case 3:
        return u"被爆"_s;
    case 4:
        return u"生活保護"_s;
    default:
        return u"障害"_s;
    }
}

QString kinSyubetsuWord(qint32 code)
{
    static const QStringList words = {u"銀行"_s, u"金庫"_s, u"農協"_s, u"郵便局"_s};
    return code >= 1 && code <= words.size() ? words.at(code - 1) : QString();
}

QString kinSitenWord(qint32 code)
{
    static const QStringList words = {u"本店"_s, u"支店"_s, u"本所"_s, u"支所"_s, u"出張所"_s};
    return code >= 1 && code <= words.size() ? words.at(code - 1) : QString();
}

constexpr int kProgressStep = 500;

} // namespace

qint16 modPrint施設請求書::iGetSeikyuData_Kanja_New()
{
    return guarded([this]() -> qint16 {
        aKanjaSeikyu.clear();
        QueryConnection db(context, u"iGetSeikyuData_Kanja_New() でエラー"_s);
        if (!db.openAdodb() || !db.query(kanjaSql(jouken, context.iBaseKyotenCd, context.iBaseKyotenEb)))
            return -1;
        const QString phase = u"一部負担金一覧表"_s;
        const QString monthFrom = monthFirstDay(jouken.sSeikyuYM);
        const QString monthTo = monthLastDay(jouken.sSeikyuYM);
        for (; !db.rs.isEOF(); db.rs.moveNext()) {
            const RecordSet& rs = db.rs;
            KanjaSeikyuRow row;
            row.SISETSU_ID = fieldLong(rs, u"SISETSU_ID"_s);
            row.SISETSU_NAME = fieldText(rs, u"SISETSU_NAME"_s);
            row.iPaymentType = fieldInt(rs, u"iPaymentType"_s);
            row.SINRYOU_TYPE = fieldInt(rs, u"SINRYOU_TYPE"_s);
            row.RIYOUSHA_ID = fieldLong(rs, u"RIYOUSHA_ID"_s);
            row.RIYOUSHA_NAME = fieldText(rs, u"RIYOUSHA_NAME"_s);
            row.RIYOUSHA_ROOMNO = fieldLong(rs, u"RIYOUSHA_ROOMNO"_s);
            row.RIYOUSHA_FUTANWARIAI = fieldInt(rs, u"RIYOUSHA_FUTANWARIAI"_s);
            row.施術回数 = fieldLong(rs, u"施術回数"_s);
            row.総合計 = fieldLong(rs, u"総合計"_s);
            row.患者請求額 = fieldLong(rs, u"患者請求額"_s);
            row.自己負担額2 = fieldLong(rs, u"自己負担額2"_s);
            row.実費料金 = fieldLong(rs, u"実費料金"_s);
            row.HOKEN_LABEL = hokenLabel(fieldLong(rs, u"iRiyouJoseiUmu"_s), fieldLong(rs, u"iSyogai"_s),
                                         fieldText(rs, u"HOKEN_RYAKU"_s));
            row.TIRYOIN_NAME = fieldText(rs, u"TIRYOIN_NAME"_s);
            row.TIRYOIN_YUBIN = fieldText(rs, u"TIRYOIN_YUBIN"_s);
            row.TIRYOIN_ADDRESS1 = fieldText(rs, u"TIRYOIN_ADDRESS1"_s);
            row.TIRYOIN_TELNO = fieldText(rs, u"TIRYOIN_TELNO"_s);
            row.TIRYOIN_FAXNO = fieldText(rs, u"TIRYOIN_FAXNO"_s);
            row.TIRYOIN_BANKNAME =
                fieldText(rs, u"TIRYOIN_BANKNAME"_s) + kinSyubetsuWord(fieldLong(rs, u"iKinSyubetsu"_s));
            row.TIRYOIN_SHITENNAME =
                fieldText(rs, u"TIRYOIN_SHITENNAME"_s) + kinSitenWord(fieldLong(rs, u"iKinSiten"_s));
            row.TIRYOIN_KOUZATYPE = fieldInt(rs, u"TIRYOIN_KOUZATYPE"_s);
            row.TIRYOIN_KOUZANO = fieldText(rs, u"TIRYOIN_KOUZANO"_s);
            row.TIRYOIN_KOUZAMEIGI = fieldText(rs, u"TIRYOIN_KOUZAMEIGI"_s);
            row.TEISYUTU_DATE = jouken.sTeisyutuDate;
            row.SEIKYU_YM = jouken.sSeikyuYM + u"/01"_s;
            row.施術日From = monthFrom;
            row.施術日To = monthTo;

            aKanjaSeikyu.append(row);
            if (aKanjaSeikyu.size() % kProgressStep == 0)
                context.interaction().progress(phase, aKanjaSeikyu.size(), 0);
        }
        if (!db.checkRead())
            return -1;
        if (aKanjaSeikyu.isEmpty()) {
            showNoData();
            return 1;
        }
        db.close();

        // Treatment days and the visit-count split of every patient in one statement each, not two
        // round trips per line; each line gets what getSejyutuCnt and iCalcJisseki4Down5Up give it.
        QHash<qint32, qint32> counts;
        const bool counted = treatmentDayCountsAll(counts);
        QHash<qint32, VisitSplit> splits;
        if (!calcVisitSplitsAll(splits)) {
            showError(u"iGetSeikyuData_Kanja_New():iCalcJisseki4Down5Up でエラー"_s);
            return -1;
        }
        for (KanjaSeikyuRow& row : aKanjaSeikyu) {
            row.J_CNT = counted ? counts.value(row.RIYOUSHA_ID) : -1;
            const auto split = splits.constFind(row.RIYOUSHA_ID);
            if (split == splits.constEnd()) {
                showNoData(); // as the per-patient split tells of a patient without treatment days
                continue;
            }
            row.dFutan4Down = split->dbl4Down;
            row.dFutan5Up = split->dbl5Up;
        }
        context.interaction().progress(phase, aKanjaSeikyu.size(), aKanjaSeikyu.size());
        return 0;
    });
}

qint32 modPrint施設請求書::getSejyutuCnt(qint32 nRiyoushaIDNo)
{
    QueryConnection db(context, u"getSejyutuCnt() でエラー"_s);
    if (!db.openAdodb() || !db.query(sejyutuCntSql(nRiyoushaIDNo, jouken.nSeikyuYM, context.iBaseKyotenCd,
                                                   context.iBaseKyotenEb)))
        return -1;
    const qint32 count = db.rs.isEOF() ? 0 : fieldLong(db.rs, u"J_CNT"_s);
    return db.checkRead() ? count : -1;
}

} // namespace qelprn
