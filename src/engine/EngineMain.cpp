#include "engine/EngineMain.h"

#include "app/EngineReceipt.h"
#include "engine/AddresseeOutput.h"
#include "engine/CommandFile.h"
#include "engine/FormDocument.h"
#include "engine/FormOutput.h"
#include "engine/PreviewWindow.h"
#include "engine/PreviewWindowSlot.h"

#include <QApplication>
#include <QDate>
#include <QFile>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

const QString kUsage = u"使い方: qelprn-engine [--pdf FILE] [--png DIR] [--dpi N]\n"
                       u"         [--pdf-dir DIR --file-date yyyymmdd [--author TEXT] [--subject TEXT] "
                       u"[--cancel-file FILE] [--pdfa]]\n"
                       u"         /c COMMANDFILE"_s;

struct Options
{
    QString commandFile;
    QString pdf;
    QString png;
    int dpi = 150;
    AddresseeOutputOptions perAddressee; // --pdf-dir: one PDF per addressee
};

bool parseArgs(const QStringList& args, Options& o, QString& problem)
{
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        auto value = [&](QString& out) {
            if (i + 1 >= args.size()) {
                problem = a + u" の後に値がありません"_s;
                return false;
            }
            out = args[++i];
            return true;
        };
        QString text;
        if (a.compare(u"/c"_s, Qt::CaseInsensitive) == 0 || a == u"-c"_s) {
            if (!value(o.commandFile))
                return false;
        } else if (a == u"--pdf"_s) {
            if (!value(o.pdf))
                return false;
        } else if (a == u"--pdf-dir"_s) {
            if (!value(o.perAddressee.folder))
                return false;
        } else if (a == u"--file-date"_s) {
            if (!value(o.perAddressee.date))
                return false;
        } else if (a == u"--author"_s) {
            if (!value(o.perAddressee.author))
                return false;
        } else if (a == u"--subject"_s) {
            if (!value(o.perAddressee.subject))
                return false;
        } else if (a == u"--cancel-file"_s) {
            if (!value(o.perAddressee.cancelFile))
                return false;
        } else if (a == u"--pdfa"_s) {
            o.perAddressee.pdfa = true;
        } else if (a == u"--png"_s) {
            if (!value(o.png))
                return false;
        } else if (a == u"--dpi"_s) {
            if (!value(text))
                return false;
            bool ok = false;
            o.dpi = text.toInt(&ok);
            if (!ok || o.dpi < 20 || o.dpi > 1200) {
                problem = u"--dpi は 20 から 1200 までの数です"_s;
                return false;
            }
        } else {
            problem = u"不明な引数です: "_s + a;
            return false;
        }
    }
    const QString& date = o.perAddressee.date;
    if (!o.perAddressee.folder.isEmpty() &&
        (date.size() != 8 || !QDate::fromString(date, u"yyyyMMdd"_s).isValid())) {
        problem = u"--pdf-dir には --file-date yyyymmdd（発行日）が要ります"_s;
        return false;
    }
    if (o.commandFile.isEmpty()) {
        problem = u"コマンドファイル（/c FILE）の指定がありません"_s;
        return false;
    }
    return true;
}

// Tells the print run that started this engine that the command file and the data have been read
// (or could not be): the run may then write the next job into the same folder.
void confirmInputsRead()
{
    const QString receipt = qEnvironmentVariable(kEngineReceiptVariable);
    if (receipt.isEmpty())
        return;
    QFile file(receipt);
    if (file.open(QIODevice::WriteOnly))
        file.close();
}

} // namespace

int runEngine(const QStringList& args, QTextStream& err)
{
    Options options;
    QString problem;
    if (!parseArgs(args, options, problem)) {
        err << u"qelprn-engine: "_s << problem << u'\n' << kUsage << Qt::endl;
        return 2;
    }
    const bool files =
        !options.pdf.isEmpty() || !options.png.isEmpty() || !options.perAddressee.folder.isEmpty();
    const bool canShowBoxes = !files && QGuiApplication::platformName() != u"offscreen"_s &&
                              QGuiApplication::platformName() != u"minimal"_s;
    QString title = u"帳票印刷"_s;
    auto report = [&](const EngineError& e, bool box) {
        err << u"qelprn-engine: "_s << e.text() << Qt::endl;
        if (box && canShowBoxes)
            QMessageBox::critical(nullptr, title, e.text());
        return 2;
    };

    EngineJob job;
    EngineError error;
    if (!readCommandFile(options.commandFile, job, &error)) {
        confirmInputsRead();
        return report(error, true);
    }
    if (!job.title.isEmpty())
        title = job.title;
    const bool windowed = job.action != EngineJob::Action::PrintOut;
    FormDocument document;
    const bool opened = document.open(job, &error);
    confirmInputsRead();
    if (!opened)
        return report(error, windowed);

    if (!options.perAddressee.folder.isEmpty()) {
        // Lines on standard output, for the program that started the engine, fields separated by
        // tabs: "addressees" and their number; "pages", pages painted and all pages, every hundred
        // pages; then one line per finished file: "file", name, pages, amount, ID, addressee.
        QTextStream out(stdout);
        out.setEncoding(QStringConverter::Utf8);
        const auto clean = [](QString text) {
            return text.replace(u'\t', u' ').replace(u'\n', u' ').replace(u'\r', u' ');
        };
        bool cancelled = false;
        const bool ok = writeAddresseePdfs(
            document, options.perAddressee,
            [&](int addressees) { out << u"addressees\t"_s << addressees << Qt::endl; },
            [&](int page, int pages) {
                if (page % 100 == 0 || page == pages)
                    out << u"pages\t"_s << page << u'\t' << pages << Qt::endl;
            },
            [&](const AddresseeFile& f) {
                out << u"file\t"_s << f.fileName << u'\t' << f.pages << u'\t' << f.key.amount << u'\t'
                    << clean(f.key.id) << u'\t' << clean(f.key.name) << Qt::endl;
            },
            &cancelled, &error);
        if (!ok)
            return report(error, false);
        return cancelled ? 3 : 0;
    }
    if (files) {
        if (!options.pdf.isEmpty() && !writePdf(document, options.pdf, &error))
            return report(error, false);
        if (!options.png.isEmpty() && !writePngs(document, options.png, options.dpi, &error))
            return report(error, false);
        return 0;
    }

    switch (job.action) {
    case EngineJob::Action::Preview: {
        // A newer preview of the same form replaces this one.
        PreviewWindowSlot slot(job.layoutPath);
        slot.claim();
        PreviewWindow window(document, PreviewWindowSettings::load());
        window.setRemembered(true);
        window.setPdfBaseName(pdfBaseName(job));
        QObject::connect(&slot, &PreviewWindowSlot::closeRequested, &window, &QWidget::close);
        window.show();
        return QApplication::exec() == 0 && !window.failed() ? 0 : 2;
    }
    case EngineJob::Action::PrintOut: {
        if (QPrinterInfo::defaultPrinter().isNull())
            return report({job.commandFile, 0, u"既定のプリンターがありません"_s}, false);
        QPrinter printer(QPrinterInfo::defaultPrinter(), QPrinter::HighResolution);
        if (!printDocument(document, printer, &error))
            return report(error, false);
        return 0;
    }
    case EngineJob::Action::PrintOutFromDialog: {
        if (const QString blocker = printDialogBlocker(); !blocker.isEmpty())
            return report({QString(), 0, blocker}, true);
        QPrinter printer(QPrinter::HighResolution);
        printer.setPageLayout(document.pageLayout());
        QPrintDialog dialog(&printer);
        dialog.setWindowTitle(title);
        dialog.setMinMax(1, document.pageCount());
        printer.setFromTo(1, document.pageCount()); // a chosen range starts as every page
        if (dialog.exec() != QDialog::Accepted)
            return 0;
        const bool range = printer.printRange() == QPrinter::PageRange;
        if (!printDocument(document, printer, &error, range ? printer.fromPage() : 0,
                           range ? printer.toPage() : 0))
            return report(error, true);
        return 0;
    }
    case EngineJob::Action::None:
        break;
    }
    return 0;
}

} // namespace qelprn::engine
