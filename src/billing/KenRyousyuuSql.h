#pragma once

#include "billing/PrintJouken.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// The days an invoice-receipt lists of those with a patient charge: all of them, those with an
// insured co-payment (the invoice-receipt) or those with a self-pay amount (its self-pay form).
enum class ReceiptDays { All, CoPayment, SelfPay };

// The invoice-receipt statement: one record per treatment day of the billing month at the site,
// for patients with a month result, with the patient's consent in force, insurance short name,
// invoicing corporation (CORP, nDairiCd) and clinic (TIRYOIN, nTiryoinCd), keeping days. Numbers
// are written bare; text values pass through sqlText().
QString kenRyousyuuSql(const PrintJouken& jouken, ReceiptDays days, qint16 baseCd, qint16 baseEb);

} // namespace qelprn
