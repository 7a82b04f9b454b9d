#include "engine/AddresseeOutput.h"

#include "engine/PdfInfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

bool writeGroup(FormDocument& document, int group, const QString& path, const QString& title,
                const QString& author, const AddresseeOutputOptions& options, EngineError* error)
{
    const auto [first, count] = document.groupPages(group);
    QPdfWriter writer(path);
    writer.setResolution(int(FormDocument::kUnitsPerInch));
    writer.setPageLayout(document.pageLayout());
    PdfDocumentInfo info;
    info.title = title;
    info.author = author;
    info.subject = options.subject;
    info.producer = u"qelprn-engine (Qt "_s + QString::fromLatin1(qVersion()) + u')';
    const QDateTime now = QDateTime::currentDateTime();
    info.created = now.addMSecs(-now.time().msec());
    writer.setTitle(title);
    writer.setCreator(info.creator);
    writer.setDocumentXmpMetadata(xmpMetadata(info, options.pdfa));
    if (options.pdfa)
        writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    QPainter painter;
    if (!painter.begin(&writer)) {
        *error = {path, 0, u"PDF ファイルを書き込めません"_s};
        return false;
    }
    for (int page = first; page < first + count; ++page) {
        if (page > first)
            writer.newPage();
        if (!document.paintPage(page, painter, error)) {
            painter.end();
            return false;
        }
    }
    if (!painter.end() || QFileInfo(path).size() == 0) {
        *error = {path, 0, u"PDF ファイルを書き込めません"_s};
        return false;
    }
    QString reason;
    if (!appendDocumentInfo(path, info, &reason)) {
        *error = {path, 0, u"PDF ファイルに文書情報を書き込めません："_s + reason};
        return false;
    }
    return true;
}

} // namespace

bool writeAddresseePdfs(FormDocument& document, const AddresseeOutputOptions& options,
                        const std::function<void(int addressees)>& planned,
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
    for (int g = 0; g < document.groupCount(); ++g) {
        if (!options.cancelFile.isEmpty() && QFileInfo::exists(options.cancelFile)) {
            *cancelled = true;
            return true;
        }
        const QString target = folder.filePath(names[g]);
        const QString part = folder.filePath(u"."_s + names[g] + u".part"_s);
        const QString title = document.formName() + u"　"_s + keys[g].name;
        const QString author = keys[g].issuer.isEmpty() ? options.author : keys[g].issuer;
        if (!writeGroup(document, g, part, title, author, options, error)) {
            QFile::remove(part);
            return false;
        }
        QFile::remove(target);
        if (!QFile::rename(part, target)) {
            QFile::remove(part);
            *error = {target, 0, u"PDF ファイルを置けません"_s};
            return false;
        }
        done({names[g], keys[g], document.groupPages(g).second});
    }
    return true;
}

} // namespace qelprn::engine
