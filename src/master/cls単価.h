#pragma once

#include "app/AppContext.h"

#include <QString>
#include <QtGlobal>

namespace qelprn {

// The unit prices of treatments and fees valid in one billing month, read once from 療養費単価
// and kept for the rest of the run. Every price is 0 until a load finds its row.
class cls単価
{
public:
    explicit cls単価(const AppContext& ctx);

    // Loads the prices valid in the month "yyyymm". 0 on success; -1 after the failure has been
    // shown to the user (no rows, no connection string, a database error).
    qint16 iGetTanka(const QString& yearMonth);

    qint32 nマッサージ() const { return m_nマッサージ; }
    qint32 n変形徒手() const { return m_n変形徒手; }
    qint32 n温按法() const { return m_n温按法; }
    qint32 n電気光線() const { return m_n電気光線; }
    qint32 n鍼灸1術() const { return m_n鍼灸1術; }
    qint32 n鍼灸2術() const { return m_n鍼灸2術; }
    qint32 n鍼灸1術初回() const { return m_n鍼灸1術初回; }
    qint32 n鍼灸2術初回() const { return m_n鍼灸2術初回; }
    qint32 n電気鍼温灸器() const { return m_n電気鍼温灸器; }
    qint32 n基本往療費() const { return m_n基本往療費; }
    qint32 n加算往療費() const { return m_n加算往療費; }
    qint32 n定額料金1割() const { return m_n定額料金1割; }
    qint32 n定額料金2割() const { return m_n定額料金2割; }
    qint32 n定額料金3割() const { return m_n定額料金3割; }
    qint32 n実費施術費() const { return m_n実費施術費; }
    qint32 n実費交通費() const { return m_n実費交通費; }
    qint32 n鍼灸1術初検料() const { return m_n鍼灸1術初検料; }
    qint32 n鍼灸2術初検料() const { return m_n鍼灸2術初検料; }
    qint32 n施術報告書交付料() const { return m_n施術報告書交付料; }

    // The month selection statement, as sent to the server.
    static QString selectStatement(const QString& yearMonth);

private:
    qint16 load(const QString& yearMonth);
    // The price field of a kind and code; nullptr for the codes this class ignores.
    qint32* slot(qint16 kind, qint32 code);
    void showError(const QString& reason) const;

    const AppContext& m_ctx;
    qint32 m_nマッサージ = 0;
    qint32 m_n変形徒手 = 0;
    qint32 m_n温按法 = 0;
    qint32 m_n電気光線 = 0;
    qint32 m_n鍼灸1術 = 0;
    qint32 m_n鍼灸2術 = 0;
    qint32 m_n鍼灸1術初回 = 0;
    qint32 m_n鍼灸2術初回 = 0;
    qint32 m_n電気鍼温灸器 = 0;
    qint32 m_n基本往療費 = 0;
    qint32 m_n加算往療費 = 0;
    qint32 m_n定額料金1割 = 0;
    qint32 m_n定額料金2割 = 0;
    qint32 m_n定額料金3割 = 0;
    qint32 m_n実費施術費 = 0;
    qint32 m_n実費交通費 = 0;
    qint32 m_n鍼灸1術初検料 = 0;
    qint32 m_n鍼灸2術初検料 = 0;
    qint32 m_n施術報告書交付料 = 0;
};

} // namespace qelprn
