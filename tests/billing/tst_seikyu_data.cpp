// The facility invoice over one and several databases, on SQLite databases built per case, the
// paging also through the real unixODBC driver manager with the SQLite ODBC driver.
#include "BillingFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

// iGyoNo:iSinryouType:nSeikyuID:cSejutsuName, compact enough to compare whole blocks.
QString brief(const SisetsuSeikyuRow& l)
{
    return u"%1:%2:%3:%4"_s.arg(l.iGyoNo).arg(l.iSinryouType).arg(l.nSeikyuID).arg(l.cSejutsuName);
}

QStringList briefs(const QList<SisetsuSeikyuRow>& lines, qsizetype from, qsizetype count)
{
    QStringList out;
    for (qsizetype i = from; i < from + count && i < lines.size(); ++i)
        out.append(brief(lines.at(i)));
    return out;
}

} // namespace

class tst_seikyu_data : public QObject
{
    Q_OBJECT

private slots:
    void singleDatabasePaging_data() { qelprn::test::addBackEndRows(); }
    // Pages of 25 lines: the between-facility padding (a whole blank page after 24 lines), the next
    // facility after 3 lines at index 25, separators before self-pay lines, the last page filled.
    void singleDatabasePaging()
    {
        QFETCH(bool, odbc);
        BillingFixture f;
        f.useOdbc(odbc);
        f.corp(1, 0, u"本社"_s);
        f.facility(100, u"請求先A"_s);
        for (int i = 1; i <= 24; ++i) {
            f.facility(100 + i, u"A施設"_s + QString::number(i), 100);
            f.patient(1000 + i, 100 + i, 5000, 500, 0);
        }
        f.facility(200, u"請求先B"_s);
        for (int i = 1; i <= 3; ++i) {
            f.facility(200 + i, u"B施設"_s + QString::number(i), 200);
            f.patient(2000 + i, 200 + i, 4000, 400, 0);
        }
        f.facility(300, u"請求先C"_s);
        f.facility(301, u"C施設"_s, 300);
        f.patient(3001, 301, 3000, 300, 700, 12);
        f.patient(3002, 301, 3000, 300, 800, 11);

        QCOMPARE(f.mod.iGetSeikyuData(), 0);
        QCOMPARE(f.ui.messages.size(), 0);
        const QList<SisetsuSeikyuRow>& a = f.mod.aSisetsuSeikyu;
        QCOMPARE(a.size(), 100);
        QCOMPARE(brief(a.at(0)), u"1:0:100:A施設1"_s);
        QCOMPARE(brief(a.at(23)), u"24:0:100:A施設24"_s);
        for (int i = 24; i < 50; ++i) // 26 fillers: the rest of page 1 and a whole blank page
            QCOMPARE(brief(a.at(i)), u"%1:-1:100:"_s.arg(i + 1));
        QCOMPARE(briefs(a, 50, 4), QStringList({u"1:0:200:B施設1"_s, u"2:0:200:B施設2"_s, u"3:0:200:B施設3"_s,
                                                u"4:-1:200:"_s}));
        QCOMPARE(briefs(a, 75, 6),
                 QStringList({u"1:0:300:C施設"_s, u"2:-1:300:"_s, u"3:-1:300:"_s, u"4:1:300:C施設(自費)"_s,
                              u"5:1:300:C施設(自費)"_s, u"6:-1:300:"_s}));
        // Self-pay lines by room number.
        QCOMPARE(std::tuple(a.at(78).nRoomNo, a.at(78).cRiyoushaName, a.at(78).nSejutsuKanjaSeikyu,
                            a.at(99).iGyoNo),
                 std::tuple(11, u"患者3002 様"_s, 800, qint16(25)));
    }

    // A facility without a parent comes first under -1 with an empty name; a facility ending on a
    // page boundary gets no filler; identical self-pay lines collapse; a share of 0 still counts.
    void singleDatabaseEdgeCases()
    {
        BillingFixture f;
        f.corp(1, 0, u"本社"_s);
        f.corp(7, 1, u"代理店"_s);
        f.facility(10, u"親なし施設  "_s);
        f.patient(1, 10, 3000, 0, 0);
        f.facility(100, u"請求先"_s);
        f.facility(101, u"子施設"_s, 100);
        f.patient(2, 101, 3000, 300, 500, 5);
        f.insert(u"RIYOUSHA"_s,
                 BillingFixture::row(u"nIDNo iKyotenCd iKyotenEb cName nRoomNo"_s, {3, 1, 1, u"患者2"_s, 5}));
        f.insert(u"RIYOUSHA_SUB"_s,
                 BillingFixture::row(u"nIDNo iKyotenCd iKyotenEb iAddressSet iAddressSisetsuCd3"_s,
                                     {3, 1, 1, 2, 101}));
        f.month(3, 3000, 300, 500);
        // Another site and another month stay out.
        f.patient(4, 101, 9000, 900, 900, 1, 2);
        f.month(2, 9000, 900, 900, 1, u"suite"_s, 202409);
        f.mod.jouken.nDairiCd = 7;

        QCOMPARE(f.mod.iGetSeikyuData(), 0);
        const QList<SisetsuSeikyuRow>& a = f.mod.aSisetsuSeikyu;
        QCOMPARE(a.size(), 50);
        QCOMPARE(brief(a.at(0)), u"1:0:-1:親なし施設"_s);
        // Share 0 counts as one person for one database.
        QCOMPARE(
            std::tuple(a.at(0).cSeikyuName, a.at(0).iSejutsuNinzu, a.at(0).cCorpName, a.at(0).cTiryoinName),
            std::tuple(QString(), qint16(1), u"代理店"_s, u"本社"_s));
        QCOMPARE(brief(a.at(24)), u"25:-1:-1:"_s);
        QCOMPARE(briefs(a, 25, 5), QStringList({u"1:0:100:子施設"_s, u"2:-1:100:"_s, u"3:-1:100:"_s,
                                                u"4:1:100:子施設(自費)"_s, u"5:-1:100:"_s}));
        QCOMPARE(a.at(25).iSejutsuNinzu, qint16(2));
        QCOMPARE(a.at(25).nSejutsuGoukei, 6000);

        // Exactly 25 lines in the last facility: the array ends there.
        BillingFixture g;
        g.facility(100, u"請求先"_s);
        for (int i = 1; i <= 25; ++i) {
            g.facility(100 + i, u"施設"_s + QString::number(i), 100);
            g.patient(i, 100 + i, 1000, 100, 0);
        }
        QCOMPARE(g.mod.iGetSeikyuData(), 0);
        QCOMPARE(g.mod.aSisetsuSeikyu.size(), 25);
        QCOMPARE(g.mod.aSisetsuSeikyu.last().iSinryouType, qint16(0));
    }

    // Null in every column the lines read: texts "", numbers 0.
    void singleDatabaseNulls()
    {
        BillingFixture f;
        f.insert(u"SISETSU"_s, {{u"nIDNo"_s, 100}});
        f.insert(u"SISETSU"_s, {{u"nIDNo"_s, 101}, {u"nOyaSisetsuCd"_s, 100}});
        f.insert(u"RIYOUSHA_SUB"_s,
                 {{u"nIDNo"_s, 1}, {u"iKyotenCd"_s, 1}, {u"iKyotenEb"_s, 1}, {u"iAddressSisetsuCd"_s, 101}});
        f.insert(u"月間実績"_s, BillingFixture::row(u"患者IDNo iKyotenCd iKyotenEb 実績年 実績月 実費料金"_s,
                                                    {1, 1, 1, 2024, 10, 300}));
        QCOMPARE(f.mod.iGetSeikyuData(), 0);
        QCOMPARE(f.ui.messages.size(), 0);
        const QList<SisetsuSeikyuRow>& a = f.mod.aSisetsuSeikyu;
        QCOMPARE(briefs(a, 0, 4),
                 QStringList({u"1:0:100:"_s, u"2:-1:100:"_s, u"3:-1:100:"_s, u"4:1:100:(自費)"_s}));
        QCOMPARE(std::tuple(a.at(0).nSejutsuGoukei, a.at(0).cCorpName, a.at(3).cRiyoushaName),
                 std::tuple(0, QString(), u" 様"_s));
    }

    // Several databases: corporations looked up once, lines grouped by billing facility name across
    // databases, a facility without a parent billing itself, share-0 patients out of type 0.
    void allDatabases()
    {
        BillingFixture f;
        f.folder.addDatabase(u"suite2"_s);
        f.folder.writeSettingsFile(u"DB.ini"_s, u"本店:本店,sqlite:db,suite\n支店:支店,sqlite:db,suite2\n"_s);
        f.corp(1, 0, u"本社"_s);
        f.corp(2, 1, u"治療院"_s);
        f.facility(100, u"共通請求先"_s);
        f.facility(101, u"施設1"_s, 100);
        f.facility(10, u"親なし"_s, 0);
        f.patient(1, 101, 5000, 500, 0);
        f.patient(2, 101, 5000, 0, 600, 3); // share 0: not counted in type 0 here
        f.patient(3, 10, 2000, 200, 0, 0, 2);
        f.patient(4, 101, 7000, 700, 0, 0, 3); // site 3 not chosen
        f.facility(200, u"共通請求先"_s, {}, {}, u"suite2"_s);
        f.facility(201, u"施設2"_s, 200, {}, u"suite2"_s);
        f.facility(300, u"自費のみ"_s, {}, {}, u"suite2"_s);
        f.facility(301, u"施設3"_s, 300, {}, u"suite2"_s);
        f.patient(5, 201, 4000, 400, 0, 0, 5, u"suite2"_s);
        f.patient(6, 301, 4000, 0, 900, 8, 5, u"suite2"_s);
        f.mod.jouken.nTiryoinCd = 2;
        f.mod.jouken.selectedDatabases = {{u"suite"_s, {{1, 1}, {2, 1}}}, {u"suite2"_s, {{5, 1}}}};

        QCOMPARE(f.mod.iGetSeikyuData_ALLDB(), 0);
        QCOMPARE(f.ui.messages.size(), 0);
        QCOMPARE(f.mod.nSeikyuSisetsuCnt, qint16(2));
        // Ordered by billing facility id within a database: the facility billing itself (10) first.
        const SisetsuSeikyuGroup& g0 = f.mod.aSeikyuSisetsu.at(0);
        QCOMPARE(std::tuple(g0.cSeikyuName, g0.nSeikyuID), std::tuple(u"親なし"_s, 10));
        // ID and address overwritten by the later database's record.
        const SisetsuSeikyuGroup& g1 = f.mod.aSeikyuSisetsu.at(1);
        QCOMPARE(std::tuple(g1.cSeikyuName, g1.nSeikyuID, g1.cSeikyuAddress1, g1.iMeisaiCnt),
                 std::tuple(u"共通請求先"_s, 200, u"共通請求先住所1"_s, qint16(2)));
        const SisetsuSeikyuRow& l = g1.aMeisai.at(0);
        QCOMPARE(std::tuple(l.cSejutsuName, l.iSejutsuNinzu, l.nSejutsuGoukei, l.cCorpName + l.cCorpAddress1),
                 std::tuple(u"施設1"_s, qint16(1), 5000, u"本社本社所在地"_s));
        QCOMPARE(std::pair(l.cTiryoinName, g1.aMeisai.at(1).cSejutsuName),
                 std::pair(u"治療院"_s, u"施設2"_s));

        QCOMPARE(f.mod.nSeikyuJihiCnt, qint16(2));
        const auto& jihi = f.mod.aSeikyuJihi;
        QCOMPARE(QStringList({jihi.at(0).cSeikyuName, jihi.at(0).aMeisai.at(0).cRiyoushaName,
                              jihi.at(1).cSeikyuName, jihi.at(1).aMeisai.at(0).cSejutsuName}),
                 QStringList({u"共通請求先"_s, u"患者2 様"_s, u"自費のみ"_s, u"施設3(自費)"_s}));
    }

    // The messages of the single-database and the all-database queries.
    void messages()
    {
        BillingFixture f;
        QCOMPARE(f.mod.iGetSeikyuData(), 1);
        QCOMPARE(f.ui.messages.value(0).icon, MsgIcon::Information);

        f.ui.clear();
        f.mod.jouken.selectedDatabases = {{u"suite"_s, {{1, 1}}}};
        QCOMPARE(f.mod.iGetSeikyuData_ALLDB(), 1);
        QCOMPARE(f.ui.texts(), QStringList({u"該当する実績データがありません。"_s}));
        QCOMPARE(f.mod.aSeikyuSisetsu.size(), 1); // the spare element, count 0
        QCOMPARE(f.mod.nSeikyuSisetsuCnt, qint16(0));

        // A selected database missing from the list has no connection string.
        f.ui.clear();
        f.mod.jouken.selectedDatabases = {{u"other"_s, {{1, 1}}}};
        QCOMPARE(f.mod.iGetSeikyuData_ALLDB(), -1);
        QCOMPARE(f.ui.texts(),
                 QStringList({u"iGetSeikyuData_ALLDB() でエラー\r\n接続文字列取得できません。"_s}));

        // An empty "DB.ini": no database.
        f.ui.clear();
        f.folder.writeSettingsFile(u"DB.ini"_s, QString());
        QCOMPARE(f.mod.iGetSeikyuData_ALLDB(), -1);
        QCOMPARE(f.ui.texts(), QStringList({u"DBの読み込みに失敗しました"_s}));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::Critical);

        // The base connection string empty: both report it under the single-database header.
        f.ui.clear();
        f.folder.writeSettingsFile(u"DB.ini"_s, u"本店:本店,sqlite:db,suite\n"_s);
        f.folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=\n"_s);
        QCOMPARE(f.mod.iGetSeikyuData(), -1);
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::Critical);
        QCOMPARE(f.mod.iGetSeikyuData_ALLDB(), -1); // checked before the selected database
        QCOMPARE(f.ui.texts(), QStringList(2, u"iGetSeikyuData() でエラー\r\n接続文字列取得できません。"_s));
    }
};

QTEST_GUILESS_MAIN(tst_seikyu_data)
#include "tst_seikyu_data.moc"
