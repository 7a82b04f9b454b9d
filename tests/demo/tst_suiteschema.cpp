#include "demo/DemoDatabaseBuilder.h"
#include "demo/SuiteSchema.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Leaves the driver to Qt's own SQLite plugin; once the schema is in the file, first puts a folder
// in its place, so that the next open of the file fails.
struct FolderOnReopen : QSqlDriverCreatorBase
{
    QString file;
    QSqlDriver* createObject() const override
    {
        if (QFile::remove(file))
            QDir().mkdir(file);
        return nullptr;
    }
};

} // namespace

class tst_SuiteSchema : public QObject
{
    Q_OBJECT

private slots:
    void createsEveryTableTwice()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(u"s.sqlite"_s);
        QString error;
        QVERIFY2(qelprn::createSuiteSchema(file, &error), qPrintable(error));
        QVERIFY2(qelprn::createSuiteSchema(file, &error), qPrintable(error)); // completes, never fails
        QStringList tables;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"check"_s);
            db.setDatabaseName(file);
            QVERIFY(db.open());
            tables = db.tables();
        }
        QSqlDatabase::removeDatabase(u"check"_s);
        QCOMPARE(tables.size(), 20); // every table the programs and the tests use
        QVERIFY(!qelprn::createSuiteSchema(dir.filePath(u"no/such/dir/x.sqlite"_s), &error));
        QVERIFY(!error.isEmpty());
    }

    // The demo builder opens the file again after the schema: a file it cannot open then fails the
    // build, with the file in the reason.
    void builderFailsWhenTheFileCannotBeOpened()
    {
        QTemporaryDir dir;
        auto* creator = new FolderOnReopen;
        creator->file = dir.filePath(u"d.sqlite"_s);
        QSqlDatabase::registerSqlDriver(u"QSQLITE"_s, creator);
        const auto unregister = qScopeGuard([] { QSqlDatabase::registerSqlDriver(u"QSQLITE"_s, nullptr); });
        QString error;
        QVERIFY(
            !qelprn::DemoDatabaseBuilder(creator->file, {}, QDate(2026, 10, 1), 1, false).build({}, &error));
        QVERIFY2(error.startsWith(creator->file + u": "_s), qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(tst_SuiteSchema)
#include "tst_suiteschema.moc"
