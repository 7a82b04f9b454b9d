#pragma once

#include <QStringList>
#include <QTextStream>

namespace qelprn::engine {

// The engine program: "qelprn-engine [--pdf FILE] [--png DIR] [--dpi N] /c COMMANDFILE".
// Without --pdf/--png it carries out the command file's action (preview window, printing on the
// default printer, or the print dialog). Returns the exit status: 0 done, 2 the job could not be
// carried out (one message naming the file and line: on err, and in a message box when a window
// was asked for). Needs a QApplication.
int runEngine(const QStringList& args, QTextStream& err);

} // namespace qelprn::engine
