#include "demo/DemoFees.h"

#include "demo/DemoInserter.h"
#include "demo/DemoText.h"

using namespace Qt::StringLiterals;

namespace qelprn::DemoFees {

namespace {

struct Band
{
    int maxLen;
    int fee;
};
const QList<Band> kBands = {{4, 1800}, {8, 2300}, {16, 2700}};

} // namespace

int houseCallFee(int distance)
{
    for (const Band& b : kBands) {
        if (distance <= b.maxLen)
            return b.fee;
    }
    return kBands.last().fee;
}

QString writeFeeTables(QSqlDatabase& db, QDate month)
{
    const QDate currentStart = QDate(month.year(), 6, 1).addYears(month.month() >= 7 ? -1 : -2);
    const QString oldStart = demoDate(currentStart.addYears(-2));
    const QString oldEnd = demoDate(currentStart.addDays(-1));
    const QString start = demoDate(currentStart);
    const QString end = u"9999/12/31"_s;
    const QString now = demoDate(currentStart.addDays(-20)) + u" 12:00:00"_s;
    DemoInserter tanka(db, u"療養費単価"_s,
                       {u"iTankaKbn"_s, u"nTankaCode"_s, u"cStartDate"_s, u"cEndDate"_s, u"cTankaName"_s,
                        u"nTanka"_s, u"cPcName"_s, u"tUpDateTime"_s});
    struct Price
    {
        int kind, code;
        QString name;
        int amount;
    };
    const QList<Price> prices = {{1, 1, u"マッサージ"_s, kMassagePerPart},
                                 {1, 2, u"変形徒手矯正術"_s, kHenke},
                                 {1, 3, u"温罨法"_s, kOnan},
                                 {1, 4, u"電気光線器具"_s, kDenki},
                                 {1, 11, u"鍼灸1術"_s, kHari1},
                                 {1, 12, u"鍼灸2術"_s, kHari2},
                                 {1, 13, u"鍼灸1術初回"_s, kHari1},
                                 {1, 14, u"鍼灸2術初回"_s, kHari2},
                                 {1, 15, u"電気鍼・電気温灸器"_s, kHariDenki},
                                 {1, 16, u"鍼灸1術初検料"_s, 1950},
                                 {1, 17, u"鍼灸2術初検料"_s, 2230},
                                 {1, 18, u"施術報告書交付料"_s, 480},
                                 {2, 1, u"基本往療料"_s, 1800},
                                 {2, 2, u"加算往療料"_s, 500},
                                 {9, 1, u"定額料金1割"_s, 500},
                                 {9, 2, u"定額料金2割"_s, 1000},
                                 {9, 3, u"定額料金3割"_s, 1500},
                                 {9, 11, u"実費施術費"_s, kJippiSejutu},
                                 {9, 12, u"実費交通費"_s, kJippiKoutsu}};
    for (const Price& p : prices) {
        // The older schedule was 2 % lower, rounded down to ten yen.
        tanka.add(
            {p.kind, p.code, oldStart, oldEnd, p.name, p.amount * 98 / 100 / 10 * 10, demoPcName(), now});
        tanka.add({p.kind, p.code, start, end, p.name, p.amount, demoPcName(), now});
    }
    DemoInserter bands(
        db, u"往療費区分"_s,
        {u"nMaxLen"_s, u"cStartDate"_s, u"cEndDate"_s, u"nKingakuOuryou"_s, u"cPcName"_s, u"tUpDateTime"_s});
    for (const Band& b : kBands) {
        bands.add({b.maxLen, oldStart, oldEnd, b.fee - 100, demoPcName(), now});
        bands.add({b.maxLen, start, end, b.fee, demoPcName(), now});
    }
    return !tanka.error().isEmpty() ? tanka.error() : bands.error();
}

} // namespace qelprn::DemoFees
