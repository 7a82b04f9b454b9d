#pragma once

#include "app/AppContext.h"
#include "billing/PrintJouken.h"

#include <QList>
#include <QString>
#include <QtGlobal>
#include <functional>

namespace qelprn {

class cls_WfdPrintExe;
struct PrintKind;

// One PDF of a run split per addressee, as the engine reported it when the file was complete.
struct SentFile
{
    QString fileName; // in the folder
    int pages = 0;
    QString amount; // as the form prints it, in plain digits
    QString id;     // the addressee's ID
    QString name;   // the addressee
};

// The list written beside the files.
inline constexpr char16_t kSentListName[] = u"送付一覧.csv";

// How far a run into a folder is: the engine first paints every page of the job, then writes the
// addressees' files.
struct FolderProgress
{
    int pagesPainted = 0;
    int pages = 0; // 0 until known
    int files = 0;
    int addressees = 0; // 0 until known

    // "帳票を作成しています 200 / 7043 ページ", then "12 / 5996 件".
    QString text() const;
    // Both steps on one bar: pages painted and files written, out of pages and addressees.
    int value() const { return pagesPainted + files; }
    int maximum() const { return pages + addressees; }
};

// One PDF per addressee into a folder: what the caller asks (folder, replace, progress) and what
// the run leaves (the files, whether it was cancelled, the list, the reason of a failure).
struct FolderOutput
{
    QString folder;       // a local path; created when missing
    bool replace = false; // an earlier run's output in the folder may be replaced
    bool pdfa = true;     // archival PDF (PDF/A-1b)
    // Called while the engine works; false asks the engine to stop (after the file it is writing).
    // Without it, progress goes to the interaction.
    std::function<bool(const FolderProgress&)> progress;
    // Without progress: the run goes on while this says no (the command line's Ctrl+C).
    std::function<bool()> stopRequested;

    QList<SentFile> files;
    bool cancelled = false;
    QString listPath;
    QString error;

    qint64 totalAmount() const;
    int totalPages() const;
};

// True when folder holds the list or a PDF of an earlier run.
bool folderHasOutput(const QString& folder);
// Removes the files the folder's list names, the list and any half-written file left by a run that
// was killed; other files stay. False with the reason in error.
bool clearEarlierOutput(const QString& folder, QString* error);
// Writes the list (CP932, CR LF, a title line, one row per file: issue date, billing month, kind,
// addressee, addressee's ID, amount requested, pages, file name), replacing it whole.
bool writeSentList(const QString& path, const PrintJouken& jouken, const QString& kindLabel,
                   const QList<SentFile>& files, QString* error);

// Runs the engine on the job set up in wfd, writing one PDF per addressee into output.folder, then
// writes the list naming exactly the files that were finished, also when the run was cancelled or
// failed. 0 when every file was written (or the run was cancelled), -1 with output.error.
qint16 writeAddresseeFolder(const AppContext& context, cls_WfdPrintExe& wfd, const PrintKind& kind,
                            const PrintJouken& jouken, FolderOutput& output);

} // namespace qelprn
