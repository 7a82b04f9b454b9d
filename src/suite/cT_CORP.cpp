#include "suite/cT_CORP.h"

#include "app/NullValue.h"
#include "db/RecordSet.h"
#include "db/SqlText.h"
#include "db/cT_ADODB.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

QString address(const QStringList& addresses, int i)
{
    return quoted(addresses.value(i));
}

} // namespace

qint16 cT_CORP::iDataReadChk(const cD_CORP* rec)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(rec, def().word))
            return -1;
        cD_CORP cond;
        cond.setnIDNo(rec->nIDNo()); // any type
        return readRows(readStatement(cond), def().readColumns());
    });
}

QString cT_CORP::gridJoukenStatement(const cD_CORP& cond) const
{
    QString where = u" where"_s + u"     CORP.iKyotenCd = "_s + QString::number(site().iKyotenCd) +
                    u" and"_s + u"     CORP.iKyotenEb = "_s + QString::number(site().iKyotenEb);
    if (cond.nIDNo() > 0)
        where += u" and"_s + u" CORP.nIDNo = "_s + QString::number(cond.nIDNo());
    if (!cond.cShamei1().isEmpty())
        where += u" and"_s + u"     CORP.cShamei1 LIKE '%"_s + sqlText(cond.cShamei1()) + u"%'"_s;
    return selectStatement(def().readColumns(), where);
}

qint16 cT_CORP::iDataReadGrid_Jouken(const cD_CORP* cond)
{
    return guarded([&]() -> qint16 {
        if (!checkRecord(cond, def().word))
            return -1;
        return readRows(gridJoukenStatement(*cond), def().readColumns());
    });
}

QString cT_CORP::mapWhere(qint32 nIDNo) const
{
    return u"  where"_s + u"  nIDNo="_s + QString::number(nIDNo) + u"  and iKyotenCd="_s +
           QString::number(site().iKyotenCd) + u"  and iKyotenEb="_s + QString::number(site().iKyotenEb);
}

qint16 cT_CORP::iMapDataRead(qint32 nIDNo, QStringList& addresses)
{
    return guarded([&]() -> qint16 {
        RecordSet rs;
        if (ado()->iOpenRecSet(rs, u"  select bAddr1, bAddr2, bAddr3 from RIYOUSHA_MAP"_s +
                                       mapWhere(nIDNo)) != 0) {
            sErrMsg = ado()->sErrMsg;
            return -1;
        }
        addresses = {QString(), QString(), QString()};
        if (!rs.isEOF())
            for (int i = 0; i < 3; ++i)
                addresses[i] = csNullToStr(rs.field(u"bAddr"_s + QString::number(i + 1)));
        const bool failed = rs.hasError();
        if (failed)
            sErrMsg = rs.errorText();
        ado()->iCloseRecSet(rs);
        return failed ? -1 : 0;
    });
}

qint16 cT_CORP::iMapDataInsert(qint32 nIDNo, const QStringList& addresses)
{
    return guarded([&]() -> qint16 {
        QString pcName;
        if (!checkComputerName(pcName))
            return -1;
        return execute(
            {u" insert into RIYOUSHA_MAP (nIDNo, iKyotenCd, iKyotenEb, bAddr1, bAddr2, bAddr3, cPcName, "
             "tUpDateTime) values ("_s +
             QString::number(nIDNo) + u", "_s + QString::number(site().iKyotenCd) + u", "_s +
             QString::number(site().iKyotenEb) + u", "_s + address(addresses, 0) + u", "_s +
             address(addresses, 1) + u", "_s + address(addresses, 2) + u", "_s + quoted(pcName) +
             u", GetDate())"_s},
            false);
    });
}

qint16 cT_CORP::iMapDataUpdate(qint32 nIDNo, const QStringList& addresses)
{
    return guarded([&]() -> qint16 {
        QString pcName;
        if (!checkComputerName(pcName))
            return -1;
        return execute({u" update RIYOUSHA_MAP set bAddr1 = "_s + address(addresses, 0) + u", bAddr2 = "_s +
                        address(addresses, 1) + u", bAddr3 = "_s + address(addresses, 2) + u", cPcName = "_s +
                        quoted(pcName) + u", tUpDateTime = GetDate()"_s + mapWhere(nIDNo)},
                       false);
    });
}

} // namespace qelprn
