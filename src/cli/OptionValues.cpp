#include "cli/OptionValues.h"

using namespace Qt::StringLiterals;

namespace qelprn::cli {

std::optional<qint64> numberOption(const QCommandLineParser& parser, const QString& name, qint64 low,
                                   qint64 high)
{
    if (!parser.isSet(name))
        return std::nullopt;
    const QString text = parser.value(name);
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    if (!ok || value < low || value > high)
        throw UsageError{u"--"_s + name + u" には "_s + QString::number(low) + u" から "_s +
                         QString::number(high) + u" までの整数を指定してください（指定値：'"_s + text +
                         u"'）"_s};
    return value;
}

std::optional<QDate> dateOption(const QCommandLineParser& parser, const QString& name, bool monthOnly)
{
    if (!parser.isSet(name))
        return std::nullopt;
    const QString text = parser.value(name);
    const QDate date = monthOnly ? QDate::fromString(text + u"/01"_s, u"yyyy/MM/dd"_s)
                                 : QDate::fromString(text, u"yyyy/MM/dd"_s);
    if (!date.isValid())
        throw UsageError{u"--"_s + name + (monthOnly ? u" は yyyy/mm の形で"_s : u" は yyyy/mm/dd の形で"_s) +
                         u"指定してください（指定値：'"_s + text + u"'）"_s};
    return date;
}

void rejectExtraArguments(const QCommandLineParser& parser, qsizetype allowed)
{
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > allowed)
        throw UsageError{u"余分な引数があります："_s + positional.mid(allowed).join(u' ')};
}

} // namespace qelprn::cli
