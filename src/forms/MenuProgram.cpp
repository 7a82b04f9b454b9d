#include "forms/MenuProgram.h"

#include "app/Paths.h"

#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace qelprn {

QStringList menuProgramArguments(bool bMenuReturn)
{
    return bMenuReturn ? QStringList() : QStringList{u"2"_s};
}

bool startMenuProgram(const AppContext& ctx, bool bMenuReturn)
{
    const QString program = toLocalPath(ctx.csAppDir + u"\\Main.exe"_s);
    if (!QFileInfo(program).isFile())
        return false;
    return QProcess::startDetached(program, menuProgramArguments(bMenuReturn), toLocalPath(ctx.csAppDir));
}

} // namespace qelprn
