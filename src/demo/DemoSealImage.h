#pragma once

#include <QImage>
#include <QString>

namespace qelprn {

// A red round company seal (double ring, the name in two vertical columns, read right to left)
// on a white ground, as the invoices print it. Text needs a QGuiApplication for its fonts; without
// one the seal is drawn with its rings only.
QImage demoSealImage(const QString& rightColumn, const QString& leftColumn);

// A quiet background picture for the program's backdrop window.
QImage demoWallpaperImage();

} // namespace qelprn
