#include "engine/AddresseeOutput.h"

#include "engine/FormOutput.h"
#include "engine/PdfInfo.h"
#include "engine/PdfPageSplitter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QThread>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

// Writes the addressees' files on a few threads (copying pages is independent work per file, and
// a month of invoice-receipts is thousands of files); the caller takes the files in order.
class PartWriters
{
public:
    using Write = std::function<bool(int group, QString* reason)>;

    PartWriters(int groups, Write write)
        : m_write(std::move(write)), m_states(size_t(groups), State::Pending), m_reasons(size_t(groups))
    {
        const int threads = qBound(1, QThread::idealThreadCount(), 4);
        for (int i = 0; i < threads; ++i)
            m_threads.emplace_back([this] { work(); });
    }
    ~PartWriters() { stop(); }

    // Waits for the group's file: false with the reason when it could not be written.
    bool take(int group, QString* reason)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_states[size_t(group)] != State::Pending; });
        *reason = m_reasons[size_t(group)];
        return m_states[size_t(group)] == State::Written;
    }
    // Starts no further file and waits for those being written.
    void stop()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        for (std::thread& t : m_threads) {
            if (t.joinable())
                t.join();
        }
    }

private:
    enum class State { Pending, Written, Failed };

    void work()
    {
        for (;;) {
            int group = 0;
            {
                const std::lock_guard lock(m_mutex);
                if (m_stopping || m_next >= int(m_states.size()))
                    return;
                group = m_next++;
            }
            QString reason;
            const bool written = m_write(group, &reason);
            {
                const std::lock_guard lock(m_mutex);
                m_states[size_t(group)] = written ? State::Written : State::Failed;
                m_reasons[size_t(group)] = reason;
            }
            m_changed.notify_all();
        }
    }

    Write m_write;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<State> m_states;
    std::vector<QString> m_reasons;
    int m_next = 0;
    bool m_stopping = false;
    std::vector<std::thread> m_threads;
};

} // namespace

bool writeAddresseePdfs(FormDocument& document, const AddresseeOutputOptions& options,
                        const std::function<void(int addressees)>& planned,
                        const std::function<void(int page, int pages)>& painting,
                        const std::function<void(const AddresseeFile&)>& done, bool* cancelled,
                        EngineError* error)
{
    *cancelled = false;
    const QDir folder(options.folder);
    if (!QDir().mkpath(options.folder)) {
        *error = {options.folder, 0, u"フォルダを作成できません"_s};
        return false;
    }
    QList<AddresseeKey> keys;
    for (int g = 0; g < document.groupCount(); ++g) {
        AddresseeKey key;
        if (!document.addressee(g, key, error))
            return false;
        keys.append(key);
    }
    const QStringList names = addresseeFileNames(options.date, keys);
    planned(int(names.size()));
    const auto stopAsked = [&] {
        return !options.cancelFile.isEmpty() && QFileInfo::exists(options.cancelFile);
    };

    // The whole job is painted once into a hidden file of the folder, and each addressee's pages are
    // copied out of it: one document painted by Qt's writer costs its fonts once, not once a file.
    // Its name ends like the files being written, so a run that was killed leaves nothing that the
    // next run takes for output or fails to clear.
    QTemporaryFile whole(folder.filePath(u".qelprn-whole-XXXXXX.pdf.part"_s));
    if (!whole.open()) {
        *error = {options.folder, 0, u"一時ファイルを作成できません："_s + whole.errorString()};
        return false;
    }
    whole.close();
    const bool painted = writePdf(
        document, whole.fileName(), error,
        [&](int page, int pages) {
            painting(page, pages);
            return !stopAsked();
        },
        options.pdfa);
    if (!painted) {
        *cancelled = stopAsked();
        return *cancelled;
    }
    PdfPageSplitter splitter;
    QString reason;
    if (!splitter.open(whole.fileName(), &reason) || splitter.pageCount() != document.pageCount()) {
        *error = {whole.fileName(), 0, u"PDF を宛先ごとに分けられません："_s + reason};
        return false;
    }
    // Each addressee's file is written under a hidden name by the writers, and takes its own name
    // here, in the order of the addressees.
    const QString formName = document.formName();
    std::vector<std::pair<int, int>> pages;
    for (int g = 0; g < document.groupCount(); ++g)
        pages.push_back(document.groupPages(g));
    const auto partPath = [&](int g) { return folder.filePath(u"."_s + names[g] + u".part"_s); };
    PartWriters writers(int(pages.size()), [&](int g, QString* why) {
        PdfDocumentInfo info;
        const AddresseeKey& key = keys.at(g); // read by several threads: no detaching access
        info.title = formName + u"　"_s + key.name;
        info.author = key.issuer.isEmpty() ? options.author : key.issuer;
        info.subject = options.subject;
        info.producer = u"qelprn-engine (Qt "_s + QString::fromLatin1(qVersion()) + u')';
        const QDateTime now = QDateTime::currentDateTime();
        info.created = now.addMSecs(-now.time().msec());
        return splitter.writePages(pages[size_t(g)].first, pages[size_t(g)].second, info, options.pdfa,
                                   partPath(g), why);
    });
    const auto abandon = [&](int from) {
        writers.stop();
        for (int g = from; g < int(pages.size()); ++g)
            QFile::remove(partPath(g));
    };
    for (int g = 0; g < int(pages.size()); ++g) {
        const QString target = folder.filePath(names[g]);
        if (stopAsked()) {
            abandon(g);
            *cancelled = true;
            return true;
        }
        if (!writers.take(g, &reason)) {
            abandon(g);
            *error = {target, 0, u"PDF ファイルを書き込めません："_s + reason};
            return false;
        }
        QFile::remove(target);
        if (!QFile::rename(partPath(g), target)) {
            abandon(g);
            *error = {target, 0, u"PDF ファイルを置けません"_s};
            return false;
        }
        done({names[g], keys[g], pages[size_t(g)].second});
    }
    return true;
}

} // namespace qelprn::engine
