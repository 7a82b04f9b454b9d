// The co-payment list file of print kinds 2 and 3 ("施設請求データ.csv", 33 columns).
#include "app/Kiriage.h"
#include "report/CsvLineWriter.h"
#include "report/PrintDataCsv.h"

#include <array>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const std::array<QString, 33> kTitles = {
    u"枠線描画"_s,
    u"項番"_s,
    u"施術年月"_s,
    u"提出年月"_s,
    u"施術日From"_s,
    u"施術日To"_s,
    u"施設ID"_s,
    u"施設名"_s,
    u"治療院名"_s,
    u"部屋番号"_s,
    u"利用者ID"_s,
    u"利用者名"_s,
    u"診療タイプ"_s,
    u"施術回数"_s,
    u"保険総合計"_s,
    u"利用者負担割合"_s,
    u"利用者請求額"_s,
    u"保険有無"_s,
    u"利用者請求額4回以下"_s,
    u"利用者請求額5回以上"_s,
    u"保険略名"_s,
    u"保険自己負担額"_s,
    u"自由診療額"_s,
    u"治療院郵便番号"_s,
    u"治療院住所"_s,
    u"治療院電話番号"_s,
    u"治療院FAX番号"_s,
    u"治療院金融機関"_s,
    u"治療院預金種別"_s,
    u"治療院口座番号"_s,
    u"治療院名義人"_s,
    u"施設支払方法"_s,
    u"社印保存先"_s,
};

} // namespace

CsvResult writeKanjaCsv(QIODevice* out, const QList<KanjaSeikyuRow>& rows, const PrintJouken& jouken,
                        const QString& sealPath)
{
    CsvLineWriter csv(out);
    csv.header(kTitles);
    if (rows.isEmpty())
        return csv.finish(CsvWriteError::subscriptOutOfRange());

    const QString sejutsuYM = jouken.sSeikyuYM + u"/01"_s;
    // All lines belong to one clinic: the first row's account type speaks for the file.
    const QString kouzaType = rows.first().TIRYOIN_KOUZATYPE == 1 ? u"普通預金"_s : u"当座預金"_s;

    qint64 gyoNo = 0;
    for (qsizetype i = 0; i < rows.size() && !csv.error(); ++i) {
        const KanjaSeikyuRow& row = rows.at(i);
        // The engine pages these lists by facility: numbering restarts with every facility.
        gyoNo = (i > 0 && rows.at(i - 1).SISETSU_ID == row.SISETSU_ID) ? gyoNo + 1 : 1;
        csv.text(u"1");
        csv.number(gyoNo);
        csv.text(sejutsuYM);
        csv.text(jouken.sTeisyutuDate);
        csv.text(row.施術日From);
        csv.text(row.施術日To);
        csv.number(qint64(row.SISETSU_ID));
        csv.text(row.SISETSU_NAME);
        csv.text(row.TIRYOIN_NAME);
        csv.number(qint64(row.RIYOUSHA_ROOMNO));
        csv.number(qint64(row.RIYOUSHA_ID));
        csv.text(row.RIYOUSHA_NAME);
        csv.number(qint64(row.SINRYOU_TYPE));
        csv.number(qint64(row.J_CNT));
        csv.number(qint64(row.総合計));
        csv.number(qint64(row.RIYOUSHA_FUTANWARIAI));
        csv.number(qint64(row.患者請求額));
        csv.number(qint64(row.総合計 > 0 ? 1 : 0));
        csv.number(qint64(nKiriage(kKiriageWholeYenUp, row.dFutan4Down)));
        csv.number(qint64(nKiriage(kKiriageWholeYenUp, row.dFutan5Up)));
        csv.text(row.HOKEN_LABEL);
        csv.number(qint64(row.自己負担額2));
        csv.number(qint64(row.実費料金));
        csv.text(row.TIRYOIN_YUBIN);
        csv.text(row.TIRYOIN_ADDRESS1);
        csv.text(row.TIRYOIN_TELNO);
        csv.text(row.TIRYOIN_FAXNO);
        csv.text({row.TIRYOIN_BANKNAME, u" ", row.TIRYOIN_SHITENNAME});
        csv.text(kouzaType);
        csv.text(row.TIRYOIN_KOUZANO);
        csv.text(row.TIRYOIN_KOUZAMEIGI);
        csv.number(qint64(row.iPaymentType));
        csv.text(sealPath);
        csv.endLine();
    }
    return csv.finish();
}

CsvResult writeKanjaCsv(const QString& path, const QList<KanjaSeikyuRow>& rows, const PrintJouken& jouken,
                        const QString& sealPath)
{
    return writeCsvFile(path, [&](QIODevice* out) { return writeKanjaCsv(out, rows, jouken, sealPath); });
}

} // namespace qelprn
