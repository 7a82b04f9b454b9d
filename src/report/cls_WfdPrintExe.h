#pragma once

#include "app/AppContext.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QtGlobal>
#include <array>

namespace qelprn {

// The program's only contact with the form-print engine: it writes the engine's command file
// "WfdCom.dat" (CP932, CR LF) into the temporary folder and starts the engine program with "/c" and
// that file, without waiting for it. The engine is "wfrfv10.exe" unless "Tovara.ini" names another
// with FORM_ENGINE; a name without a folder is looked up on the PATH and next to this program.
// Every operation returns 0 on success and non-zero on failure, with the reason in sErrMsg; the
// bridge never shows a message itself.
class cls_WfdPrintExe
{
public:
    explicit cls_WfdPrintExe(const AppContext& context);

    QString sErrMsg;

    enum class Action { Preview, Print, PrintFromDialog };
    static constexpr int kDataSlots = 5;

    // Resets every setting: layout and title, empty data slots, no offsets, zoom 2 (the layout's
    // own), no repeat start, no items; reads the engine program and the command folder.
    qint16 iInit(const QString& layoutPath, const QString& title);
    // Slot 1..5: the layout's data name and the data file (a name in the command folder).
    qint16 iSetDataText(qint16 slot, const QString& dataName, const QString& fileName);
    // The same for a data file without a title line.
    qint16 iSetDataTextNoTitle(qint16 slot, const QString& dataName, const QString& fileName);
    qint16 iSetOffset(qint32 x, qint32 y);
    qint16 iSetPrintZoom(qint16 zoom);
    // item: an item name, or a section name and an item name joined by ".".
    qint16 iSetItemValue(const QString& item, const QString& value);
    qint16 iSetRepeatStart(qint16 line);

    // Write the command file with the action and start the engine; paper true asks for A4.
    qint16 iPreview(bool paper);
    qint16 iPreviewData(); // preview with the data already set, on the layout's own paper
    qint16 iPrintBk(bool paper);
    qint16 iPrintDialog(bool paper);
    // Renders the job to pdfPath instead of its action: the command file of a preview, the engine
    // started with "--pdf pdfPath /c <command file>" and waited for (at most timeoutMs). The engine's
    // own message becomes sErrMsg when it fails.
    qint16 iRenderPdf(bool paper, const QString& pdfPath, int timeoutMs = 30 * 60 * 1000);

    // The command file's text for an action, as written (CP932, CR LF).
    QByteArray commandFileBytes(Action action, bool paper) const;
    // The command file in the suite's spelling (command folder + "WfdCom.dat").
    QString commandFilePath() const;
    // The engine program that would be started, or "" with sErrMsg when it cannot be found.
    QString resolveEngine();

private:
    struct DataSlot
    {
        QString name;
        QString path; // command folder + file name
        bool noTitle = false;
    };

    qint16 setData(qint16 slot, const QString& dataName, const QString& fileName, bool noTitle);
    bool writeCommandFile(Action action, bool paper);
    qint16 start(Action action, bool paper);

    const AppContext& m_context;
    QString m_engine = QStringLiteral("wfrfv10.exe");
    QString m_commandFolder; // SYSTEM_TMP folder with a trailing "\"
    QString m_layoutPath;
    QString m_title;
    std::array<DataSlot, kDataSlots> m_slots;
    qint32 m_offsetX = 0;
    qint32 m_offsetY = 0;
    qint16 m_zoom = 2;
    qint16 m_repeatStart = 0;
    bool m_repeatStartSet = false;
    QList<QPair<QString, QString>> m_items;
};

} // namespace qelprn
