#include "forms/frmBack.h"

#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "app/StartupCheck.h"
#include "app/SysIni.h"

#include <QFileInfo>
#include <QLabel>
#include <QResizeEvent>

using namespace Qt::StringLiterals;

namespace qelprn {

frmBack::frmBack(AppContext& ctx, QWidget* parent) : QWidget(parent), m_ctx(ctx)
{
    setObjectName(u"frmBack"_s);
    setWindowTitle(seikyuTitle());
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, QColor(0x2f, 0x4f, 0x6f));
    setPalette(p);
    ImgWall = new QLabel(this);
    ImgWall->setObjectName(u"ImgWall"_s);
    ImgWall->setScaledContents(true);
}

bool frmBack::Form_Load()
{
    BusyPointer busy(m_ctx.interaction());
    // The own site comes from BASEID (characters 1-2 and 3-4).
    const std::optional<AppContext> loaded = loadAppContext(m_ctx.interaction(), m_ctx.csAppDir);
    if (!loaded)
        return false;
    m_ctx.iBaseKyotenCd = loaded->iBaseKyotenCd;
    m_ctx.iBaseKyotenEb = loaded->iBaseKyotenEb;
    const QString wallpaper =
        toLocalPath(csIconDir(m_ctx) + vGetSysIniValue(m_ctx, u"WALLPAPER"_s, false).trimmed());
    if (QFileInfo(wallpaper).isFile() && m_picture.load(wallpaper))
        ImgWall->setPixmap(m_picture);
    ImgWall->setGeometry(rect());
    return true;
}

void frmBack::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    ImgWall->setGeometry(0, 0, event->size().width(), event->size().height());
}

} // namespace qelprn
