#pragma once

#include "billing/KanjaSeikyuRow.h"
#include "billing/KenRyousyuuRow.h"
#include "billing/PrintJouken.h"
#include "billing/SisetsuSeikyuGroup.h"
#include "billing/SisetsuSeikyuRow.h"
#include "report/CsvWriteError.h"

#include <QList>
#include <QString>
#include <functional>
#include <optional>

class QIODevice;

namespace qelprn {

// The four print-data files the form-print engine fills its layouts from: a header line with every
// column title, then one line per row, in CP932 with CR LF (see CsvLineWriter for the field rules).
// Every data line starts with "1" in "枠線描画" and ends with the seal image path in "社印保存先".
// Each writer returns nothing when the file was written to the end, else the error that stopped it
// (the header is written first, also when the rows then fail). The path overloads write a temporary
// file beside the target and rename it over the target when whole; when writing fails, the temporary
// file and the previous run's file are both removed, so no half-written or stale file is left.
using CsvResult = std::optional<CsvWriteError>;

// "施設請求データ.csv", print kind 1: one line per element of aSisetsuSeikyu, filler lines included.
CsvResult writeSeikyuCsv(QIODevice* out, const QList<SisetsuSeikyuRow>& rows, const QString& sealPath);
CsvResult writeSeikyuCsv(const QString& path, const QList<SisetsuSeikyuRow>& rows, const QString& sealPath);

// The groups of the multi-database facility invoice (print kind 6) and their counts.
struct SeikyuGroups
{
    const QList<SisetsuSeikyuGroup>& sisetsu; // aSeikyuSisetsu: treated-facility lines
    qint16 sisetsuCount = 0;
    const QList<SisetsuSeikyuGroup>& jihi; // aSeikyuJihi: self-pay lines
    qint16 jihiCount = 0;
};

// "施設請求データ.csv", print kind 6: the same 22 columns, lines numbered by a running counter.
CsvResult writeSeikyuCsvAllDb(QIODevice* out, const SeikyuGroups& groups, const QString& sealPath);
CsvResult writeSeikyuCsvAllDb(const QString& path, const SeikyuGroups& groups, const QString& sealPath);

// "施設請求データ.csv", print kinds 2 and 3: one line per patient of the co-payment list.
CsvResult writeKanjaCsv(QIODevice* out, const QList<KanjaSeikyuRow>& rows, const PrintJouken& jouken,
                        const QString& sealPath);
CsvResult writeKanjaCsv(const QString& path, const QList<KanjaSeikyuRow>& rows, const PrintJouken& jouken,
                        const QString& sealPath);

// "請求書兼領収書.csv", print kinds 4 and 5: one line per invoice-receipt row.
CsvResult writeKenRyousyuuCsv(QIODevice* out, const QList<KenRyousyuuRow>& rows, const PrintJouken& jouken,
                              const QString& sealPath);
CsvResult writeKenRyousyuuCsv(const QString& path, const QList<KenRyousyuuRow>& rows,
                              const PrintJouken& jouken, const QString& sealPath);

// The file part shared by the path overloads: write through body into a temporary file, then rename.
CsvResult writeCsvFile(const QString& path, const std::function<CsvResult(QIODevice*)>& body);

} // namespace qelprn
