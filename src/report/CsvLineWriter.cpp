#include "report/CsvLineWriter.h"

#include "app/Cp932.h"

#include <QIODevice>
#include <charconv>

namespace qelprn {

namespace {
// Big enough that the device sees few calls, small enough to stay in the processor's cache.
constexpr qsizetype kChunk = 64 * 1024;
} // namespace

void appendShortestDecimal(QByteArray& out, double value)
{
    if (value == 0.0) {
        out.append('0'); // also for -0.0
        return;
    }
    // Fixed notation without a precision gives the shortest round-trip digits and never an
    // exponent; the largest double needs 309 digits before the point.
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    out.append(buffer, result.ptr - buffer);
}

CsvLineWriter::CsvLineWriter(QIODevice* device) : m_device(device)
{
    m_buffer.reserve(kChunk + 4096);
}

void CsvLineWriter::separate()
{
    if (!m_lineStart)
        m_buffer.append(',');
    m_lineStart = false;
}

void CsvLineWriter::text(QStringView value)
{
    separate();
    m_buffer.append('"');
    appendCp932(m_buffer, value);
    m_buffer.append('"');
}

void CsvLineWriter::number(qint64 value)
{
    separate();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    m_buffer.append(buffer, result.ptr - buffer);
}

void CsvLineWriter::number(double value)
{
    separate();
    appendShortestDecimal(m_buffer, value);
}

void CsvLineWriter::endLine()
{
    m_buffer.append("\r\n", 2);
    m_lineStart = true;
    if (m_buffer.size() >= kChunk)
        flush();
}

bool CsvLineWriter::flush()
{
    if (m_error) {
        m_buffer.clear();
        return false;
    }
    if (m_buffer.isEmpty())
        return true;
    const qint64 written = m_device->write(m_buffer);
    const bool ok = written == m_buffer.size();
    m_buffer.clear();
    if (!ok)
        m_error = CsvWriteError::writeFailed(*m_device);
    return ok;
}

std::optional<CsvWriteError> CsvLineWriter::finish(std::optional<CsvWriteError> stoppedBy)
{
    flush();
    return m_error ? m_error : stoppedBy;
}

} // namespace qelprn
