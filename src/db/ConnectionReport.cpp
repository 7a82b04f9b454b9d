#include "db/ConnectionReport.h"

#include "db/AdodbIni.h"
#include "db/ConnectionString.h"
#include "db/DatabaseList.h"
#include "db/cT_ADODB.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString driverOf(const ConnectionString& cs)
{
    if (cs.backend() == ConnectionString::Backend::Sqlite)
        return u"組み込みデータベース (SQLite)"_s;
    return ConnectionString::odbcDriverName() + u" (ODBC)"_s;
}

// The server's product and version in one line: @@VERSION on SQL Server, sqlite_version() on
// SQLite.
QString serverVersion(cT_ADODB& ado, bool speaksSqlite, QString& error)
{
    RecordSet rs;
    const QString sql = speaksSqlite ? u"SELECT sqlite_version() AS V"_s : u"SELECT @@VERSION AS V"_s;
    if (ado.iOpenRecSet(rs, sql) != 0) {
        error = ado.sErrMsg;
        return QString();
    }
    const QString version = rs.isEOF() ? QString() : rs.field(0).toString().simplified();
    ado.iCloseRecSet(rs);
    return speaksSqlite ? u"SQLite "_s + version : version;
}

// The sites the site grid lists from this database.
int countSites(cT_ADODB& ado, const AppContext& ctx, QString& error)
{
    RecordSet rs;
    if (ado.iOpenRecSet(rs, kyotenGridSql(false, ctx.iStartMode)) != 0) {
        error = ado.sErrMsg;
        return 0;
    }
    int sites = 0;
    for (; !rs.isEOF(); rs.moveNext())
        ++sites;
    if (rs.hasError())
        error = rs.errorText();
    return sites;
}

QString yesNo(bool opened)
{
    return opened ? u"成功"_s : u"失敗"_s;
}

// An error of several lines, indented under the item it belongs to.
void appendError(QStringList& out, const QString& error)
{
    if (error.isEmpty())
        return;
    for (const QString& line : error.split(QRegularExpression(u"\\r\\n|\\r|\\n"_s), Qt::SkipEmptyParts))
        out.append(u"    "_s + line);
}

} // namespace

bool ConnectionReport::allOpened() const
{
    if (!opened || !listError.isEmpty())
        return false;
    return std::all_of(databases.cbegin(), databases.cend(), [](const Database& db) { return db.opened; });
}

QStringList ConnectionReport::lines() const
{
    QStringList out;
    out << u"接続文字列: "_s + connectionString;
    if (!odbcConnectString.isEmpty())
        out << u"ODBC 接続文字列: "_s + odbcConnectString;
    out << u"ドライバー: "_s + driver;
    out << u"接続: "_s + yesNo(opened);
    appendError(out, error);
    if (!serverVersion.isEmpty())
        out << u"サーバー: "_s + serverVersion;
    out << u"データベース一覧 (DB.ini):"_s;
    appendError(out, listError);
    for (const Database& db : databases) {
        QString line = u"  "_s + db.label + u"  サーバー: "_s + db.server + u"  データベース: "_s +
                       db.database + u"  接続: "_s + yesNo(db.opened);
        if (db.opened)
            line += u"  拠点数: "_s + QString::number(db.sites);
        out << line;
        appendError(out, db.error);
    }
    return out;
}

ConnectionReport checkConnections(const AppContext& ctx)
{
    ConnectionReport report;
    QString iniError;
    const QString text = readAdodbConnectionString(ctx, &iniError);
    const ConnectionString cs = ConnectionString::parse(text);
    report.connectionString = ConnectionString::masked(text);
    report.driver = driverOf(cs);
    if (cs.backend() == ConnectionString::Backend::Odbc && !text.isEmpty())
        report.odbcConnectString = ConnectionString::masked(cs.odbcConnectString());
    if (text.isEmpty()) {
        report.error = iniError.isEmpty() ? u"接続文字列取得できません。"_s : iniError;
    } else {
        cT_ADODB ado;
        if (ado.iInit(text) != 0 || ado.iConnect() != 0) {
            report.error = ado.sErrMsg;
        } else {
            report.opened = true;
            report.serverVersion = serverVersion(ado, cs.speaksSqlite(), report.error);
            ado.iDisConnect();
        }
    }

    // The list of databases; its reader has told of a broken file already.
    QList<DbInfo> list;
    if (iDatabaseRead(ctx, list) < 1) {
        report.listError = u"DBの読み込みに失敗しました"_s;
        return report;
    }
    for (const DbInfo& info : std::as_const(list)) {
        ConnectionReport::Database db;
        db.label = info.cDbLabel;
        db.server = info.cServer;
        db.database = info.cDatabase;
        cT_ADODB ado;
        if (ado.iInit(dbConnectionString(info)) != 0 || ado.iConnect() != 0) {
            db.error = ado.sErrMsg;
        } else {
            db.sites = countSites(ado, ctx, db.error);
            db.opened = db.error.isEmpty();
            ado.iDisConnect();
        }
        report.databases.append(db);
    }
    return report;
}

} // namespace qelprn
