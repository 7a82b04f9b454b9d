#include "cli/CliTranslator.h"

#include <cstring>

using namespace Qt::StringLiterals;

namespace qelprn::cli {

QString CliTranslator::translate(const char* context, const char* sourceText, const char*, int) const
{
    if (!context || !sourceText || std::strcmp(context, "QCommandLineParser") != 0)
        return {};
    struct Text
    {
        const char* english;
        QString japanese;
    };
    static const Text texts[] = {
        {"Missing value after '%1'.", u"%1 の後に値がありません。"_s},
        {"Unexpected value after '%1'.", u"%1 は値をとりません。"_s},
        {"Unknown option '%1'.", u"不明なオプションです：%1"_s},
        {"Unknown options: %1.", u"不明なオプションです：%1"_s},
        {"Usage: %1", u"使い方: %1"_s},
        {"[options]", u"[オプション]"_s},
        {"Options:", u"オプション:"_s},
        {"Arguments:", u"引数:"_s},
        {"Displays help on commandline options.", u"このヘルプを表示します。"_s},
        {"Displays help including Qt specific options.", u"Qt のオプションも含めてヘルプを表示します。"_s},
        {"Displays version information.", u"版を表示します。"_s},
    };
    for (const Text& t : texts) {
        if (std::strcmp(sourceText, t.english) == 0)
            return t.japanese;
    }
    return {};
}

} // namespace qelprn::cli
