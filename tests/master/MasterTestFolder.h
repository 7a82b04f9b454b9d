#pragma once

#include "db/RecordSet.h"
#include "db/cT_ADODB.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace qelprn::test {

// A test's program folder with an open connection to its database, and "adodb.ini" naming it:
// embedded, or through the ODBC driver manager with SQLite's driver (a Data Source that is a
// folder). The embedded database is named by absolute path: pooled connections are kept per
// connection string, so a relative "sqlite:db" of one test's folder would reach another's.
struct TestDb
{
    TestProgramFolder folder;
    TestInteraction ui;
    AppContext ctx = folder.context(ui);
    cT_ADODB ado;

    explicit TestDb(bool odbc = false)
    {
        if (odbc)
            qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
        const QString cs = u"Provider=SQLOLEDB;Data Source="_s + (odbc ? u""_s : u"sqlite:"_s) +
                           folder.filePath(u"db"_s) + u";Database=suite;uid=sa;pwd=x"_s;
        folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報="_s + cs + u"\n"_s);
        if (ado.iInit(cs) != 0 || ado.iConnect() != 0)
            qFatal("cannot connect: %s", qPrintable(ado.sErrMsg));
    }
    ~TestDb()
    {
        ado.iDisConnect();
        qunsetenv("QELPRN_ODBC_DRIVER");
    }
    // The rows of sql, values joined by "|".
    QString one(const QString& sql)
    {
        RecordSet rs;
        if (ado.iOpenRecSet(rs, sql) != 0)
            return u"ERROR "_s + ado.sErrMsg;
        QStringList values;
        for (; !rs.isEOF(); rs.moveNext())
            for (int i = 0; i < rs.fieldCount(); ++i)
                values << rs.field(i).toString();
        ado.iCloseRecSet(rs);
        return values.join(u'|');
    }
};

} // namespace qelprn::test
