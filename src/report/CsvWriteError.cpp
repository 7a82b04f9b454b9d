#include "report/CsvWriteError.h"

#include <QFileDevice>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

CsvWriteError make(int number, const QString& text, const QString& detail)
{
    // The detail (path, system reason) goes on a line of its own so the first line stays the
    // suite's familiar text.
    return {number, detail.isEmpty() ? text : text + u"\r\n"_s + detail};
}

} // namespace

QString CsvWriteError::message() const
{
    return u"("_s + QString::number(number) + u")"_s + description;
}

CsvWriteError CsvWriteError::overflow()
{
    return make(6, u"オーバーフローしました。"_s, {});
}

CsvWriteError CsvWriteError::subscriptOutOfRange()
{
    return make(9, u"インデックスが有効範囲にありません。"_s, u"出力する行がありません。"_s);
}

CsvWriteError CsvWriteError::writeFailed(const QIODevice& device)
{
    const auto* file = qobject_cast<const QFileDevice*>(&device);
    QString detail = device.errorString();
    if (file && !file->fileName().isEmpty())
        detail = file->fileName() + u"\r\n"_s + detail;
    if (file && file->error() == QFileDevice::ResourceError)
        return make(61, u"ディスクの空き容量が不足しています。"_s, detail);
    return make(57, u"デバイス I/O エラーです。"_s, detail);
}

CsvWriteError CsvWriteError::cannotCreate(const QString& localPath, const QString& reason)
{
    const QFileInfo file(localPath);
    const QFileInfo folder(file.absolutePath());
    const QString detail = reason.isEmpty() ? localPath : localPath + u"\r\n"_s + reason;
    if (!folder.isDir())
        return make(76, u"パスが見つかりません。"_s, detail);
    if (!folder.isWritable() || (file.exists() && !file.isWritable()))
        return make(70, u"書き込みできません。"_s, detail);
    return make(75, u"パス名が無効です。"_s, detail);
}

CsvWriteError CsvWriteError::cannotReplace(const QString& localPath, const QString& reason)
{
    return make(70, u"書き込みできません。"_s, localPath + u"\r\n"_s + reason);
}

} // namespace qelprn
