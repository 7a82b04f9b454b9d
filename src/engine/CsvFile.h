#pragma once

#include "engine/EngineError.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QTemporaryFile>
#include <memory>

namespace qelprn::engine {

// Reads a print-data file (CP932, CR LF, our quoting) one line at a time, so memory does not grow
// with the file: the page planner walks it once, and pages are read back from remembered offsets.
// It reads from a private copy taken when it opens: the next print run may write its own file under
// the same name as soon as this job has been read, and on Windows a file held open could not be
// replaced.
class CsvFile
{
public:
    // Copies path, opens the copy and reads the title line (unless noTitle). Columns can always be
    // named "#1", "#2"...
    bool open(const QString& path, bool noTitle, EngineError* error);

    QString path() const { return m_path; }
    const QStringList& columns() const { return m_columns; }
    // Index of a title or of "#n"; -1 when the file has no such column.
    int columnIndex(const QString& name) const;

    // The byte offset of the next row and its 0-based index; seek() goes back to a remembered one.
    qint64 position() const { return m_offset; }
    qint64 nextRowIndex() const { return m_row; }
    bool seek(qint64 offset, qint64 rowIndex);
    // Reads the next row; false at the end (error unset) or on a malformed line (error set).
    // Short rows are padded with empty fields so every column index is valid.
    bool next(QStringList& fields, EngineError* error);
    // The file line (1-based) of a row index, for messages.
    int lineOfRow(qint64 rowIndex) const { return int(rowIndex) + (m_noTitle ? 1 : 2); }

private:
    bool readLine(QByteArray& bytes);
    bool copyToPrivateFile(const QString& path, EngineError* error);

    QString m_path;
    std::unique_ptr<QTemporaryFile> m_file; // the private copy, removed with the object
    QStringList m_columns;
    QHash<QString, int> m_index;
    bool m_noTitle = false;
    qint64 m_offset = 0;
    qint64 m_row = 0;
};

} // namespace qelprn::engine
