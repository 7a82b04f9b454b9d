#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

enum class MsgIcon { None, Information, Exclamation, Critical, Question };
enum class MsgButtons { Ok, YesNo };
enum class MsgResult { Ok, Yes, No };

// The only way core code talks to a person: message boxes, the busy pointer, progress of long work,
// a wait that can be cancelled, opening an address in the browser and ending the program. The desktop
// program, the command-line program and the tests each implement it, so core code runs unchanged in all
// three.
class Interaction
{
public:
    virtual ~Interaction() = default;

    virtual MsgResult messageBox(const QString& text, const QString& title, MsgIcon icon,
                                 MsgButtons buttons = MsgButtons::Ok) = 0;
    virtual void setBusy(bool busy) = 0;
    // A phase of a long run with done / total units; total 0 means unknown.
    virtual void progress(const QString& phase, qint64 done, qint64 total) = 0;
    // A wait the person may end (another print run holds the temporary folder): called again and
    // again while it lasts, with the time waited so far; false once the person asked to stop
    // waiting. waitEnded() takes the notice away.
    virtual bool keepWaiting(const QString& text, qint64 waitedMs) = 0;
    virtual void waitEnded() = 0;
    virtual void openUrl(const QString& url) = 0;
};

// Busy pointer on for the life of the object, on every path out of a scope.
class BusyPointer
{
public:
    explicit BusyPointer(Interaction& ui) : m_ui(ui) { m_ui.setBusy(true); }
    ~BusyPointer() { m_ui.setBusy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    Interaction& m_ui;
};

} // namespace qelprn
