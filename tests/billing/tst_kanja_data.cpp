// The co-payment list lines and the visit-count split, on SQLite databases built per case.
#include "BillingFixture.h"
#include "db/DbTraffic.h"

#include <QTest>
#include <bit>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

QStringList patientIds(const QList<KanjaSeikyuRow>& rows)
{
    QStringList out;
    for (const KanjaSeikyuRow& r : rows)
        out.append(QString::number(r.SISETSU_ID) + u'/' + QString::number(r.RIYOUSHA_ID) + u' ' +
                   r.HOKEN_LABEL);
    return out;
}

} // namespace

class tst_kanja_data : public QObject
{
    Q_OBJECT

private slots:
    void setBasedEqualsPerPatient_data() { qelprn::test::addBackEndRows(); }

    // The run's set-based look-ups give every patient exactly what the per-patient statements give:
    // split at four and five visits, ties at one moment, the month's first and last moments, other
    // sites, burden codes 1 to 4, iKaigoLevel standing in, a missing patient row, Null fees, patient
    // number 0 and Null. The co-payment list then sends three statements whatever its lines.
    void setBasedEqualsPerPatient()
    {
        QFETCH(bool, odbc);
        BillingFixture f;
        f.useOdbc(odbc);
        f.facility(10, u"施設"_s);
        const auto at = [](int dd, const QString& time = u"10:00:00"_s) {
            return u"2024/10/%1 "_s.arg(dd, 2, 10, QChar(u'0')) + time;
        };
        f.patient(1, 10, 4000, 400, 0, 0, 1, u"suite"_s, {{u"iFutanritsu"_s, 2}});
        f.patient(2, 10, 5000, 500, 0, 0, 1, u"suite"_s, {{u"iFutanritsu"_s, 3}});
        f.patient(3, 10, 6000, 0, 0, 0, 1, u"suite"_s, {{u"iFutanritsu"_s, 1}});
        f.patient(4, 10, 2000, 300, 0, 0, 1, u"suite"_s, {{u"iFutanritsu"_s, 0}, {u"iKaigoLevel"_s, 4}});
        f.patient(6, 10, 3000, 300, 0, 0, 1, u"suite"_s, {{u"iFutanritsu"_s, 4}});
        f.patient(8, 10, 3000, 300, 0);
        f.patient(9, 10, 3000, 300, 0); // no treatment day
        // Days inserted patient by patient in turn, so that storage order is not patient order.
        for (int d = 1; d <= 7; ++d) {
            if (d <= 4)
                f.day(1, at(d), 1000 + d);
            if (d <= 5)
                f.day(2, at(d == 5 ? 4 : d), d == 5 ? 555 : 1000); // the fifth at the fourth's moment
            f.day(3, at(d), 1000);
            f.day(5, at(d), 1234 + d); // no patient row: burden code Null
            f.day(0, at(d), 700);
        }
        f.day(4, at(5), 1000, 100, 0, 1, {{u"iAnbunUmu"_s, 1}, {u"nGokeiKinAnbun"_s, 500}});
        f.day(4, at(6), 1000, 100, 0, 1, {{u"iAnbunUmu"_s, 1}, {u"nGokeiKinAnbun"_s, QVariant()}});
        f.day(6, u"2024/09/30 23:59:59"_s, 9000);
        f.day(6, at(1, u"00:00:00"_s), 1100);
        f.day(6, at(31, u"23:59:59"_s), 1300);
        f.day(6, u"2024/11/01 00:00:00"_s, 9000);
        for (int d = 2; d <= 6; ++d)
            f.day(6, at(d), 1000 * d + 7);
        f.day(6, at(3), 2000, 100, 0, 2); // another site
        f.day(7, at(3), 2000, 100, 0, 2); // only at another site
        f.day(8, at(9), 0, 100, 0, 1, {{u"nGokeiKin"_s, QVariant()}});
        f.day(8, at(10), 1500);
        f.folder.exec(
            u"INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart, nGokeiKin) "
            u"VALUES (1, 1, NULL, '2024/10/05 10:00:00', 800)"_s);

        QHash<qint32, qint32> counts;
        QHash<qint32, modPrint施設請求書::VisitSplit> splits;
        QVERIFY(f.mod.treatmentDayCountsAll(counts));
        QVERIFY(f.mod.calcVisitSplitsAll(splits));
        QCOMPARE(f.ui.messages.size(), 0);
        for (qint32 id = 0; id <= 10; ++id) {
            QCOMPARE(counts.value(id), f.mod.getSejyutuCnt(id));
            double down = 0;
            double up = 0;
            const qint16 found = f.mod.iCalcJisseki4Down5Up(id, down, up);
            QCOMPARE(splits.contains(id), found == 0);
            const modPrint施設請求書::VisitSplit split = splits.value(id);
            // Bit for bit: the CSV files print these unrounded.
            QCOMPARE(std::bit_cast<quint64>(split.dbl4Down), std::bit_cast<quint64>(down));
            QCOMPARE(std::bit_cast<quint64>(split.dbl5Up), std::bit_cast<quint64>(up));
        }
        QCOMPARE(counts.size(), 8); // 0 to 6 and 8; Null matches no patient
        // Codes 2 and 3 are 10 % and 20 %, code 1 nothing, iKaigoLevel 4 stands in for 0 (30 %), a
        // missing patient row gives minus one tenth.
        QCOMPARE(std::tuple(splits.value(1).dbl4Down, splits.value(2).dbl4Down, splits.value(2).dbl5Up,
                            splits.value(3).dbl4Down, splits.value(4).dbl4Down),
                 std::tuple(401.0, 800.0, 111.0, 0.0, 150.0));
        QCOMPARE(splits.value(5).dbl4Down + splits.value(5).dbl5Up, -866.6);
        QCOMPARE(splits.value(6).dbl5Up, 3.0 * (5007 + 6007 + 1300) / 10); // code 4: 30 %

        f.ui.clear();
        const DbTraffic before = dbTraffic();
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(0));
        QCOMPARE((dbTraffic() - before).statements, 3);
        QCOMPARE(f.mod.aKanjaSeikyu.size(), 7);
        QCOMPARE(f.ui.texts(), QStringList({u"該当する実績データがありません。"_s})); // patient 9
        for (const KanjaSeikyuRow& row : std::as_const(f.mod.aKanjaSeikyu)) {
            QCOMPARE(row.J_CNT, counts.value(row.RIYOUSHA_ID));
            QCOMPARE(row.dFutan4Down, splits.value(row.RIYOUSHA_ID).dbl4Down);
            QCOMPARE(row.dFutan5Up, splits.value(row.RIYOUSHA_ID).dbl5Up);
        }
    }

    // Bank words of the clinic: kind and branch codes in range add their words, others none.
    void bankWords()
    {
        BillingFixture f;
        f.corp(1, 0, u"本社"_s,
               BillingFixture::row(u"cKinyuName iKinSyubetsu cKinyuSiten iKinSiten"_s,
                                   {u"みどり"_s, 2, u"駅前"_s, 5}));
        f.corp(2, 1, u"分院"_s,
               {{u"iKinSyubetsu"_s, 9}, {u"iKinSiten"_s, 0}, {u"cKinyuName"_s, u"ゆうちょ"_s}});
        f.facility(10, u"施設"_s);
        f.patient(1, 10, 6000, 600, 300, 101);
        f.day(1, u"2024/10/01 10:00:00"_s, 1000);
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(0));
        QCOMPARE(f.mod.aKanjaSeikyu.at(0).TIRYOIN_BANKNAME, u"みどり金庫"_s);
        QCOMPARE(f.mod.aKanjaSeikyu.at(0).TIRYOIN_SHITENNAME, u"駅前出張所"_s);
        f.mod.jouken.nTiryoinCd = 2;
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(0));
        QCOMPARE(f.mod.aKanjaSeikyu.at(0).TIRYOIN_BANKNAME, u"ゆうちょ"_s);
        QCOMPARE(f.mod.aKanjaSeikyu.at(0).TIRYOIN_SHITENNAME, QString());
    }

    // Which patients appear, under which facility: care facility or visit-address facility, no
    // line without amounts or without a facility, subsidy labels, the sort orders.
    void selectionAndOrder()
    {
        BillingFixture f;
        f.insert(u"HOKEN"_s,
                 {{u"iType"_s, 1}, {u"iKyotenCd"_s, 1}, {u"iKyotenEb"_s, 1}, {u"cRyaku"_s, u"国保"_s}});
        f.facility(10, u"ケア施設"_s);
        f.facility(20, u"住所施設"_s);
        const QList<int> syogai = {2, 3, 4, 1};
        for (int i = 0; i < syogai.size(); ++i) {
            const int id = 1 + i;
            f.patient(id, 20, 1000, 100, 0, 4 - i, 1, u"suite"_s,
                      {{u"iSyogai"_s, syogai.at(i)}, {u"cNameKana"_s, u"ｱ"_s + QString::number(id)}});
            f.day(id, u"2024/10/01 10:00:00"_s, 1000);
        }
        f.folder.exec(u"UPDATE RIYOUSHA_SUB SET iRiyouJoseiUmu = 1"_s);
        f.folder.exec(u"UPDATE RIYOUSHA_SUB SET iCareSisetsuCd = 10 WHERE nIDNo IN (1, 2)"_s);
        f.patient(5, 20, 0, 0, 800); // self-pay only: a line
        f.day(5, u"2024/10/01 10:00:00"_s, 0);
        f.patient(6, 20, 0, 0, 0);     // nothing to bill
        f.patient(7, 0, 1000, 100, 0); // no facility
        f.day(7, u"2024/10/01 10:00:00"_s, 1000);

        f.mod.jouken.iSortShisetsu = 0; // facility, then reading
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(0));
        QCOMPARE(patientIds(f.mod.aKanjaSeikyu),
                 QStringList(
                     {u"10/1 福祉"_s, u"10/2 被爆"_s, u"20/3 生活保護"_s, u"20/4 障害"_s, u"20/5 国保"_s}));

        f.mod.jouken.bSelSisetsuType = true; // the visit-address facility
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(0));
        QCOMPARE(patientIds(f.mod.aKanjaSeikyu).size(), 5);
        QCOMPARE(patientIds(f.mod.aKanjaSeikyu).first(), u"20/1 福祉"_s);

        f.mod.jouken.nShisetuCdTo = 10;
        f.mod.jouken.bSelSisetsuType = false;
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(0));
        QCOMPARE(patientIds(f.mod.aKanjaSeikyu), QStringList({u"10/1 福祉"_s, u"10/2 被爆"_s}));
        QCOMPARE(f.ui.messages.size(), 0);

        f.mod.jouken.nTantouCd = 3;
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(1));
        QCOMPARE(f.ui.texts(), QStringList({u"該当する実績データがありません。"_s}));
    }

    // A value too large for its 16-bit field stops the query with the run-time error.
    void messagesAndRunTimeError()
    {
        BillingFixture f;
        f.facility(10, u"施設"_s);
        f.patient(1, 10, 1000, 100, 0);
        f.folder.exec(u"UPDATE RIYOUSHA SET iFutanritsu = 40000"_s);
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(-1));
        QCOMPARE(f.ui.calls, QStringList({u"message:施設請求書印刷:( 6)オーバーフローしました。"_s}));
        QCOMPARE(f.ui.messages.at(0).icon, MsgIcon::None);
        // So does an amount beyond 32 bits.
        f.ui.clear();
        f.folder.exec(u"UPDATE RIYOUSHA SET iFutanritsu = 2"_s);
        f.folder.exec(u"UPDATE 月間実績 SET 総合計 = 3000000000"_s);
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(-1));
        QCOMPARE(f.ui.texts(), QStringList({u"( 6)オーバーフローしました。"_s}));

        f.ui.clear();
        f.folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報=\n"_s);
        QCOMPARE(f.mod.iGetSeikyuData_Kanja_New(), qint16(-1));
        QCOMPARE(f.ui.texts(),
                 QStringList({u"iGetSeikyuData_Kanja_New() でエラー\r\n接続文字列取得できません。"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_kanja_data)
#include "tst_kanja_data.moc"
