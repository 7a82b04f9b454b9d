#pragma once

#include "db/RecordSet.h"
#include "db/cT_ADODB.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QDir>
#include <QScopeGuard>
#include <QTest>

using namespace Qt::StringLiterals;

namespace qelprn::test {

// The folder's context, its "adodb.ini" naming the embedded database by absolute path: pooled
// connections are kept per connection string, so a relative "sqlite:db" of one test's folder
// would otherwise reach another test's database.
inline QString embeddedConnectionString(const TestProgramFolder& folder)
{
    return u"Provider=SQLOLEDB;Data Source=sqlite:"_s + folder.filePath(u"db"_s) +
           u";Database=suite;uid=sa;pwd=x"_s;
}

// The same database through the ODBC driver manager: a Data Source that is a folder.
inline QString odbcConnectionString(const TestProgramFolder& folder)
{
    return u"Provider=SQLOLEDB;Data Source="_s + folder.filePath(u"db"_s) + u";Database=suite;uid=sa;pwd=x"_s;
}

inline void writeAdodbIni(TestProgramFolder& folder, const QString& connectionString)
{
    folder.writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報="_s + connectionString + u"\n"_s);
}

inline AppContext contextIn(TestProgramFolder& folder, Interaction& ui)
{
    QDir::setCurrent(folder.path());
    writeAdodbIni(folder, embeddedConnectionString(folder));
    return folder.context(ui);
}

// Points "adodb.ini" of folder at its own suite database through the ODBC driver manager with
// SQLite's driver (odbc false: the embedded engine), for as long as the returned guard lives.
[[nodiscard]] inline auto useOdbc(TestProgramFolder& folder, bool odbc = true)
{
    if (odbc)
        qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
    writeAdodbIni(folder, odbc ? odbcConnectionString(folder) : embeddedConnectionString(folder));
    return qScopeGuard([&folder] {
        qunsetenv("QELPRN_ODBC_DRIVER");
        writeAdodbIni(folder, embeddedConnectionString(folder));
    });
}

// A test's program folder with an open connection to its database (embedded, or through the
// ODBC driver manager with SQLite's driver).
struct TestDb
{
    TestProgramFolder folder;
    TestInteraction ui;
    AppContext ctx;
    cT_ADODB ado;

    explicit TestDb(bool odbc = false) : ctx(contextIn(folder, ui))
    {
        QString cs = embeddedConnectionString(folder);
        if (odbc) {
            qputenv("QELPRN_ODBC_DRIVER", "SQLite3");
            cs = odbcConnectionString(folder);
        }
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
