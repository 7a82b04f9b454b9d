#include "db/DatabaseList.h"
#include "support/TestInteraction.h"
#include "support/TestProgramFolder.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;
using qelprn::test::TestProgramFolder;

class tst_sites_list : public QObject
{
    Q_OBJECT

private slots:
    // The databases "DB.ini" lists (without it, the one "adodb.ini" names); "ServerName.zkt" names
    // a server that replaces theirs.
    void databaseList()
    {
        TestProgramFolder folder;
        TestInteraction ui;
        const qelprn::AppContext ctx = folder.context(ui);
        QCOMPARE(qelprn::cDBserverName2(ctx), QString());
        // Without "DB.ini", the one database "adodb.ini" names.
        QList<qelprn::DbInfo> list;
        QCOMPARE(qelprn::iDatabaseRead(ctx, list), qint16(1));
        QCOMPARE(QStringList({list[0].cServer, list[0].cDatabase, list[0].cDbLabel, list[0].cDbName}),
                 QStringList({u"sqlite:db"_s, u"suite"_s, u"suite:suite"_s, u"suite"_s}));

        // Missing, or a folder of that name: the file is not found.
        const QStringList missing = {u"cT_Syuukei.iDatabaseRead() でエラー\r\n指定されたIni（"_s +
                                     folder.path() + u"\\adodb.ini）ファイルが見つかりません。"_s};
        QVERIFY(QFile::remove(folder.filePath(u"adodb.ini"_s)));
        QCOMPARE(qelprn::iDatabaseRead(ctx, list), qint16(0));
        QCOMPARE(ui.texts(), missing);
        QVERIFY(QDir(folder.path()).mkdir(u"adodb.ini"_s));
        ui.clear();
        QCOMPARE(qelprn::iDatabaseRead(ctx, list), qint16(0));
        QCOMPARE(ui.texts(), missing);

        ui.clear();
        folder.writeSettingsFile(u"ServerName.zkt"_s,
                                 u"; server\n[DBServer]=  FIRST \nx\n[DBServer]=SECOND"_s);
        QCOMPARE(qelprn::cDBserverName2(ctx), u"SECOND"_s);
        // Only spaces are trimmed, as the suite's Trim does: a tab stays.
        folder.writeSettingsFile(u"ServerName.zkt"_s, u"[DBServer]= \tTAB "_s);
        QCOMPARE(qelprn::cDBserverName2(ctx), u"\tTAB"_s);
        folder.writeSettingsFile(u"ServerName.zkt"_s, u"[DBserver]=lower case is no tag"_s);
        QCOMPARE(qelprn::cDBserverName2(ctx), QString());

        folder.writeSettingsFile(u"DB.ini"_s,
                                 u"\"db1:本店DB\",\"HOST1\\SQL,X\",\"suite\"\n\nplain,HOST2\\INST,other\n"_s);
        QCOMPARE(qelprn::iDatabaseRead(ctx, list), qint16(2));
        QCOMPARE(QStringList({list[0].cServer, list[0].cDatabase, list[0].cDbLabel, list[0].cDbName}),
                 QStringList({u"HOST1\\SQL,X"_s, u"suite"_s, u"db1:本店DB"_s, u"本店DB"_s}));
        // A label without ":" is its own name.
        QCOMPARE(list[1].cDbName, u"plain"_s);
        QCOMPARE(qelprn::dbConnectionString(list[1]),
                 u"Provider=SQLOLEDB;Data Source=HOST2\\INST;Database=other;uid=sa;pwd=tqz4187"_s);

        // The server name file replaces the server, the instance part stays.
        folder.writeSettingsFile(u"ServerName.zkt"_s, u"[DBServer]=NEWHOST"_s);
        QCOMPARE(qelprn::iDatabaseRead(ctx, list), qint16(2));
        QCOMPARE(list[0].cServer + u'|' + list[1].cServer, u"NEWHOST\\SQL,X|NEWHOST\\INST"_s);
        QVERIFY(ui.messages.isEmpty());

        // Without "\" the server cannot be replaced: reported, nothing listed.
        folder.writeSettingsFile(u"DB.ini"_s, u"a:b,HOST,suite"_s);
        QCOMPARE(qelprn::iDatabaseRead(ctx, list), qint16(0));
        QVERIFY(list.isEmpty());
        QCOMPARE(ui.messages.size(), 1);
        QVERIFY(ui.messages[0].text.startsWith(u"cT_Syuukei.iDatabaseRead() でエラー\r\n"_s));
        QCOMPARE(std::pair(ui.messages[0].title, ui.messages[0].icon),
                 std::pair(u"施設請求書印刷"_s, qelprn::MsgIcon::Critical));
    }
};

QTEST_GUILESS_MAIN(tst_sites_list)
#include "tst_sites_list.moc"
