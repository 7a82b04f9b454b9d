// The print-data CSV writers against the expected files in data/, byte for byte: every column of
// every file, the walk of the all-sites invoice, and the failures a clerk can meet (a device that
// stops, a missing folder).
#include "app/Cp932.h"
#include "report/CsvLineWriter.h"
#include "report/PrintDataCsv.h"
#include "support/FileBytes.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace qelprn;

namespace {

// Accepts limit bytes, then fails every write, like a disk that fills up.
class FailingDevice : public QIODevice
{
public:
    explicit FailingDevice(qint64 limit) : m_limit(limit) { open(QIODevice::WriteOnly); }
    QByteArray written;

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        const qint64 room = m_limit - written.size();
        if (room <= 0) {
            setErrorString(u"no space left"_s);
            return -1;
        }
        const qint64 n = qMin(room, size);
        written.append(data, n);
        return n;
    }

private:
    qint64 m_limit;
};

SisetsuSeikyuRow line(qint16 type, const QString& sejutsu, qint16 ninzu, qint32 goukei, qint32 futan,
                      const QString& name = {})
{
    SisetsuSeikyuRow r;
    r.cSejutsuYM = u"2026/10/01"_s;
    r.cTeisyutuDate = u"2026/11/05"_s;
    r.cCorpName = u"ほほえみ在宅ケア"_s;
    r.cCorpYubin = u"100-0001"_s;
    r.cCorpAddress1 = u"東京都千代田区1-1"_s;
    r.cTiryoinName = u"ほほえみ治療院"_s;
    r.cTiryoinYubin = u"100-0002"_s;
    r.cTiryoinAddress1 = u"東京都千代田区2-2"_s;
    r.iSinryouType = type;
    r.cSejutsuName = sejutsu;
    r.iSejutsuNinzu = ninzu;
    r.nSejutsuGoukei = goukei;
    r.nSejutsuKanjaSeikyu = futan;
    r.cRiyoushaName = name;
    return r;
}

SisetsuSeikyuGroup group(qint32 id, const QString& name, QList<SisetsuSeikyuRow> meisai)
{
    SisetsuSeikyuGroup g;
    g.nSeikyuID = id;
    g.cSeikyuName = name;
    g.cSeikyuYubin = u"150-0001"_s;
    g.cSeikyuAddress1 = u"渋谷区1"_s;
    g.cSeikyuAddress2 = u"2階"_s;
    g.iMeisaiCnt = qint16(meisai.size());
    g.aMeisai = std::move(meisai);
    return g;
}

PrintJouken october()
{
    PrintJouken j;
    j.sSeikyuYM = u"2026/10"_s;
    j.nSeikyuYM = 202610;
    j.sTeisyutuDate = u"2026/11/05"_s;
    return j;
}

} // namespace

class tst_PrintDataCsv : public QObject
{
    Q_OBJECT

private slots:
    void shortestDecimals()
    {
        const QList<QPair<double, QByteArray>> cases = {
            {1234.5, "1234.5"},    {1234.0, "1234"},   {-0.0, "0"},
            {0.1, "0.1"},          {-12.25, "-12.25"}, {1e21, "1000000000000000000000"},
            {0.000001, "0.000001"}};
        for (const auto& [value, text] : cases) {
            QByteArray out;
            appendShortestDecimal(out, value);
            QCOMPARE(out, text);
        }
    }

    void facilityInvoiceKind1()
    {
        SisetsuSeikyuRow orphan = line(0, u"ひまわり荘"_s, 3, 120000, 12000);
        orphan.nSeikyuID = -1; // no billing facility
        SisetsuSeikyuRow facility = line(0, u"さくら館, 本館"_s, 2, 80000, 8000);
        facility.nSeikyuID = 7;
        facility.cSeikyuName = u"さくら会"_s;
        facility.cSeikyuYubin = u"150-0001"_s;
        facility.cSeikyuAddress1 = u"渋谷区1"_s;
        facility.cSeikyuAddress2 = u"2階"_s;
        facility.iGyoNo = 1;
        facility.nRoomNo = 301; // never written
        SisetsuSeikyuRow filler;
        filler.nSeikyuID = 7;
        filler.cSeikyuName = u"さくら会"_s;
        filler.iSinryouType = -1;
        filler.iGyoNo = 2;

        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(!writeSeikyuCsv(&buffer, {orphan, facility, filler}, u"C:\\app\\DATA\\\\corpseal.bmp"_s));
        QVERIFY(test::matchesExpected(buffer.data(), u"report/data/seikyu-kind1.csv"_s));
    }

    void allSitesWalkKind6()
    {
        // a: facility and self-pay lines; b: facility lines only; c: self-pay lines only.
        const QList<SisetsuSeikyuGroup> sisetsu = {
            group(7, u"さくら会"_s,
                  {line(0, u"さくら館"_s, 2, 80000, 8000), line(0, u"さくら別館"_s, 1, 40000, 4000)}),
            group(9, u"みどり会"_s, {line(0, u"みどり苑"_s, 1, 30000, 3000)}),
            SisetsuSeikyuGroup{}, // beyond the count: never written
        };
        const QList<SisetsuSeikyuGroup> jihi = {
            group(11, u"ひかり会"_s, {line(1, u"ひかり(自費)"_s, 0, 0, 5000, u"山田 花子 様"_s)}),
            group(7, u"さくら会"_s, {line(1, u"さくら館(自費)"_s, 0, 0, 2500, u"佐藤 一郎 様"_s)}),
        };
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(!writeSeikyuCsvAllDb(&buffer, {sisetsu, 2, jihi, 2}, QString()));

        QVERIFY(test::matchesExpected(buffer.data(), u"report/data/seikyu-kind6.csv"_s));
    }

    void allSitesCounterOverflows()
    {
        // "項番" is 16 bits wide: line 32768 stops the writer with the overflow error, after the
        // lines before it.
        const QList<SisetsuSeikyuRow> half(16384, line(0, u"x"_s, 1, 1, 1));
        FailingDevice device(1LL << 40);
        const CsvResult result = writeSeikyuCsvAllDb(
            &device, {{group(1, u"大"_s, half), group(2, u"小"_s, half)}, 2, {}, 0}, QString());
        QVERIFY(result);
        QCOMPARE(result->message(), u"(6)オーバーフローしました。"_s);
        QCOMPARE(device.written.count("\r\n"), 32768); // header + 32767 lines
    }

    void copaymentListKinds2And3()
    {
        KanjaSeikyuRow a;
        a.SISETSU_ID = 5;
        a.SISETSU_NAME = u"さくら館"_s;
        a.iPaymentType = 2;
        a.RIYOUSHA_ID = 101;
        a.RIYOUSHA_NAME = u"山田 花子"_s;
        a.RIYOUSHA_ROOMNO = 201;
        a.RIYOUSHA_FUTANWARIAI = 2;
        a.総合計 = 40000;
        a.患者請求額 = 4500;
        a.自己負担額2 = 4000;
        a.実費料金 = 500;
        a.HOKEN_LABEL = u"後期"_s;
        a.TIRYOIN_NAME = u"ほほえみ治療院"_s;
        a.TIRYOIN_YUBIN = u"100-0002"_s;
        a.TIRYOIN_ADDRESS1 = u"千代田区2-2"_s;
        a.TIRYOIN_TELNO = u"03-1111-2222"_s;
        a.TIRYOIN_FAXNO = u"03-1111-3333"_s;
        a.TIRYOIN_BANKNAME = u"みずほ銀行"_s;
        a.TIRYOIN_SHITENNAME = u"神田支店"_s;
        a.TIRYOIN_KOUZATYPE = 1;
        a.TIRYOIN_KOUZANO = u"1234567"_s;
        a.TIRYOIN_KOUZAMEIGI = u"ﾎﾎｴﾐ"_s;
        a.J_CNT = 6;
        a.dFutan4Down = 1234.5; // rounded up to the yen
        a.dFutan5Up = 800.0;    // whole amounts stay
        a.施術日From = u"2026/10/01"_s;
        a.施術日To = u"2026/10/31"_s;
        KanjaSeikyuRow b = a; // same facility: line 2; self-pay only, so no insurance
        b.RIYOUSHA_ID = 102;
        b.総合計 = 0;
        b.TIRYOIN_KOUZATYPE = 2; // ignored: the first row's type speaks for the file
        b.dFutan4Down = 0.0;
        b.dFutan5Up = 0.0;
        KanjaSeikyuRow c = a; // next facility starts at 1 again
        c.SISETSU_ID = 6;
        c.SISETSU_NAME = u"みどり苑"_s;

        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(!writeKanjaCsv(&buffer, {a, b, c}, october(), u""_s));
        QVERIFY(test::matchesExpected(buffer.data(), u"report/data/kanja.csv"_s));
    }

    void invoiceReceiptKinds4And5()
    {
        KenRyousyuuRow r;
        r.nRiyoushaID = 101;
        r.患者名 = u"山田 花子"_s;
        r.保険種別 = 3;
        r.負担割合 = 2;
        r.施術回数 = 2;
        r.施術日From = u"2026/10/01"_s;
        r.施術日To = u"2026/10/31"_s;
        r.days[0] = {u"2026/10/03"_s, 12345, 1234.5, 0};
        r.days[1] = {u"2026/10/10"_s, 12340, 1234.0, 300};
        r.保険内金額合計 = 24685;
        r.一部負担金合計 = 2468.5;
        r.自費金額合計 = 300;
        r.備考_部位 = u"マッサージ5部位"_s;
        r.備考_鍼灸 = u"はり治療、きゅう治療"_s;
        r.備考_日別施術内容 = u"マッサージ5部位、温あんあり"_s;
        r.請求元郵便番号 = u"100-0002"_s;
        r.請求元住所 = u"千代田区2-2"_s;
        r.請求元法人名 = u"ほほえみ在宅ケア"_s;
        r.請求元屋号 = u"ほほえみ治療院"_s;
        r.請求元電話番号 = u"03-1111-2222"_s;
        r.請求元FAX番号 = u"03-1111-3333"_s;
        r.保険略名 = u"後期"_s;

        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(!writeKenRyousyuuCsv(&buffer, {r}, october(), u"/app/corpseal.bmp"_s));
        QVERIFY(test::matchesExpected(buffer.data(), u"report/data/kenryousyuu.csv"_s));
    }

    void failuresKeepTheHeader()
    {
        // No rows: the header is written, then the writer stops with subscript out of range.
        QBuffer empty;
        empty.open(QIODevice::WriteOnly);
        const CsvResult none = writeKanjaCsv(&empty, {}, october(), QString());
        QVERIFY(none);
        QCOMPARE(none->number, 9);
        QVERIFY(none->message().startsWith(u"(9)インデックスが有効範囲にありません。"_s));
        QCOMPARE(empty.data().count("\r\n"), 1);

        // A device that fails inside the first data line keeps the whole header.
        QBuffer reference;
        reference.open(QIODevice::WriteOnly);
        const QList<SisetsuSeikyuRow> rows = {line(0, u"さくら館"_s, 1, 1, 1)};
        QVERIFY(!writeSeikyuCsv(&reference, rows, QString()));
        const qsizetype headerBytes = reference.data().indexOf("\r\n") + 2;
        FailingDevice device(headerBytes + 10);
        const CsvResult stopped = writeSeikyuCsv(&device, rows, QString());
        QVERIFY(stopped);
        QCOMPARE(stopped->number, 57);
        QVERIFY(stopped->message().startsWith(u"(57)デバイス I/O エラーです。"_s));
        QCOMPARE(device.written, reference.data().left(headerBytes + 10));
    }

    void realFiles()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(u"施設請求データ.csv"_s);
        // An old, longer file is replaced, not overwritten.
        QVERIFY(test::writeAll(path, QByteArray(100000, 'x')));
        const SisetsuSeikyuRow row = line(0, u"さくら館"_s, 1, 1, 1);
        QVERIFY(!writeSeikyuCsv(path, {row}, QString()));
        QBuffer buffer; // the file holds what the device overload writes, nothing of the old one
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(!writeSeikyuCsv(&buffer, {row}, QString()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), buffer.data());
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files),
                 QStringList{u"施設請求データ.csv"_s}); // no part file
        // An engine still reading the old file reads it whole; the new file takes its name.
        QVERIFY(file.seek(0));
#ifdef Q_OS_WIN
        // Windows replaces no file another program holds open: the run says so, the old file stays.
        const CsvResult held = writeSeikyuCsv(path, {row, row}, QString());
        QVERIFY(held);
        QVERIFY2(held->message().startsWith(u"(70)書き込みできません。\r\n"_s + path + u"\r\n"_s),
                 qPrintable(held->message()));
        QCOMPARE(file.readAll(), buffer.data());
        file.close();
        QVERIFY(!writeSeikyuCsv(path, {row, row}, QString()));
#else
        QVERIFY(!writeSeikyuCsv(path, {row, row}, QString()));
        QCOMPARE(file.readAll(), buffer.data());
#endif
        QCOMPARE(test::readAll(path).count("\r\n"), 3);

        const CsvResult missing = writeSeikyuCsv(dir.filePath(u"TMP/施設請求データ.csv"_s), {row}, QString());
        QVERIFY(missing);
        QVERIFY2(missing->message().startsWith(u"(76)パスが見つかりません。\r\n"_s),
                 qPrintable(missing->message()));
        QVERIFY(missing->message().contains(u"TMP/施設請求データ.csv"_s));

        QVERIFY(QDir(dir.path()).mkdir(u"busy.csv"_s)); // a folder where the file should be
        const CsvResult blocked = writeSeikyuCsv(dir.filePath(u"busy.csv"_s), {row}, QString());
        QVERIFY(blocked);
        QCOMPARE(blocked->number, 75);

        // A share beyond 32 bits is the suite's overflow: a message, no file, no crash.
        KanjaSeikyuRow huge;
        huge.dFutan4Down = 3e9;
        const QString kanja = dir.filePath(u"一部負担金データ.csv"_s);
        const CsvResult overflow = writeKanjaCsv(kanja, {huge}, october(), QString());
        QVERIFY(overflow);
        QCOMPARE(overflow->number, 6);
        QVERIFY(!QFileInfo::exists(kanja));
    }
};

QTEST_GUILESS_MAIN(tst_PrintDataCsv)
#include "tst_print_data_csv.moc"
