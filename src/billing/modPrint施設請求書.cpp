#include "billing/modPrint施設請求書.h"

#include "app/ProgramTitle.h"
#include "app/RunTimeError.h"
#include "billing/QueryConnection.h"

#include <exception>
#include <new>

using namespace Qt::StringLiterals;

namespace qelprn {

modPrint施設請求書::modPrint施設請求書(const AppContext& ctx) : context(ctx) {}

qint16 modPrint施設請求書::guarded(const std::function<qint16()>& body)
{
    RunTimeError error;
    try {
        return body();
    } catch (const RunTimeError& e) {
        error = e;
    } catch (const std::bad_alloc&) {
        error = {7, u"メモリが不足しています。"_s};
    } catch (const std::exception& e) {
        error = {5, QString::fromLocal8Bit(e.what())};
    }
    context.interaction().messageBox(runTimeErrorText(error), seikyuTitle(), MsgIcon::None);
    return -1;
}

void modPrint施設請求書::showNoData() const
{
    context.interaction().messageBox(u"該当する実績データがありません。"_s, seikyuTitle(),
                                     MsgIcon::Information);
}

void modPrint施設請求書::showError(const QString& text) const
{
    context.interaction().messageBox(text, seikyuTitle(), MsgIcon::Critical);
}

} // namespace qelprn
