#include "forms/CodeBox.h"

#include <QSpinBox>

namespace qelprn {

QSpinBox* makeCodeBox(QWidget* parent, const QString& objectName)
{
    auto* box = new QSpinBox(parent);
    box->setObjectName(objectName);
    box->setRange(0, 999999999);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setAlignment(Qt::AlignRight);
    box->setAccelerated(false);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("0000000000")) + 12);
    return box;
}

} // namespace qelprn
