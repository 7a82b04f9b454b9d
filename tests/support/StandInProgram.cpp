#include "support/StandInProgram.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

namespace qelprn::test {

namespace {

#ifdef Q_OS_WIN
QByteArray script(const StandIn& b)
{
    const auto quoted = [](const QString& path) {
        return u"\""_s + QDir::toNativeSeparators(path) + u"\""_s;
    };
    QString s = u"@echo off\r\nsetlocal EnableDelayedExpansion\r\n"_s;
    if (b.copyArg > 0)
        s += u"copy /y \"%~%1\" %2 >nul\r\n"_s.arg(b.copyArg).arg(quoted(b.copyTo));
    if (b.writeArg > 0)
        s += u"<nul set /p =\"%1\" > \"%~%2\"\r\n"_s.arg(QString::fromUtf8(b.writeBytes)).arg(b.writeArg);
    if (!b.argsFile.isEmpty()) {
        s += u"set n=0\r\nfor %%a in (%*) do set /a n+=1\r\n"_s;
        s += u">> %1 echo !n!\r\nfor %%a in (%*) do >> %1 echo %%~a\r\n"_s.arg(quoted(b.argsFile));
    }
    if (!b.stderrText.isEmpty())
        s += u"echo %1 1>&2\r\n"_s.arg(b.stderrText);
    return (s + u"exit /b %1\r\n"_s.arg(b.exitCode)).toLocal8Bit();
}
#else
QByteArray script(const StandIn& b)
{
    // Single quotes keep every character of a path; a quote inside one is closed and escaped.
    const auto quoted = [](QString text) { return u"'"_s + text.replace(u"'"_s, u"'\\''"_s) + u"'"_s; };
    QString s = u"#!/bin/sh\n"_s;
    if (b.copyArg > 0)
        s += u"cp \"$%1\" %2.part && mv %2.part %2\n"_s.arg(b.copyArg).arg(quoted(b.copyTo));
    if (b.writeArg > 0)
        s += u"printf '%s' %1 > \"$%2\"\n"_s.arg(quoted(QString::fromUtf8(b.writeBytes))).arg(b.writeArg);
    if (!b.argsFile.isEmpty())
        s += u"printf '%s\\n' \"$#\" \"$@\" >> %1\n"_s.arg(quoted(b.argsFile));
    if (!b.stderrText.isEmpty())
        s += u"printf '%s\\n' "_s + quoted(b.stderrText) + u" >&2\n"_s;
    return (s + u"exit %1\n"_s.arg(b.exitCode)).toUtf8();
}
#endif

} // namespace

QString writeStandInProgram(const QString& path, const StandIn& behaviour)
{
#ifdef Q_OS_WIN
    const QString program = path + u".cmd"_s;
#else
    const QString program = path;
#endif
    QDir().mkpath(QFileInfo(program).absolutePath());
    QFile file(program);
    if (!file.open(QIODevice::WriteOnly) || file.write(script(behaviour)) < 0)
        return {};
    file.close();
    if (!file.setPermissions(file.permissions() | QFileDevice::ExeOwner))
        return {};
    return program;
}

QStringList waitForArgs(const QString& argsFile, int lines)
{
    QStringList read;
    (void)QTest::qWaitFor(
        [&] {
            QFile file(argsFile);
            if (!file.open(QIODevice::ReadOnly))
                return false;
            // A batch file's echo ends its lines with CR LF.
            read = QString::fromUtf8(file.readAll()).remove(u'\r').split(u'\n', Qt::SkipEmptyParts);
            return read.size() >= lines;
        },
        20000);
    return read;
}

} // namespace qelprn::test
