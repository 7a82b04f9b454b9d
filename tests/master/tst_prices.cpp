#include "MasterTestFolder.h"
#include "master/cls単価.h"

#include <QTest>

using namespace qelprn;
using namespace qelprn::test;

namespace {

void addPrice(TestProgramFolder& folder, int kind, int code, const QString& from, const QString& to,
              int price)
{
    folder.exec(u"INSERT INTO 療養費単価 (iTankaKbn, nTankaCode, cStartDate, cEndDate, nTanka) VALUES "
                "(%1, %2, '%3', '%4', '%5')"_s.arg(kind)
                    .arg(code)
                    .arg(from, to)
                    .arg(price));
}

} // namespace

class tst_prices : public QObject
{
    Q_OBJECT

private slots:
    // Every price lands in its own property; the period that started last wins; other months,
    // ignored codes and kinds leave nothing behind (what the statement's month condition selects).
    void unitPrices_data() { addBackEndRows(); }
    void unitPrices()
    {
        QFETCH(bool, odbc);
        TestDb db(odbc);
        auto& [folder, ui, ctx, ado] = db;
        const QList<std::pair<int, int>> keys = {
            {1, 1},  {1, 2},  {1, 3}, {1, 4}, {1, 11}, {1, 12}, {1, 13}, {1, 14}, {1, 15}, {1, 16},
            {1, 17}, {1, 18}, {2, 1}, {2, 2}, {9, 1},  {9, 2},  {9, 3},  {9, 11}, {9, 12}};
        for (int i = 0; i < keys.size(); ++i)
            addPrice(folder, keys[i].first, keys[i].second, u"2024/06/01"_s, u"9999/12/31"_s, 100 + i);
        addPrice(folder, 1, 1, u"2026/04/01"_s, u"9999/12/31"_s, 450);  // later period, same month
        addPrice(folder, 1, 2, u"2026/06/01"_s, u"9999/12/31"_s, 9999); // starts after the month
        addPrice(folder, 1, 5, u"2024/06/01"_s, u"9999/12/31"_s, 8888); // ignored code
        addPrice(folder, 3, 1, u"2024/06/01"_s, u"9999/12/31"_s, 7777); // ignored kind

        cls単価 tanka(ctx);
        QCOMPARE(tanka.iGetTanka(u"202605"_s), qint16(0));
        QCOMPARE(ui.messages.size(), 0);
        const QList<qint32> got = {
            tanka.nマッサージ(),   tanka.n変形徒手(),      tanka.n温按法(),        tanka.n電気光線(),
            tanka.n鍼灸1術(),      tanka.n鍼灸2術(),       tanka.n鍼灸1術初回(),   tanka.n鍼灸2術初回(),
            tanka.n電気鍼温灸器(), tanka.n鍼灸1術初検料(), tanka.n鍼灸2術初検料(), tanka.n施術報告書交付料(),
            tanka.n基本往療費(),   tanka.n加算往療費(),    tanka.n定額料金1割(),   tanka.n定額料金2割(),
            tanka.n定額料金3割(),  tanka.n実費施術費(),    tanka.n実費交通費()};
        QList<qint32> expected;
        for (int i = 0; i < keys.size(); ++i)
            expected << 100 + i;
        expected[0] = 450;
        QCOMPARE(got, expected);
    }

    void noPrices()
    {
        TestDb db;
        auto& [folder, ui, ctx, ado] = db;
        addPrice(folder, 1, 1, u"2024/06/01"_s, u"2026/03/31"_s, 450);
        cls単価 tanka(ctx);
        QCOMPARE(tanka.iGetTanka(u"202605"_s), qint16(-1));
        QCOMPARE(ui.texts(), QStringList({u"単価データがありません。"_s,
                                          u"単価の取得に失敗しました。\r区分:0  コード：0"_s}));
        QCOMPARE(std::tuple(ui.messages[0].icon, ui.messages[1].title, ui.messages[1].icon),
                 std::tuple(MsgIcon::Information, u"DB Read Error!!"_s, MsgIcon::Critical));

        // No connection string: the reason and the operation in one critical box.
        ui.clear();
        folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n"_s);
        QCOMPARE(tanka.iGetTanka(u"202605"_s), qint16(-1));
        QCOMPARE(ui.texts(), QStringList({u"接続文字列取得できません。\r\niGetTanka() でエラー"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_prices)
#include "tst_prices.moc"
