#include "app/LayoutPath.h"

#include "app/Paths.h"
#include "app/SysIni.h"

#include <QDir>
#include <QFileInfo>

namespace qelprn {

QString layoutFilePath(const AppContext& ctx, const QString& fileName)
{
    const QString inSystemFolder = csSysDir(ctx) + fileName;
    if (QFileInfo(toLocalPath(inSystemFolder)).isFile())
        return inSystemFolder;
    const QString installed = installedLayoutsDir();
    if (!installed.isEmpty() && QFileInfo(QDir(installed).filePath(fileName)).isFile())
        return QDir::toNativeSeparators(QDir(installed).filePath(fileName));
    return inSystemFolder;
}

} // namespace qelprn
