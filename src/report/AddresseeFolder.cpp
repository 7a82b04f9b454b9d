#include "report/AddresseeFolder.h"

#include "app/AtomicFile.h"
#include "app/Cp932.h"
#include "app/CsvRecord.h"
#include "app/Paths.h"
#include "report/PrintKind.h"
#include "report/cls_WfdPrintExe.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <cmath>
#include <utility>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif
#ifdef Q_OS_WIN
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kCancelFile = u".qelprn-cancel"_s;

QString quoted(QString text)
{
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

QString listPathOf(const QString& folder)
{
    return QDir(folder).filePath(QString::fromUtf16(kSentListName));
}

// "2026/10" -> "2026年10月分"
QString monthText(const QString& yyyymm)
{
    const QDate d = QDate::fromString(yyyymm + u"/01"_s, u"yyyy/MM/dd"_s);
    return d.isValid() ? u"%1年%2月分"_s.arg(d.year()).arg(d.month()) : yyyymm;
}

} // namespace

QString FolderProgress::text() const
{
    if (files == 0 && pagesPainted < pages)
        return u"帳票を作成しています %1 / %2 ページ"_s.arg(pagesPainted).arg(pages);
    return u"%1 / %2 件"_s.arg(files).arg(addressees);
}

qint64 FolderOutput::totalAmount() const
{
    qint64 sum = 0;
    for (const SentFile& f : files)
        sum += qint64(std::llround(f.amount.toDouble()));
    return sum;
}

int FolderOutput::totalPages() const
{
    int sum = 0;
    for (const SentFile& f : files)
        sum += f.pages;
    return sum;
}

bool folderHasOutput(const QString& folder)
{
    const QDir dir(folder);
    return dir.exists(QString::fromUtf16(kSentListName)) ||
           !dir.entryList({u"*.pdf"_s, u"*.PDF"_s}, QDir::Files).isEmpty();
}

bool clearEarlierOutput(const QString& folder, QString* error)
{
    const QDir dir(folder);
    const QString list = listPathOf(folder);
    QStringList remove;
    if (QFileInfo::exists(list)) {
        bool ok = false;
        const QStringList lines = readTextLines(list, &ok);
        if (!ok) {
            *error = QDir::toNativeSeparators(list) + u" を読めません。"_s;
            return false;
        }
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const QString name = splitCsvRecord(lines[i]).value(7);
            // Only plain names of this folder: a list edited to point elsewhere removes nothing there.
            if (!name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\') && name != u".."_s)
                remove << name;
        }
        remove << QString::fromUtf16(kSentListName);
    }
    remove << dir.entryList({u".*.pdf.part"_s}, QDir::Files | QDir::Hidden) << kCancelFile;
    for (const QString& name : std::as_const(remove)) {
        if (dir.exists(name) && !QFile::remove(dir.filePath(name))) {
            *error = QDir::toNativeSeparators(dir.filePath(name)) + u" を削除できません。"_s;
            return false;
        }
    }
    return true;
}

bool writeSentList(const QString& path, const PrintJouken& jouken, const QString& kindLabel,
                   const QList<SentFile>& files, QString* error)
{
    QStringList lines = {u"発行日,請求月,帳票,宛名,宛名ID,請求金額,枚数,ファイル名"_s};
    for (const SentFile& f : files) {
        lines << QStringList{quoted(jouken.sTeisyutuDate),
                             quoted(jouken.sSeikyuYM),
                             quoted(kindLabel),
                             quoted(f.name),
                             quoted(f.id),
                             f.amount.isEmpty() ? u"0"_s : f.amount,
                             QString::number(f.pages),
                             quoted(f.fileName)}
                     .join(u',');
    }
    return writeFileAtomically(path, toCp932(lines.join(u"\r\n"_s) + u"\r\n"_s), error);
}

qint16 writeAddresseeFolder(const AppContext& context, cls_WfdPrintExe& wfd, const PrintKind& kind,
                            const PrintJouken& jouken, FolderOutput& output)
{
    output.files.clear();
    output.cancelled = false;
    output.error.clear();
    const QString folder = QDir(output.folder).absolutePath();
    output.listPath = listPathOf(folder);
    if (!QDir().mkpath(folder)) {
        output.error = QDir::toNativeSeparators(folder) + u" を作成できません。"_s;
        return -1;
    }
    if (folderHasOutput(folder) && !output.replace) {
        output.error = QDir::toNativeSeparators(folder) + u" には前回の出力（"_s +
                       QString::fromUtf16(kSentListName) + u" や PDF）があります。"_s;
        return -1;
    }
    if (!clearEarlierOutput(folder, &output.error))
        return -1;

    // The command file of a preview, then the engine with one PDF per addressee.
    QString writeError;
    const QString commandFile = toLocalPath(wfd.commandFilePath());
    if (!writeFileAtomically(commandFile, wfd.commandFileBytes(cls_WfdPrintExe::Action::Preview, kind.paper),
                             &writeError)) {
        output.error = commandFile + u" を書き込めません。"_s + writeError;
        return -1;
    }
    const QString engine = wfd.resolveEngine();
    if (engine.isEmpty()) {
        output.error = wfd.sErrMsg;
        return -1;
    }
    const QString cancelFile = QDir(folder).filePath(kCancelFile);
    QStringList arguments = {u"--pdf-dir"_s,     folder,
                             u"--file-date"_s,   QString(jouken.sTeisyutuDate).remove(u'/'),
                             u"--subject"_s,     monthText(jouken.sSeikyuYM),
                             u"--cancel-file"_s, cancelFile};
    if (output.pdfa)
        arguments << u"--pdfa"_s;
    arguments << u"/c"_s << commandFile;

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(u"QT_QPA_PLATFORM"_s))
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    process.setProcessEnvironment(environment);
    // The engine stops when asked through the cancel file; Ctrl+C at a terminal, which reaches the
    // whole foreground process group, must not end it in the middle of a file.
#ifdef Q_OS_UNIX
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
#endif
#ifdef Q_OS_WIN
    process.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments* args) { args->flags |= CREATE_NEW_PROCESS_GROUP; });
#endif
    process.start(engine, arguments);
    if (!process.waitForStarted()) {
        output.error = u"帳票印刷エンジン "_s + engine + u" を起動できません。"_s + process.errorString();
        return -1;
    }
    FolderProgress done;
    bool stopAsked = false;
    const auto report = [&] {
        done.files = int(output.files.size());
        if (output.progress) {
            if (!output.progress(done) && !stopAsked) {
                stopAsked = true;
                QFile stop(cancelFile);
                stop.open(QIODevice::WriteOnly);
            }
        } else {
            if (output.stopRequested && output.stopRequested() && !stopAsked) {
                stopAsked = true;
                QFile stop(cancelFile);
                stop.open(QIODevice::WriteOnly);
            }
            context.interaction().progress(kind.label + u" "_s + done.text(), done.value(), done.maximum());
        }
    };
    const auto readLines = [&] {
        while (process.canReadLine()) {
            const QStringList f = QString::fromUtf8(process.readLine()).chopped(1).split(u'\t');
            if (f.value(0) == u"pages"_s) {
                done.pagesPainted = f.value(1).toInt();
                done.pages = f.value(2).toInt();
            } else if (f.value(0) == u"addressees"_s) {
                done.addressees = f.value(1).toInt();
                // The engine has read the job and planned its pages: the temporary folder is free
                // for the next run while the files are being written.
                if (wfd.onJobRead)
                    std::exchange(wfd.onJobRead, nullptr)();
            } else if (f.value(0) == u"file"_s && f.size() >= 6)
                output.files.append({f[1], f[2].toInt(), f[3], f[4], f[5]});
        }
    };
    while (process.state() != QProcess::NotRunning) {
        process.waitForReadyRead(100);
        readLines();
        report();
    }
    process.waitForFinished();
    readLines();
    report();
    QFile::remove(cancelFile);

    // The list names exactly the files that are there.
    QList<SentFile> present;
    for (const SentFile& f : std::as_const(output.files)) {
        if (QFileInfo::exists(QDir(folder).filePath(f.fileName)))
            present.append(f);
    }
    output.files = present;
    const bool finished = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    output.cancelled = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 3;
    if (!finished && !output.cancelled) {
        const QString message = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
        output.error = message.isEmpty() ? u"帳票印刷エンジンが終了コード "_s +
                                               QString::number(process.exitCode()) + u" で終わりました。"_s
                                         : message;
    }
    QString listError;
    if (!writeSentList(output.listPath, jouken, kind.label, output.files, &listError)) {
        output.error += (output.error.isEmpty() ? QString() : u"\r"_s) + output.listPath +
                        u" を書き込めません。"_s + listError;
        return -1;
    }
    return output.error.isEmpty() ? 0 : -1;
}

} // namespace qelprn
