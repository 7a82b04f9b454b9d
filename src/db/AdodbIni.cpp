#include "db/AdodbIni.h"

#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/clsOplIniFile.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <optional>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// What a file looked like when it was read: another time, size or file (a replaced file) means it
// must be read again.
struct FileStamp
{
    qint64 modifiedNs = 0;
    qint64 size = 0;
    quint64 inode = 0;
    bool operator==(const FileStamp&) const = default;
};

std::optional<FileStamp> stampOf(const QString& path)
{
    struct stat st
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return std::nullopt;
    return FileStamp{qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec, qint64(st.st_size),
                     quint64(st.st_ino)};
}

QString readFromFile(const QString& fileName, QString* errorText)
{
    clsOplIniFile ini;
    if (ini.iInit(fileName) != 0) {
        if (errorText)
            *errorText = ini.CsErrStr();
        return QString();
    }
    QString cs = csCutNull(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s));
    while (cs.endsWith(u' '))
        cs.chop(1);
    return cs;
}

} // namespace

// Every query opens its own connection and so reads this file: a month's co-payment run reads it
// twice per patient. The value is kept while the file's time, size and inode stay the same.
QString readAdodbConnectionString(const AppContext& ctx, QString* errorText)
{
    struct Cached
    {
        FileStamp stamp;
        QString connectionString;
    };
    static QMutex mutex;
    static QHash<QString, Cached> cache;

    const QString fileName = ctx.csAppDir + u"/adodb.ini"_s;
    const std::optional<FileStamp> stamp = stampOf(toLocalPath(fileName));
    if (stamp) {
        QMutexLocker lock(&mutex);
        const auto it = cache.constFind(fileName);
        if (it != cache.constEnd() && it->stamp == *stamp)
            return it->connectionString;
    }
    QString readError;
    const QString cs = readFromFile(fileName, &readError);
    if (errorText)
        *errorText = readError;
    // A file that changed while it was read gets a new stamp and is read again next time.
    if (stamp && readError.isEmpty() && stampOf(toLocalPath(fileName)) == stamp) {
        QMutexLocker lock(&mutex);
        cache.insert(fileName, Cached{*stamp, cs});
    }
    return cs;
}

} // namespace qelprn
