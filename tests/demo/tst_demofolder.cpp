#include "app/Cp932.h"
#include "db/AdodbIni.h"
#include "db/DatabaseList.h"
#include "demo/DemoProgramFolder.h"
#include "support/FileBytes.h"
#include "support/TestInteraction.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

// The first value of the first row of sql on one generated database, Qt's SQLite driver.
QVariant value(const QString& file, const QString& sql)
{
    QVariant result;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"check"_s);
        db.setDatabaseName(file);
        db.open();
        QSqlQuery q(db);
        // A statement that does not run must not pass as "no mismatch".
        if (!q.exec(sql))
            QTest::qFail(qPrintable(q.lastError().text() + u" in: "_s + sql), __FILE__, __LINE__);
        else if (q.next())
            result = q.value(0);
    }
    QSqlDatabase::removeDatabase(u"check"_s);
    return result;
}

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
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = f.readAll();
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

    void sitesAndBranchZero()
    {
        const QString suite = dbFile(u"suite"_s);
        // The head-office row (branch 0) exists.
        QCOMPARE(value(suite, u"SELECT COUNT(*) FROM KYOTEN WHERE iKyotenEb = 0"_s), 1);
        QCOMPARE(value(suite, u"SELECT COUNT(*) FROM RIYOUSHA"_s).toInt() +
                     value(dbFile(u"suite2"_s), u"SELECT COUNT(*) FROM RIYOUSHA"_s).toInt(),
                 200);
        // One main corporation per site, and insurance kinds once per database.
        QCOMPARE(
            value(suite, u"SELECT COUNT(*) FROM CORP WHERE iType = 0 AND iKyotenCd = 1 AND iKyotenEb = 1"_s),
            1);
        QCOMPARE(value(suite, u"SELECT COUNT(*) FROM HOKEN WHERE iType = 3"_s), 1);

        // The program's own readers find both databases and the base connection in the settings.
        test::TestInteraction ui;
        AppContext ctx;
        ctx.csAppDir = m_folder;
        ctx.ui = &ui;
        QList<DbInfo> list;
        QCOMPARE(iDatabaseRead(ctx, list), qint16(2));
        QCOMPARE(list[0].cServer, u"sqlite:db"_s);
        QCOMPARE(list[0].cDbName + u'/' + list[1].cDatabase, u"suite/suite2"_s);
        QVERIFY(readAdodbConnectionString(ctx).contains(u"Database=suite;"_s));
        QVERIFY(ui.messages.isEmpty());
    }

    void amountsAreCoherent()
    {
        for (const QString& name : {u"suite"_s, u"suite2"_s}) {
            const QString db = dbFile(name);
            // The month row sums its days, and the share follows the burden code in tenths.
            QCOMPARE(
                value(
                    db,
                    u"SELECT group_concat(m.患者IDNo) FROM 月間実績 m JOIN RIYOUSHA r ON r.nIDNo = "
                    u"m.患者IDNo "
                    "AND r.iKyotenCd = m.iKyotenCd AND r.iKyotenEb = m.iKyotenEb "
                    "LEFT JOIN (SELECT j.iKyotenCd c, j.iKyotenEb b, j.nRiyoushaIDNo id, "
                    "  substr(j.tServicyDayStart, 1, 7) ym, COUNT(*) n, "
                    "  SUM(CASE WHEN j.iAnbunUmu = 1 THEN j.nGokeiKinAnbun ELSE j.nGokeiKin END) total, "
                    "  SUM(j.nJippiSejutu) jippi, SUM(j.nKanjaSeikyu) kanja FROM JISSEKI j "
                    "  GROUP BY 1, 2, 3, 4) d ON d.c = m.iKyotenCd AND d.b = m.iKyotenEb AND d.id = "
                    "m.患者IDNo "
                    "AND d.ym = printf('%04d/%02d', m.実績年, m.実績月) "
                    "WHERE d.n IS NULL OR m.施術回数 <> d.n OR m.総合計 <> d.total OR m.実費料金 <> d.jippi "
                    "OR "
                    "m.患者請求額 <> d.kanja OR m.患者請求額 <> m.自己負担額2 + m.実費料金 OR "
                    "m.自己負担額2 * 10 <> m.総合計 * ((CASE WHEN r.iFutanritsu > 0 THEN r.iFutanritsu ELSE "
                    "r.iKaigoLevel END) - 1)"_s)
                    .toString(),
                QString());
            QVERIFY(value(db, u"SELECT COUNT(*) FROM 月間実績"_s).toInt() > 0);
            // Every JISSEKI day belongs to a month row.
            QCOMPARE(value(db,
                           u"SELECT COUNT(*) FROM JISSEKI j WHERE NOT EXISTS (SELECT 1 FROM 月間実績 m WHERE "
                           "m.患者IDNo = j.nRiyoushaIDNo AND m.iKyotenCd = j.iKyotenCd AND "
                           "printf('%04d/%02d', m.実績年, m.実績月) = substr(j.tServicyDayStart, 1, 7))"_s),
                     0);
            // 1 to 15 treatment days a month.
            QCOMPARE(value(db,
                           u"SELECT COUNT(*) FROM (SELECT COUNT(DISTINCT substr(tServicyDayStart, 1, 10)) d "
                           "FROM JISSEKI GROUP BY iKyotenCd, iKyotenEb, nRiyoushaIDNo, "
                           "substr(tServicyDayStart, 1, 7)) WHERE d < 1 OR d > 15"_s),
                     0);
            // Every facility a patient points at exists, and every parent too.
            QCOMPARE(value(db,
                           u"SELECT group_concat(c) FROM (SELECT iAddressSisetsuCd c FROM RIYOUSHA_SUB "
                           "UNION ALL SELECT iAddressSisetsuCd2 FROM RIYOUSHA_SUB UNION ALL SELECT "
                           "iAddressSisetsuCd3 FROM RIYOUSHA_SUB UNION ALL SELECT iCareSisetsuCd FROM "
                           "RIYOUSHA_SUB UNION ALL SELECT nOyaSisetsuCd FROM SISETSU) WHERE IFNULL(c, 0) > 0 "
                           "AND c NOT IN (SELECT nIDNo FROM SISETSU)"_s)
                         .toString(),
                     QString());
        }
        // The data shows the cases the invoices must handle: split fees, self-pay, billing parents.
        const QString suite = dbFile(u"suite"_s);
        QVERIFY(value(suite, u"SELECT COUNT(*) FROM JISSEKI WHERE iAnbunUmu = 1"_s).toInt() > 0);
        QVERIFY(value(suite, u"SELECT COUNT(*) FROM JISSEKI WHERE nJippiSejutu > 0"_s).toInt() > 0);
        QVERIFY(value(suite, u"SELECT COUNT(*) FROM SISETSU WHERE IFNULL(nOyaSisetsuCd, 0) > 0"_s).toInt() >
                0);
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
