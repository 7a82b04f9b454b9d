#pragma once

#include <QString>
#include <QtGlobal>

namespace qelprn {

// One patient-month line of the co-payment list.
struct KanjaSeikyuRow
{
    qint32 SISETSU_ID = -1; // -1 when the patient has no facility
    QString SISETSU_NAME;
    qint16 iPaymentType = 0;
    qint16 SINRYOU_TYPE = 0;
    qint32 RIYOUSHA_ID = 0;
    QString RIYOUSHA_NAME;
    qint32 RIYOUSHA_ROOMNO = 0;
    qint16 RIYOUSHA_FUTANWARIAI = 0; // burden code: iFutanritsu, else iKaigoLevel
    qint32 施術回数 = 0;             // 月間実績.施術回数
    qint32 総合計 = 0;
    qint32 患者請求額 = 0;
    qint32 自己負担額2 = 0;
    qint32 実費料金 = 0;
    QString HOKEN_LABEL; // HOKEN_RYAKU, or the public-subsidy word
    QString TIRYOIN_NAME;
    QString TIRYOIN_YUBIN;
    QString TIRYOIN_ADDRESS1;
    QString TIRYOIN_TELNO;
    QString TIRYOIN_FAXNO;
    QString TIRYOIN_BANKNAME;   // with its institution-kind word
    QString TIRYOIN_SHITENNAME; // with its branch-kind word
    qint16 TIRYOIN_KOUZATYPE = 0;
    QString TIRYOIN_KOUZANO;
    QString TIRYOIN_KOUZAMEIGI;
    QString TEISYUTU_DATE;    // issue date "yyyy/mm/dd"
    QString SEIKYU_YM;        // billing month "yyyy/mm/01"
    qint32 J_CNT = 0;         // treatment records of the month (JISSEKI); -1 when counting failed
    double dFutan4Down = 0.0; // share of visits 1 to 4, unrounded
    double dFutan5Up = 0.0;   // share of visits 5 and later, unrounded
    QString 施術日From;       // first day of the billing month "yyyy/mm/dd"
    QString 施術日To;         // last day of the billing month
};

} // namespace qelprn
