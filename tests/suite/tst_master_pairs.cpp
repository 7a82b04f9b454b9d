#include "master/MasterTestFolder.h"
#include "suite/cT_Address.h"
#include "suite/cT_CAREMANE.h"
#include "suite/cT_CORP.h"
#include "suite/cT_DOCTOR.h"
#include "suite/cT_HOKEN.h"
#include "suite/cT_HOKENJA.h"
#include "suite/cT_RIYOUSHA.h"
#include "suite/cT_SHINSEISYO.h"
#include "suite/cT_SISETSU.h"
#include "suite/cT_STAFF.h"
#include "suite/cT_SYOUKAI.h"

#include <QTest>
#include <functional>
#include <iterator>
#include <utility>

using namespace qelprn;
using namespace qelprn::test;

namespace {

bool isStamp(const QString& column)
{
    return column == u"cPcName"_s || column.compare(u"tUpDateTime"_s, Qt::CaseInsensitive) == 0 ||
           column == u"iKyotenCd"_s || column == u"iKyotenEb"_s;
}

// Distinct values in every written column, other ones for another salt; the key columns get key.
void fill(MasterRecord& rec, qint32 key, int salt = 0)
{
    const TableDef& def = rec.def();
    for (int i = 0; i < def.columns.size(); ++i) {
        const ColumnDef& c = def.columns.at(i);
        if (!c.written())
            continue;
        const bool isKey = def.keyColumns.contains(c.name) || c.name == u"nIDNo"_s || c.name == u"cIDNo"_s;
        switch (c.kind) {
        case ColumnKind::Text:
            rec.setText(c.name, isKey ? QString::number(key) : u"O'"_s + c.name + QString::number(salt));
            break;
        case ColumnKind::Date:
            rec.setText(c.name, isKey ? u"2026/04/01"_s : u"2025/12/%1"_s.arg((i + salt) % 28 + 1));
            break;
        case ColumnKind::Int:
            rec.setInteger(c.name, isKey ? key : i + 1 + salt);
            break;
        case ColumnKind::Money:
            rec.setMoney(c.name, 1000 + i + salt);
            break;
        }
    }
}

// The written columns of a and b that differ, as "column: a / b".
QStringList differences(const MasterRecord& a, const MasterRecord& b)
{
    QStringList out;
    for (int i = 0; i < a.def().columns.size(); ++i) {
        const ColumnDef& c = a.def().columns.at(i);
        if (c.written() && !isStamp(c.name) && a.value(i) != b.value(i))
            out << c.name + u": "_s + a.value(i).toString() + u" / "_s + b.value(i).toString();
    }
    return out;
}

// Insert, read back, update every column, read back and delete one record of any pair.
template <typename Table, typename Rec> void roundTrip(TestDb& db, qint32 key)
{
    Table table;
    table.iInit(db.ado, db.ctx);
    Rec rec;
    const Rec cond;
    for (const int salt : {0, 7}) {
        fill(rec, key, salt);
        const qint16 rc = salt == 0 ? table.iDataInsert(&rec, true) : table.iDataUpdate(&rec, false);
        QVERIFY2(rc == 0, qPrintable(rec.def().table + u": "_s + table.sErrMsg));
        QVERIFY2(table.iDataRead(&cond) == 0, qPrintable(table.sErrMsg));
        QCOMPARE(table.nデータ数(), 1);
        QCOMPARE(differences(rec, table.record(0)), QStringList());
    }
    QCOMPARE(table.record(0).text(u"cPcName"), cT_ADODB::csGetComputerName());
    QVERIFY2(table.iData削除(&rec) == 0, qPrintable(table.sErrMsg));
    QVERIFY(table.iDataRead(&cond) == 0);
    QCOMPARE(table.nデータ数(), 0);
}

// One round trip per pair of record and table classes, with its key and a column to change.
const std::pair<const char*, void (*)(TestDb&)> kRoundTrips[] = {
    {"CORP", [](TestDb& db) { roundTrip<cT_CORP, cD_CORP>(db, 7); }},
    {"HOKEN", [](TestDb& db) { roundTrip<cT_HOKEN, cD_HOKEN>(db, 3); }},
    {"DOCTOR", [](TestDb& db) { roundTrip<cT_DOCTOR, cD_DOCTOR>(db, 1010001); }},
    {"HOKENJA", [](TestDb& db) { roundTrip<cT_HOKENJA, cD_HOKENJA>(db, 39130017); }},
    {"STAFF", [](TestDb& db) { roundTrip<cT_STAFF, cD_STAFF>(db, 1010001); }},
    {"SYOUKAI", [](TestDb& db) { roundTrip<cT_SYOUKAI, cD_SYOUKAI>(db, 1010001); }},
    {"RIYOUSHA", [](TestDb& db) { roundTrip<cT_RIYOUSHA, cD_RIYOUSHA>(db, 1010001); }},
    {"SHINSEISYO", [](TestDb& db) { roundTrip<cT_SHINSEISYO, cD_SHINSEISYO>(db, 4); }},
    {"Address", [](TestDb& db) { roundTrip<cT_Address, cD_Address>(db, 1010001); }},
    {"CAREMANE", [](TestDb& db) { roundTrip<cT_CAREMANE, cD_CAREMANE>(db, 12); }},
    {"SISETSU", [](TestDb& db) { roundTrip<cT_SISETSU, cD_SISETSU>(db, 1010001); }},
};

} // namespace

class tst_master_pairs : public QObject
{
    Q_OBJECT

private slots:
    // Every pair's statements run on the suite's schema and keep every column.
    void roundTrips_data()
    {
        QTest::addColumn<int>("pair");
        for (int i = 0; i < int(std::size(kRoundTrips)); ++i)
            QTest::newRow(kRoundTrips[i].first) << i;
    }
    void roundTrips()
    {
        QFETCH(int, pair);
        TestDb db;
        kRoundTrips[pair].second(db);
    }

    void patientRecord()
    {
        TestDb db;
        cT_RIYOUSHA table;
        table.iInit(db.ado, SiteKey{3, 1});
        cD_RIYOUSHA cond;
        cond.setnIDNo(3010002);
        QVERIFY(!table.readStatement(cond).contains(u"cSisetsuName"_s)); // the address set is not a column

        db.folder.exec(
            u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cByoumei, tBirthday, iHoken) VALUES "
            "(3010002, 3, 1, '頚椎症', '1950/03/04', NULL), (3010005, 3, 1, NULL, NULL, 2), "
            "(3010009, 4, 1, NULL, NULL, 2)"_s);
        qint32 max = 0;
        QCOMPARE(table.iGetMaxIDNo(max), qint16(0));
        QCOMPARE(max, 3010005);
        QCOMPARE(table.iDataRead(&cond), qint16(0));
        QCOMPARE(table.nデータ数(), 1);
        QCOMPARE(table.clsRIYOUSHA(0).cByoumei(), u"頚椎症"_s); // found under "ｃByoumei"
        QCOMPARE(table.clsRIYOUSHA(0).iHoken(), 0);             // Null reads as 0

        // The successor row at 75: inserted, and the previous row points at it.
        cD_RIYOUSHA next = table.clsRIYOUSHA(0);
        next.setnIDNo(3010006);
        next.setnBeforeIDNo(3010002);
        next.settIDKirikaeDate(u"2026/04/01"_s);
        QCOMPARE(table.iDataInsert_R75(&next, true), qint16(0));
        QCOMPARE(
            db.one(u"SELECT nIDNo, nAfterIDNo, tIDKirikaeDate, cByoumei FROM RIYOUSHA WHERE iKyotenCd = 3 "
                   "ORDER BY nIDNo"_s),
            u"3010002|3010006|2026/04/01|頚椎症|3010005||||3010006|0|2026/04/01|頚椎症"_s);
        // A failing insert (the number is taken) leaves the previous row unchanged.
        next.setnBeforeIDNo(3010005);
        QCOMPARE(table.iDataInsert_R75(&next, true), qint16(-1));
        QCOMPARE(db.one(u"SELECT nAfterIDNo FROM RIYOUSHA WHERE nIDNo = 3010005"_s), QString());
    }

    // STAFF's own checks; and any operation on a table without iInit, without a record or whose
    // database table is gone gives -1 and a reason.
    void staffChecksAndFailures()
    {
        TestDb db;
        cT_STAFF staff;
        cD_STAFF yamada;
        QCOMPARE(staff.iDataRead(&yamada), qint16(-1)); // before iInit
        staff.iInit(db.ado, db.ctx);
        db.folder.exec(u"INSERT INTO STAFF (nIDNo, iKyotenCd, iKyotenEb, cName) VALUES (1, 1, 1, '山田'), "
                       "(2, 1, 1, '山田'), (3, 2, 1, '山田'), (4, 1, 1, '佐藤')"_s);
        yamada.setnIDNo(1);
        yamada.setcName(u"山田"_s);
        qint32 count = -1;
        bool exists = false;
        QCOMPARE(staff.iChkStaffName(&yamada, count), qint16(0));
        QCOMPARE(count, 1); // the other 山田 of the site
        QCOMPARE(staff.iDataIdentChk(&yamada, exists), qint16(0));
        QVERIFY(exists);
        yamada.setnIDNo(3); // of another site
        QCOMPARE(staff.iDataIdentChk(&yamada, exists), qint16(0));
        QVERIFY(!exists);
        QCOMPARE(staff.iDataReadGrid_AllKyoten(&yamada), qint16(0));
        QCOMPARE(staff.nデータ数(), 1);
        yamada.setnIDNo(0);
        QCOMPARE(staff.iDataReadGrid_AllKyoten(&yamada), qint16(0));
        QCOMPARE(staff.nデータ数(), 4);

        const QList<std::function<qint16(const cD_STAFF*)>> operations = {
            [&](const cD_STAFF* r) { return staff.iChkStaffName(r, count); },
            [&](const cD_STAFF* r) { return staff.iDataIdentChk(r, exists); },
            [&](const cD_STAFF* r) { return staff.iDataReadGrid_AllKyoten(r); },
            [&](const cD_STAFF* r) { return staff.iDataRead(r); },
            [&](const cD_STAFF* r) { return staff.iDataReadGrid(r); },
            [&](const cD_STAFF* r) { return staff.iDataInsert(r, true); },
            [&](const cD_STAFF* r) { return staff.iDataUpdate(r, false); },
            [&](const cD_STAFF* r) { return staff.iData削除(r); },
            [&](const cD_STAFF*) { return staff.iGetMaxIDNo(count); },
        };
        yamada.setnIDNo(5);
        db.folder.exec(u"DROP TABLE STAFF"_s);
        for (qsizetype i = 0; i < operations.size(); ++i) {
            for (const cD_STAFF* rec : {static_cast<const cD_STAFF*>(nullptr), &std::as_const(yamada)}) {
                staff.sErrMsg.clear();
                QVERIFY2(operations[i](rec) == -1 && !staff.sErrMsg.isEmpty(),
                         qPrintable(QString::number(i)));
            }
        }
    }

    // DOCTOR and SYOUKAI hand out the lowest free number once the site's range is used up.
    void gapFilling()
    {
        TestDb db;
        cT_DOCTOR doctors;
        doctors.iInit(db.ado, db.ctx);
        cT_SYOUKAI referrers;
        referrers.iInit(db.ado, db.ctx);
        qint32 n = 0;
        QCOMPARE(doctors.iGetMaxIDNo(n), qint16(0));
        QCOMPARE(n, 1010000);
        const QString numbers = u"WITH RECURSIVE n(x) AS (SELECT 1010001 UNION ALL SELECT x + 1 FROM n "
                                "WHERE x < 1019999) "_s;
        db.folder.exec(u"INSERT INTO DOCTOR (cIDNo, nIDNo, iKyotenCd, iKyotenEb) "_s + numbers +
                       u"SELECT CAST(x AS TEXT), x, 1, 1 FROM n WHERE x NOT IN (1010500, 1010501)"_s);
        db.folder.exec(u"INSERT INTO SYOUKAI (nIDNo, cIDNo, iKyotenCd, iKyotenEb) "_s + numbers +
                       u"SELECT x, CAST(x AS TEXT), 1, 1 FROM n WHERE x <> 1010001"_s);
        QCOMPARE(doctors.iGetMaxIDNo(n), qint16(0));
        QCOMPARE(n, 1010499); // the caller adds one
        QCOMPARE(referrers.iGetMaxIDNo(n), qint16(0));
        QCOMPARE(n, 1010000); // the range's first number is free

        db.folder.exec(
            u"INSERT INTO DOCTOR (cIDNo, nIDNo, iKyotenCd, iKyotenEb) VALUES ('1010500', 1010500, 1, 1), "
            "('1010501', 1010501, 1, 1)"_s);
        db.folder.exec(
            u"INSERT INTO SYOUKAI (nIDNo, cIDNo, iKyotenCd, iKyotenEb) VALUES (1010001, '1010001', 1, 1)"_s);
        n = 5;
        QCOMPARE(doctors.iGetMaxIDNo(n), qint16(-1));
        QCOMPARE(doctors.sErrMsg, u"データ登録の上限に達しました"_s);
        QCOMPARE(referrers.iGetMaxIDNo(n), qint16(-1));
        QCOMPARE(n, 5);
    }

    // The extra operations of the pairs reach the right rows.
    void extras()
    {
        TestDb db;
        auto exec = [&](const QString& sql) { db.folder.exec(sql); };
        exec(u"INSERT INTO RIYOUSHA (nIDNo, iKyotenCd, iKyotenEb, cHokenNo, cFutanNo) VALUES "
             "(1,1,1,'39130017',NULL),(2,1,1,'06130019','81136017'),(3,1,1,NULL,NULL)"_s);
        exec(
            u"INSERT INTO RIYOUSHA_SUB (nIDNo, iKyotenCd, iKyotenEb, iIsiCd, iIsiCd2, iCareCd, "
            u"iSyoukaiSisetsuCd) "
            "VALUES (1,1,1,1010001,NULL,5,NULL),(2,1,1,NULL,1010001,NULL,1010002),(3,1,1,1010002,NULL,6,NULL)"_s);
        exec(u"INSERT INTO SISETSU (nIDNo, cShamei1) VALUES (1010009, '中央病院')"_s);

        cT_DOCTOR doctors;
        doctors.iInit(db.ado, db.ctx);
        cD_DOCTOR doctor;
        fill(doctor, 1010001);
        doctor.setcName(u"佐藤"_s);
        doctor.setiSisetsuCode(1010009);
        QCOMPARE(doctors.iDataInsert(&doctor, false), qint16(0));
        cD_DOCTOR byNumber;
        byNumber.setcIDNo(u"1010001"_s);
        QCOMPARE(doctors.iDataRead(&byNumber), qint16(0));
        QCOMPARE(doctors.nデータ数(), 1);
        QCOMPARE(doctors.clsDOCTOR(0).SISETSUSHAMEI(), u"中央病院"_s);
        QCOMPARE(doctors.clsDOCTOR(0).nSisetsuCd(), 1010009);
        QCOMPARE(doctors.iDataUpdate_ToRiyousha(&doctor), qint16(0));
        QCOMPARE(
            db.one(u"SELECT nIDNo, cDouiIsiName1, cDouiIsiName2 FROM RIYOUSHA WHERE tUpDateTime IS NOT NULL "
                   "ORDER BY nIDNo"_s),
            u"1|佐藤||2||佐藤"_s);

        cT_CAREMANE managers;
        managers.iInit(db.ado, db.ctx);
        cD_CAREMANE manager;
        manager.setnIDNo(5);
        manager.setcTelNo(u"045-111"_s);
        QCOMPARE(managers.iDataUpdate_ToRiyousha(&manager), qint16(0));
        QCOMPARE(db.one(u"SELECT nIDNo FROM RIYOUSHA_SUB WHERE cCareTelNo = '045-111'"_s), u"1"_s);

        cT_SYOUKAI referrers;
        referrers.iInit(db.ado, db.ctx);
        cD_SYOUKAI referrer;
        referrer.setnIDNo(1010002);
        referrer.setcTelNo(u"045-222"_s);
        QCOMPARE(referrers.iDataUpdate_ToRiyousha(&referrer), qint16(0));
        QCOMPARE(db.one(u"SELECT nIDNo FROM RIYOUSHA_SUB WHERE cSyoukaiTelNo = '045-222'"_s), u"2"_s);

        // Insurers: the search list holds those patients use, of the prefecture asked for.
        exec(u"INSERT INTO HOKENJA (cIDno, cName) VALUES ('39130017','東京広域'),('06130019','組合'),"
             "('81136017','公費'),('39140015','神奈川広域'),('39131015','未使用')"_s);
        cT_HOKENJA insurers;
        insurers.iInit(db.ado, db.ctx);
        cD_HOKENJA pref;
        pref.setcIDNo(u"13"_s);
        QCOMPARE(insurers.iDataReadGrid(&pref), qint16(0));
        QStringList found;
        for (int i = 0; i < insurers.nデータ数(); ++i)
            found << insurers.clsHOKENJA(i).cIDNo();
        QCOMPARE(found, QStringList({u"06130019"_s, u"39130017"_s, u"81136017"_s}));
        // The delegation of the late-elderly insurers: every one of the prefecture.
        cD_HOKENJA kouki;
        kouki.setcIDNo(u"39130017"_s);
        kouki.setiIninFlg(1);
        QCOMPARE(insurers.iIninDataUpdate_Kouki(&kouki, true), qint16(0));
        QCOMPARE(db.one(u"SELECT cIDno FROM HOKENJA WHERE iIninFlg = 1 ORDER BY cIDno"_s),
                 u"39130017|39131015"_s);
        QCOMPARE(insurers.iIninDataUpdate_Kouki(nullptr, true), qint16(-1));

        // A patient's address on a day: the latest start on or before it; deleting takes all of the
        // patient's rows in the site.
        exec(u"INSERT INTO ADDRESS (nKanjaCD, iKyotenCd, iKyotenEb, tStartDay, csAddress1) VALUES "
             "(1,1,1,'2026/01/01','旧'),(1,1,1,'2026/04/01','新'),(1,2,1,'2026/02/01','他拠点'),"
             "(2,1,1,'2026/03/01','別人')"_s);
        cT_Address addresses;
        addresses.iInit(db.ado, db.ctx);
        cD_Address patient;
        patient.setnKanjaCD(1);
        QCOMPARE(addresses.iDataReadByDate(&patient, u"2026/03/31"_s), qint16(0));
        QCOMPARE(addresses.nデータ数(), 1);
        QCOMPARE(addresses.clsAddress(0).csAddress1(), u"旧"_s);
        QCOMPARE(addresses.iDataDelete(&patient), qint16(0));
        QCOMPARE(db.one(u"SELECT nKanjaCD, iKyotenCd FROM ADDRESS ORDER BY nKanjaCD"_s), u"1|2|2|1"_s);
        QCOMPARE(addresses.iDataReadByDate(nullptr, QString()), qint16(-1));
        QCOMPARE(addresses.iDataDelete(nullptr), qint16(-1));

        // Corporations: the site's rows only, the existence check, the map addresses.
        exec(u"INSERT INTO CORP (nIDNo, iKyotenCd, iKyotenEb, iType, cShamei1) VALUES (1,1,1,0,'本院'),"
             "(2,1,1,1,'分院'),(1,2,1,0,'他拠点')"_s);
        cT_CORP corps;
        corps.iInit(db.ado, db.ctx);
        cD_CORP main;
        main.setiType(0);
        QCOMPARE(corps.iDataRead(&main), qint16(0));
        QCOMPARE(std::pair(corps.nデータ数(), corps.clsCORP(0).cShamei1()), std::pair(1, u"本院"_s));
        QCOMPARE(corps.iDataReadChk(nullptr), qint16(-1));
        QVERIFY(corps.sErrMsg.endsWith(u"が無効です。"_s));
        QCOMPARE(corps.iMapDataInsert(1, {u"東京都'港区"_s, u"芝"_s, QString()}), qint16(0));
        QCOMPARE(corps.iMapDataUpdate(1, {u"東京都港区"_s, u"芝公園"_s, u"1-1"_s}), qint16(0));
        QStringList map;
        QCOMPARE(corps.iMapDataRead(1, map), qint16(0));
        QCOMPARE(map, QStringList({u"東京都港区"_s, u"芝公園"_s, u"1-1"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_master_pairs)
#include "tst_master_pairs.moc"
