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

bool isFreeTdsDriver(const QString& driver)
{
    return driver.contains(u"FreeTDS"_s, Qt::CaseInsensitive) || driver.contains(u"libtdsodbc"_s);
}

// TDS 7.4 is SQL Server 2012's protocol; an older server answers with its own and FreeTDS follows.
const QString kTdsVersion = u"7.4"_s;

} // namespace

QString ConnectionString::masked(const QString& text)
{
    QStringList pieces = text.split(u';');
    for (QString& piece : pieces) {
        const qsizetype eq = piece.indexOf(u'=');
        const QString key = piece.left(eq).trimmed().toLower();
        if (eq > 0 && (key == u"pwd"_s || key == u"password"_s))
            piece = piece.left(eq + 1) + u"****"_s;
    }
    return pieces.join(u';');
}

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
    QString s = u"Driver={"_s + driver + u"};"_s;
    if (isFreeTdsDriver(driver)) {
        // FreeTDS takes "host\instance" as Server, a port only as its own Port attribute; the
        // protocol version and the client's character set must be given for Japanese text to
        // arrive intact (the defaults are an old protocol and ISO 8859-1).
        const qsizetype comma = dataSource.lastIndexOf(u',');
        if (comma > 0 && !dataSource.contains(u'\\'))
            s += u"Server="_s + dataSource.left(comma).trimmed() + u";Port="_s +
                 dataSource.mid(comma + 1).trimmed();
        else
            s += u"Server="_s + dataSource;
        s += u";TDS_Version="_s + kTdsVersion + u";ClientCharset=UTF-8"_s;
    } else {
        s += u"Server="_s + dataSource;
    }
    s += u";Database="_s + database;
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
