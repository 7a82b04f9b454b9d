#pragma once

#include <QString>
#include <QtGlobal>
#include <array>

namespace qelprn {

// One day slot of the invoice-receipt; empty slots keep "" and zeros.
struct KenRyousyuuDay
{
    QString 施術日; // "yyyy/mm/dd"
    qint32 保険内金額 = 0;
    double 一部負担金 = 0.0;
    qint32 自費金額 = 0;
};

// One row of the invoice-receipt: up to eleven days of one patient; a patient with more days
// continues on further rows, each carrying the month totals.
struct KenRyousyuuRow
{
    static constexpr int kDaySlots = 11;

    QString 施術年月; // billing month "yyyy/mm/01"
    QString 提出年月; // issue date "yyyy/mm/dd"
    qint32 nRiyoushaID = 0;
    QString 患者名;
    std::array<KenRyousyuuDay, kDaySlots> days;
    qint32 保険内金額合計 = 0;
    double 一部負担金合計 = 0.0;
    qint32 自費金額合計 = 0;
    QString 備考_部位;
    QString 備考_変形;
    QString 備考_鍼灸;
    QString 備考_往療;
    QString 備考_日別施術内容;
    QString 請求元郵便番号;
    QString 請求元住所;
    QString 請求元法人名;
    QString 請求元屋号;
    QString 請求元電話番号;
    QString 請求元FAX番号;
    QString 保険略名;
    qint16 保険種別 = 0; // RIYOUSHA.iHoken
    qint16 負担割合 = 0; // burden code: iFutanritsu, else iKaigoLevel
    qint32 施術回数 = 0; // the patient's days in the month, on every row of the patient
    QString 施術日From;
    QString 施術日To;
};

} // namespace qelprn
