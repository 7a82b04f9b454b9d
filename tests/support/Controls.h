#pragma once

#include <QObject>
#include <QString>
#include <QtGlobal>

namespace qelprn::test {

// A form's control by its object name; a missing control ends the test program with its name, as
// every later step would fail on it anyway.
template <class T> T* control(const QObject& form, const QString& name)
{
    T* found = form.findChild<T*>(name);
    if (!found)
        qFatal("no control %s of type %s", qPrintable(name), T::staticMetaObject.className());
    return found;
}

} // namespace qelprn::test
