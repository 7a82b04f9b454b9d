// Figures for the print-data CSV writers: the co-payment list file (print kind 2) of 50,000
// patients, written by the writer, against a plain buffered write of the same bytes (the floor).
#include "report/PrintDataCsv.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

QList<KanjaSeikyuRow> patients(int count)
{
    const QStringList family = {u"佐藤"_s, u"鈴木"_s, u"髙橋"_s, u"田中"_s, u"渡辺"_s, u"伊藤"_s, u"山本"_s};
    const QStringList given = {u"花子"_s, u"一郎"_s, u"幸子"_s, u"正雄"_s, u"キヨ"_s, u"ミツ"_s};
    QList<KanjaSeikyuRow> rows;
    rows.reserve(count);
    for (int i = 0; i < count; ++i) {
        KanjaSeikyuRow r;
        r.SISETSU_ID = 1000 + i / 40;
        r.SISETSU_NAME = u"特別養護老人ホーム　さくら苑 第"_s + QString::number(i / 40) + u"棟"_s;
        r.iPaymentType = qint16(i % 3);
        r.RIYOUSHA_ID = 100000 + i;
        r.RIYOUSHA_NAME = family.at(i % family.size()) + u' ' + given.at(i % given.size());
        r.RIYOUSHA_ROOMNO = 100 + i % 40;
        r.RIYOUSHA_FUTANWARIAI = qint16(2 + i % 3);
        r.総合計 = 20000 + (i % 17) * 1350;
        r.患者請求額 = r.総合計 / 10 + (i % 5) * 300;
        r.自己負担額2 = r.総合計 / 10;
        r.実費料金 = (i % 5) * 300;
        r.HOKEN_LABEL = i % 9 == 0 ? u"生活保護"_s : u"後期高齢"_s;
        r.TIRYOIN_NAME = u"ほほえみ鍼灸マッサージ治療院"_s;
        r.TIRYOIN_YUBIN = u"192-1081"_s;
        r.TIRYOIN_ADDRESS1 = u"東京都八王子市明神町2丁目1番9号"_s;
        r.TIRYOIN_TELNO = u"042-600-1234"_s;
        r.TIRYOIN_FAXNO = u"042-600-1235"_s;
        r.TIRYOIN_BANKNAME = u"多摩信用金庫"_s;
        r.TIRYOIN_SHITENNAME = u"八王子支店"_s;
        r.TIRYOIN_KOUZATYPE = 1;
        r.TIRYOIN_KOUZANO = u"1234567"_s;
        r.TIRYOIN_KOUZAMEIGI = u"ｶ)ﾎﾎｴﾐｻﾞｲﾀｸｹｱ"_s;
        r.J_CNT = 4 + i % 9;
        r.dFutan4Down = 1234.5 + i % 7;
        r.dFutan5Up = (i % 9) * 401.3;
        r.施術日From = u"2026/10/01"_s;
        r.施術日To = u"2026/10/31"_s;
        rows.append(r);
    }
    return rows;
}

template <typename Fn> double bestSeconds(int repeats, Fn fn)
{
    double best = 1e9;
    for (int i = 0; i < repeats; ++i) {
        QElapsedTimer timer;
        timer.start();
        fn();
        best = std::min(best, double(timer.nsecsElapsed()) / 1e9);
    }
    return best;
}

} // namespace

int main()
{
    constexpr int kPatients = 50000;
    constexpr int kRepeats = 15;
    const QList<KanjaSeikyuRow> rows = patients(kPatients);
    PrintJouken jouken;
    jouken.sSeikyuYM = u"2026/10"_s;
    jouken.sTeisyutuDate = u"2026/11/05"_s;
    const QString seal = u"C:\\Halvex\\DATA\\\\corpseal.bmp"_s;

    QTemporaryDir dir;
    const QString writerPath = dir.filePath(u"施設請求データ.csv"_s);
    const QString floorPath = dir.filePath(u"floor.csv"_s);

    bool ok = true;
    const double writer =
        bestSeconds(kRepeats, [&] { ok = !writeKanjaCsv(writerPath, rows, jouken, seal) && ok; });
    QFile written(writerPath);
    if (!ok || !written.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "the writer failed\n");
        return 1;
    }
    const QByteArray bytes = written.readAll();
    // The floor: the same bytes, line by line, through a buffered file.
    const QList<QByteArray> lines = bytes.split('\n');
    const double floor = bestSeconds(kRepeats, [&] {
        QFile file(floorPath);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
            file.write(lines.at(i));
            file.write("\n", 1);
        }
        file.close();
    });

    const double mb = double(bytes.size()) / 1e6;
    std::printf("kind 2 CSV, %d patients, %.1f MB (best of %d)\n", kPatients, mb, kRepeats);
    std::printf("  writer:               %7.1f ms  %7.1f MB/s\n", writer * 1e3, mb / writer);
    std::printf("  plain buffered write: %7.1f ms  %7.1f MB/s\n", floor * 1e3, mb / floor);
    std::printf("  writer / floor speed: %.2f\n", floor / writer);
    return 0;
}
