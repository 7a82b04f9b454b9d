#include "master/RiyoushaLoader.h"

#include "db/RecordSet.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString riyoushaLoaderStatement(const AppContext& ctx, qint32 nIDNo)
{
    return u"SELECT * FROM "_s + u"RIYOUSHA"_s + u" WHERE nIDNo = "_s + QString::number(nIDNo) +
           u" and iKyotenCd = "_s + QString::number(ctx.iBaseKyotenCd) + u" and iKyotenEb = "_s +
           QString::number(ctx.iBaseKyotenEb);
}

bool bLoadRiyousha(const AppContext& ctx, qint32 nIDNo, RiyoushaInfo& rec, QString* errorText)
{
    RiyoushaInfo loaded = rec; // a Null number or date keeps the caller's value
    const bool found =
        loadSingleRow(ctx, riyoushaLoaderStatement(ctx, nIDNo), errorText, [&loaded](const RecordSet& rs) {
#define QELPRN_READ(kind, name) readLoaderField(rs, u"" #name ""_s, loaded.name);
            QELPRN_RIYOUSHA_LOADER_COLUMNS(QELPRN_READ)
#undef QELPRN_READ
        });
    if (found)
        rec = loaded; // assigned as a whole once the connection is closed
    return found;
}

} // namespace qelprn
