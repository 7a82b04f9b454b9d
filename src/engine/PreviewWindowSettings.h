#pragma once

#include "engine/EngineJob.h"

#include <QRect>
#include <QString>

namespace qelprn::engine {

// What the preview remembers between runs: the zoom, the window's place and size and the folder of
// the last saved PDF. Kept in the engine's own QSettings (organisation "qelprn", application
// "qelprn-engine": an INI file under the user's configuration folder, the registry on Windows).
struct PreviewWindowSettings
{
    int zoomIndex = 0; // the zoom box's entry: 0 fit width, 1 whole page, then the percentages
    QRect geometry;    // the window's last normal geometry (its inner area); empty before the first close
    QString pdfFolder; // empty: the user's documents folder

    static PreviewWindowSettings load();
    void save() const;
};

// The inner geometry a window of the wanted geometry gets on a screen whose free area is available
// (the screen less its task bars): shrunk to fit with frame room for the title bar and borders,
// then moved inside. An empty wanted rectangle asks for preferred, centred.
QRect placeInside(const QRect& wanted, const QSize& preferred, const QRect& available, const QMargins& frame);

// "<form name>_<yyyymm>": the layout file's name and the billing month of the job's first data
// row ("施術年月"); only the form name when the month cannot be read.
QString pdfBaseName(const EngineJob& job);

} // namespace qelprn::engine
