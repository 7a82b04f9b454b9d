#pragma once

#include "report/CsvWriteError.h"

#include <QByteArray>
#include <QStringView>
#include <QtGlobal>
#include <initializer_list>
#include <optional>

class QIODevice;

namespace qelprn {

// Writes the fields of the print-data CSV files: texts between double quotes exactly as they are
// (a quote inside is not escaped: the engine's files have always been written so), numbers bare,
// doubles in their shortest round-trip form with "." and no exponent, commas between fields, CR LF
// after every line, all in CP932. Lines are collected in a buffer of a few dozen kilobytes and handed
// to the device as it fills, so a file of any length streams through constant memory.
class CsvLineWriter
{
public:
    explicit CsvLineWriter(QIODevice* device);
    CsvLineWriter(const CsvLineWriter&) = delete;
    CsvLineWriter& operator=(const CsvLineWriter&) = delete;

    void text(QStringView value);
    // One text field joined from parts, without building the joined string.
    void text(std::initializer_list<QStringView> parts);
    void number(qint64 value);
    void number(double value);
    // Ends the line; hands the buffer to the device when it is full.
    void endLine();
    // The header line of titles, handed to the device at once so it is in the file whatever the rows do.
    template <typename Titles> void header(const Titles& titles)
    {
        for (const auto& title : titles)
            text(title);
        endLine();
        flush();
    }
    // Hands everything written so far to the device; a failure is kept (error(), finish()).
    void flush();
    // Flushes and gives the writer's result: the device's failure, else stoppedBy (what ended the
    // rows early), else nothing.
    std::optional<CsvWriteError> finish(std::optional<CsvWriteError> stoppedBy = std::nullopt);

    // The first write failure; once set, further output is dropped.
    const std::optional<CsvWriteError>& error() const { return m_error; }

private:
    // Room for at least bytes more at m_used.
    char* room(qsizetype bytes);
    void separate(char*& p);

    QIODevice* m_device = nullptr;
    QByteArray m_buffer; // fixed size; m_used bytes of it are pending
    qsizetype m_used = 0;
    bool m_lineStart = true;
    std::optional<CsvWriteError> m_error;
};

// The shortest decimal form of value that reads back as the same double: "1234.5", "1234", "-0.25".
void appendShortestDecimal(QByteArray& out, double value);

} // namespace qelprn
