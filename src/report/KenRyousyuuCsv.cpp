// The invoice-receipt file of print kinds 4 and 5 ("請求書兼領収書.csv", 70 columns).
#include "report/CsvLineWriter.h"
#include "report/PrintDataCsv.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QStringList titles()
{
    QStringList t = {u"枠線描画"_s, u"施術年月"_s, u"提出年月"_s, u"施術日From"_s, u"施術日To"_s,
                     u"利用者ID"_s, u"利用者名"_s, u"保険種別"_s, u"負担割合"_s,   u"施術回数"_s};
    for (int n = 1; n <= KenRyousyuuRow::kDaySlots; ++n) {
        const QString number = QString::number(n);
        t << u"施術日"_s + number << u"保険内金額"_s + number << u"一部負担金"_s + number
          << u"自費金額"_s + number;
    }
    t << u"保険内金額合計"_s << u"一部負担金合計"_s << u"自費合計"_s << u"備考_部位"_s << u"備考_変形"_s
      << u"備考_鍼灸"_s << u"備考_往療"_s << u"備考_日別施術内容"_s << u"請求元〒"_s << u"請求元住所"_s
      << u"請求元社名"_s << u"請求元屋号"_s << u"請求元電話番号"_s << u"請求元FAX番号"_s << u"保険略名"_s
      << u"社印保存先"_s;
    return t;
}

} // namespace

CsvResult writeKenRyousyuuCsv(QIODevice* out, const QList<KenRyousyuuRow>& rows, const PrintJouken& jouken,
                              const QString& sealPath)
{
    CsvLineWriter csv(out);
    csv.header(titles());
    if (rows.isEmpty())
        return csv.finish(CsvWriteError::subscriptOutOfRange());

    const QString sejutsuYM = jouken.sSeikyuYM + u"/01"_s;
    for (qsizetype i = 0; i < rows.size() && !csv.error(); ++i) {
        const KenRyousyuuRow& row = rows.at(i);
        csv.text(u"1");
        csv.text(sejutsuYM);
        csv.text(jouken.sTeisyutuDate);
        csv.text(row.施術日From);
        csv.text(row.施術日To);
        csv.number(qint64(row.nRiyoushaID));
        csv.text(row.患者名);
        csv.number(qint64(row.保険種別));
        csv.number(qint64(row.負担割合));
        csv.number(qint64(row.施術回数));
        for (const KenRyousyuuDay& day : row.days) {
            csv.text(day.施術日);
            csv.number(qint64(day.保険内金額));
            csv.number(day.一部負担金);
            csv.number(qint64(day.自費金額));
        }
        csv.number(qint64(row.保険内金額合計));
        csv.number(row.一部負担金合計);
        csv.number(qint64(row.自費金額合計));
        csv.text(row.備考_部位);
        csv.text(row.備考_変形);
        csv.text(row.備考_鍼灸);
        csv.text(row.備考_往療);
        csv.text(row.備考_日別施術内容);
        csv.text(row.請求元郵便番号);
        csv.text(row.請求元住所);
        csv.text(row.請求元法人名);
        csv.text(row.請求元屋号);
        csv.text(row.請求元電話番号);
        csv.text(row.請求元FAX番号);
        csv.text(row.保険略名);
        csv.text(sealPath);
        csv.endLine();
    }
    return csv.finish();
}

CsvResult writeKenRyousyuuCsv(const QString& path, const QList<KenRyousyuuRow>& rows,
                              const PrintJouken& jouken, const QString& sealPath)
{
    return writeCsvFile(path,
                        [&](QIODevice* out) { return writeKenRyousyuuCsv(out, rows, jouken, sealPath); });
}

} // namespace qelprn
