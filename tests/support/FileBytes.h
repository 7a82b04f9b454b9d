#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
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

// Whether bytes are those of the expected file tests/<name>. When they are not, they are written
// under the file's own name beside the test program (in the build folder), to compare and, when the
// change is meant, to copy over the expected file.
inline bool matchesExpected(const QByteArray& bytes, const QString& name)
{
    if (readAll(qEnvironmentVariable("QELPRN_SOURCE_DIR") + QStringLiteral("/tests/") + name) == bytes)
        return true;
    const QString made = QCoreApplication::applicationDirPath() + u'/' + QFileInfo(name).fileName();
    if (writeAll(made, bytes))
        qWarning().noquote() << name << "differs; what was made is in" << made;
    return false;
}

} // namespace qelprn::test
