#include "demo/DemoSealImage.h"

#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <mutex>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

bool canDrawText()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

// The seal's characters need IPAex Mincho, which Windows does not have: there the IPAex fonts
// travel in "fonts" beside the program (the engine loads them the same way).
void loadFontsBesideProgram()
{
    static std::once_flag once;
    std::call_once(once, [] {
        const QDir folder(QCoreApplication::applicationDirPath() + u"/fonts"_s);
        for (const QString& file : folder.entryList({u"*.ttf"_s}, QDir::Files))
            QFontDatabase::addApplicationFont(folder.filePath(file));
    });
}

void drawColumn(QPainter& p, const QString& text, qreal centerX, const QRectF& area)
{
    const qreal step = area.height() / qMax<qsizetype>(1, text.size());
    QFont font(u"IPAexMincho"_s);
    font.setPixelSize(int(step * 0.9));
    font.setBold(true);
    p.setFont(font);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QRectF cell(centerX - step / 2, area.top() + step * qreal(i), step, step);
        p.drawText(cell, Qt::AlignCenter, text.mid(i, 1));
    }
}

} // namespace

QImage demoSealImage(const QString& rightColumn, const QString& leftColumn)
{
    constexpr int size = 240;
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor red(0xD0, 0x1E, 0x1E);
    p.setPen(QPen(red, 10));
    p.drawEllipse(QRectF(8, 8, size - 16, size - 16));
    p.setPen(QPen(red, 3));
    p.drawEllipse(QRectF(22, 22, size - 44, size - 44));
    if (canDrawText()) {
        loadFontsBesideProgram();
        p.setPen(red);
        const QRectF area(0, 50, size, size - 100);
        drawColumn(p, rightColumn, size * 0.62, area);
        drawColumn(p, leftColumn, size * 0.38, area);
    } else {
        // Without fonts: a cross of bars keeps the image recognisable as a seal.
        p.setPen(QPen(red, 8));
        p.drawLine(QPointF(size / 2.0, 50), QPointF(size / 2.0, size - 50));
        p.drawLine(QPointF(60, size / 2.0), QPointF(size - 60, size / 2.0));
    }
    return image;
}

QImage demoWallpaperImage()
{
    QImage image(1280, 800, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient gradient(0, 0, 0, image.height());
    gradient.setColorAt(0, QColor(0xE8, 0xF1, 0xF8));
    gradient.setColorAt(1, QColor(0xC4, 0xD9, 0xEA));
    p.fillRect(image.rect(), gradient);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 6; ++i) {
        p.setBrush(QColor(255, 255, 255, 40 + i * 8));
        p.drawEllipse(QPointF(200.0 + i * 180.0, 620.0 - i * 40.0), 160.0 - i * 12.0, 160.0 - i * 12.0);
    }
    return image;
}

} // namespace qelprn
