// The facility invoice files of print kinds 1 and 6 ("施設請求データ.csv", 22 columns).
#include "report/CsvLineWriter.h"
#include "report/PrintDataCsv.h"

#include <array>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const std::array<QString, 22> kTitles = {
    u"枠線描画"_s,     u"項番"_s,           u"施術年月"_s,     u"提出年月"_s,     u"請求先施設ID"_s,
    u"請求先施設名"_s, u"請求先郵便番号"_s, u"請求先住所1"_s,  u"請求先住所2"_s,  u"本社名"_s,
    u"本社郵便番号"_s, u"本社住所"_s,       u"診療タイプ"_s,   u"治療院名"_s,     u"治療院郵便番号"_s,
    u"治療院住所"_s,   u"施術施設名"_s,     u"施術施設人数"_s, u"施術施設合計"_s, u"施術施設負担額"_s,
    u"備考"_s,         u"社印保存先"_s,
};

// Where the billing facility columns of a line come from: the line itself (kind 1) or its group
// (kind 6, whose lines leave them empty).
struct Billing
{
    qint32 id;
    const QString& name;
    const QString& yubin;
    const QString& address1;
    const QString& address2;
};

void writeLine(CsvLineWriter& csv, qint16 gyoNo, const SisetsuSeikyuRow& row, const Billing& billing,
               const QString& sealPath)
{
    csv.text(u"1");
    csv.number(qint64(gyoNo));
    csv.text(row.cSejutsuYM);
    csv.text(row.cTeisyutuDate);
    csv.number(qint64(billing.id));
    csv.text(billing.name);
    csv.text(billing.yubin);
    csv.text(billing.address1);
    csv.text(billing.address2);
    csv.text(row.cCorpName);
    csv.text(row.cCorpYubin);
    csv.text(row.cCorpAddress1);
    csv.number(qint64(row.iSinryouType));
    csv.text(row.cTiryoinName);
    csv.text(row.cTiryoinYubin);
    csv.text(row.cTiryoinAddress1);
    csv.text(row.cSejutsuName);
    csv.number(qint64(row.iSejutsuNinzu));
    csv.number(qint64(row.nSejutsuGoukei));
    csv.number(qint64(row.nSejutsuKanjaSeikyu));
    csv.text(row.cRiyoushaName);
    csv.text(sealPath);
    csv.endLine();
}

// The running "項番" of the all-sites file: a 16-bit counter, as the engine's layouts expect.
class LineCounter
{
public:
    bool next()
    {
        if (m_value == 32767)
            return false;
        ++m_value;
        return true;
    }
    qint16 value() const { return m_value; }

private:
    qint16 m_value = 0;
};

// The lines of group, at most its count of them.
qsizetype lineCount(const SisetsuSeikyuGroup& group)
{
    return qBound(qsizetype(0), qsizetype(group.iMeisaiCnt), group.aMeisai.size());
}

} // namespace

CsvResult writeSeikyuCsv(QIODevice* out, const QList<SisetsuSeikyuRow>& rows, const QString& sealPath)
{
    CsvLineWriter csv(out);
    csv.header(kTitles);
    if (rows.isEmpty())
        return csv.finish(CsvWriteError::subscriptOutOfRange());
    for (const SisetsuSeikyuRow& row : rows) {
        writeLine(
            csv, row.iGyoNo, row,
            {row.nSeikyuID, row.cSeikyuName, row.cSeikyuYubin, row.cSeikyuAddress1, row.cSeikyuAddress2},
            sealPath);
        if (csv.error())
            break;
    }
    return csv.finish();
}

// The walk over the groups, chosen so that each printed invoice reads top to bottom: every billing
// facility of aSeikyuSisetsu in its order with its treated-facility lines, then (when it has any)
// two filler lines and its self-pay lines (the aSeikyuJihi group of the same name); after them the
// billing facilities that have self-pay lines only, in the order of aSeikyuJihi, without fillers
// (there is nothing above them to set them apart from). The billing columns of every line come from
// its group; the engine starts a new invoice when they change.
CsvResult writeSeikyuCsvAllDb(QIODevice* out, const SeikyuGroups& groups, const QString& sealPath)
{
    CsvLineWriter csv(out);
    csv.header(kTitles);
    const qsizetype sisetsuCount =
        qBound(qsizetype(0), qsizetype(groups.sisetsuCount), groups.sisetsu.size());
    const qsizetype jihiCount = qBound(qsizetype(0), qsizetype(groups.jihiCount), groups.jihi.size());
    if (sisetsuCount == 0 && jihiCount == 0)
        return csv.finish(CsvWriteError::subscriptOutOfRange());

    LineCounter counter;
    auto writeGroup = [&](const SisetsuSeikyuGroup& group) -> CsvResult {
        const Billing billing{group.nSeikyuID, group.cSeikyuName, group.cSeikyuYubin, group.cSeikyuAddress1,
                              group.cSeikyuAddress2};
        for (qsizetype i = 0, n = lineCount(group); i < n; ++i) {
            if (!counter.next())
                return CsvWriteError::overflow();
            writeLine(csv, counter.value(), group.aMeisai.at(i), billing, sealPath);
            if (csv.error())
                return csv.error();
        }
        return std::nullopt;
    };
    auto writeFillers = [&](const SisetsuSeikyuGroup& group) -> CsvResult {
        for (int k = 0; k < 2; ++k) {
            if (!counter.next())
                return CsvWriteError::overflow();
            csv.text(u"1");
            csv.number(qint64(counter.value()));
            csv.text(u"");
            csv.text(u"");
            csv.number(qint64(group.nSeikyuID));
            csv.text(group.cSeikyuName);
            for (int column = 7; column <= 22; ++column)
                csv.text(u"");
            csv.endLine();
        }
        return csv.error();
    };
    auto jihiOf = [&](const QString& name) -> const SisetsuSeikyuGroup* {
        for (qsizetype j = 0; j < jihiCount; ++j) {
            if (groups.jihi.at(j).cSeikyuName == name)
                return &groups.jihi.at(j);
        }
        return nullptr;
    };

    for (qsizetype i = 0; i < sisetsuCount; ++i) {
        const SisetsuSeikyuGroup& group = groups.sisetsu.at(i);
        CsvResult failed = writeGroup(group);
        if (!failed) {
            if (const SisetsuSeikyuGroup* jihi = jihiOf(group.cSeikyuName)) {
                failed = writeFillers(group);
                if (!failed)
                    failed = writeGroup(*jihi);
            }
        }
        if (failed)
            return csv.finish(failed);
    }
    for (qsizetype j = 0; j < jihiCount; ++j) {
        const SisetsuSeikyuGroup& jihi = groups.jihi.at(j);
        bool written = false;
        for (qsizetype i = 0; i < sisetsuCount && !written; ++i)
            written = groups.sisetsu.at(i).cSeikyuName == jihi.cSeikyuName;
        if (written)
            continue;
        if (CsvResult failed = writeGroup(jihi))
            return csv.finish(failed);
    }
    return csv.finish();
}

CsvResult writeSeikyuCsv(const QString& path, const QList<SisetsuSeikyuRow>& rows, const QString& sealPath)
{
    return writeCsvFile(path, [&](QIODevice* out) { return writeSeikyuCsv(out, rows, sealPath); });
}

CsvResult writeSeikyuCsvAllDb(const QString& path, const SeikyuGroups& groups, const QString& sealPath)
{
    return writeCsvFile(path, [&](QIODevice* out) { return writeSeikyuCsvAllDb(out, groups, sealPath); });
}

} // namespace qelprn
