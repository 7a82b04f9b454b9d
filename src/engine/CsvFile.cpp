#include "engine/CsvFile.h"

#include "app/Cp932.h"
#include "engine/CsvLine.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

bool CsvFile::open(const QString& path, bool noTitle, EngineError* error)
{
    m_path = path;
    m_noTitle = noTitle;
    m_columns.clear();
    m_index.clear();
    if (!copyToPrivateFile(path, error))
        return false;
    m_offset = 0;
    m_row = 0;
    if (!noTitle) {
        QByteArray bytes;
        QString problem;
        if (!readLine(bytes)) {
            *error = {path, 1, u"見出し行がありません"_s};
            return false;
        }
        if (!splitCsvLine(fromCp932(bytes), m_columns, &problem)) {
            *error = {path, 1, problem};
            return false;
        }
        for (int i = 0; i < m_columns.size(); ++i)
            m_index.insert(m_columns[i], i);
        m_offset = m_file->pos();
    } else {
        // Without titles the width of the first row tells how many columns there are.
        QByteArray bytes;
        QStringList fields;
        if (readLine(bytes) && splitCsvLine(fromCp932(bytes), fields))
            m_columns = QStringList(fields.size(), QString());
        m_file->seek(0);
    }
    return true;
}

bool CsvFile::copyToPrivateFile(const QString& path, EngineError* error)
{
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly)) {
        *error = {path, 0, u"データファイルを開けません（%1）"_s.arg(source.errorString())};
        return false;
    }
    m_file = std::make_unique<QTemporaryFile>(QDir::temp().filePath(u"qelprn-data-XXXXXX.csv"_s));
    if (!m_file->open()) {
        *error = {path, 0, u"データファイルの写しを作れません（%1）"_s.arg(m_file->errorString())};
        return false;
    }
    QByteArray chunk;
    while (!(chunk = source.read(1 << 20)).isEmpty()) {
        if (m_file->write(chunk) != chunk.size()) {
            *error = {path, 0, u"データファイルの写しを作れません（%1）"_s.arg(m_file->errorString())};
            return false;
        }
    }
    if (source.error() != QFileDevice::NoError) {
        *error = {path, 0, u"データファイルを読めません（%1）"_s.arg(source.errorString())};
        return false;
    }
    if (!m_file->flush() || !m_file->seek(0)) {
        *error = {path, 0, u"データファイルの写しを作れません（%1）"_s.arg(m_file->errorString())};
        return false;
    }
    return true;
}

int CsvFile::columnIndex(const QString& name) const
{
    if (name.startsWith(u'#')) {
        bool ok = false;
        const int n = name.mid(1).toInt(&ok);
        return ok && n >= 1 && n <= m_columns.size() ? n - 1 : -1;
    }
    return m_index.value(name, -1);
}

bool CsvFile::seek(qint64 offset, qint64 rowIndex)
{
    if (!m_file->seek(offset))
        return false;
    m_offset = offset;
    m_row = rowIndex;
    return true;
}

bool CsvFile::readLine(QByteArray& bytes)
{
    if (m_file->atEnd())
        return false;
    bytes = m_file->readLine();
    while (bytes.endsWith('\n') || bytes.endsWith('\r'))
        bytes.chop(1);
    return true;
}

bool CsvFile::next(QStringList& fields, EngineError* error)
{
    QByteArray bytes;
    while (true) {
        if (!readLine(bytes)) {
            if (error)
                *error = {};
            return false;
        }
        if (!bytes.isEmpty())
            break;
        // A blank line (the writers end the file with CR LF) carries no row.
        m_offset = m_file->pos();
    }
    QString problem;
    if (!splitCsvLine(fromCp932(bytes), fields, &problem)) {
        if (error)
            *error = {m_path, lineOfRow(m_row), problem};
        return false;
    }
    while (fields.size() < m_columns.size())
        fields.append(QString());
    m_offset = m_file->pos();
    ++m_row;
    return true;
}

} // namespace qelprn::engine
