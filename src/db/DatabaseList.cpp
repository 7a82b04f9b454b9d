#include "db/DatabaseList.h"

#include "app/Cp932.h"
#include "app/CsvRecord.h"
#include "app/FileUtil.h"
#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "app/SpaceTrim.h"
#include "db/AdodbIni.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString afterFirst(const QString& text, QChar sep)
{
    const qsizetype i = text.indexOf(sep);
    return i < 0 ? text : text.mid(i + 1);
}

void reportListError(const AppContext& ctx, const QString& errorText)
{
    ctx.interaction().messageBox(u"cT_Syuukei.iDatabaseRead() でエラー\r\n"_s + errorText, seikyuTitle(),
                                 MsgIcon::Critical);
}

} // namespace

QString cDBserverName2(const AppContext& ctx)
{
    const QString path = toLocalPath(ctx.csAppDir + u"\\ServerName.zkt"_s);
    if (!bFileExists(path))
        return {};
    QString server;
    const QString tag = u"[DBServer]="_s;
    for (const QString& line : readTextLines(path)) {
        if (line.left(11) == tag)
            server = trimSpaces(line.mid(11));
    }
    return server;
}

qint16 iDatabaseRead(const AppContext& ctx, QList<DbInfo>& list)
{
    list.clear();
    const QString server = cDBserverName2(ctx);
    const QString dbIni = toLocalPath(ctx.csAppDir + u"\\DB.ini"_s);
    if (bFileExists(dbIni)) {
        bool ok = false;
        const QStringList lines = readTextLines(dbIni, &ok);
        if (!ok) {
            reportListError(ctx, u"DB.ini を読み込めません。"_s);
            return 0;
        }
        int lineNo = 0;
        for (const QString& line : lines) {
            ++lineNo;
            if (trimSpaces(line).isEmpty())
                continue;
            QStringList f = splitCsvRecord(line);
            while (f.size() < 3)
                f.append(QString());
            DbInfo db;
            db.cDbLabel = f.at(0);
            db.cServer = f.at(1);
            db.cDatabase = f.at(2);
            if (!server.isEmpty()) {
                // The instance part of field 2 follows the server named in ServerName.zkt.
                const qsizetype bs = db.cServer.indexOf(u'\\');
                if (bs < 0) {
                    list.clear();
                    reportListError(ctx, u"DB.ini の "_s + QString::number(lineNo) +
                                             u" 行目のサーバー名「"_s + db.cServer +
                                             u"」に「\\」がないため、サーバー名を置き換えられません。"_s);
                    return 0;
                }
                db.cServer = server + db.cServer.mid(bs);
            }
            db.cDbName = afterFirst(db.cDbLabel, u':');
            list.append(db);
        }
        return qint16(list.size());
    }

    QString readError;
    const QString cs = readAdodbConnectionString(ctx, &readError);
    if (!readError.isEmpty()) {
        reportListError(ctx, readError);
        return 0;
    }
    const QStringList pieces = cs.split(u';');
    if (pieces.size() < 3) {
        reportListError(ctx, u"接続文字列取得できません。"_s);
        return 0;
    }
    DbInfo db;
    db.cServer = afterFirst(pieces.at(1), u'=');
    db.cDatabase = afterFirst(pieces.at(2), u'=');
    db.cDbLabel = db.cDatabase + u':' + db.cDatabase;
    db.cDbName = db.cDatabase;
    list.append(db);
    return 1;
}

QString dbConnectionString(const DbInfo& db)
{
    const QString cs = u"Provider=SQLOLEDB;Data Source="_s + db.cServer + u";Database="_s + db.cDatabase +
                       u";uid=sa;pwd=tqz4187"_s;
    return trimRightSpaces(csCutNull(cs));
}

QString kyotenGridSql(bool bAllFlg, qint16 startMode)
{
    QString sql = u" SELECT "_s + u" KYOTEN.iKyotenCd,"_s + u" KYOTEN.iKyotenEb,"_s +
                  u" KYOTEN.cKyotenName"_s + u" FROM KYOTEN "_s + u" WHERE "_s;
    if (bAllFlg) {
        sql += u" KYOTEN.iKyotenEb<>0"_s;
    } else {
        if (startMode == 0 || startMode == 1)
            // A positive number is written with a leading sign space, hence two blanks after "=".
            sql += u" KYOTEN.iUsedFlg = "_s + u' ' + QString::number(startMode + 1) + u' ';
        else
            sql += u" ( KYOTEN.iUsedFlg = 1 or KYOTEN.iUsedFlg = 2 ) "_s;
        sql += u" AND KYOTEN.iKyotenEb<>0"_s;
    }
    return sql + u" ORDER BY KYOTEN.iKyotenCd,KYOTEN.iKyotenEb"_s;
}

} // namespace qelprn
