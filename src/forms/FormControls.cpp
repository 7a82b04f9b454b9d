#include "forms/FormControls.h"

#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTimer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// Selects the date part under a click once the click has placed the cursor, so that typing
// overwrites the part instead of inserting into it.
class SectionOnClick : public QObject
{
public:
    explicit SectionOnClick(QDateEdit* box) : QObject(box), m_box(box)
    {
        // Clicks land on the box's text field.
        box->installEventFilter(this);
        if (auto* text = box->findChild<QLineEdit*>())
            text->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::FocusIn) {
            QTimer::singleShot(0, m_box, [box = m_box] {
                if (box->hasFocus())
                    box->setSelectedSection(box->currentSection());
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QDateEdit* m_box;
};

} // namespace

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
    // setText leaves the cursor at the end, which would show the end of a long name.
    QObject::connect(box, &QLineEdit::textChanged, box, [box](const QString& text) {
        box->setCursorPosition(0);
        box->setToolTip(text);
    });
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

QList<QRadioButton*> makeOptions(QWidget* parent, const QString& name, const QStringList& captions,
                                 QButtonGroup*& group)
{
    QList<QRadioButton*> out;
    group = new QButtonGroup(parent);
    for (qsizetype i = 0; i < captions.size(); ++i) {
        out.append(new QRadioButton(captions.at(i), parent));
        out.last()->setObjectName(indexed(name, int(i)));
        group->addButton(out.last(), int(i));
    }
    return out;
}

QDateEdit* makeDateBox(QWidget* parent, const QString& name)
{
    auto* box = new QDateEdit(parent);
    box->setObjectName(name);
    box->setDisplayFormat(u"yyyy/MM/dd"_s);
    box->setCalendarPopup(true);
    new SectionOnClick(box);
    // QDateEdit's own size hint asks the style about a default combo box; Windows' style then
    // leaves the text field too narrow for a full date ("2026/11/2"). The field's width comes from
    // the style's edit-field rectangle for this box instead: wide enough for the widest date.
    QStyleOptionComboBox option;
    option.initFrom(box);
    option.editable = true;
    option.frame = true;
    option.subControls = QStyle::SC_All;
    const QFontMetrics metrics = box->fontMetrics();
    const int text = metrics.horizontalAdvance(u"0000/00/00 "_s) + 4;
    option.rect = QRect(0, 0, text * 2, box->sizeHint().height());
    const QRect field =
        box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
    box->setMinimumWidth(std::max(box->sizeHint().width(), text + option.rect.width() - field.width()));
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

namespace qelprn {

void fitWindowInto(QWidget& window, const QSize& wanted, const QRect& available)
{
    // The frame is known once the window manager has framed the window; before that, a title bar
    // and thin borders are assumed.
    QMargins frame(4, window.style()->pixelMetric(QStyle::PM_TitleBarHeight) + 8, 4, 4);
    if (window.isVisible() && window.frameGeometry() != window.geometry()) {
        const QRect outer = window.frameGeometry();
        const QRect inner = window.geometry();
        frame = QMargins(inner.left() - outer.left(), inner.top() - outer.top(),
                         outer.right() - inner.right(), outer.bottom() - inner.bottom());
    }
    const QRect area = available.marginsRemoved(frame);
    const QSize size = wanted.expandedTo(window.minimumSize()).boundedTo(area.size());
    window.resize(size);
    QRect placed(QPoint(), size);
    placed.moveCenter(area.center());
    window.move(placed.topLeft() - QPoint(frame.left(), frame.top())); // move() places the frame
}

QRect availableArea(const QWidget& window)
{
    const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
}

} // namespace qelprn
