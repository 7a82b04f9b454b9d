#include "db/AdodbIni.h"

#include "app/NullValue.h"
#include "app/Paths.h"
#include "app/Platform.h"
#include "app/SpaceTrim.h"
#include "app/clsOplIniFile.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <optional>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString readFromFile(const QString& fileName, QString* errorText)
{
    clsOplIniFile ini;
    if (ini.iInit(fileName) != 0) {
        if (errorText)
            *errorText = ini.CsErrStr();
        return QString();
    }
    return trimRightSpaces(csCutNull(ini.csGetProfileString(u"接続情報"_s, u"接続情報"_s)));
}

} // namespace

// Every query opens its own connection and so reads this file: a month's co-payment run reads it
// twice per patient. The value is kept while the file's time, size and inode stay the same.
QString readAdodbConnectionString(const AppContext& ctx, QString* errorText)
{
    struct Cached
    {
        platform::FileStamp stamp;
        QString connectionString;
    };
    static QMutex mutex;
    static QHash<QString, Cached> cache;

    const QString fileName = ctx.csAppDir + u"\\adodb.ini"_s;
    const std::optional<platform::FileStamp> stamp = platform::fileStamp(toLocalPath(fileName));
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
    if (stamp && readError.isEmpty() && platform::fileStamp(toLocalPath(fileName)) == stamp) {
        QMutexLocker lock(&mutex);
        cache.insert(fileName, Cached{*stamp, cs});
    }
    return cs;
}

} // namespace qelprn
