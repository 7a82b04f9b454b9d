// iGetSeikyuData_KenRyousyuu: the invoice-receipt rows, one per patient and eleven treatment days.
#include "billing/BillingMonth.h"
#include "billing/KanjaSql.h"
#include "billing/KenRyousyuuRemarks.h"
#include "billing/KenRyousyuuSql.h"
#include "billing/QueryConnection.h"
#include "billing/RecordFields.h"
#include "billing/modPrint施設請求書.h"
#include "master/cls単価.h"

#include <QDateTime>
#include <QHash>
#include <optional>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

// One patient's month: the fields every row of the patient carries, and the days in visit order.
struct PatientMonth
{
    KenRyousyuuRow head;
    QList<KenRyousyuuDay> days;
};

// The visit's date "yyyy/mm/dd", whether the engine returns a date-time value or text.
QString visitDay(const QVariant& value)
{
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().toString(u"yyyy/MM/dd"_s);
    if (value.typeId() == QMetaType::QDate)
        return value.toDate().toString(u"yyyy/MM/dd"_s);
    QString day = csNullToRTrim(value).left(10);
    day.replace(u'-', u'/');
    return day;
}

bool isSet(const RecordSet& rs, const QString& column)
{
    return fieldLong(rs, column) > 0;
}

// The fields of the patient's first record: patient, consent in force, insurance and clinic.
KenRyousyuuRow patientHead(const RecordSet& rs, const PrintJouken& jouken)
{
    KenRyousyuuRow head;
    head.施術年月 = jouken.sSeikyuYM + u"/01"_s;
    head.提出年月 = jouken.sTeisyutuDate;
    head.施術日From = monthFirstDay(jouken.sSeikyuYM);
    head.施術日To = monthLastDay(jouken.sSeikyuYM);
    head.nRiyoushaID = fieldLong(rs, u"nRiyoushaIDNo"_s);
    head.患者名 = fieldText(rs, u"RIYOUSHA_NAME"_s);
    head.保険種別 = fieldInt(rs, u"iHoken"_s);
    head.負担割合 = fieldInt(rs, u"RIYOUSHA_FUTANWARIAI"_s);
    head.保険略名 = fieldText(rs, u"HOKEN_RYAKU"_s);

    int parts = 0;
    for (int i = 1; i <= 5; ++i)
        parts += isSet(rs, u"SEJUTU_BUI"_s + QString::number(i)) ? 1 : 0;
    head.備考_部位 = bodyPartRemark(parts);
    head.備考_変形 = deformityRemark(isSet(rs, u"iHenke"_s));
    head.備考_鍼灸 =
        sinkyuRemark(isSet(rs, u"iHKHariUmu"_s), isSet(rs, u"iHKKyuUmu"_s), isSet(rs, u"iHKDekiUmu"_s));
    head.備考_日別施術内容 =
        dayContentRemark(parts, isSet(rs, u"SEJUTU_ONAN"_s), isSet(rs, u"SEJUTU_DENKI"_s));

    head.請求元郵便番号 = fieldText(rs, u"TIRYOIN_YUBIN"_s);
    head.請求元住所 = fieldText(rs, u"TIRYOIN_ADDRESS1"_s);
    head.請求元法人名 = fieldText(rs, u"CORP_NAME"_s);
    head.請求元屋号 = fieldText(rs, u"TIRYOIN_NAME"_s);
    head.請求元電話番号 = fieldText(rs, u"TIRYOIN_TELNO"_s);
    head.請求元FAX番号 = fieldText(rs, u"TIRYOIN_FAXNO"_s);
    return head;
}

// The patient's rows: eleven day slots each, every row with the month totals and the day count.
void appendRows(const PatientMonth& patient, QList<KenRyousyuuRow>& rows)
{
    const qsizetype dayCount = patient.days.size();
    for (qsizetype first = 0; first < dayCount; first += KenRyousyuuRow::kDaySlots) {
        KenRyousyuuRow row = patient.head;
        row.施術回数 = qint32(dayCount);
        for (qsizetype slot = 0; slot < KenRyousyuuRow::kDaySlots && first + slot < dayCount; ++slot)
            row.days[slot] = patient.days.at(first + slot);
        rows.append(std::move(row));
    }
}

} // namespace

qint16 modPrint施設請求書::iGetSeikyuData_KenRyousyuu()
{
    return guarded([this]() -> qint16 {
        aKenRyousyuu.clear();
        QueryConnection db(context, u"iGetSeikyuData_KenRyousyuu() でエラー"_s);
        if (!db.openAdodb() ||
            !db.query(kenRyousyuuSql(jouken, receiptDays, context.iBaseKyotenCd, context.iBaseKyotenEb)))
            return -1;

        std::optional<cls単価> tanka; // loaded with the first record: no price messages without data
        QList<PatientMonth> patients;
        QHash<qint32, qsizetype> patientIndex; // a sort by name may interleave two patients' days
        for (; !db.rs.isEOF(); db.rs.moveNext()) {
            const RecordSet& rs = db.rs;
            if (!tanka) {
                tanka.emplace(context);
                tanka->iGetTanka(QString::number(jouken.nSeikyuYM));
            }
            const qint32 id = fieldLong(rs, u"nRiyoushaIDNo"_s);
            auto found = patientIndex.constFind(id);
            if (found == patientIndex.cend()) {
                found = patientIndex.insert(id, patients.size());
                patients.append({patientHead(rs, jouken), {}});
            }
            PatientMonth& patient = patients[found.value()];

            KenRyousyuuDay day;
            day.施術日 = visitDay(rs.field(u"tServicyDayStart"_s));
            day.保険内金額 = fieldLong(rs, u"DAY_GOKEIKIN"_s);
            day.一部負担金 = dayFutan(day.保険内金額, fieldLong(rs, u"RIYOUSHA_FUTANWARIAI"_s));
            day.自費金額 = fieldLong(rs, u"nJippiSejutu"_s);
            patient.head.保険内金額合計 += day.保険内金額;
            patient.head.一部負担金合計 += day.一部負担金;
            patient.head.自費金額合計 += day.自費金額;
            if (fieldLong(rs, u"DAY_OURYOUKIN"_s) > tanka->n基本往療費())
                patient.head.備考_往療 = u"往療料加算"_s;
            patient.days.append(day);
        }
        if (!db.checkRead())
            return -1;
        if (patients.isEmpty()) {
            showNoData();
            return 1;
        }
        for (const PatientMonth& patient : std::as_const(patients))
            appendRows(patient, aKenRyousyuu);
        return 0;
    });
}

} // namespace qelprn
