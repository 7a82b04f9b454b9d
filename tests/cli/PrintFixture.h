#pragma once

// The data of a small month on a real SQLite database, and the command line that prints it.
#include "billing/BillingFixture.h"
#include "support/CliRun.h"
#include "support/FileBytes.h"

#include <QStringList>

namespace qelprn::test {

using namespace Qt::StringLiterals;

// One billing facility with one treated facility and one patient with two treatment days, one of
// them with a self-pay fee; the site 1/1 in the site list.
struct PrintFixture : BillingFixture
{
    PrintFixture()
    {
        corp(1, 0, u"ほほえみ治療院"_s);
        facility(100, u"さくら会"_s);
        facility(101, u"さくら館, 本館"_s, 100);
        patient(1001, 101, 10000, 1000, 500, 201);
        day(1001, u"2024/10/03 10:00:00"_s, 5000, 500, 500);
        day(1001, u"2024/10/10 10:00:00"_s, 5000, 500, 0);
        insert(u"療養費単価"_s, {{u"iTankaKbn"_s, 2},
                                 {u"nTankaCode"_s, 1},
                                 {u"cStartDate"_s, u"2024/04/01"_s},
                                 {u"cEndDate"_s, u"2026/03/31"_s},
                                 {u"nTanka"_s, 2300}});
        insert(u"KYOTEN"_s,
               {{u"iKyotenCd"_s, 1}, {u"iKyotenEb"_s, 1}, {u"cKyotenName"_s, u"本店"_s}, {u"iUsedFlg"_s, 1}});
    }

    QStringList args(int kind, const QStringList& more) const
    {
        return QStringList{u"print"_s,   u"--app-dir"_s,        folder.path(),
                           u"--kind"_s,  QString::number(kind), u"--month"_s,
                           u"2024/10"_s, u"--issue-date"_s,     u"2024/11/05"_s} +
               more;
    }
    CliRun print(int kind, const QStringList& more) { return callCli(args(kind, more)); }
};

} // namespace qelprn::test
