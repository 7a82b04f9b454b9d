#include "billing/QueryConnection.h"

#include "app/ProgramTitle.h"

using namespace Qt::StringLiterals;

namespace qelprn {

bool QueryConnection::openAdodb(const QString& emptyHeader)
{
    return reported(m_con.openAdodb(m_ctx), emptyHeader);
}

bool QueryConnection::reported(bool ok, const QString& emptyHeader) const
{
    if (!ok) {
        const QString& header =
            m_con.lacksConnectionString() && !emptyHeader.isEmpty() ? emptyHeader : m_header;
        m_ctx.interaction().messageBox(header + u"\r\n"_s + m_con.errorText(), seikyuTitle(),
                                       MsgIcon::Critical);
    }
    return ok;
}

} // namespace qelprn
