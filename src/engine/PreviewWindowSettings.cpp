#include "engine/PreviewWindowSettings.h"

#include "engine/CsvFile.h"

#include <QFileInfo>
#include <QMargins>
#include <QRegularExpression>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

QSettings engineSettings()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, u"qelprn"_s, u"qelprn-engine"_s);
}

} // namespace

PreviewWindowSettings PreviewWindowSettings::load()
{
    const QSettings s = engineSettings();
    PreviewWindowSettings out;
    out.zoomIndex = s.value(u"preview/zoom"_s, 0).toInt();
    out.geometry = s.value(u"preview/geometry"_s).toRect();
    out.pdfFolder = s.value(u"preview/pdfFolder"_s).toString();
    return out;
}

void PreviewWindowSettings::save() const
{
    QSettings s = engineSettings();
    s.setValue(u"preview/zoom"_s, zoomIndex);
    if (geometry.isValid())
        s.setValue(u"preview/geometry"_s, geometry);
    if (!pdfFolder.isEmpty())
        s.setValue(u"preview/pdfFolder"_s, pdfFolder);
}

QRect placeInside(const QRect& wanted, const QSize& preferred, const QRect& available, const QMargins& frame)
{
    const QRect inner = available.marginsRemoved(frame);
    if (inner.isEmpty())
        return QRect(available.topLeft(), preferred);
    QRect r = wanted.isValid() ? wanted : QRect(QPoint(), preferred);
    r.setSize(r.size().boundedTo(inner.size()));
    if (!wanted.isValid())
        r.moveCenter(inner.center());
    // Moved inside: first so the right and bottom edges fit, then the left and top.
    r.moveLeft(qMax(inner.left(), qMin(r.left(), inner.right() - r.width() + 1)));
    r.moveTop(qMax(inner.top(), qMin(r.top(), inner.bottom() - r.height() + 1)));
    return r;
}

QString pdfBaseName(const EngineJob& job)
{
    const QString form = QFileInfo(job.layoutPath).completeBaseName();
    if (job.data.isEmpty())
        return form;
    CsvFile csv;
    EngineError error;
    QStringList row;
    if (!csv.open(job.data.first().path, job.data.first().noTitle, &error) || !csv.next(row, &error))
        return form;
    const int column = csv.columnIndex(u"施術年月"_s);
    static const QRegularExpression month(u"^(\\d{4})\\D?(\\d{1,2})"_s);
    const QRegularExpressionMatch m = month.match(row.value(column).trimmed());
    if (column < 0 || !m.hasMatch())
        return form;
    return form + u'_' + m.captured(1) +
           QStringLiteral("%1").arg(m.captured(2).toInt(), 2, 10, QLatin1Char('0'));
}

} // namespace qelprn::engine
