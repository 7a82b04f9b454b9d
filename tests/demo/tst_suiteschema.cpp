#include "demo/SuiteSchema.h"
#include "support/TestProgramFolder.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using qelprn::test::TestProgramFolder;

namespace {

// Runs a statement on a plain QSQLITE connection and returns the rows' first columns as text.
QStringList run(const QString& file, const QString& sql, QString* error = nullptr)
{
    QStringList rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"check"_s);
        db.setDatabaseName(file);
        db.open();
        QSqlQuery q(db);
        if (!q.exec(sql)) {
            if (error)
                *error = q.lastError().text();
        } else {
            while (q.next())
                rows.append(q.value(0).toString());
        }
    }
    QSqlDatabase::removeDatabase(u"check"_s);
    return rows;
}

} // namespace

class tst_SuiteSchema : public QObject
{
    Q_OBJECT

private slots:
    void createsEveryTableTwice()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(u"s.sqlite"_s);
        QString error;
        QVERIFY2(qelprn::createSuiteSchema(file, &error), qPrintable(error));
        QVERIFY2(qelprn::createSuiteSchema(file, &error), qPrintable(error)); // completes, never fails
        const QStringList tables = run(file, u"SELECT name FROM sqlite_master WHERE type='table'"_s);
        for (const QString& t :
             {u"月間実績"_s, u"JISSEKI"_s,    u"RIYOUSHA"_s,   u"RIYOUSHA_SUB"_s, u"SISETSU"_s,
              u"CORP"_s,     u"HOKEN"_s,      u"STAFF"_s,      u"KYOTEN"_s,       u"SOUDAN_TANTOU"_s,
              u"SOUDAN"_s,   u"療養費単価"_s, u"往療費区分"_s, u"DOCTOR"_s,       u"HOKENJA"_s,
              u"SYOUKAI"_s,  u"SHINSEISYO"_s, u"ADDRESS"_s,    u"CAREMANE"_s,     u"RIYOUSHA_MAP"_s})
            QVERIFY2(tables.contains(t), qPrintable(t));
        QVERIFY(!qelprn::createSuiteSchema(dir.filePath(u"no/such/dir/x.sqlite"_s), &error));
        QVERIFY(!error.isEmpty());
    }

    // The queries name some columns without their table; each must exist in exactly one joined
    // table, or the statement is ambiguous on the server too.
    void unqualifiedColumnsResolve()
    {
        TestProgramFolder folder;
        const QString file = folder.filePath(u"db/suite.sqlite"_s);
        const QString joins =
            u" FROM ((月間実績 LEFT JOIN RIYOUSHA ON 月間実績.患者IDNo = RIYOUSHA.nIDNo AND "
            u"月間実績.iKyotenCd = "
            "RIYOUSHA.iKyotenCd AND 月間実績.iKyotenEb = RIYOUSHA.iKyotenEb ) LEFT JOIN RIYOUSHA_SUB ON "
            "月間実績.患者IDNo = RIYOUSHA_SUB.nIDNo AND 月間実績.iKyotenCd = RIYOUSHA_SUB.iKyotenCd AND "
            "月間実績.iKyotenEb = RIYOUSHA_SUB.iKyotenEb ) LEFT JOIN SISETSU ON SISETSU.nIDNo = (CASE WHEN "
            "RIYOUSHA_SUB.iAddressSet = 1 THEN iAddressSisetsuCd2 ELSE (CASE WHEN RIYOUSHA_SUB.iAddressSet = "
            "2 "
            "THEN iAddressSisetsuCd3 ELSE iAddressSisetsuCd END) END) LEFT JOIN HOKEN AS HOKEN_NAME ON "
            "HOKEN_NAME.iType = RIYOUSHA.iHoken LEFT JOIN CORP AS TIRYOIN ON TIRYOIN.iKyotenCd = 1 "
            "LEFT JOIN JISSEKI ON JISSEKI.nRiyoushaIDNo = RIYOUSHA.nIDNo"_s;
        QString error;
        run(file,
            u"SELECT (CASE WHEN iFutanritsu > 0 THEN iFutanritsu ELSE iKaigoLevel END), 施術回数, 総合計, "
            "自己負担額2, 実費料金, 患者請求額, tDouiDay1, tDouiDay2, iSejutuBui11, iOnan1, iDenki1, "
            "iSejutuBui1, iOnan, iDenki, iPaymentType, cRyaku, tServicyDayStart, nRiyoushaIDNo, "
            "iCareSisetsuCd, iRiyouJoseiUmu, iSyogai, nTantou, cNameKana, nRoomNo, iKozaType, cKozaBangou"_s +
                joins,
            &error);
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(tst_SuiteSchema)
#include "tst_suiteschema.moc"
