#include "app/JapaneseTranslation.h"
#include "app/QtMessageFilter.h"
#include "app/Version.h"
#include "engine/BundledFonts.h"
#include "engine/EngineMain.h"

#include <QApplication>
#include <QIcon>
#include <cstdio>

#ifdef __GLIBC__
#include <malloc.h>
#endif

// qelprn-engine: previews, prints or renders to PDF/PNG the forms described by a command file.
int main(int argc, char* argv[])
{
    if (qelprn::asksForVersion(argc, argv)) {
        std::printf("qelprn-engine %s\n", qPrintable(qelprn::productVersion()));
        return 0;
    }
    qelprn::installQtMessageFilter();
#ifdef __GLIBC__
    // Every PDF page allocates and frees buffers of a few hundred kilobytes; left to the defaults,
    // glibc hands them back to the system and faults them in again on every page. Keeping them in
    // the heap makes the memory per page constant and saves a fifth of the time.
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TOP_PAD, 8 * 1024 * 1024);
#endif
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qelprn-engine"));
    qelprn::installJapaneseTranslation(app);
    QApplication::setApplicationVersion(qelprn::productVersion());
    QIcon icon(QStringLiteral(":/icons/qelprn-256.png"));
    icon.addFile(QStringLiteral(":/icons/qelprn-48.png"));
    QApplication::setWindowIcon(icon);
    qelprn::engine::loadBundledFonts();
#ifdef Q_OS_WIN
    qelprn::engine::useJapaneseUiFont(QApplication::applicationDirPath() + QStringLiteral("/fonts"));
#endif
    QTextStream err(stderr);
    return qelprn::engine::runEngine(QApplication::arguments().mid(1), err);
}
