#include "app/Paths.h"

#include "app/Platform.h"

#include <QCoreApplication>
#include <QDir>

namespace qelprn {

QString toLocalPath(const QString& suitePath)
{
#ifdef Q_OS_WIN
    return platform::windowsPath(suitePath);
#else
    QString p = suitePath;
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    // "dir\" + "\TMP" gives a doubled separator; harmless but untidy in messages.
    while (p.contains(QLatin1String("//")))
        p.replace(QLatin1String("//"), QLatin1String("/"));
    return p;
#endif
}

QString defaultAppDir()
{
    QString dir = qEnvironmentVariable("QELPRN_APP_DIR");
    if (dir.isEmpty())
        dir = QCoreApplication::applicationDirPath();
    dir = QDir::cleanPath(QDir(dir).absolutePath());
    while (dir.size() > 1 && (dir.endsWith(QLatin1Char('/')) || dir.endsWith(QLatin1Char('\\'))))
        dir.chop(1);
    return dir;
}

} // namespace qelprn
