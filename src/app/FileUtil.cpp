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
    return QFileInfo::exists(toLocalPath(path));
}

} // namespace qelprn
