#include "master/SisetsuLoader.h"

#include "db/RecordSet.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString sisetsuLoaderStatement(const AppContext& ctx, qint32 nIDNo)
{
    return u"SELECT * FROM "_s + u"SISETSU"_s + u" WHERE nIDNo = "_s + QString::number(nIDNo) +
           u" and iKyotenCd = "_s + QString::number(ctx.iBaseKyotenCd) + u" and iKyotenEb = "_s +
           QString::number(ctx.iBaseKyotenEb);
}

bool bLoadSisetsu(const AppContext& ctx, qint32 nIDNo, SisetsuInfo& rec, QString* errorText)
{
    SisetsuInfo loaded = rec; // a Null number keeps the caller's value
    const bool found =
        loadSingleRow(ctx, sisetsuLoaderStatement(ctx, nIDNo), errorText, [&loaded](const RecordSet& rs) {
#define QELPRN_READ(kind, name) readLoaderField(rs, u"" #name ""_s, loaded.name);
            QELPRN_SISETSU_LOADER_COLUMNS(QELPRN_READ)
#undef QELPRN_READ
        });
    if (found)
        rec = loaded;
    return found;
}

} // namespace qelprn
