#include "FuzzInput.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace qelprn::fuzz {

namespace {

class QuietInteraction final : public Interaction
{
public:
    MsgResult messageBox(const QString&, const QString&, MsgIcon, MsgButtons buttons) override
    {
        return buttons == MsgButtons::YesNo ? MsgResult::No : MsgResult::Ok;
    }
    void setBusy(bool) override {}
    void progress(const QString&, qint64, qint64) override {}
    bool keepWaiting(const QString&, qint64) override { return false; }
    void waitEnded() override {}
    void openUrl(const QString&) override {}
};

QuietInteraction& quiet()
{
    static QuietInteraction ui;
    return ui;
}

} // namespace

QString programFolder()
{
    static QTemporaryDir dir;
    return dir.path();
}

QString writeInputFile(const QString& name, const uint8_t* data, size_t size)
{
    const QString path = QDir(programFolder()).filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(reinterpret_cast<const char*>(data), qint64(size));
    return path;
}

AppContext quietContext()
{
    AppContext ctx;
    ctx.csAppDir = programFolder();
    ctx.ui = &quiet();
    return ctx;
}

} // namespace qelprn::fuzz
