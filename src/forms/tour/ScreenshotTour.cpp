#include "forms/tour/ScreenshotTour.h"

#include "forms/frmPrintSisetsuSeikyu.h"
#include "forms/frmVer.h"
#include "forms/frm患者検索.h"
#include "forms/frm施術者検索.h"
#include "forms/frm施設検索.h"

#include <QApplication>
#include <QDir>
#include <QRadioButton>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString shoot(QWidget& widget, const QString& folder, const QString& name)
{
    widget.show();
    widget.raise();
    // Let layouts settle and the window paint before it is grabbed.
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
    const QString path = QDir(folder).filePath(name);
    return widget.grab().save(path, "PNG") ? path : QString();
}

template <typename Dialog, typename... Args>
QString shootDialog(const QString& folder, const QString& name, QWidget* parent, Args&&... args)
{
    Dialog dialog(std::forward<Args>(args)..., parent);
    dialog.iInit(0);
    const QString path = shoot(dialog, folder, name);
    dialog.close();
    return path;
}

} // namespace

QStringList saveScreenshots(AppContext& ctx, frmPrintSisetsuSeikyu& form, const QString& folder,
                            const QString& suffix)
{
    QDir().mkpath(folder);
    QStringList written;
    const auto keep = [&written](const QString& path) {
        if (!path.isEmpty())
            written.append(path);
    };
    for (int kind = 0; kind < 6; ++kind) {
        form.chooseKind(kind);
        keep(shoot(form, folder, u"desktop-main-kind%1%2.png"_s.arg(kind + 1).arg(suffix)));
    }
    form.chooseKind(1);
    keep(shootDialog<frm施設検索>(folder, u"desktop-search-facility%1.png"_s.arg(suffix), &form, ctx));
    keep(shootDialog<frm施術者検索>(folder, u"desktop-search-staff%1.png"_s.arg(suffix), &form, ctx));
    keep(shootDialog<frm患者検索>(folder, u"desktop-search-patient%1.png"_s.arg(suffix), &form, ctx,
                                  QDate::currentDate()));
    {
        frmVer version(ctx, form.windowTitle(), 0, &form);
        keep(shoot(version, folder, u"desktop-version%1.png"_s.arg(suffix)));
    }
    if (QWidget* back = form.parentWidget()) {
        back->resize(960, 600);
        keep(shoot(*back, folder, u"desktop-background%1.png"_s.arg(suffix)));
    }
    form.reject();
    return written;
}

} // namespace qelprn
