#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace qelprn::test {

// A file's bytes; empty when it cannot be read.
inline QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Writes bytes as the whole file; false unless every byte was written.
inline bool writeAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace qelprn::test
