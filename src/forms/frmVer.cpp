#include "forms/frmVer.h"

#include "app/Paths.h"
#include "app/SysIni.h"
#include "app/VersionHistory.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace qelprn {

frmVer::frmVer(const AppContext& ctx, const QString& caption, int minVersion, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(u"frmVer"_s);
    setWindowTitle(caption);
    auto* product = new QLabel(QString::fromLatin1(kVersionLabel), this);
    product->setObjectName(u"laProduct"_s);
    QFont big = product->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    big.setBold(true);
    product->setFont(big);
    auto* build = new QLabel(u"ビルド "_s + QString::fromLatin1(kBuildId), this);
    build->setObjectName(u"laBuild"_s);
    laVer = new QLabel(this);
    laVer->setObjectName(u"laVer"_s);
    laVer->setWordWrap(true);
    lstVer = new QListWidget(this);
    lstVer->setObjectName(u"lstVer"_s);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(product);
    layout->addWidget(build);
    layout->addWidget(laVer);
    layout->addWidget(new QLabel(u"更新履歴："_s, this));
    layout->addWidget(lstVer, 1);
    layout->addWidget(buttons);
    resize(480, 360);
    loadVersionFile(ctx, minVersion);
}

void frmVer::loadVersionFile(const AppContext& ctx, int minVersion)
{
    const VersionHistory versions =
        readVersionHistory(toLocalPath(csDataDir(ctx) + u"Version.ini"_s), minVersion);
    laVer->setText(versions.current);
    lstVer->addItems(versions.history);
}

} // namespace qelprn
