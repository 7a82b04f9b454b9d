#include "master/RiyoushaLoader.h"

#include "db/RecordSet.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString riyoushaLoaderStatement(const AppContext& ctx, qint32 nIDNo)
{
    return ownSiteRowStatement(ctx, u"RIYOUSHA"_s, nIDNo);
}

bool loadRiyousha(const AppContext& ctx, qint32 nIDNo, RiyoushaInfo& rec, QString* errorText)
{
    return loadInto(ctx, riyoushaLoaderStatement(ctx, nIDNo), rec, errorText,
                    [](const RecordSet& rs, RiyoushaInfo& loaded) {
#define QELPRN_READ(kind, name) readLoaderField(rs, u"" #name ""_s, loaded.name);
                        QELPRN_RIYOUSHA_LOADER_COLUMNS(QELPRN_READ)
#undef QELPRN_READ
                    });
}

} // namespace qelprn
