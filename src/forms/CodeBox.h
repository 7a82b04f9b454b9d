#pragma once

#include <QString>

class QSpinBox;
class QWidget;

namespace qelprn {

// A code input: digits only, 0 to 999999999, no arrows, right-aligned; 0 stands for "none".
QSpinBox* makeCodeBox(QWidget* parent, const QString& objectName);

} // namespace qelprn
