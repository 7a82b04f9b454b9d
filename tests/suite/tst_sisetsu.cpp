#include "master/MasterTestFolder.h"
#include "suite/cT_SISETSU.h"

#include <QTest>

using namespace qelprn;
using namespace qelprn::test;

namespace {

cD_SISETSU facility(qint32 id, const QString& name, const QString& type = QString())
{
    cD_SISETSU rec;
    rec.setnIDNo(id);
    rec.setcShamei1(name);
    rec.setcShameiKana1(u"ｶﾅ"_s + name);
    rec.setcSisetsuType(type);
    rec.setcAddress1(u"港区1-2"_s);
    rec.setcAddress2(u"3F"_s);
    rec.setcYubinNo(u"105-0001"_s);
    rec.setcTelNo(u"03-0000-"_s + QString::number(id % 10000));
    rec.setcFaxNo(u"03-9999-0000"_s);
    return rec;
}

struct Db : TestDb
{
    cT_SISETSU table;
    explicit Db(bool odbc = false) : TestDb(odbc) { table.iInit(ado, ctx); }
};

} // namespace

class tst_sisetsu : public QObject
{
    Q_OBJECT

private slots:
    // The statements of the facility pair as the server receives them: the changing parts.
    void statements()
    {
        Db db;
        db.table.iInit(db.ado, SiteKey{12, 3});
        cD_SISETSU cond;
        const QString order = u"  FROM      Sisetsu  order by      nIDNo"_s;
        cond.setcSisetsuType(u"abc"_s); // not a number: no condition
        QVERIFY(db.table.readStatement(cond).endsWith(u"iPaymentType"_s + order));
        cond.setcSisetsuType(u"03"_s);
        cond.setnIDNo(12030001);
        QVERIFY(db.table.readStatement(cond).endsWith(
            u"  FROM      Sisetsu where    nIDNo = 12030001 and     cSisetsuType = 3  order by      nIDNo"_s));

        cD_SISETSU grid;
        grid.setnIDNo(5);
        grid.setcShamei1(u"O'Neil"_s);
        grid.setcShameiKana1(u"ｵﾆｰﾙ"_s);
        grid.setiKikanShubetsu(2);
        grid.setcSisetsuType(u"特養"_s);
        QVERIFY(db.table.gridStatement(grid).endsWith(
            u"  FROM      Sisetsu where     Sisetsu.nIDNo = 5 and     Sisetsu.cShamei1 LIKE '%O''Neil%' and  "
            u"   "
            u"Sisetsu.cShameiKana1 LIKE '%ｵﾆｰﾙ%' and     Sisetsu.iKikanShubetsu = 2 and     "
            u"Sisetsu.cSisetsuType LIKE '%特養%'  order by      nIDNo"_s));
        cD_SISETSU anyGrid;
        anyGrid.setnIDNo(0);
        anyGrid.setcSisetsuType(u"－指定なし－"_s);
        QVERIFY(db.table.gridStatement(anyGrid).endsWith(u"cShameiKana1 as cShameiKana1"_s + order));

        cD_SISETSU rec = facility(12030001, u"O'Neil荘"_s, u"3"_s);
        rec.setcPcName(u"ignored"_s);
        // Every column's value is proven by the pair's round trip; here what only the server sees.
        const QString insert = db.table.insertStatement(rec, u"PC1"_s);
        QVERIFY(insert.contains(u")values(       '12',      '3',"_s));
        QVERIFY(insert.contains(u",'PC1'     , GetDate() "_s));
        const QString update = db.table.updateStatement(rec, u"PC1"_s);
        QVERIFY(update.contains(u",cPcName = 'PC1'     ,tUpDateTime = GetDate()"_s));
        QVERIFY(update.endsWith(u" where    nIDNo = 12030001"_s));
        QCOMPARE(db.table.deleteStatement(rec), u" delete from      Sisetsu where    nIDNo = 12030001"_s);
    }

    void numbersAndReads_data() { addBackEndRows(); }
    void numbersAndReads()
    {
        QFETCH(bool, odbc);
        Db db(odbc);
        db.table.iInit(db.ado, SiteKey{12, 3});
        qint32 max = 0;
        QCOMPARE(db.table.iGetMaxIDNo(max), qint16(0));
        QCOMPARE(max, 12030000); // a site's first facility
        db.folder.exec(u"INSERT INTO SISETSU (nIDNo, iKyotenCd, iKyotenEb) VALUES (12030007, 12, 3), "
                       "(12040009, 12, 4), (1203, 12, 3)"_s);
        QCOMPARE(db.table.iGetMaxIDNo(max), qint16(0));
        QCOMPARE(max, 12030007);

        for (const qint32 id : {12030003, 12030001, 12030002}) {
            const cD_SISETSU rec =
                facility(id, u"施設"_s + QString::number(id % 10), QString::number(id % 10));
            QCOMPARE(db.table.iDataInsert(&rec, id % 2 == 1), qint16(0));
        }
        cD_SISETSU cond;
        QCOMPARE(db.table.iDataRead(&cond), qint16(0));
        QCOMPARE(db.table.nデータ数(), 6);
        QStringList ids;
        for (int i = 0; i < db.table.nデータ数(); ++i)
            ids << QString::number(db.table.clsSisetsu(i).nIDNo());
        QCOMPARE(ids.join(u','), u"1203,12030001,12030002,12030003,12030007,12040009"_s);

        cond.setcSisetsuType(u"2"_s);
        QCOMPARE(db.table.iDataRead(&cond), qint16(0));
        QCOMPARE(db.table.nデータ数(), 1);
        QCOMPARE(db.table.clsSisetsu(0).nIDNo(), 12030002);

        cD_SISETSU grid;
        grid.setcShamei1(u"施設"_s);
        grid.setcSisetsuType(u"－指定なし－"_s);
        QCOMPARE(db.table.iDataReadGrid(&grid), qint16(0));
        QCOMPARE(db.table.nデータ数(), 3);
        QCOMPARE(db.table.clsSisetsu(2).cShameiKana1(), u"ｶﾅ施設3"_s);
    }

    void writes()
    {
        Db db;
        cD_SISETSU rec = facility(1010001, u"O'Neil"_s);
        QCOMPARE(db.table.iDataInsert(&rec, false), qint16(0));
        // A failing statement inside the transaction: no row, the server's message kept.
        rec.setcShamei1(u"二重"_s);
        QCOMPARE(db.table.iDataInsert(&rec, true), qint16(-1));
        QVERIFY2(db.table.sErrMsg.contains(u"UNIQUE"_s, Qt::CaseInsensitive), qPrintable(db.table.sErrMsg));
        QCOMPARE(db.one(u"SELECT count(*), max(cShamei1) FROM SISETSU"_s), u"1|O'Neil"_s);
        // The connection is out of the transaction again.
        QCOMPARE(db.table.iDataUpdate(&rec, true), qint16(0));
        QCOMPARE(db.one(u"SELECT cShamei1, iKyotenCd FROM SISETSU"_s), u"二重|1"_s);
        QCOMPARE(db.table.iDataUpdate_ToSoudan(nullptr), qint16(-1));
    }

    // A read whose third row fails keeps the two rows read before it.
    void readFailingMidway()
    {
        Db db;
        db.folder.exec(u"ALTER TABLE SISETSU RENAME TO SISETSU_ROWS"_s);
        db.folder.exec(u"INSERT INTO SISETSU_ROWS (nIDNo, nLat) VALUES (1, 1), (2, 2), (3, 3), (4, 4)"_s);
        // abs() of the lowest integer overflows when the third row is stepped to.
        db.folder.exec(
            u"CREATE VIEW Sisetsu AS SELECT nIDNo, iKyotenCd, iKyotenEb, iKikanShubetsu, cSisetsuType, "
            "cShamei1, cShamei2, cShameiKana1, cShameiKana2, cShamei1Ryaku, cDaihyo, cDaihyoKana, "
            "cYubinNo, cAddress1, cAddress2, cAddressKana, cTelNo, cFaxNo, cDouiIrai, cComment, "
            "CASE WHEN nIDNo = 3 THEN abs(-9223372036854775807 - 1) ELSE nLat END AS nLat, nLon, "
            "nColorCode, iColorIndex, iPaymentType, cPcName, tUpDateTime FROM SISETSU_ROWS"_s);
        cD_SISETSU cond;
        QCOMPARE(db.table.iDataRead(&cond), qint16(-1));
        QVERIFY(!db.table.sErrMsg.isEmpty());
        QCOMPARE(db.table.nデータ数(), 2);
        QCOMPARE(db.table.clsSisetsu(1).nLat(), 2);
    }

    // Each propagation reaches the rows of the facility and no others.
    void propagation()
    {
        Db db;
        auto exec = [&](const QString& sql) { db.folder.exec(sql); };
        // Patients 1..4 of site 1/1 and patient 1 of site 2/1 (same number, other site).
        exec(
            u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb) VALUES (1,1,1),(2,1,1),(3,1,1),(4,1,1),(1,2,1)"_s);
        exec(u"INSERT INTO RIYOUSHA_SUB (nIDNo, iKyotenCd, iKyotenEb, iSyoukaiSisetsuCd, iCareCd, iIsiCd, "
             u"iIsiCd2) "
             "VALUES (1,1,1,1010001,NULL,10,NULL),(2,1,1,1010002,50,NULL,10),(3,1,1,NULL,60,20,NULL),"
             "(4,1,1,NULL,NULL,NULL,NULL),(1,2,1,1010002,NULL,NULL,NULL)"_s);
        exec(
            u"INSERT INTO CAREMANE (nIDNo, iSisetsuCode, cTelNo) VALUES (50, 1010001, 'old'), (60, 1010002, 'old')"_s);
        exec(u"INSERT INTO SOUDAN (nIDNo, iKyotenCd, iKyotenEb, iSisetsuCode, cKikan) VALUES "
             "(1,1,1,1010001,'old'),(2,1,1,1010002,'old')"_s);
        exec(u"INSERT INTO DOCTOR (cIDNo, nIDNo, iSisetsuCode, cKikan) VALUES ('10',10,1010001,'old'),"
             "('20',20,1010002,'old')"_s);

        cD_SISETSU rec = facility(1010001, u"O'Neil病院"_s);
        auto stamped = [&] {
            return db.one(u"SELECT nIDNo || '/' || iKyotenCd FROM RIYOUSHA WHERE tUpDateTime "
                          "IS NOT NULL ORDER BY iKyotenCd, nIDNo"_s);
        };

        QCOMPARE(db.table.iDataUpdate_ToRiyousha(&rec), qint16(0));
        QCOMPARE(db.one(u"SELECT nIDNo, iKyotenCd FROM RIYOUSHA_SUB WHERE cSyoukaiTelNo = '03-0000-1'"_s),
                 u"1|1"_s);
        QCOMPARE(stamped(), u"1/1"_s);

        exec(u"UPDATE RIYOUSHA SET tUpDateTime = NULL"_s);
        QCOMPARE(db.table.iDataUpdate_ToCareMane(&rec), qint16(0));
        QCOMPARE(db.one(u"SELECT nIDNo, cTelNo, cAdress1, cYubinNo FROM CAREMANE WHERE cTelNo <> 'old'"_s),
                 u"50|03-0000-1|港区1-2|105-0001"_s);
        QCOMPARE(db.one(u"SELECT nIDNo FROM RIYOUSHA_SUB WHERE cCareTelNo IS NOT NULL"_s), u"2"_s);
        QCOMPARE(stamped(), u"2/1"_s);

        QCOMPARE(db.table.iDataUpdate_ToSoudan(&rec), qint16(0));
        QCOMPARE(
            db.one(u"SELECT nIDNo, cKikan, cKikankana, cFaxNo FROM SOUDAN WHERE tUpdateTime IS NOT NULL"_s),
            u"1|O'Neil病院|ｶﾅO'Neil病院|03-9999-0000"_s);
        QCOMPARE(db.one(u"SELECT count(*) FROM SOUDAN WHERE cKikan = 'old'"_s), u"1"_s);

        exec(u"UPDATE RIYOUSHA SET tUpDateTime = NULL"_s);
        QCOMPARE(db.table.iDataUpdate_ToRiyousha_Iryou(&rec), qint16(0));
        QCOMPARE(
            db.one(
                u"SELECT cIDNo, cKikan, cKikanKana, cAddress1 FROM DOCTOR WHERE tUpdateTime IS NOT NULL"_s),
            u"10|O'Neil病院|ｶﾅO'Neil病院|港区1-2"_s);
        QCOMPARE(db.one(u"SELECT nIDNo, cDouiIsiKikan1, cDouiIsiAdd1, cDouiIsiKikan2 FROM RIYOUSHA "
                        "WHERE cDouiIsiKikan1 IS NOT NULL OR cDouiIsiKikan2 IS NOT NULL ORDER BY nIDNo"_s),
                 u"1|O'Neil病院|港区1-23F||2|||O'Neil病院"_s);
        QCOMPARE(stamped(), u"1/1|2/1"_s);
    }
};

QTEST_GUILESS_MAIN(tst_sisetsu)
#include "tst_sisetsu.moc"
