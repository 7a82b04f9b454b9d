#pragma once

#include <QButtonGroup>
#include <QList>
#include <QRadioButton>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <array>
#include <iterator>

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QRect;
class QSize;
class QSpinBox;
class QWidget;

namespace qelprn {

// Makers of the forms' controls, each named by the suite's control name, and the option-group
// helpers of control arrays ("name_index").

// "name_index": the object name of element index of a control array.
QString indexed(const QString& name, int index);
// A code input: digits only, 0 to 999999999, no arrows, right-aligned; 0 stands for "none".
QSpinBox* makeCodeBox(QWidget* parent, const QString& objectName);
QLabel* makeLabel(QWidget* parent, const QString& name, const QString& caption);
// A read-only name shown beside a code; a long name shows its start, the whole name is its tool tip.
QLineEdit* makeNameBox(QWidget* parent, const QString& name);
QPushButton* makeSearchButton(QWidget* parent, const QString& name, const QString& tip);
QComboBox* makeCombo(QWidget* parent, const QString& name);
// A date input shown as "yyyy/mm/dd"; a click selects the clicked part, so typing replaces it.
QDateEdit* makeDateBox(QWidget* parent, const QString& name);

// Gives a top-level window the wanted size, at most a screen's free area (the screen less its task
// bars) less room for the window manager's frame, and centres it in that area.
void fitWindowInto(QWidget& window, const QSize& wanted, const QRect& available);
// The free area of the screen a window is on (the primary screen before it is shown).
QRect availableArea(const QWidget& window);

// An option group name_0 .. name_N-1 with the given captions, in a button group whose ids are the
// indexes; one option per caption, or N of them.
QList<QRadioButton*> makeOptions(QWidget* parent, const QString& name, const QStringList& captions,
                                 QButtonGroup*& group);
template <std::size_t N>
std::array<QRadioButton*, N> makeOptions(QWidget* parent, const QString& name, QStringList captions,
                                         QButtonGroup*& group)
{
    captions.resize(qsizetype(N));
    const QList<QRadioButton*> made = makeOptions(parent, name, captions, group);
    std::array<QRadioButton*, N> out{};
    std::copy(made.cbegin(), made.cend(), out.begin());
    return out;
}

// The index of the selected option, -1 when none is.
template <typename Options> int checkedIndex(const Options& options)
{
    for (std::size_t i = 0; i < std::size_t(std::size(options)); ++i) {
        if (options[i]->isChecked())
            return int(i);
    }
    return -1;
}

} // namespace qelprn
