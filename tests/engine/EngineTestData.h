#pragma once

// Print data written the way the CSV writers write it (CP932, CR LF, texts quoted, numbers bare),
// command files, and the engine program run on them with its PDF read back through poppler-utils.

#include "app/Cp932.h"
#include "support/FileBytes.h"

#include <QProcess>
#include <QRectF>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QVariant>
#include <algorithm>

namespace enginetest {

using namespace Qt::StringLiterals;

inline QString q(const QString& text)
{
    return u'"' + text + u'"';
}

// One line as the writers write it: texts quoted, numbers bare.
inline QString csvLine(const QVariantList& fields)
{
    QStringList out;
    for (const QVariant& f : fields)
        out << (f.typeId() == QMetaType::QString ? q(f.toString()) : f.toString());
    return out.join(u',');
}

inline bool writeCp932(const QString& path, const QStringList& lines)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(qelprn::toCp932(lines.join(u"\r\n"_s) + u"\r\n"_s)) >= 0;
}

// The title line of a file: every title quoted.
inline QString header(const QString& titles)
{
    return q(titles.split(u',').join(u"\",\""_s));
}

inline const QString facilityTitles =
    u"枠線描画,項番,施術年月,提出年月,請求先施設ID,請求先施設名,請求先郵便番号,請求先住所1,請求先住所2,"
    u"本社名,本社郵便番号,本社住所,診療タイプ,治療院名,治療院郵便番号,治療院住所,施術施設名,施術施設人数,"
    u"施術施設合計,施術施設負担額,備考,社印保存先"_s;

// One line of "施設請求データ.csv" for the facility invoice (type 0 facility, 1 self-pay, -1 filler).
inline QString facilityRow(int no, qint32 id, const QString& name, int type, const QString& treated,
                           int people, qint32 total, qint32 share, const QString& remark, const QString& seal)
{
    return csvLine(QVariantList() << u"1"_s << no << u"2024/05/01"_s << u"2024/06/05"_s << id << name
                                  << u"166-0001"_s << u"東京都杉並区阿佐谷北1-2-3"_s << u"さくらビル2F"_s
                                  << u"株式会社ほほえみ"_s << u"160-0022"_s << u"東京都新宿区新宿1-1-1"_s
                                  << type << u"ほほえみ鍼灸院"_s << u"167-0051"_s
                                  << u"東京都杉並区荻窪5-6-7"_s << treated << people << total << share
                                  << remark << seal);
}

inline const QString patientTitles =
    u"枠線描画,項番,施術年月,提出年月,施術日From,施術日To,施設ID,施設名,治療院名,部屋番号,利用者ID,利用者名,"
    u"診療タイプ,施術回数,保険総合計,利用者負担割合,利用者請求額,保険有無,利用者請求額4回以下,"
    u"利用者請求額5回以上,保険略名,保険自己負担額,自由診療額,治療院郵便番号,治療院住所,治療院電話番号,"
    u"治療院FAX番号,治療院金融機関,治療院預金種別,治療院口座番号,治療院名義人,施設支払方法,社印保存先"_s;

// One line of the per-patient "施設請求データ.csv" (co-payment lists); share code 2 (1割).
inline QString patientRow(int no, qint32 facility, const QString& facilityName, const QString& patient,
                          qint32 total, qint32 billed, const QString& seal)
{
    return csvLine(QVariantList() << u"1"_s << no << u"2024/05/01"_s << u"2024/06/05"_s << u"2024/05/01"_s
                                  << u"2024/05/31"_s << facility << facilityName << u"ほほえみ鍼灸院"_s
                                  << 100 + no << 5000 + no << patient << 0 << 8 << total << 2 << billed << 1
                                  << billed / 2 << billed - billed / 2 << u"後期高齢"_s << billed << 0
                                  << u"167-0051"_s << u"東京都杉並区荻窪5-6-7"_s << u"03-1234-5678"_s
                                  << u"03-1234-5679"_s << u"みずほ銀行 荻窪支店"_s << u"普通預金"_s
                                  << u"1234567"_s << u"ホホエミシンキュウイン"_s << 1 << seal);
}

inline QString receiptTitles()
{
    QString t =
        u"枠線描画,施術年月,提出年月,施術日From,施術日To,利用者ID,利用者名,保険種別,負担割合,施術回数"_s;
    for (int i = 1; i <= 11; ++i)
        t += u",施術日%1,保険内金額%1,一部負担金%1,自費金額%1"_s.arg(i);
    return t + u",保険内金額合計,一部負担金合計,自費合計,備考_部位,備考_変形,備考_鍼灸,備考_往療,"
               u"備考_日別施術内容,請求元〒,請求元住所,請求元社名,請求元屋号,請求元電話番号,請求元FAX番号,"
               u"保険略名,社印保存先"_s;
}

// One line of "請求書兼領収書.csv": days treatment days of 5,700 yen, 570.5 co-payment, 1,000
// self-pay, the first being the patient's firstDay-th day of totalDays in the month (a patient with
// more than eleven days has one line per eleven days).
inline QString receiptRow(qint32 id, const QString& patient, int days, const QString& seal, int firstDay = 1,
                          int totalDays = 0)
{
    const int month = totalDays > 0 ? totalDays : days;
    QVariantList f = {
        u"1"_s, u"2024/05/01"_s, u"2024/06/05"_s, u"2024/05/01"_s, u"2024/05/31"_s, id, patient, 1, 2,
        month}; // share code 2: 1割
    for (int i = 0; i < 11; ++i) {
        const bool used = i < days;
        f << (used ? u"2024/05/%1"_s.arg((firstDay + i) * 2, 2, 10, QChar(u'0')) : QString())
          << (used ? 5700 : 0) << (used ? 570.5 : 0) << (used ? 1000 : 0);
    }
    // The month totals, the same on every line of the patient.
    f << 5700 * month << 570.5 * month << 1000 * month << u"マッサージ 5部位"_s << QString() << QString()
      << u"往療料加算"_s << u"5/2 マッサージ、温あんあり"_s << u"167-0051"_s << u"東京都杉並区荻窪5-6-7"_s
      << u"株式会社ほほえみ"_s << u"ほほえみ鍼灸院"_s << u"03-1234-5678"_s << u"03-1234-5679"_s
      << u"後期高齢"_s << seal;
    return csvLine(f);
}

inline QString layoutPath(const QString& file)
{
    return qEnvironmentVariable("QELPRN_SOURCE_DIR") + u"/layouts/"_s + file;
}

// "FileName", "Title", "SetDataText" and "ShowWindow,2".
inline bool writeCommandFile(const QString& path, const QString& layout, const QString& dataName,
                             const QString& dataFile)
{
    return writeCp932(path, {u"FileName,"_s + q(layout), u"Title,\"施設請求書印刷\""_s,
                             u"SetDataText,"_s + q(dataName) + u',' + q(dataFile), u"ShowWindow,2"_s});
}

struct Run
{
    int exitCode = -1;
    QString err;
};

inline Run runProgram(const QString& program, const QStringList& args)
{
    QProcess p;
    // Keeps Qt's note about a missing runtime folder off the error stream the tests read.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    static const QTemporaryDir runtime; // private (0700), as the runtime folder must be
    if (!env.contains(u"XDG_RUNTIME_DIR"_s))
        env.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    // A cache of this test's own: the engine builds its font copies with the code under test
    // instead of taking them from an earlier run.
    static const QTemporaryDir cache;
    env.insert(u"XDG_CACHE_HOME"_s, cache.path());
    p.setProcessEnvironment(env);
    p.start(program, args);
    if (!p.waitForFinished(120000)) {
        p.kill();
        p.waitForFinished();
        return {-1, u"timed out"_s};
    }
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardError() + p.readAllStandardOutput())};
}

inline Run runEngine(const QStringList& args)
{
    return runProgram(qEnvironmentVariable("QELPRN_BIN_DIR") + u"/qelprn-engine"_s, args);
}

inline int pdfPages(const QString& pdf)
{
    const QString info = runProgram(u"pdfinfo"_s, {pdf}).err;
    return QRegularExpression(u"Pages:\\s+(\\d+)"_s).match(info).captured(1).toInt();
}

// The text of one page (1-based) or of all (0), exactly as the PDF's text layer names it; layout
// keeps the lines of the page (a table row on one line).
inline QString pdfText(const QString& pdf, int page = 0, bool layout = false)
{
    QStringList args = page > 0 ? QStringList{u"-f"_s, QString::number(page), u"-l"_s, QString::number(page)}
                                : QStringList();
    if (layout)
        args << u"-layout"_s;
    return runProgram(u"pdftotext"_s, args << pdf << u"-"_s).err;
}

// One page (1-based) of a PDF as poppler draws it: a gray PNG at 40 dpi, which shows a line or a
// text moved by a tenth of a millimetre in its grey edges.
inline QByteArray pdfPicture(const QString& pdf, int page)
{
    const QTemporaryDir dir;
    const QString n = QString::number(page);
    runProgram(u"pdftoppm"_s, {u"-r"_s, u"40"_s, u"-gray"_s, u"-png"_s, u"-singlefile"_s, u"-f"_s, n, u"-l"_s,
                               n, pdf, dir.filePath(u"page"_s)});
    return qelprn::test::readAll(dir.filePath(u"page.png"_s));
}

// A word of a PDF page where "pdftotext -bbox" places it, in millimetres from the paper's top left.
struct PdfWord
{
    QString text;
    QRectF box;
};

struct PdfPage
{
    QSizeF size; // mm
    QList<PdfWord> words;
};

inline QList<PdfPage> pdfWords(const QString& pdf)
{
    const QString html = runProgram(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s}).err;
    static const QRegularExpression tag(
        uR"re(<page width="([\d.]+)" height="([\d.]+)"|)re"
        uR"re(<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">([^<]*))re"_s);
    constexpr qreal mm = 25.4 / 72;
    QList<PdfPage> pages;
    for (auto it = tag.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        auto at = [&m](int i) { return m.captured(i).toDouble() * mm; };
        if (m.capturedLength(1) > 0)
            pages.append({QSizeF(at(1), at(2)), {}});
        else if (!pages.isEmpty())
            pages.last().words.append({m.captured(7), QRectF(QPointF(at(3), at(4)), QPointF(at(5), at(6)))});
    }
    return pages;
}

// Blanks say nothing in a PDF's text layer (they are gaps between glyphs): compared without them.
inline QString squeezed(QString text)
{
    return text.remove(QRegularExpression(u"[\\s\u3000]"_s));
}

// The words of the line (a table row) that holds word, left to right, joined by blanks.
inline QString lineOf(const PdfPage& page, const QString& word)
{
    const auto at = std::find_if(page.words.cbegin(), page.words.cend(),
                                 [&](const PdfWord& w) { return w.text == word; });
    QMap<qreal, QString> line; // by the left edge
    for (const PdfWord& w : page.words) {
        if (at != page.words.cend() && qAbs(w.box.center().y() - at->box.center().y()) < 1)
            line.insert(w.box.x(), w.text);
    }
    return QStringList(line.values()).join(u' ');
}

// Number of images drawn in the PDF: the lines of "pdfimages -list" of type image (not a mask).
inline int pdfImages(const QString& pdf)
{
    static const QRegularExpression image(u"^\\s*\\d+\\s+\\d+\\s+image\\s"_s,
                                          QRegularExpression::MultilineOption);
    return int(runProgram(u"pdfimages"_s, {u"-list"_s, pdf}).err.count(image));
}

} // namespace enginetest
