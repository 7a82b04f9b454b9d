#pragma once

#include <QString>

namespace qelprn {

// A connection string of the suite's ADO shape ("Provider=SQLOLEDB;Data Source=...;Database=...;
// uid=...;pwd=..."), parsed, and the back end it selects. Keys compare case-insensitively and may
// stand in any order; "Initial Catalog", "User ID", "Password" and "Integrated Security" are
// understood, unknown keys ignored.
struct ConnectionString
{
    enum class Backend { Sqlite, Odbc };

    QString provider;
    QString dataSource;
    QString database;
    QString user;
    QString password;
    bool integratedSecurity = false;

    static ConnectionString parse(const QString& text);
    // text with the value of every pwd/password key replaced by "****", for showing it.
    static QString masked(const QString& text);

    // A Data Source beginning with "sqlite:" selects the embedded engine, whatever the Provider.
    Backend backend() const;
    // SQLite: the database file "<folder>/<Database>.sqlite", the folder taken relative to the
    // current directory (the program folder) unless absolute.
    QString sqliteFile() const;
    // ODBC: "Driver={<driver>};Server=<Data Source>;Database=<Database>;UID=<uid>;PWD=<pwd>". The
    // driver comes from QELPRN_ODBC_DRIVER ("SQL Server" on Windows, "FreeTDS" elsewhere). For
    // FreeTDS a Data Source "host,port" becomes Server=host;Port=port ("host\instance" stays), and
    // TDS_Version=7.4;ClientCharset=UTF-8 follow. With one of the SQLite ODBC drivers the Data
    // Source names a folder holding <Database>.sqlite.
    QString odbcConnectString() const;
    static QString odbcDriverName();
    // True when the statements must be translated to SQLite's dialect.
    bool speaksSqlite() const;
};

} // namespace qelprn
