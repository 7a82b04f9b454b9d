#include "db/DatabaseList.h"
#include "db/cT_KyotenDbAcs.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

namespace {

// The rows as "name|database|code|branch".
QStringList texts(const QList<qelprn::SiteRow>& rows)
{
    QStringList out;
    for (const qelprn::SiteRow& r : rows)
        out.append(QStringList{r.name, r.database, QString::number(r.site.iKyotenCd),
                               QString::number(r.site.iKyotenEb)}
                       .join(u'|'));
    return out;
}

void addSites(TestProgramFolder& folder, const QString& database, const QString& prefix)
{
    folder.exec(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cAreaName, cKyotenName, iUsedFlg) VALUES "
                u"(2, 1, '地区', '%1休止', 0), (1, 2, '地区', '%1支店', 2), (1, 0, '地区', '%1本部', 1), "
                u"(1, 1, '地区', '%1本店', 1)"_s.arg(prefix),
                database);
}

} // namespace

class tst_sites_load : public QObject
{
    Q_OBJECT

private slots:
    void readAndLoadSites()
    {
        TestProgramFolder folder;
        addSites(folder, u"suite"_s, QString());
        // A code written with an ideographic space in front reads as its number, as Val reads it.
        folder.exec(
            u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES ('\u30003', 1, '全角', 0)"_s);
        TestInteraction ui;
        qelprn::AppContext ctx = folder.context(ui);
        qelprn::cT_KyotenDbAcs sites(ctx);
        QCOMPARE(sites.iDataRead(nullptr), qint16(-1));
        QCOMPARE(sites.sErrMsg, u"Kyotenが無効です。"_s);

        qelprn::cT_ADODB ado;
        QCOMPARE(ado.iInit(folder.connectionString()), qint16(0));
        QCOMPARE(ado.iConnect(), qint16(0));
        QCOMPARE(sites.iInit(&ado), qint16(0));
        QCOMPARE(sites.iDataRead(&ado), qint16(0));
        // Branch number 0 is never listed; ordered by code and branch.
        QCOMPARE(sites.nデータ数(), 4);
        QCOMPARE(std::tuple(sites.clsKyoten(0).KyotenName(), sites.clsKyoten(1).KyotenEd(),
                            sites.clsKyoten(2).KyotenCd(), sites.clsKyoten(3).KyotenCd()),
                 std::tuple(u"本店"_s, 2, 2, 3));

        const struct
        {
            bool all;
            qint16 mode;
            QStringList rows;
        } cases[] = {
            {false, 0, {u"本店||1|1"_s}},
            {false, 1, {u"支店||1|2"_s}},
            {false, 2, {u"本店||1|1"_s, u"支店||1|2"_s}},
            {true, 0, {u"本店||1|1"_s, u"支店||1|2"_s, u"休止||2|1"_s, u"全角||3|1"_s}},
            {true, 2, {u"本店||1|1"_s, u"支店||1|2"_s, u"休止||2|1"_s, u"全角||3|1"_s}},
        };
        QList<qelprn::SiteRow> grid{{u"前回"_s, {}, {}}};
        for (const auto& c : cases) {
            sites.setStartMode(c.mode);
            qint16 result = -1;
            sites.iLoadKyoten(grid, c.all, result);
            QCOMPARE(result, qint16(0));
            QCOMPARE(texts(grid), c.rows);
            QCOMPARE(sites.nデータ数(), c.rows.size());
            // The grid loaders keep the site name in AreaName.
            QCOMPARE(sites.clsKyoten(0).AreaName(), c.rows[0].section(u'|', 0, 0));
        }
        QVERIFY(ui.messages.isEmpty());
        ado.iDisConnect();

        // Every database "DB.ini" lists, in its order.
        folder.addDatabase(u"branch"_s);
        addSites(folder, u"branch"_s, u"B"_s);
        folder.writeSettingsFile(u"DB.ini"_s, u"\"db1:本店DB\",\"sqlite:db\",\"suite\"\n"
                                              "\"db2:支店DB\",\"sqlite:db\",\"branch\""_s);
        ctx.iStartMode = 2;
        qelprn::cT_KyotenDbAcs every(ctx);
        qint16 result = -1;
        every.iLoadKyoten_ALLDB(grid, false, result);
        QCOMPARE(ui.texts(), QStringList());
        QCOMPARE(result, qint16(0));
        QCOMPARE(texts(grid), QStringList({u"本店|suite|1|1"_s, u"支店|suite|1|2"_s, u"B本店|branch|1|1"_s,
                                           u"B支店|branch|1|2"_s}));
        QCOMPARE(every.nデータ数(), 4);

        // An empty list stops before any grid change.
        folder.writeSettingsFile(u"DB.ini"_s, QString());
        every.iLoadKyoten_ALLDB(grid, true, result);
        QCOMPARE(result, qint16(-1));
        QCOMPARE(grid.size(), 4);
        QCOMPARE(ui.texts(), QStringList({u"DBの読み込みに失敗しました"_s}));
        QCOMPARE(ui.messages[0].icon, qelprn::MsgIcon::Critical);
    }
};

QTEST_GUILESS_MAIN(tst_sites_load)
#include "tst_sites_load.moc"
