#include "TestProgramFolder.h"

#include "app/AtomicFile.h"
#include "app/Cp932.h"
#include "demo/SuiteSchema.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>
#include <QUuid>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace qelprn::test {

namespace {

void fail(const QString& message)
{
    std::fprintf(stderr, "TestProgramFolder: %s\n", message.toLocal8Bit().constData());
    QTest::qFail(message.toUtf8().constData(), __FILE__, __LINE__);
}

// Runs fn with an open QSQLITE connection on file; a unique connection name per call keeps
// parallel helpers apart and lets the file be closed before the program under test opens it.
template <typename Fn> void withDatabase(const QString& file, Fn fn)
{
    const QString name = u"qelprn-test-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, name);
        db.setDatabaseName(file);
        if (!db.open())
            fail(u"cannot open "_s + file + u": "_s + db.lastError().text());
        else
            fn(db);
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

} // namespace

TestProgramFolder::TestProgramFolder()
{
    if (!m_dir.isValid()) {
        fail(u"cannot create a temporary program folder: "_s + m_dir.errorString());
        return;
    }
    QDir root(m_dir.path());
    for (const QString& sub : {u"SYS"_s, u"TMP"_s, u"ICON"_s, u"DATA"_s, u"db"_s})
        root.mkpath(sub);
    writeSettingsFile(u"Tovara.ini"_s, u"[SYSTEM]\n"
                                       "SYSTEM_SYS=\\SYS\n"
                                       "SYSTEM_TMP=\\TMP\n"
                                       "SYSTEM_ICON=\\ICON\n"
                                       "SYSTEM_DATA=\\DATA\n"
                                       "WALLPAPER=wallpaper.png\n"
                                       "BASEID=0101\n"_s);
    writeSettingsFile(u"adodb.ini"_s, u"[接続情報]\n接続情報="_s + connectionString() + u"\n"_s);
    QString error;
    if (!createSuiteSchema(databaseFile(u"suite"_s), &error))
        fail(u"cannot create the schema: "_s + error);
}

QString TestProgramFolder::path() const
{
    return m_dir.path();
}

AppContext TestProgramFolder::context(Interaction& ui) const
{
    AppContext ctx;
    ctx.csAppDir = path();
    // Start-up makes the program folder the current directory; relative database folders
    // ("sqlite:db") are taken from it.
    QDir::setCurrent(path());
    ctx.iBaseKyotenCd = 1;
    ctx.iBaseKyotenEb = 1;
    // Rounding stays 0 / 0 as at start-up; the invoice queries set it themselves.
    ctx.ui = &ui;
    return ctx;
}

QString TestProgramFolder::connectionString(const QString& database) const
{
    return u"Provider=SQLOLEDB;Data Source=sqlite:db;Database="_s + database + u";uid=sa;pwd=tqz4187"_s;
}

QString TestProgramFolder::addDatabase(const QString& name)
{
    QString error;
    if (!createSuiteSchema(databaseFile(name), &error))
        fail(u"cannot create database "_s + name + u": "_s + error);
    return connectionString(name);
}

void TestProgramFolder::exec(const QString& sqliteSql, const QString& database)
{
    withDatabase(databaseFile(database), [&](QSqlDatabase& db) {
        QSqlQuery query(db);
        if (!query.exec(sqliteSql))
            fail(query.lastError().text() + u" in: "_s + sqliteSql);
    });
}

void TestProgramFolder::insert(const QString& table, const QVariantMap& row, const QString& database)
{
    QStringList columns;
    QStringList marks;
    for (auto it = row.cbegin(); it != row.cend(); ++it) {
        columns.append(u'"' + it.key() + u'"');
        marks.append(u"?"_s);
    }
    const QString sql = u"INSERT INTO \""_s + table + u"\" ("_s + columns.join(u", "_s) + u") VALUES ("_s +
                        marks.join(u", "_s) + u")"_s;
    withDatabase(databaseFile(database), [&](QSqlDatabase& db) {
        QSqlQuery query(db);
        if (!query.prepare(sql)) {
            fail(query.lastError().text() + u" in: "_s + sql);
            return;
        }
        for (auto it = row.cbegin(); it != row.cend(); ++it)
            query.addBindValue(it.value());
        if (!query.exec())
            fail(query.lastError().text() + u" in: "_s + sql);
    });
}

QString TestProgramFolder::filePath(const QString& relative) const
{
    return m_dir.filePath(relative);
}

void TestProgramFolder::writeSettingsFile(const QString& relative, const QString& text)
{
    QString crlf = text;
    crlf.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"\r\n"_s);
    const QString file = filePath(relative);
    QDir().mkpath(QFileInfo(file).absolutePath());
    QString error;
    if (!writeFileAtomically(file, toCp932(crlf), &error))
        fail(u"cannot write "_s + file + u": "_s + error);
}

QString TestProgramFolder::databaseFile(const QString& database) const
{
    return filePath(u"db/"_s + database + u".sqlite"_s);
}

} // namespace qelprn::test
