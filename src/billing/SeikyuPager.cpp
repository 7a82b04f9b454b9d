#include "billing/SeikyuPager.h"

#include "app/RunTimeError.h"

namespace qelprn {

SeikyuPager::SeikyuPager(QList<SisetsuSeikyuRow>& lines) : m_lines(lines) {}

void SeikyuPager::appendFiller()
{
    SisetsuSeikyuRow filler;
    filler.nSeikyuID = m_prevID;
    filler.cSeikyuName = m_prevName;
    filler.iSinryouType = -1;
    filler.iGyoNo = toInt16(m_line);
    m_lines.append(filler);
    ++m_line;
}

void SeikyuPager::add(SisetsuSeikyuRow line)
{
    if (m_prevID != 0 && m_prevID != line.nSeikyuID) {
        // A new billing facility: pad to the next page (a whole blank page when the previous one
        // ended on its 24th or 25th line).
        for (qsizetype k = (m_lines.size() + 1) % kPageLines; k <= kPageLines; ++k)
            appendFiller();
        m_line = 1;
    }
    if (m_line != 1 && line.iSinryouType != m_prevType && line.nSeikyuID == m_prevID) {
        // The self-pay lines of the same billing facility begin.
        appendFiller();
        appendFiller();
    }
    line.iGyoNo = toInt16(m_line);
    m_prevID = line.nSeikyuID;
    m_prevType = line.iSinryouType;
    m_prevName = line.cSeikyuName;
    m_lines.append(std::move(line));
    ++m_line;
}

void SeikyuPager::finish()
{
    if (m_prevID == 0)
        return;
    for (qsizetype r = m_lines.size() % kPageLines; r != 0 && r <= kPageLines - 1; ++r)
        appendFiller();
}

} // namespace qelprn
