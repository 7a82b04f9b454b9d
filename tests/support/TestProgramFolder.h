#pragma once

#include "app/AppContext.h"

#include <QString>
#include <QTemporaryDir>
#include <QTest>
#include <QVariantMap>

namespace qelprn::test {

// A throw-away program folder as the suite lays it out: "Tovara.ini" (folders, wallpaper, own site
// 0101), the folders SYS, TMP, ICON and DATA, "adodb.ini" pointing at the embedded database, and
// db/suite.sqlite with the suite's schema. Tests fill the database with exec()/insert(), which
// speak plain SQLite through Qt's own driver (not through the program's connection wrapper), and a
// failing statement fails the running test with the database's message.
class TestProgramFolder
{
public:
    TestProgramFolder();

    QString path() const;
    AppContext context(Interaction& ui) const; // csAppDir = path(), site 1 / 1
    QString connectionString(const QString& database = QStringLiteral("suite")) const;
    // Another empty database with the schema, db/<name>.sqlite; returns its connection string.
    QString addDatabase(const QString& name);
    void exec(const QString& sqliteSql, const QString& database = QStringLiteral("suite"));
    void insert(const QString& table, const QVariantMap& row,
                const QString& database = QStringLiteral("suite"));
    QString filePath(const QString& relative) const;
    // A settings or list file in CP932 with CR LF line ends (lines separated by \n in text).
    void writeSettingsFile(const QString& relative, const QString& text);

private:
    QString databaseFile(const QString& database) const;

    QTemporaryDir m_dir;
};

// One data row per back end: the embedded engine, and unixODBC with SQLite's ODBC driver.
inline void addBackEndRows()
{
    QTest::addColumn<bool>("odbc");
    QTest::newRow("embedded") << false;
    QTest::newRow("odbc") << true;
}

} // namespace qelprn::test
