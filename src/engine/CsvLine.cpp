#include "engine/CsvLine.h"

using namespace Qt::StringLiterals;

namespace qelprn::engine {

bool splitCsvLine(QStringView line, QStringList& fields, QString* problem)
{
    fields.clear();
    const qsizetype n = line.size();
    qsizetype i = 0;
    while (true) {
        while (i < n && line[i] == u' ')
            ++i;
        if (i < n && line[i] == u'"') {
            // The closing quote is the first one followed by a comma or the line end.
            qsizetype close = -1;
            for (qsizetype j = i + 1; j < n; ++j) {
                if (line[j] == u'"') {
                    qsizetype k = j + 1;
                    while (k < n && line[k] == u' ')
                        ++k;
                    if (k == n || line[k] == u',') {
                        close = j;
                        break;
                    }
                }
            }
            if (close < 0) {
                if (problem)
                    *problem = u"閉じていない \" があります（%1 文字目）"_s.arg(i + 1);
                return false;
            }
            fields.append(line.sliced(i + 1, close - i - 1).toString());
            i = close + 1;
            while (i < n && line[i] == u' ')
                ++i;
        } else {
            qsizetype end = i;
            while (end < n && line[end] != u',')
                ++end;
            fields.append(line.sliced(i, end - i).trimmed().toString());
            i = end;
        }
        if (i >= n)
            return true;
        ++i; // the comma
    }
}

} // namespace qelprn::engine
