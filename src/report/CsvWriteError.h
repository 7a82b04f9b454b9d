#pragma once

#include <QString>

class QIODevice;

namespace qelprn {

// A failure of a print-data writer in the shape the suite reports run-time errors: a stable number
// and a description, shown as "(" number ")" description. The numbers are the suite's own codes for
// the same kinds of failure, so a clerk's support notes stay valid:
//   6  overflow (a 16-bit line counter ran past 32767)
//   9  subscript out of range (an empty row array)
//   57 device I/O error (any other write failure)
//   61 disk full
//   70 permission denied (a file or folder that may not be written or deleted)
//   75 path/file access error (the file could not be opened or deleted for another reason)
//   76 path not found (the folder does not exist)
struct CsvWriteError
{
    int number = 0;
    QString description;

    // "(" number ")" description, joined without blanks.
    QString message() const;

    static CsvWriteError overflow();
    static CsvWriteError subscriptOutOfRange();
    // A failed write on device (disk full when the file system says so).
    static CsvWriteError writeFailed(const QIODevice& device);
    // A file that could not be opened for output, or an old one that could not be deleted.
    static CsvWriteError cannotCreate(const QString& localPath, const QString& reason);
    // An existing file that the new one could not replace: on Windows, one another program (the
    // engine, a spreadsheet) holds open.
    static CsvWriteError cannotReplace(const QString& localPath, const QString& reason);
};

} // namespace qelprn
