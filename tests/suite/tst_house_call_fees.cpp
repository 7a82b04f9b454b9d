// The house-call fee bands of the suite's fee look-up.
#include "master/MasterTestFolder.h"
#include "suite/cls往療費.h"

#include <QTest>

using namespace qelprn;
using namespace qelprn::test;

namespace {

void addBand(TestProgramFolder& folder, int maxLen, int fee, const QString& from = u"2024/06/01"_s,
             const QString& to = u"9999/12/31"_s)
{
    folder.insert(
        u"往療費区分"_s,
        {{u"nMaxLen"_s, maxLen}, {u"cStartDate"_s, from}, {u"cEndDate"_s, to}, {u"nKingakuOuryou"_s, fee}});
}

} // namespace

class tst_house_call_fees : public QObject
{
    Q_OBJECT

private slots:
    void houseCallBands_data() { addBackEndRows(); }
    void houseCallBands()
    {
        QFETCH(bool, odbc);
        TestDb db(odbc);
        auto& [folder, ui, ctx, ado] = db;
        addBand(folder, 16, 32767); // the largest fee 16 bits hold
        addBand(folder, 4, 300);
        addBand(folder, 8, 600);
        addBand(folder, 2, 100, u"2020/01/01"_s, u"2024/05/31"_s); // an earlier period
        cls往療費 ouryo(ctx);
        QCOMPARE(ouryo.iGetOuryohiAll(u"202605"_s), qint16(0));
        QCOMPARE(ouryo.i往療区分数(), qint16(3));

        const QList<std::tuple<qint32, qint16, qint16, qint32>> cases = {
            {0, 0, 0, 0},       {3, 0, 300, 3},   {4, 0, 300, 4},   {8, 0, 600, 8}, {9, 0, 32767, 9},
            {20, 0, 32767, 16}, {20, 1, 600, 16}, {12, 1, 600, 12}, {3, 1, 300, 3}};
        for (const auto& [distance, mode, fee, seen] : cases) {
            qint32 d = distance;
            QCOMPARE(ouryo.iGetOuryohi(d, mode), fee);
            QCOMPARE(d, seen); // the caller sees the capped distance
        }
        QCOMPARE(ui.messages.size(), 0);

        // A second load rebuilds the bands from empty.
        folder.exec(u"DELETE FROM 往療費区分 WHERE nMaxLen = 16"_s);
        addBand(folder, 16, 40000); // beyond 16 bits
        QCOMPARE(ouryo.iGetOuryohiAll(u"202605"_s), qint16(0));
        QCOMPARE(ouryo.i往療区分数(), qint16(3));
        qint32 far = 30;
        QCOMPARE(ouryo.iGetOuryohi(far, 0), qint16(0));
        QCOMPARE(ui.texts(), QStringList({u"オーバーフローしました。\r\niGetOuryohi() でエラー"_s}));

        // A band beyond 32 bits stops the load with the suite's overflow error (the ODBC driver
        // hands an integer column over as 32 bits); no connection string stops it before.
        if (!odbc) {
            ui.clear();
            folder.exec(u"UPDATE 往療費区分 SET nKingakuOuryou = 3000000000 WHERE nMaxLen = 16"_s);
            QCOMPARE(ouryo.iGetOuryohiAll(u"202605"_s), qint16(-1));
            QCOMPARE(ui.texts(),
                     QStringList({u"( 6)オーバーフローしました。\r\niGetOuryohiAll() でエラー"_s}));
        }
        ui.clear();
        folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n"_s);
        QCOMPARE(ouryo.iGetOuryohiAll(u"202605"_s), qint16(-1));
        QCOMPARE(ui.texts(), QStringList({u"接続文字列取得できません。\r\niGetOuryohiAll() でエラー"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_house_call_fees)
#include "tst_house_call_fees.moc"
