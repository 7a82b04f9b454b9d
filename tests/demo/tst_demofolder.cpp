#include "app/Cp932.h"
#include "demo/DemoProgramFolder.h"
#include "support/FileBytes.h"
#include "support/TestInteraction.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

// A digest of every row of every table of one generated database.
QByteArray digest(const QString& file)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"digest"_s);
        db.setDatabaseName(file);
        db.open();
        QStringList tables = db.tables();
        tables.sort();
        for (const QString& table : std::as_const(tables)) {
            QSqlQuery q(u"SELECT * FROM \"%1\" ORDER BY rowid"_s.arg(table), db);
            while (q.next()) {
                for (int i = 0; i < q.record().count(); ++i)
                    hash.addData(q.value(i).toString().toUtf8() + '\x1f');
            }
        }
    }
    QSqlDatabase::removeDatabase(u"digest"_s);
    return hash.result().toHex();
}

QString decodeCp932(const QString& file, bool* crlfOnly)
{
    const QByteArray bytes = test::readAll(file);
    // Every LF must follow a CR.
    *crlfOnly = bytes.count('\n') == bytes.count("\r\n") && bytes.count('\n') > 0;
    const QString text = qelprn::fromCp932(bytes);
    return text.contains(QChar::ReplacementCharacter) ? QString() : text;
}

} // namespace

class tst_DemoFolder : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString m_folder;
    QString dbFile(const QString& name) const
    {
        return QDir(m_folder).filePath(u"db/"_s + name + u".sqlite"_s);
    }

private slots:
    void initTestCase()
    {
        m_folder = m_dir.filePath(u"demo"_s);
        DemoOptions options;
        options.folder = m_folder;
        options.month = QDate(2026, 10, 1);
        options.engineProgram = u"/opt/qelprn/bin/qelprn-engine"_s;
        test::TestInteraction ui;
        QString error;
        QVERIFY2(DemoProgramFolder(options).create(ui, &error), qPrintable(error));
        QVERIFY(ui.messages.isEmpty());
    }

    void settingsFilesAreCp932WithCrLf()
    {
        const QList<std::pair<QString, QStringList>> expected = {
            {u"Tovara.ini"_s,
             {u"SYSTEM_SYS=\\SYS"_s, u"SYSTEM_TMP=\\TMP"_s, u"SYSTEM_ICON=\\ICON"_s, u"SYSTEM_DATA=\\DATA"_s,
              u"WALLPAPER=wallpaper.png"_s, u"BASEID=0101"_s, u"終了患者施術期間=3"_s,
              u"FORM_ENGINE="_s + QDir::toNativeSeparators(u"/opt/qelprn/bin/qelprn-engine"_s)}},
            {u"adodb.ini"_s,
             {u"[接続情報]"_s,
              u"接続情報=Provider=SQLOLEDB;Data Source=sqlite:db;Database=suite;uid=sa;pwd=tqz4187"_s}},
            {u"DB.ini"_s,
             {u"\"杉並本店・練馬支店:suite\",\"sqlite:db\",\"suite\""_s,
              u"\"三鷹本店:suite2\",\"sqlite:db\",\"suite2\""_s}},
            {u"DATA/施設種類List.txt"_s, {u"－指定なし－"_s, u"特別養護老人ホーム"_s}},
        };
        for (const auto& [file, expectedLines] : expected) {
            bool crlf = false;
            const QString text = decodeCp932(QDir(m_folder).filePath(file), &crlf);
            QVERIFY2(!text.isEmpty(), qPrintable(file));
            QVERIFY2(crlf, qPrintable(file));
            const QStringList lines = text.split(u"\r\n"_s);
            for (const QString& line : expectedLines)
                QVERIFY2(lines.contains(line), qPrintable(file + u": "_s + line));
        }
        for (const char* sub : {"SYS", "TMP", "ICON", "DATA", "db"})
            QVERIFY(QFileInfo(QDir(m_folder).filePath(QString::fromLatin1(sub))).isDir());
        QVERIFY(!QImage(QDir(m_folder).filePath(u"DATA/corpseal.bmp"_s)).isNull());
        // Every layout of the program is in SYS.
        const QStringList layouts = QDir(u":/layouts"_s).entryList({u"*.wfd"_s});
        for (const QString& l : layouts)
            QVERIFY2(QFile::exists(QDir(m_folder).filePath(u"SYS/"_s + l)), qPrintable(l));
    }

    // The demo is the same on every machine and every run: the screenshots, the guide and any
    // comparison of printed forms before and after a change rely on it. A deliberate change to the
    // generated data changes these digests with it.
    void sameOnEveryRun()
    {
        QCOMPARE(digest(dbFile(u"suite"_s)) + ' ' + digest(dbFile(u"suite2"_s)),
                 "7c1306f33c57b59039a8c4da54ab193272f8dd22 9bed6312ab1893f55a3b3b3d728088bdd851b53f");
    }

    void refusesToOverwriteAFolderInUse()
    {
        DemoOptions options;
        options.folder = m_folder;
        options.patients = 5;
        test::TestInteraction ui;
        QString error;
        QVERIFY(!DemoProgramFolder(options).create(ui, &error));
        QVERIFY2(error.contains(u"--replace"_s), qPrintable(error));
        // A folder that cannot be created is reported, not ignored.
        QVERIFY(test::writeAll(m_dir.filePath(u"file"_s), {}));
        options.folder = m_dir.filePath(u"file/sub"_s);
        QVERIFY(!DemoProgramFolder(options).create(ui, &error));
        QVERIFY(error.contains(u"file"_s));
        // So is a settings file that cannot be written.
        options.folder = m_dir.filePath(u"blocked"_s);
        QVERIFY(QDir(options.folder).mkpath(u"Tovara.ini"_s));
        options.replace = true;
        QVERIFY(!DemoProgramFolder(options).create(ui, &error));
        QVERIFY2(error.contains(u"Tovara.ini"_s), qPrintable(error));
    }
};

QTEST_MAIN(tst_DemoFolder)
#include "tst_demofolder.moc"
