#include "forms/FormControls.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace qelprn {

QString indexed(const QString& name, int index)
{
    return name + u'_' + QString::number(index);
}

QLabel* makeLabel(QWidget* parent, const QString& name, const QString& caption)
{
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

QLineEdit* makeNameBox(QWidget* parent, const QString& name)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    box->setFocusPolicy(Qt::NoFocus);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(u'あ') * 14);
    return box;
}

QPushButton* makeSearchButton(QWidget* parent, const QString& name, const QString& tip)
{
    auto* button = new QPushButton(u"検索"_s, parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

QComboBox* makeCombo(QWidget* parent, const QString& name)
{
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(16);
    return box;
}

QDateEdit* makeDateBox(QWidget* parent, const QString& name)
{
    auto* box = new QDateEdit(parent);
    box->setObjectName(name);
    box->setDisplayFormat(u"yyyy/MM/dd"_s);
    box->setCalendarPopup(true);
    return box;
}

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
