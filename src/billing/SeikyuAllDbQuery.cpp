// iGetSeikyuData_ALLDB: the facility invoice over several databases, grouped by billing facility.
#include "billing/QueryConnection.h"
#include "billing/RecordFields.h"
#include "billing/SeikyuLine.h"
#include "billing/SeikyuSql.h"
#include "billing/modPrint施設請求書.h"
#include "db/DatabaseList.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

const QString kHeader = u"iGetSeikyuData_ALLDB() でエラー"_s;

// The corporation and clinic values read once from the base database, copied into every line.
struct CorpValues
{
    QString name;
    QString yubin;
    QString address1;
};

// Reads every record of the lookup; the last one wins, none leaves the values empty.
bool readCorpValues(QueryConnection& db, const QString& sql, const QString& prefix, CorpValues& values)
{
    if (!db.query(sql))
        return false;
    for (; !db.rs.isEOF(); db.rs.moveNext()) {
        values.name = fieldText(db.rs, prefix + u"_NAME"_s);
        values.yubin = fieldText(db.rs, prefix + u"_YUBIN"_s);
        values.address1 = fieldText(db.rs, prefix + u"_ADDRESS1"_s);
    }
    return db.checkRead();
}

// The group of the record's billing facility name (the first of that name), created at index
// count when there is none; the list keeps its spare element 0 while count is 0.
SisetsuSeikyuGroup& groupOf(QList<SisetsuSeikyuGroup>& groups, qint16& count, const QString& name)
{
    for (qint16 i = 0; i < count; ++i) {
        if (groups[i].cSeikyuName == name)
            return groups[i];
    }
    if (count < groups.size())
        groups[count] = SisetsuSeikyuGroup();
    else
        groups.append(SisetsuSeikyuGroup());
    count = toInt16(qint32(count) + 1);
    return groups[count - 1];
}

} // namespace

qint16 modPrint施設請求書::iGetSeikyuData_ALLDB()
{
    return guarded([this]() -> qint16 {
        if (iDatabaseRead(context, dbInfos) <= 0) {
            showError(u"DBの読み込みに失敗しました"_s);
            return -1;
        }
        aSeikyuSisetsu = {SisetsuSeikyuGroup()};
        aSeikyuJihi = {SisetsuSeikyuGroup()};
        nSeikyuSisetsuCnt = 0;
        nSeikyuJihiCnt = 0;

        CorpValues corp;
        CorpValues tiryoin;
        {
            // The empty base string keeps the single-database header, as the suite reports it.
            QueryConnection base(context, kHeader);
            if (!base.openAdodb(u"iGetSeikyuData() でエラー"_s) ||
                !readCorpValues(base, corpSql(jouken, context.iBaseKyotenCd, context.iBaseKyotenEb),
                                u"CORP"_s, corp) ||
                !readCorpValues(base, tiryoinSql(jouken, context.iBaseKyotenCd, context.iBaseKyotenEb),
                                u"TIRYOIN"_s, tiryoin))
                return -1;
        }

        qint32 records = 0;
        for (const SelectedDatabase& selected : jouken.selectedDatabases) {
            QString connectionString;
            for (const DbInfo& info : std::as_const(dbInfos)) {
                if (info.cDatabase == selected.cDatabase) {
                    connectionString = dbConnectionString(info);
                    break;
                }
            }
            QueryConnection db(context, kHeader);
            if (!db.open(connectionString))
                return -1;
            const QString sites = kyotenConditionSql(selected.sites);
            for (int type = 0; type <= 1; ++type) {
                QList<SisetsuSeikyuGroup>& groups = type == 0 ? aSeikyuSisetsu : aSeikyuJihi;
                qint16& count = type == 0 ? nSeikyuSisetsuCnt : nSeikyuJihiCnt;
                if (!db.query(seikyuAllDbSql(jouken, type, sites)))
                    return -1;
                for (; !db.rs.isEOF(); db.rs.moveNext()) {
                    SisetsuSeikyuGroup& group = groupOf(groups, count, fieldText(db.rs, u"SEIKYU_NAME"_s));
                    readSeikyuSaki(db.rs, group);
                    SisetsuSeikyuRow line = readSeikyuMeisai(db.rs, jouken);
                    line.cCorpName = corp.name;
                    line.cCorpYubin = corp.yubin;
                    line.cCorpAddress1 = corp.address1;
                    line.cTiryoinName = tiryoin.name;
                    line.cTiryoinYubin = tiryoin.yubin;
                    line.cTiryoinAddress1 = tiryoin.address1;
                    group.aMeisai.append(line);
                    group.iMeisaiCnt = toInt16(qint32(group.iMeisaiCnt) + 1);
                    ++records;
                }
                if (!db.checkRead())
                    return -1;
            }
        }
        if (records == 0) {
            showNoData();
            return 1;
        }
        return 0;
    });
}

} // namespace qelprn
