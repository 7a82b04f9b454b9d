#pragma once

#include "billing/PrintJouken.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// The statements of the co-payment list and its visit-count split. Numbers are written bare; text
// values pass through sqlText().

// One line per patient-month of the site's billing month, grouped by the patient's facility and
// ordered by iSortShisetsu.
QString kanjaSql(const PrintJouken& jouken, qint16 baseCd, qint16 baseEb);

// J_CNT: the patient's treatment records of the month nSeikyuYM.
QString sejyutuCntSql(qint32 nRiyoushaIDNo, qint32 nSeikyuYM, qint16 baseCd, qint16 baseEb);

// The patient's treatment days of the month sSeikyuYM ("yyyy/mm") in visit order, with the burden
// code (RIYOUSHA_FUTANWARIAI) and the day's fee (DAY_GOKEIKIN).
QString cs4Down5UpSql(qint32 nRiyoushaIDNo, const QString& sSeikyuYM, qint16 baseCd, qint16 baseEb);

// The same two for every patient of the site at once, keyed by JISSEKI.nRiyoushaIDNo: one row per
// patient with J_CNT, and every treatment day ordered by patient, then as cs4Down5UpSql orders them,
// with only the columns the split reads (patient, RIYOUSHA_FUTANWARIAI, DAY_GOKEIKIN, in this order).
// Same windows, site and burden-code rule; a Null patient number matches no patient line.
QString sejyutuCntAllSql(qint32 nSeikyuYM, qint16 baseCd, qint16 baseEb);
QString cs4Down5UpAllSql(const QString& sSeikyuYM, qint16 baseCd, qint16 baseEb);
// The patient's share of one day: the day's fee times (burden code - 1) / 10, unrounded. The code
// counts tenths plus one (2 = 10 %, 3 = 20 %, 4 = 30 %); 1 gives nothing, and a missing code (0)
// gives minus one tenth, as the suite has always computed it.
double dayFutan(qint32 dayGokeikin, qint32 futanCode);

} // namespace qelprn
