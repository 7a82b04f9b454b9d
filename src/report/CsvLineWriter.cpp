#include "report/CsvLineWriter.h"

#include "app/Cp932.h"

#include <QIODevice>
#include <charconv>

namespace qelprn {

namespace {
// Big enough that the device sees few calls, small enough to stay in the processor's cache.
constexpr qsizetype kChunk = 64 * 1024;
// The largest number field: a double in fixed notation needs up to 309 digits before the point.
constexpr qsizetype kNumberRoom = 400;

// Writes value at p (room for kNumberRoom bytes) and returns the end.
char* shortestDecimal(char* p, double value)
{
    if (value == 0.0) {
        *p++ = '0'; // also for -0.0
        return p;
    }
    // Fixed notation without a precision gives the shortest round-trip digits, never an exponent.
    return std::to_chars(p, p + kNumberRoom, value, std::chars_format::fixed).ptr;
}

} // namespace

void appendShortestDecimal(QByteArray& out, double value)
{
    char buffer[kNumberRoom];
    out.append(buffer, shortestDecimal(buffer, value) - buffer);
}

CsvLineWriter::CsvLineWriter(QIODevice* device) : m_device(device)
{
    m_buffer.resize(kChunk + 2 * kNumberRoom);
}

char* CsvLineWriter::room(qsizetype bytes)
{
    if (m_used + bytes > m_buffer.size()) {
        flush();
        if (bytes > m_buffer.size())
            m_buffer.resize(bytes); // one field longer than the whole buffer
    }
    return m_buffer.data() + m_used;
}

void CsvLineWriter::separate(char*& p)
{
    if (!m_lineStart)
        *p++ = ',';
    m_lineStart = false;
}

void CsvLineWriter::text(QStringView value)
{
    char* p = room(value.size() * 2 + 8 + 3);
    separate(p);
    *p++ = '"';
    p += writeCp932(p, value);
    *p++ = '"';
    m_used = p - m_buffer.constData();
}

void CsvLineWriter::text(std::initializer_list<QStringView> parts)
{
    qsizetype length = 0;
    for (QStringView part : parts)
        length += part.size() * 2 + 8;
    char* p = room(length + 3);
    separate(p);
    *p++ = '"';
    for (QStringView part : parts)
        p += writeCp932(p, part);
    *p++ = '"';
    m_used = p - m_buffer.constData();
}

void CsvLineWriter::number(qint64 value)
{
    char* p = room(24);
    separate(p);
    p = std::to_chars(p, p + 22, value).ptr;
    m_used = p - m_buffer.constData();
}

void CsvLineWriter::number(double value)
{
    char* p = room(kNumberRoom + 1);
    separate(p);
    p = shortestDecimal(p, value);
    m_used = p - m_buffer.constData();
}

void CsvLineWriter::endLine()
{
    char* p = room(2);
    *p++ = '\r';
    *p++ = '\n';
    m_used += 2;
    m_lineStart = true;
    if (m_used >= kChunk)
        flush();
}

void CsvLineWriter::flush()
{
    const qsizetype pending = m_used;
    m_used = 0;
    if (!m_error && pending > 0 && m_device->write(m_buffer.constData(), pending) != pending)
        m_error = CsvWriteError::writeFailed(*m_device);
}

std::optional<CsvWriteError> CsvLineWriter::finish(std::optional<CsvWriteError> stoppedBy)
{
    flush();
    return m_error ? m_error : stoppedBy;
}

} // namespace qelprn
