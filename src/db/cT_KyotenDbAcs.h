#pragma once

#include "app/AppContext.h"
#include "db/DbInfo.h"
#include "db/SiteRow.h"
#include "db/cD_Kyoten.h"
#include "db/cT_ADODB.h"

#include <QList>
#include <QString>

namespace qelprn {

// The site list: read from the current database, or over every database of the database list, into
// the list and the rows the main form's site grid shows.
class cT_KyotenDbAcs
{
public:
    explicit cT_KyotenDbAcs(const AppContext& ctx) : m_ctx(ctx), m_startMode(ctx.iStartMode) {}
    ~cT_KyotenDbAcs();
    cT_KyotenDbAcs(const cT_KyotenDbAcs&) = delete;
    cT_KyotenDbAcs& operator=(const cT_KyotenDbAcs&) = delete;

    // Keeps the connection wrapper (not owned) and clears the list.
    qint16 iInit(cT_ADODB* cADO);
    // Every site with a branch number into the list; -1 with sErrMsg on failure.
    qint16 iDataRead(cT_ADODB* cADO);
    // The list read again from the kept connection.
    qint16 iDataLoadKyoten();
    // The sites of the current database into the list and grid (replacing what it held); result 0
    // on success, -1 on failure (after a message).
    void iLoadKyoten(QList<SiteRow>& grid, bool bAllFlg, qint16& result);
    // The same over every database of the database list, each row naming its database.
    void iLoadKyoten_ALLDB(QList<SiteRow>& grid, bool bAllFlg, qint16& result);
    // Which sites the grid loaders list by their used flag (0 own, 1 franchise, other both): the
    // program's start-up mode unless set here.
    void setStartMode(qint16 mode) { m_startMode = mode; }

    qint32 nデータ数() const { return qint32(m_list.size()); }
    const cD_Kyoten& clsKyoten(qint32 index) const { return m_list.at(index); }
    QString sErrMsg;

private:
    qint16 iDatabaseRead();
    // Runs the grid statement on ado and appends its rows to list and grid.
    bool fillGrid(cT_ADODB& ado, const QString& sql, const QString& database, QList<SiteRow>& grid);
    void showError(const QString& text);

    const AppContext& m_ctx;
    qint16 m_startMode;
    cT_ADODB* m_ado = nullptr;
    QList<cD_Kyoten> m_list;
    QList<DbInfo> m_dbInfo;
};

} // namespace qelprn
