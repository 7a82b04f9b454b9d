#pragma once

#include <QByteArray>
#include <QString>

namespace qelprn::test {

// What a stand-in for another program (the form-print engine, the menu program) does when started,
// in this order: copy the file one argument names, write bytes into the file another argument
// names, append its arguments to a file, print a text on standard error, hold a lock file for a
// while (another print run holding the temporary folder), exit with a status.
struct StandIn
{
    int copyArg = 0; // 1-based; 0 copies nothing
    QString copyTo = {};
    int writeArg = 0; // 1-based; 0 writes nothing
    QByteArray writeBytes = {};
    QString argsFile = {}; // per start: a line with the argument count, then one line per argument
    QString stderrText = {};
    int exitCode = 0;
    QString holdLock = {}; // a QLockFile taken and held for holdMs (-1: until the program is killed)
    int holdMs = 0;
    // Acts as our engine: creates the file this environment variable names, and appends "given" or
    // "none" to receiptNote.
    QString receiptVariable = {};
    QString receiptNote = {};
};

// Puts the stand-in program at path (with ".exe" added on Windows when path lacks it) and the
// behaviour beside it, in path + ".standin". Returns the path to start; "" when it could not be
// written. A stand-in already at path is kept and only given the new behaviour.
QString writeStandInProgram(const QString& path, const StandIn& behaviour);

// The lines a stand-in appended to its arguments file, waiting up to twenty seconds for at least
// `lines` of them (a detached start ends later than the call that started it).
QStringList waitForArgs(const QString& argsFile, int lines = 1);

} // namespace qelprn::test
