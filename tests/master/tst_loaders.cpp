#include "MasterTestFolder.h"
#include "master/RiyoushaLoader.h"
#include "master/SisetsuLoader.h"

#include <QTest>

using namespace qelprn;
using namespace qelprn::test;

class tst_loaders : public QObject
{
    Q_OBJECT

    static void addFacility(TestProgramFolder& folder, qint32 id, qint32 site, const QVariant& lat)
    {
        folder.insert(u"SISETSU"_s, {{u"nIDNo"_s, id},
                                     {u"iKyotenCd"_s, site},
                                     {u"iKyotenEb"_s, 1},
                                     {u"cSisetsuType"_s, u"3"_s},
                                     {u"cShamei1"_s, u"ひまわり荘"_s},
                                     {u"cShameiKana1"_s, u"ﾋﾏﾜﾘｿｳ"_s},
                                     {u"cAddress1"_s, u"東京都'港区"_s},
                                     {u"cTelNo"_s, u"03-1111-2222"_s},
                                     {u"nLat"_s, lat},
                                     {u"nLon"_s, 139},
                                     {u"tUpDateTime"_s, u"2026/05/01 10:20:30"_s},
                                     {u"iKikanShubetsu"_s, 2}});
    }

private slots:
    void facility_data() { addBackEndRows(); }
    void facility()
    {
        QFETCH(bool, odbc);
        TestProgramFolder folder;
        TestInteraction ui;
        const AppContext ctx = contextIn(folder, ui);
        const auto backEnd = useOdbc(folder, odbc);
        addFacility(folder, 1010001, 1, 35);
        addFacility(folder, 1010002, 1, QVariant()); // nLat Null
        addFacility(folder, 2010001, 2, 35);         // another site

        QCOMPARE(sisetsuLoaderStatement(ctx, 1010001),
                 u"SELECT * FROM SISETSU WHERE nIDNo = 1010001 and iKyotenCd = 1 and iKyotenEb = 1"_s);
        SisetsuInfo rec;
        rec.cShamei2 = u"前の値"_s;
        QString error;
        QVERIFY2(loadSisetsu(ctx, 1010001, rec, &error), qPrintable(error));
        QCOMPARE(rec.nIDNo, 1010001);
        QCOMPARE(rec.cAddress1, u"東京都'港区"_s);
        QCOMPARE(rec.cShamei2, QString()); // Null text becomes ""
        QCOMPARE(rec.nLat, 35);
        QCOMPARE(rec.tUpDateTime, QDateTime(QDate(2026, 5, 1), QTime(10, 20, 30)));
        QCOMPARE(rec.iKikanShubetsu, 2);

        rec.nLat = 77; // a Null number keeps the value held
        QVERIFY(loadSisetsu(ctx, 1010002, rec, &error));
        QCOMPARE(rec.nIDNo, 1010002);
        QCOMPARE(rec.nLat, 77);

        // Not found (or another site's facility): false, record untouched, no error text.
        const SisetsuInfo before = rec;
        error.clear();
        QVERIFY(!loadSisetsu(ctx, 2010001, rec, &error));
        QVERIFY(!loadSisetsu(ctx, 999, rec, &error));
        QCOMPARE(rec.nIDNo, before.nIDNo);
        QCOMPARE(error, QString());

        // A number beyond 32 bits: false, the suite's overflow error.
        addFacility(folder, 1010003, 1, 3000000000.0);
        QVERIFY(!loadSisetsu(ctx, 1010003, rec, &error));
        QCOMPARE(error, u"( 6)オーバーフローしました。"_s);
        QCOMPARE(rec.nIDNo, before.nIDNo);

        // A broken connection: false, the connection's message.
        folder.writeSettingsFile(u"adodb.ini"_s,
                                 u"[接続情報]\n接続情報=Provider=SQLOLEDB;Data Source=sqlite:/nonexistent/x;"
                                 "Database=none;uid=sa;pwd=x\n"_s);
        QVERIFY(!loadSisetsu(ctx, 1010001, rec, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(rec.nIDNo, before.nIDNo);
    }

    // Every column of the patient list exists and is read; dates, amounts and Null rules.
    void patient_data() { addBackEndRows(); }
    void patient()
    {
        QFETCH(bool, odbc);
        TestProgramFolder folder;
        TestInteraction ui;
        const AppContext ctx = contextIn(folder, ui);
        const auto backEnd = useOdbc(folder, odbc);
        folder.insert(u"RIYOUSHA"_s, {{u"nIDNo"_s, 1010005},
                                      {u"iKyotenCd"_s, 1},
                                      {u"iKyotenEb"_s, 1},
                                      {u"cName"_s, u"山田 太郎"_s},
                                      {u"tBirthday"_s, u"1940/02/29"_s},
                                      {u"nJikofutanTanka"_s, 1500},
                                      {u"cByoumei"_s, u"腰痛症"_s},
                                      {u"iFutanritsu"_s, 10},
                                      {u"nTantou10"_s, 1010020}});
        RiyoushaInfo rec;
        rec.iHoken = 4;
        rec.tDouiDay1 = QDate(2020, 1, 1);
        QString error;
        QVERIFY2(loadRiyousha(ctx, 1010005, rec, &error), qPrintable(error));
        QCOMPARE(rec.cName, u"山田 太郎"_s);
        QCOMPARE(rec.tBirthday, QDate(1940, 2, 29));
        QCOMPARE(rec.nJikofutanTanka, 1500);
        QCOMPARE(rec.nTantou10, 1010020);
        QCOMPARE(rec.iHoken, 4);                    // Null number kept
        QCOMPARE(rec.tDouiDay1, QDate(2020, 1, 1)); // Null date kept
        QVERIFY(!loadRiyousha(ctx, 1010006, rec, &error));
    }
};

QTEST_GUILESS_MAIN(tst_loaders)
#include "tst_loaders.moc"
