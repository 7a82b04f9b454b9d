#include "master/SisetsuLoader.h"

#include "db/RecordSet.h"

using namespace Qt::StringLiterals;

namespace qelprn {

QString sisetsuLoaderStatement(const AppContext& ctx, qint32 nIDNo)
{
    return ownSiteRowStatement(ctx, u"SISETSU"_s, nIDNo);
}

bool loadSisetsu(const AppContext& ctx, qint32 nIDNo, SisetsuInfo& rec, QString* errorText)
{
    return loadInto(ctx, sisetsuLoaderStatement(ctx, nIDNo), rec, errorText,
                    [](const RecordSet& rs, SisetsuInfo& loaded) {
#define QELPRN_READ(kind, name) readLoaderField(rs, u"" #name ""_s, loaded.name);
                        QELPRN_SISETSU_LOADER_COLUMNS(QELPRN_READ)
#undef QELPRN_READ
                    });
}

} // namespace qelprn
