#pragma once

#include "app/AppContext.h"
#include "billing/modPrint施設請求書.h"
#include "db/ConnectionPool.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QVariantMap>

// A program folder with the module under test and short ways to insert the rows the invoice
// queries read. Site 1/1 is the workstation's own site; the billing month is 2024/10.
struct BillingFixture
{
    qelprn::test::TestInteraction ui;
    qelprn::test::TestProgramFolder folder;
    qelprn::AppContext ctx = folder.context(ui);
    qelprn::modPrint施設請求書 mod{ctx};

    BillingFixture()
    {
        // Every fixture's "adodb.ini" names "sqlite:db" relative to its own folder: pooled
        // connections of an earlier folder must not answer for it.
        qelprn::ConnectionPool::instance().clear();
        mod.jouken.sSeikyuYM = QStringLiteral("2024/10");
        mod.jouken.nSeikyuYM = 202410;
        mod.jouken.sTeisyutuDate = QStringLiteral("2024/11/05");
    }

    ~BillingFixture()
    {
        qunsetenv("QELPRN_ODBC_DRIVER");
        qelprn::ConnectionPool::instance().clear();
    }
    BillingFixture(const BillingFixture&) = delete;
    BillingFixture& operator=(const BillingFixture&) = delete;

    // Points "adodb.ini" at the same database through the ODBC driver manager with SQLite's driver
    // (or back at the embedded engine), for the back-end data rows of the tests.
    void useOdbc(bool odbc)
    {
        if (odbc)
            qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
        else
            qunsetenv("QELPRN_ODBC_DRIVER");
        const QString source = odbc ? folder.filePath(QStringLiteral("db")) : QStringLiteral("sqlite:db");
        folder.writeSettingsFile(QStringLiteral("adodb.ini"),
                                 QStringLiteral("[接続情報]\n接続情報=Provider=SQLOLEDB;Data Source=") +
                                     source + QStringLiteral(";Database=suite;uid=sa;pwd=x\n"));
    }

    void insert(const QString& table, QVariantMap row, const QString& db = QStringLiteral("suite"))
    {
        folder.insert(table, row, db);
    }

    // A row from its column names (separated by blanks) and their values in the same order, with
    // the extra columns laid over it.
    static QVariantMap row(const QString& names, const QVariantList& values, const QVariantMap& extra = {})
    {
        QVariantMap r;
        const QStringList columns = names.split(u' ', Qt::SkipEmptyParts);
        for (qsizetype i = 0; i < columns.size(); ++i)
            r.insert(columns.at(i), values.value(i));
        for (auto it = extra.cbegin(); it != extra.cend(); ++it)
            r.insert(it.key(), it.value());
        return r;
    }

    // A facility; parent 0 (or Null) when it bills itself.
    void facility(int id, const QString& name, QVariant parent = {}, const QString& kind = {},
                  const QString& db = QStringLiteral("suite"))
    {
        insert(QStringLiteral("SISETSU"),
               row(QStringLiteral("nIDNo cShamei1 nOyaSisetsuCd cSisetsuType cYubinNo cAddress1 cAddress2 "
                                  "iPaymentType"),
                   {id, name, parent, kind, QStringLiteral("100-000") + QString::number(id % 10),
                    name + QStringLiteral("住所1"), name + QStringLiteral("住所2"), 1}),
               db);
    }

    // A patient living at a facility (visit address 1), with a month result row.
    void patient(int id, int sisetsu, int total, int share, int jippi, int room = 0, int site = 1,
                 const QString& db = QStringLiteral("suite"), QVariantMap extra = {})
    {
        insert(QStringLiteral("RIYOUSHA"),
               row(QStringLiteral("nIDNo iKyotenCd iKyotenEb cName cNameKana nRoomNo iFutanritsu iHoken"),
                   {id, site, 1, QStringLiteral("患者") + QString::number(id),
                    QStringLiteral("ｶﾝｼﾞｬ") + QString::number(id), room, 2, 1},
                   extra),
               db);
        insert(QStringLiteral("RIYOUSHA_SUB"),
               row(QStringLiteral("nIDNo iKyotenCd iKyotenEb iAddressSet iAddressSisetsuCd iCareSisetsuCd"),
                   {id, site, 1, 0, sisetsu, sisetsu}),
               db);
        month(id, total, share, jippi, site, db);
    }

    void month(int id, int total, int share, int jippi, int site = 1,
               const QString& db = QStringLiteral("suite"), int ym = 202410)
    {
        insert(QStringLiteral("月間実績"),
               row(QStringLiteral(
                       "患者IDNo iKyotenCd iKyotenEb 実績年 実績月 施術回数 総合計 自己負担額2 実費料金 "
                       "患者請求額"),
                   {id, site, 1, ym / 100, ym % 100, 4, total, share, jippi, share + jippi}),
               db);
    }

    // A corporation row of site 1/1: iType 0 is the site's main corporation.
    void corp(int id, int type, const QString& name, QVariantMap extra = {})
    {
        insert(QStringLiteral("CORP"),
               row(QStringLiteral("nIDNo iKyotenCd iKyotenEb iType cShamei1 cYubinNo cAddress1"),
                   {id, 1, 1, type, name, QStringLiteral("200-000") + QString::number(id),
                    name + QStringLiteral("所在地")},
                   extra));
    }

    // One treatment record: visit time "yyyy/mm/dd hh:mm:ss", day fee, co-payment, self-pay.
    void day(int patientId, const QString& start, int gokei, int futan = 100, int jippi = 0, int site = 1,
             QVariantMap extra = {})
    {
        insert(QStringLiteral("JISSEKI"),
               row(QStringLiteral("iKyotenCd iKyotenEb nRiyoushaIDNo tServicyDayStart iAnbunUmu nGokeiKin "
                                  "nFutankin nOuryouKin nKanjaSeikyu nJippiSejutu"),
                   {site, 1, patientId, start, 0, gokei, futan, 0, futan + jippi, jippi}, extra));
    }
};
