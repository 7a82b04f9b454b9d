#include "db/ConnectionString.h"

#include <QDir>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kSqlitePrefix = u"sqlite:"_s;

bool isSqliteOdbcDriver(const QString& driver)
{
    return driver.startsWith(u"SQLite"_s, Qt::CaseInsensitive);
}

} // namespace

ConnectionString ConnectionString::parse(const QString& text)
{
    ConnectionString cs;
    const QStringList pieces = text.split(u';', Qt::SkipEmptyParts);
    for (const QString& piece : pieces) {
        const qsizetype eq = piece.indexOf(u'=');
        if (eq < 0)
            continue;
        const QString key = piece.left(eq).trimmed().toLower();
        const QString value = piece.mid(eq + 1).trimmed();
        if (key == u"provider"_s)
            cs.provider = value;
        else if (key == u"data source"_s || key == u"server"_s)
            cs.dataSource = value;
        else if (key == u"database"_s || key == u"initial catalog"_s)
            cs.database = value;
        else if (key == u"uid"_s || key == u"user id"_s)
            cs.user = value;
        else if (key == u"pwd"_s || key == u"password"_s)
            cs.password = value;
        else if (key == u"integrated security"_s)
            cs.integratedSecurity = value.compare(u"SSPI"_s, Qt::CaseInsensitive) == 0 ||
                                    value.compare(u"true"_s, Qt::CaseInsensitive) == 0;
    }
    return cs;
}

ConnectionString::Backend ConnectionString::backend() const
{
    return dataSource.startsWith(kSqlitePrefix, Qt::CaseInsensitive) ? Backend::Sqlite : Backend::Odbc;
}

QString ConnectionString::sqliteFile() const
{
    const QString folder = QDir::fromNativeSeparators(dataSource.mid(kSqlitePrefix.size()));
    return QDir::current().absoluteFilePath(QDir(folder).filePath(database + u".sqlite"_s));
}

QString ConnectionString::odbcDriverName()
{
    const QString configured = qEnvironmentVariable("QELPRN_ODBC_DRIVER");
    if (!configured.isEmpty())
        return configured;
#ifdef Q_OS_WIN
    return u"SQL Server"_s;
#else
    return u"FreeTDS"_s;
#endif
}

QString ConnectionString::odbcConnectString() const
{
    const QString driver = odbcDriverName();
    if (isSqliteOdbcDriver(driver)) {
        const QString file = QDir(QDir::fromNativeSeparators(dataSource)).filePath(database + u".sqlite"_s);
        return u"Driver={"_s + driver + u"};Database="_s + file + u";Timeout=5000"_s;
    }
    QString s = u"Driver={"_s + driver + u"};Server="_s + dataSource + u";Database="_s + database;
    if (integratedSecurity)
        s += u";Trusted_Connection=Yes"_s;
    else
        s += u";UID="_s + user + u";PWD="_s + password;
    return s;
}

bool ConnectionString::speaksSqlite() const
{
    return backend() == Backend::Sqlite || isSqliteOdbcDriver(odbcDriverName());
}

} // namespace qelprn
