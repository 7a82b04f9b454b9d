#include "engine/EngineMain.h"

#include <QApplication>

// qelprn-engine: previews, prints or renders to PDF/PNG the forms described by a command file.
int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qelprn-engine"));
    QTextStream err(stderr);
    return qelprn::engine::runEngine(QApplication::arguments().mid(1), err);
}
