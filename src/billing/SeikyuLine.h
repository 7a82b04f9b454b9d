#pragma once

#include "billing/PrintJouken.h"
#include "billing/SisetsuSeikyuGroup.h"
#include "billing/SisetsuSeikyuRow.h"
#include "db/RecordSet.h"

namespace qelprn {

// A facility invoice line from the current record: month, issue date and the fields that depend
// on SINRYOU_TYPE (facility totals for 0, one patient's self-pay fee for 1). Billing facility,
// corporation and clinic are left to the caller, which takes them from the record or the group.
SisetsuSeikyuRow readSeikyuMeisai(const RecordSet& rs, const PrintJouken& jouken);

// The billing facility of the current record (SEIKYU_ID ... SEIKYU_ADDRESS2).
void readSeikyuSaki(const RecordSet& rs, SisetsuSeikyuRow& line);
void readSeikyuSaki(const RecordSet& rs, SisetsuSeikyuGroup& group);

// The invoicing corporation and the clinic (CORP_... and TIRYOIN_... columns) of the current record.
void readCorpTiryoin(const RecordSet& rs, SisetsuSeikyuRow& line);

} // namespace qelprn
