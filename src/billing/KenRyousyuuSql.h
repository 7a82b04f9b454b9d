#pragma once

#include "billing/PrintJouken.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// The invoice-receipt statement: one record per treatment day of the billing month at the site,
// for patients with a month result, with the patient's consent in force, insurance short name,
// invoicing corporation (CORP, nDairiCd) and clinic (TIRYOIN, nTiryoinCd). Print kind 4 keeps the
// days with an insured co-payment, kind 5 the days with a self-pay amount. Numbers are written
// bare; text values pass through sqlText().
QString csKenRyousyuuSql(const PrintJouken& jouken, qint16 baseCd, qint16 baseEb);

} // namespace qelprn
