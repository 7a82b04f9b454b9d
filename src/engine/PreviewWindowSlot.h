#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

namespace qelprn::engine {

// One preview per form and user. Each preview engine is a process of its own, started by the desktop
// program or the command line without waiting; a new preview of a form asks the older one to close
// over a local socket named after the user and the layout file, waits briefly for it to go, and
// then takes the name itself, so the next preview can close it in turn.
class PreviewWindowSlot : public QObject
{
    Q_OBJECT

public:
    explicit PreviewWindowSlot(const QString& layoutPath, QObject* parent = nullptr);

    // The socket name for the form (also used by tests).
    static QString serverName(const QString& layoutPath);

    // Closes an older preview of the form (waiting at most waitMs) and listens for a newer one.
    // False when the name could not be taken; the preview then simply works on its own.
    bool claim(int waitMs = 3000);

signals:
    // A newer preview of the same form has started.
    void closeRequested();

private:
    QString m_name;
    QLocalServer m_server;
};

} // namespace qelprn::engine
