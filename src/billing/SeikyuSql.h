#pragma once

#include "billing/PrintJouken.h"
#include "db/DbInfo.h"

#include <QList>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// The statements of the facility invoice, built from fixed fragments that carry their own blanks.
// Numbers are written bare; text values pass through sqlText().

// One database: the facility lines (type 0) UNION the self-pay lines (type 1) of the site.
QString seikyuSql(const PrintJouken& jouken, qint16 baseCd, qint16 baseEb);

// Several databases: the statement of one line type (0 facility lines, 1 self-pay lines) for the
// sites of kyotenCondition. A facility without a parent is its own billing facility here.
QString seikyuAllDbSql(const PrintJouken& jouken, int sinryouType, const QString& kyotenCondition);

// " AND (" the sites joined with " OR " " ) ".
QString kyotenConditionSql(const QList<SiteKey>& sites);

// The invoicing corporation (CORP_NAME, CORP_YUBIN, CORP_ADDRESS1) and the clinic (TIRYOIN_NAME,
// TIRYOIN_YUBIN, TIRYOIN_ADDRESS1) of the multi-database run.
QString corpSql(const PrintJouken& jouken, qint16 baseCd, qint16 baseEb);
QString tiryoinSql(const PrintJouken& jouken, qint16 baseCd, qint16 baseEb);

// " LEFT JOIN CORP ..." (invoicing corporation, nDairiCd) and " LEFT JOIN CORP AS TIRYOIN ..." (clinic,
// nTiryoinCd) of the site.
QString corpJoinsSql(const PrintJouken& jouken, qint16 baseCd, qint16 baseEb);

// The treated facility's id chosen by RIYOUSHA_SUB.iAddressSet, as a join value.
QString addressSetCaseSql();

} // namespace qelprn
