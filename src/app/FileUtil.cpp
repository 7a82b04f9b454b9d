#include "app/FileUtil.h"

#include "app/Paths.h"

#include <QDir>
#include <QFileInfo>

namespace qelprn {

QString csChangeDir(const QString& path)
{
    QDir::setCurrent(toLocalPath(path));
    return QDir::currentPath();
}

bool bFileExists(const QString& path)
{
    if (path.isEmpty())
        return false;
    // A folder of that name is not a file: the suite's directory listing does not return folders.
    return QFileInfo(toLocalPath(path)).isFile();
}

} // namespace qelprn
