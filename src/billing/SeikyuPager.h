#pragma once

#include "billing/SisetsuSeikyuRow.h"

#include <QList>
#include <QtGlobal>

namespace qelprn {

// Lays the facility invoice lines of one database out on pages of 25 lines: blank filler lines
// after each billing facility up to the next page, two filler lines before a billing facility's
// self-pay lines, and the last page filled up. A billing facility that ends on the 24th or 25th
// line of a page is followed by a whole blank page; the printed forms have always looked like this
// and it is kept.
class SeikyuPager
{
public:
    static constexpr int kPageLines = 25;

    explicit SeikyuPager(QList<SisetsuSeikyuRow>& lines);

    // Appends one line read from the statement (nSeikyuID and iSinryouType set), with the filler
    // lines that must come before it; sets its iGyoNo.
    void add(SisetsuSeikyuRow line);
    // Fills the last page.
    void finish();

private:
    void appendFiller();

    QList<SisetsuSeikyuRow>& m_lines;
    qint32 m_line = 1;
    qint32 m_prevID = 0;
    qint16 m_prevType = 0;
    QString m_prevName;
};

} // namespace qelprn
