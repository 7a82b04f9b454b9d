#include "engine/BundledFonts.h"
#include "engine/EngineMain.h"

#include <QApplication>

#ifdef __GLIBC__
#include <malloc.h>
#endif

// qelprn-engine: previews, prints or renders to PDF/PNG the forms described by a command file.
int main(int argc, char* argv[])
{
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
    qelprn::engine::loadBundledFonts();
    QTextStream err(stderr);
    return qelprn::engine::runEngine(QApplication::arguments().mid(1), err);
}
