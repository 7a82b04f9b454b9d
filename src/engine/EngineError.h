#pragma once

#include <QString>

namespace qelprn::engine {

// Why a job cannot be carried out, with the file and line (1-based, 0 when the whole file is meant)
// where the problem is, so a person can find and fix it.
struct EngineError
{
    QString file;
    int line = 0;
    QString message;

    bool isSet() const { return !message.isEmpty(); }
    // "<file>:<line>: <message>", or "<file>: <message>" without a line.
    QString text() const
    {
        QString where = file;
        if (line > 0)
            where += u':' + QString::number(line);
        return where.isEmpty() ? message : where + QStringLiteral(": ") + message;
    }
};

} // namespace qelprn::engine
