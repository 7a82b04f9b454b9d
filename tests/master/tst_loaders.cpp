#include "MasterTestFolder.h"
#include "master/RiyoushaLoader.h"
#include "master/SisetsuLoader.h"

#include <QTest>

using namespace qelprn;
using namespace qelprn::test;

class tst_loaders : public QObject
{
    Q_OBJECT

    // lat: the latitude as SQL text.
    static void addFacility(TestProgramFolder& folder, qint32 id, qint32 site, const QString& lat)
    {
        folder.exec(
            u"INSERT INTO SISETSU (nIDNo, iKyotenCd, iKyotenEb, cAddress1, nLat, tUpDateTime, "
            "iKikanShubetsu) VALUES (%1, %2, 1, '東京都''港区', %3, '2026/05/01 10:20:30', 2)"_s.arg(id)
                .arg(site)
                .arg(lat));
    }

private slots:
    void facility_data() { addBackEndRows(); }
    void facility()
    {
        QFETCH(bool, odbc);
        TestDb db(odbc);
        auto& [folder, ui, ctx, ado] = db;
        addFacility(folder, 1010001, 1, u"35"_s);
        addFacility(folder, 2010001, 2, u"35"_s); // another site

        SisetsuInfo rec;
        rec.cShamei2 = u"前の値"_s;
        QString error;
        QVERIFY2(loadSisetsu(ctx, 1010001, rec, &error), qPrintable(error));
        // Null text becomes "".
        QCOMPARE(std::tuple(rec.nIDNo, rec.cAddress1, rec.cShamei2, rec.nLat, rec.iKikanShubetsu),
                 std::tuple(1010001, u"東京都'港区"_s, QString(), 35, 2));
        QCOMPARE(rec.tUpDateTime, QDateTime(QDate(2026, 5, 1), QTime(10, 20, 30)));

        // Not found (or another site's facility): false, no error text.
        const SisetsuInfo before = rec;
        error.clear();
        QVERIFY(!loadSisetsu(ctx, 2010001, rec, &error));
        QVERIFY(!loadSisetsu(ctx, 999, rec, &error));
        QCOMPARE(error, QString());

        // A number beyond 32 bits: false, the suite's overflow error, the record as it was (the
        // columns read before the overflow are not kept).
        addFacility(folder, 1010003, 1, u"3000000000"_s);
        QVERIFY(!loadSisetsu(ctx, 1010003, rec, &error));
        QCOMPARE(error, u"( 6)オーバーフローしました。"_s);
        QCOMPARE(rec.nIDNo, before.nIDNo);

        // A broken connection: false, the connection's message.
        folder.writeSettingsFile(u"adodb.ini"_s,
                                 u"[接続情報]\n接続情報=Provider=SQLOLEDB;Data Source=sqlite:/nonexistent/x;"
                                 "Database=none;uid=sa;pwd=x\n"_s);
        QVERIFY(!loadSisetsu(ctx, 1010001, rec, &error));
        QVERIFY(!error.isEmpty());
    }

    // Every column of the patient list exists and is read; dates, amounts and Null rules.
    void patient_data() { addBackEndRows(); }
    void patient()
    {
        QFETCH(bool, odbc);
        TestDb db(odbc);
        auto& [folder, ui, ctx, ado] = db;
        folder.exec(
            u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cName, tBirthday, nJikofutanTanka, "
            "cByoumei, iFutanritsu, nTantou10) VALUES (1010005, 1, 1, '山田 太郎', '1940/02/29', 1500, "
            "'腰痛症', 10, 1010020)"_s);
        RiyoushaInfo rec;
        rec.iHoken = 4;
        rec.tDouiDay1 = QDate(2020, 1, 1);
        QString error;
        QVERIFY2(loadRiyousha(ctx, 1010005, rec, &error), qPrintable(error));
        // Null number and date kept.
        QCOMPARE(std::tuple(rec.cName, rec.tBirthday, rec.nJikofutanTanka, rec.nTantou10, rec.iHoken,
                            rec.tDouiDay1),
                 std::tuple(u"山田 太郎"_s, QDate(1940, 2, 29), 1500, 1010020, 4, QDate(2020, 1, 1)));
    }
};

QTEST_GUILESS_MAIN(tst_loaders)
#include "tst_loaders.moc"
