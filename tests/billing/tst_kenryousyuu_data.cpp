// The invoice-receipt rows, on SQLite databases built per case.
#include "BillingFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

QString day(int d, const QString& time = u"10:00:00"_s)
{
    return u"2024/10/%1 "_s.arg(d, 2, 10, QChar(u'0')) + time;
}

void basicHouseCallFee(BillingFixture& f, int fee)
{
    f.insert(u"療養費単価"_s, BillingFixture::row(u"iTankaKbn nTankaCode cStartDate cEndDate nTanka"_s,
                                                  {2, 1, u"2024/04/01"_s, u"2026/03/31"_s, fee}));
}

QList<qint32> rowPatients(const QList<KenRyousyuuRow>& rows)
{
    QList<qint32> ids;
    for (const KenRyousyuuRow& r : rows)
        ids.append(r.nRiyoushaID);
    return ids;
}

} // namespace

class tst_kenryousyuu_data : public QObject
{
    Q_OBJECT

private slots:
    // A patient with 13 treatment days: two rows of eleven slots, both with the month totals; the
    // second consent in force; remarks; the clinic's address block.
    void thirteenDays()
    {
        BillingFixture f;
        basicHouseCallFee(f, 2000);
        f.corp(1, 0, u"本社"_s, {{u"cTelNo"_s, u"03-0000-0001"_s}, {u"cFaxNo"_s, u"03-0000-0002"_s}});
        f.corp(2, 1, u"北治療院"_s, {{u"cTelNo"_s, u"011-000-0001"_s}, {u"cFaxNo"_s, u"011-000-0002"_s}});
        f.insert(u"HOKEN"_s,
                 {{u"iType"_s, 3}, {u"iKyotenCd"_s, 1}, {u"iKyotenEb"_s, 1}, {u"cRyaku"_s, u"後期"_s}});
        f.facility(10, u"施設"_s);
        f.patient(
            1, 10, 13000, 1300, 0, 5, 1, u"suite"_s,
            BillingFixture::row(
                u"iHoken iFutanritsu tDouiDay1 iSejutuBui1 iOnan tDouiDay2 iSejutuBui11 iSejutuBui13 iSejutuBui15 iDenki1 iHenke iHKHariUmu iHKKyuUmu"_s,
                {3, 2, u"2024/04/01"_s, 1, 1, u"2024/09/01"_s, 1, 1, 1, 1, 1, 1, 1}));
        for (int d = 1; d <= 13; ++d)
            f.day(1, day(d), 1000 + d, 100, d == 2 ? 500 : 0, 1, {{u"nOuryouKin"_s, d == 7 ? 2400 : 2000}});
        f.day(1, u"2024/09/30 10:00:00"_s, 9999);                     // other month
        f.day(1, day(14), 9999, 100, 0, 2);                           // other site
        f.day(1, day(15), 9999, 0, 0, 1);                             // no co-payment: kind 4 leaves it out
        f.day(1, day(16), 9999, 100, 0, 1, {{u"nKanjaSeikyu"_s, 0}}); // nothing billed
        f.mod.receiptDays = ReceiptDays::CoPayment;
        f.mod.jouken.nTiryoinCd = 2;

        QCOMPARE(f.mod.iGetSeikyuData_KenRyousyuu(), qint16(0));
        QCOMPARE(f.ui.messages.size(), 0);
        QCOMPARE(f.mod.aKenRyousyuu.size(), 2);
        const KenRyousyuuRow& r1 = f.mod.aKenRyousyuu.at(0);
        const KenRyousyuuRow& r2 = f.mod.aKenRyousyuu.at(1);
        QCOMPARE(std::tuple(r1.days[0].保険内金額, r1.days[0].一部負担金, r1.days[10].施術日,
                            r2.days[0].施術日, r2.days[2].施術日),
                 std::tuple(1001, 100.1, u"2024/10/11"_s, u"2024/10/12"_s, QString()));
        // Both rows carry the month's totals and remarks.
        for (const KenRyousyuuRow* r : {&r1, &r2}) {
            QCOMPARE(std::tuple(r->施術回数, r->保険内金額合計, r->自費金額合計),
                     std::tuple(13, 13000 + 91, 500));
            QCOMPARE(r->一部負担金合計, 1309.1);
            QCOMPARE((QStringList{r->備考_部位, r->備考_変形, r->備考_鍼灸, r->備考_往療,
                                  r->備考_日別施術内容, r->請求元屋号}),
                     (QStringList{u"マッサージ3部位"_s, u"徒手矯正"_s, u"はりきゅう治療"_s, u"往療料加算"_s,
                                  u"マッサージ3部位、温あんなし、電気あり"_s, u"北治療院"_s}));
        }

        // Kind 5 keeps only the self-pay day.
        f.mod.receiptDays = ReceiptDays::SelfPay;
        QCOMPARE(f.mod.iGetSeikyuData_KenRyousyuu(), qint16(0));
        QCOMPARE(f.mod.aKenRyousyuu.size(), 1);
        QCOMPARE(f.mod.aKenRyousyuu.at(0).施術回数, 1);
        QCOMPARE(f.mod.aKenRyousyuu.at(0).days[0].施術日, u"2024/10/02"_s);
    }

    // The first consent when the second is older, the second from the same day on; all five parts; electric
    // forms; a patient without month result or patient row; the three orders; narrowing to one patient.
    void consentsOrdersAndNulls()
    {
        BillingFixture f;
        basicHouseCallFee(f, 2000);
        f.facility(10, u"施設"_s);
        const QVariantMap fiveParts = {{u"iSejutuBui1"_s, 1}, {u"iSejutuBui2"_s, 1}, {u"iSejutuBui3"_s, 1},
                                       {u"iSejutuBui4"_s, 1}, {u"iSejutuBui5"_s, 1}, {u"iDenki"_s, 1}};
        QVariantMap p1 = fiveParts;
        p1.insert(
            BillingFixture::row(u"cNameKana tDouiDay1 tDouiDay2 iSejutuBui11 iOnan1 iHKKyuUmu iHKDekiUmu"_s,
                                {u"ｳ"_s, u"2024/09/01"_s, u"2024/08/01"_s, 0, 1, 1, 1}));
        f.patient(1, 10, 1000, 100, 0, 30, 1, u"suite"_s, p1);
        QVariantMap p2 = BillingFixture::row(
            u"cNameKana tDouiDay1 tDouiDay2 iSejutuBui12 iHKHariUmu iHKDekiUmu iFutanritsu iKaigoLevel"_s,
            {u"ｱ"_s, u"2024/01/01"_s, u"2024/01/01"_s, 1, 1, 1, 0, 4});
        f.patient(2, 10, 1000, 100, 0, 10, 1, u"suite"_s, p2);
        f.patient(3, 10, 1000, 100, 0, 20, 1, u"suite"_s, {{u"cNameKana"_s, u"ｲ"_s}});
        f.day(1, day(3), 1000);
        f.day(2, day(3), 1000);
        f.day(2, day(2), 1000);
        f.day(3, day(1), 1000);
        f.day(4, day(1), 1000);   // no month result row: not on the receipts
        f.month(5, 1000, 100, 0); // no patient row: Null everywhere
        f.day(5, day(4), 1000);
        f.mod.receiptDays = ReceiptDays::CoPayment;

        f.mod.jouken.iSort = 1;
        QCOMPARE(f.mod.iGetSeikyuData_KenRyousyuu(), qint16(0));
        QCOMPARE(rowPatients(f.mod.aKenRyousyuu), QList<qint32>({1, 2, 3, 5}));
        const KenRyousyuuRow& first = f.mod.aKenRyousyuu.at(0);
        QCOMPARE(first.備考_部位, u"マッサージ5部位"_s);
        QCOMPARE(first.備考_日別施術内容, u"マッサージ5部位、温あんなし、電気あり"_s);
        QCOMPARE(first.備考_鍼灸, u"きゅう電気治療"_s);
        const KenRyousyuuRow& second = f.mod.aKenRyousyuu.at(1);
        QCOMPARE(second.備考_部位, u"マッサージ1部位"_s);
        QCOMPARE(second.備考_鍼灸, u"はり電気治療"_s);
        QCOMPARE(second.負担割合, qint16(4));
        QCOMPARE(second.days[0].施術日, u"2024/10/02"_s); // visit order within the patient
        QCOMPARE(second.days[0].一部負担金, 300.0);
        QCOMPARE(f.mod.aKenRyousyuu.at(2).備考_部位, QString());
        QCOMPARE(f.mod.aKenRyousyuu.at(2).備考_日別施術内容, u"温あんなし、電気なし"_s);
        const KenRyousyuuRow& nulls = f.mod.aKenRyousyuu.at(3);
        QCOMPARE(nulls.患者名, QString());
        QCOMPARE(nulls.保険種別, qint16(0));
        QCOMPARE(nulls.days[0].一部負担金, -100.0);

        f.mod.jouken.iSort = 2; // reading: the Null reading first
        QCOMPARE(f.mod.iGetSeikyuData_KenRyousyuu(), qint16(0));
        QCOMPARE(rowPatients(f.mod.aKenRyousyuu), QList<qint32>({5, 2, 3, 1}));

        f.mod.jouken.nKanjaCd = 3;
        QCOMPARE(f.mod.iGetSeikyuData_KenRyousyuu(), qint16(0));
        QCOMPARE(rowPatients(f.mod.aKenRyousyuu), QList<qint32>({3}));
        f.mod.jouken.nKanjaCd = 0;
        f.mod.jouken.nShisetuCdFrom = 99;
        QCOMPARE(f.ui.messages.size(), 0);
        QCOMPARE(f.mod.iGetSeikyuData_KenRyousyuu(), qint16(1));
        QCOMPARE(f.ui.texts(), QStringList({u"該当する実績データがありません。"_s}));
        QCOMPARE(f.mod.aKenRyousyuu.size(), 0);
    }
};

QTEST_GUILESS_MAIN(tst_kenryousyuu_data)
#include "tst_kenryousyuu_data.moc"
