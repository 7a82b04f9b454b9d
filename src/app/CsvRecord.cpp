#include "app/CsvRecord.h"

#include "app/SpaceTrim.h"

namespace qelprn {

QStringList splitCsvRecord(const QString& line)
{
    QStringList fields;
    QString field;
    bool quoted = false;
    bool wasQuoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (quoted) {
            if (c == u'"') {
                if (i + 1 < line.size() && line.at(i + 1) == u'"') {
                    field += u'"';
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                field += c;
            }
        } else if (c == u'"' && trimSpaces(field).isEmpty()) {
            field.clear();
            quoted = true;
            wasQuoted = true;
        } else if (c == u',') {
            fields.append(wasQuoted ? field : trimSpaces(field));
            field.clear();
            wasQuoted = false;
        } else if (!wasQuoted) {
            field += c;
        }
    }
    fields.append(wasQuoted ? field : trimSpaces(field));
    return fields;
}

} // namespace qelprn
