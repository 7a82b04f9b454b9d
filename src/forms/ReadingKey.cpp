#include "forms/ReadingKey.h"

namespace qelprn {

QString readingKey(const QString& reading)
{
    // NFKC makes half-width kana full-width (joining their sound marks) and full-width letters
    // and digits ASCII.
    const QString wide = reading.normalized(QString::NormalizationForm_KC);
    QString key;
    key.reserve(wide.size());
    for (QChar c : wide) {
        if (c.isSpace())
            continue;
        const char16_t u = c.unicode();
        // Hiragana ぁ..ゖ and the iteration marks ゝゞ have katakana 0x60 above them.
        if ((u >= 0x3041 && u <= 0x3096) || u == 0x309D || u == 0x309E)
            key.append(QChar(char16_t(u + 0x60)));
        else
            key.append(c.toCaseFolded());
    }
    return key;
}

bool readingMatches(const QString& reading, const QString& typed)
{
    return readingKey(reading).contains(readingKey(typed));
}

} // namespace qelprn
