// qelprn: the desktop program. Started by the suite's menu with a non-empty command line; shows the
// print form and returns to the menu when it closes.
//
// QELPRN_QUIT_WHEN_READY=1 (environment) prints the start-up time once the main form is usable and
// ends: the check that an installed program starts, and the start-up benchmark. A build with
// QELPRN_SCREENSHOT_TOUR also takes QELPRN_SCREENSHOT_DIR=<folder>: it saves pictures of the form
// and its dialogs there and ends (QELPRN_SCREENSHOT_SUFFIX is added to the file names).
#include "app/JapaneseTranslation.h"
#include "app/Paths.h"
#include "app/QtMessageFilter.h"
#include "app/Version.h"
#include "engine/BundledFonts.h"
#include "forms/DesktopInteraction.h"
#include "forms/ProgramFolderSetup.h"
#include "forms/mod施設請求書Main.h"
#include "report/PrintRun.h"
#ifdef QELPRN_SCREENSHOT_TOUR
#include "forms/tour/ScreenshotTour.h"
#endif
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QIcon>
#include <QTimer>
#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char* argv[])
{
    if (qelprn::asksForVersion(argc, argv)) {
        std::printf("qelprn %s\n", qPrintable(qelprn::productVersion()));
        return 0;
    }
    qelprn::installQtMessageFilter();
    QElapsedTimer started;
    started.start();
    QApplication app(argc, argv);
    QApplication::setApplicationName(u"qelprn"_s);
    // No display name: Qt would append it to every window and message box title.
    qelprn::installJapaneseTranslation(app);
#ifdef Q_OS_WIN
    qelprn::engine::useJapaneseUiFont(QApplication::applicationDirPath() + u"/fonts"_s);
#endif
    QApplication::setApplicationVersion(qelprn::productVersion());
    QIcon icon(u":/icons/qelprn-256.png"_s);
    icon.addFile(u":/icons/qelprn-48.png"_s);
    QApplication::setWindowIcon(icon);

    qelprn::DesktopInteraction ui;
    qelprn::AppContext ctx;
    ctx.ui = &ui;
    // The suite passes one command-line string; its words arrive split, so they are joined again.
    const QString commandLine = QApplication::arguments().mid(1).join(u' ');
    // A start the program refuses (no command line) asks nothing about the program folder first.
    ctx.csAppDir = commandLine.isEmpty() ? qelprn::defaultAppDir() : qelprn::chooseProgramFolder(ui);
    if (ctx.csAppDir.isEmpty())
        return 2;
    // Relative database folders in the settings are taken from the program folder.
    QDir::setCurrent(ctx.csAppDir);

    const auto print = [](const qelprn::AppContext& context, qint16 mode,
                          qelprn::PrintConditionSource& form) {
        qelprn::PrintRun(context).PrintSisetsuSeikyu(mode, form);
    };

    std::function<void(qelprn::frmPrintSisetsuSeikyu&)> whenShown;
    if (qEnvironmentVariableIntValue("QELPRN_QUIT_WHEN_READY") == 1) {
        whenShown = [&started](qelprn::frmPrintSisetsuSeikyu& form) {
            std::printf("startup-ms %lld\n", static_cast<long long>(started.elapsed()));
            std::fflush(stdout);
            form.reject();
        };
    }
#ifdef QELPRN_SCREENSHOT_TOUR
    if (const QString screenshots = qEnvironmentVariable("QELPRN_SCREENSHOT_DIR"); !screenshots.isEmpty()) {
        whenShown = [&ctx, screenshots](qelprn::frmPrintSisetsuSeikyu& form) {
            const QStringList files = qelprn::saveScreenshots(
                ctx, form, screenshots, qEnvironmentVariable("QELPRN_SCREENSHOT_SUFFIX"));
            for (const QString& file : files)
                std::printf("%s\n", qPrintable(file));
        };
    }
#endif
    return qelprn::Main(ctx, commandLine, print, whenShown);
}
