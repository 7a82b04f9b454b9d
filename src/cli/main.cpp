#include "app/Platform.h"
#include "app/QtMessageFilter.h"
#include "app/Version.h"
#include "cli/CliMain.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <csignal>
#include <cstdio>
#include <memory>

int main(int argc, char* argv[])
{
#ifdef SIGXFSZ
    // A file-size limit (a full disk, a quota) must fail the write with a message, not kill us.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    qelprn::installQtMessageFilter();
    // init-demo draws the characters of the company seal, which needs the font database of a GUI
    // application; the offscreen platform keeps it usable without a display.
    const bool needsFonts = argc > 1 && qstrcmp(argv[1], "init-demo") == 0;
    std::unique_ptr<QCoreApplication> app;
    if (needsFonts) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName(QStringLiteral("qelprn-cli"));
    QCoreApplication::setApplicationVersion(qelprn::productVersion());

    const qelprn::platform::Utf8Console console;
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    return qelprn::cli::runCli(args, out, err);
}
