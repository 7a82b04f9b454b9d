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

    // A facility; parent 0 (or Null) when it bills itself.
    void facility(int id, const QString& name, QVariant parent = {}, const QString& kind = {},
                  const QString& db = QStringLiteral("suite"))
    {
        insert(QStringLiteral("SISETSU"),
               {{QStringLiteral("nIDNo"), id},
                {QStringLiteral("cShamei1"), name},
                {QStringLiteral("nOyaSisetsuCd"), parent},
                {QStringLiteral("cSisetsuType"), kind},
                {QStringLiteral("cYubinNo"), QStringLiteral("100-000") + QString::number(id % 10)},
                {QStringLiteral("cAddress1"), name + QStringLiteral("住所1")},
                {QStringLiteral("cAddress2"), name + QStringLiteral("住所2")},
                {QStringLiteral("iPaymentType"), 1}},
               db);
    }

    // A patient living at a facility (visit address 1), with a month result row.
    void patient(int id, int sisetsu, int total, int share, int jippi, int room = 0, int site = 1,
                 const QString& db = QStringLiteral("suite"), QVariantMap extra = {})
    {
        QVariantMap r = {{QStringLiteral("nIDNo"), id},
                         {QStringLiteral("iKyotenCd"), site},
                         {QStringLiteral("iKyotenEb"), 1},
                         {QStringLiteral("cName"), QStringLiteral("患者") + QString::number(id)},
                         {QStringLiteral("cNameKana"), QStringLiteral("ｶﾝｼﾞｬ") + QString::number(id)},
                         {QStringLiteral("nRoomNo"), room},
                         {QStringLiteral("iFutanritsu"), 2},
                         {QStringLiteral("iHoken"), 1}};
        for (auto it = extra.cbegin(); it != extra.cend(); ++it)
            r.insert(it.key(), it.value());
        insert(QStringLiteral("RIYOUSHA"), r, db);
        insert(QStringLiteral("RIYOUSHA_SUB"),
               {{QStringLiteral("nIDNo"), id},
                {QStringLiteral("iKyotenCd"), site},
                {QStringLiteral("iKyotenEb"), 1},
                {QStringLiteral("iAddressSet"), 0},
                {QStringLiteral("iAddressSisetsuCd"), sisetsu},
                {QStringLiteral("iCareSisetsuCd"), sisetsu}},
               db);
        month(id, total, share, jippi, site, db);
    }

    void month(int id, int total, int share, int jippi, int site = 1,
               const QString& db = QStringLiteral("suite"), int ym = 202410)
    {
        insert(QStringLiteral("月間実績"),
               {{QStringLiteral("患者IDNo"), id},
                {QStringLiteral("iKyotenCd"), site},
                {QStringLiteral("iKyotenEb"), 1},
                {QStringLiteral("実績年"), ym / 100},
                {QStringLiteral("実績月"), ym % 100},
                {QStringLiteral("施術回数"), 4},
                {QStringLiteral("総合計"), total},
                {QStringLiteral("自己負担額2"), share},
                {QStringLiteral("実費料金"), jippi},
                {QStringLiteral("患者請求額"), share + jippi}},
               db);
    }

    // A corporation row of site 1/1: iType 0 is the site's main corporation.
    void corp(int id, int type, const QString& name, QVariantMap extra = {})
    {
        QVariantMap r = {{QStringLiteral("nIDNo"), id},
                         {QStringLiteral("iKyotenCd"), 1},
                         {QStringLiteral("iKyotenEb"), 1},
                         {QStringLiteral("iType"), type},
                         {QStringLiteral("cShamei1"), name},
                         {QStringLiteral("cYubinNo"), QStringLiteral("200-000") + QString::number(id)},
                         {QStringLiteral("cAddress1"), name + QStringLiteral("所在地")}};
        for (auto it = extra.cbegin(); it != extra.cend(); ++it)
            r.insert(it.key(), it.value());
        insert(QStringLiteral("CORP"), r);
    }

    // One treatment record: visit time "yyyy/mm/dd hh:mm:ss", day fee, co-payment, self-pay.
    void day(int patientId, const QString& start, int gokei, int futan = 100, int jippi = 0, int site = 1,
             QVariantMap extra = {})
    {
        QVariantMap r = {{QStringLiteral("iKyotenCd"), site},
                         {QStringLiteral("iKyotenEb"), 1},
                         {QStringLiteral("nRiyoushaIDNo"), patientId},
                         {QStringLiteral("tServicyDayStart"), start},
                         {QStringLiteral("iAnbunUmu"), 0},
                         {QStringLiteral("nGokeiKin"), gokei},
                         {QStringLiteral("nFutankin"), futan},
                         {QStringLiteral("nOuryouKin"), 0},
                         {QStringLiteral("nKanjaSeikyu"), futan + jippi},
                         {QStringLiteral("nJippiSejutu"), jippi}};
        for (auto it = extra.cbegin(); it != extra.cend(); ++it)
            r.insert(it.key(), it.value());
        insert(QStringLiteral("JISSEKI"), r);
    }
};
