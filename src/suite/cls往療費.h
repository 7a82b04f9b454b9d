#pragma once

#include "app/AppContext.h"

#include <QList>
#include <QString>
#include <QtGlobal>

namespace qelprn {

// The house-call fee bands valid in one billing month (往療費区分): ascending upper distance
// limits with the fee of each band, and the fee that applies to a distance.
class cls往療費
{
public:
    explicit cls往療費(const AppContext& ctx);

    // Fee of the band of a distance. A distance beyond the last band is lowered to its limit and
    // the caller's variable sees the capped value. Mode 1 charges the last band at the fee of the
    // band before it. A fee beyond 16 bits is reported as an overflow and gives 0.
    qint16 iGetOuryohi(qint32& distance, qint16 mode);
    // Rebuilds the bands valid in the month "yyyymm". 0 on success, -1 after a reported failure.
    qint16 iGetOuryohiAll(const QString& yearMonth);
    qint32 n往療単価(int i) const { return m_nKingakuOuryou.at(i); }
    qint32 n往療距離MAX(int i) const { return m_nMaxLen.at(i); }
    qint16 i往療区分数() const { return m_count; }

    static QString selectStatement(const QString& yearMonth);

private:
    qint16 load(const QString& yearMonth);
    void showError(const QString& reason, const QString& procedure) const;

    const AppContext& m_ctx;
    QList<qint32> m_nMaxLen;
    QList<qint32> m_nKingakuOuryou;
    qint16 m_count = 0;
};

} // namespace qelprn
