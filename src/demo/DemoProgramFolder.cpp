#include "demo/DemoProgramFolder.h"

#include "app/AtomicFile.h"
#include "app/Cp932.h"
#include "demo/DemoDatabaseBuilder.h"
#include "demo/DemoSealImage.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kPassword = u"tqz4187"_s;

QString databaseName(int siteCode)
{
    return siteCode == 1 ? u"suite"_s : u"suite"_s + QString::number(siteCode);
}

} // namespace

bool writeDemoSettingsFile(const QString& file, const QString& text, QString* error)
{
    QString crlf = text;
    crlf.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"\r\n"_s);
    QString reason;
    if (!writeFileAtomically(file, toCp932(crlf), &reason)) {
        if (error)
            *error = file + u" を書き込めません: "_s + reason;
        return false;
    }
    return true;
}

DemoProgramFolder::DemoProgramFolder(DemoOptions options) : m_options(std::move(options))
{
    if (!m_options.month.isValid()) {
        const QDate today = QDate::currentDate();
        m_options.month = QDate(today.year(), today.month(), 1).addMonths(-1);
    } else {
        m_options.month = QDate(m_options.month.year(), m_options.month.month(), 1);
    }
    m_options.sites = qBound(1, m_options.sites, 98);
    m_options.patients = qMax(0, m_options.patients);
}

QList<DemoSite> DemoProgramFolder::sites() const
{
    static const QStringList names = {u"杉並"_s, u"練馬"_s, u"三鷹"_s, u"府中"_s, u"八王子"_s,
                                      u"多摩"_s, u"川崎"_s, u"横浜"_s, u"浦和"_s, u"船橋"_s};
    QList<DemoSite> list;
    const int n = m_options.sites;
    for (int i = 0; i < n; ++i) {
        DemoSite s;
        s.code = 1 + i / 2;
        s.branch = 1 + i % 2;
        s.name = names.at(i % names.size()) + (s.branch == 1 ? u"本店"_s : u"支店"_s);
        s.database = databaseName(s.code);
        // Patients are spread evenly; the first sites take the remainder.
        s.patients = m_options.patients / n + (i < m_options.patients % n ? 1 : 0);
        list.append(s);
    }
    return list;
}

QDate DemoProgramFolder::month() const
{
    return m_options.month;
}

QStringList DemoProgramFolder::databases() const
{
    QStringList list;
    for (const DemoSite& s : sites()) {
        if (!list.contains(s.database))
            list.append(s.database);
    }
    return list;
}

QString DemoProgramFolder::path(const QString& relative) const
{
    return QDir(m_options.folder).filePath(relative);
}

bool DemoProgramFolder::create(Interaction& ui, QString* error)
{
    QDir root(m_options.folder);
    if (m_options.folder.isEmpty()) {
        if (error)
            *error = u"作成するフォルダが指定されていません。"_s;
        return false;
    }
    if (root.exists() && !root.isEmpty() && !m_options.replace) {
        if (error)
            *error =
                m_options.folder + u" は空ではありません。置き換えるときは --replace を指定してください。"_s;
        return false;
    }
    for (const QString& sub : {u"."_s, u"SYS"_s, u"TMP"_s, u"ICON"_s, u"DATA"_s, u"db"_s}) {
        if (!root.mkpath(sub)) {
            if (error)
                *error = path(sub) + u" を作成できません。"_s;
            return false;
        }
    }
    if (!writeSettings(error) || !copyLayouts(error) || !writeImages(error))
        return false;

    const QList<DemoSite> all = sites();
    const QStringList dbs = databases();
    const qint64 total = m_options.patients;
    qint64 before = 0;
    ui.progress(u"デモデータ作成"_s, 0, total);
    for (int k = 0; k < dbs.size(); ++k) {
        QList<DemoSite> mine;
        for (const DemoSite& s : all) {
            if (s.database == dbs[k])
                mine.append(s);
        }
        const QString file = path(u"db/"_s + dbs[k] + u".sqlite"_s);
        QFile::remove(file);
        // Each database has its own stream of numbers, so adding a site never changes the others.
        DemoDatabaseBuilder builder(file, mine, m_options.month, m_options.seed * 1000003ULL + quint64(k),
                                    k == dbs.size() - 1 && dbs.size() > 1);
        if (!builder.build([&](int done) { ui.progress(u"デモデータ作成"_s, before + done, total); }, error))
            return false;
        for (const DemoSite& s : mine)
            before += s.patients;
    }
    ui.progress(u"デモデータ作成"_s, total, total);
    return true;
}

bool DemoProgramFolder::writeSettings(QString* error) const
{
    const QString engine =
        m_options.engineProgram.isEmpty() ? QString() : QDir::toNativeSeparators(m_options.engineProgram);
    const QString tovara = u"[SYSTEM]\n"
                           "SYSTEM_SYS=\\SYS\n"
                           "SYSTEM_TMP=\\TMP\n"
                           "SYSTEM_ICON=\\ICON\n"
                           "SYSTEM_DATA=\\DATA\n"
                           "WALLPAPER=wallpaper.png\n"
                           "[KYOTEN]\n"
                           "BASEID=0101\n"
                           "[SEARCH]\n"
                           "終了患者施術期間=3\n"
                           "[PRINT]\n"
                           "FORM_ENGINE="_s +
                           engine + u"\n"_s;
    const QStringList dbs = databases();
    const QString adodb = u"[接続情報]\n接続情報=Provider=SQLOLEDB;Data Source=sqlite:db;Database="_s +
                          dbs.first() + u";uid=sa;pwd="_s + kPassword + u"\n"_s;
    QString dbIni;
    for (const QString& db : dbs) {
        QStringList siteNames;
        for (const DemoSite& s : sites()) {
            if (s.database == db)
                siteNames.append(s.name);
        }
        dbIni += u"\""_s + siteNames.join(u'・') + u":"_s + db + u"\",\"sqlite:db\",\""_s + db + u"\"\n"_s;
    }
    // A "[DBServer]=" line would replace the server of every DB.ini line by that name followed by
    // the part of the line's server from its first backslash; the embedded databases have no
    // server, so the file only explains itself.
    const QString serverName = u"; 接続先サーバー名。SQL Server を使うときは次の形の行を書きます:\n"
                               "; [DBServer]=サーバー名\n"
                               "; 組み込みデータベース(sqlite:db)では書かないでください。\n"_s;
    const QString kinds =
        u"－指定なし－\n特別養護老人ホーム\n介護老人保健施設\n有料老人ホーム\nグループホーム\n"
        "サービス付き高齢者向け住宅\nケアハウス\n"_s;
    const QString version = u"350,\"Halvex V3.5 施設請求書印刷 複数拠点の一括請求に対応\"\n"
                            "340,\"請求書兼領収書（回数区分あり）を追加\"\n"
                            "330,\"一部負担金一覧表の並び順を追加\"\n"
                            "300,\"初版\"\n"_s;
    const QString halvex = u"[OnlineHelp]\nADDRESS=https://help.example.jp/seikyu/\n"_s;
    return writeDemoSettingsFile(path(u"Tovara.ini"_s), tovara, error) &&
           writeDemoSettingsFile(path(u"adodb.ini"_s), adodb, error) &&
           writeDemoSettingsFile(path(u"DB.ini"_s), dbIni, error) &&
           writeDemoSettingsFile(path(u"ServerName.zkt"_s), serverName, error) &&
           writeDemoSettingsFile(path(u"Halvex.Ver"_s), halvex, error) &&
           writeDemoSettingsFile(path(u"DATA/施設種類List.txt"_s), kinds, error) &&
           writeDemoSettingsFile(path(u"DATA/Version.ini"_s), version, error);
}

bool DemoProgramFolder::writeImages(QString* error) const
{
    const QString seal = path(u"DATA/corpseal.bmp"_s);
    if (!demoSealImage(u"ほほえみ"_s, u"在宅ケア"_s).save(seal, "BMP")) {
        if (error)
            *error = seal + u" を書き込めません。"_s;
        return false;
    }
    const QString wallpaper = path(u"ICON/wallpaper.png"_s);
    if (!demoWallpaperImage().save(wallpaper, "PNG")) {
        if (error)
            *error = wallpaper + u" を書き込めません。"_s;
        return false;
    }
    return true;
}

bool DemoProgramFolder::copyLayouts(QString* error) const
{
    // The layouts travel inside the program as resources, so the demo folder needs no source tree.
    QDirIterator it(u":/layouts"_s, {u"*.wfd"_s}, QDir::Files);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = path(u"SYS/"_s + QFileInfo(source).fileName());
        QFile::remove(target);
        if (!QFile::copy(source, target) ||
            !QFile::setPermissions(target, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                               QFileDevice::ReadGroup | QFileDevice::ReadOther)) {
            if (error)
                *error = target + u" を書き込めません。"_s;
            return false;
        }
    }
    return true;
}

} // namespace qelprn
