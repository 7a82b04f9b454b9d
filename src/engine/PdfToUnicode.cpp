#include "engine/PdfToUnicode.h"

#include <QList>

namespace qelprn::engine {

namespace {

// The CMap's tokens: hex strings (their digits), "[", "]" and keywords.
struct Token
{
    enum class Kind { Hex, Open, Close, Word } kind;
    QByteArray text;
};

QList<Token> tokens(QByteArrayView cmap)
{
    QList<Token> list;
    qsizetype i = 0;
    const qsizetype n = cmap.size();
    while (i < n) {
        const char c = cmap[i];
        if (c == '<' && i + 1 < n && cmap[i + 1] != '<') {
            const qsizetype end = cmap.indexOf('>', i + 1);
            if (end < 0)
                break;
            QByteArray digits;
            for (qsizetype k = i + 1; k < end; ++k) {
                if (isxdigit(uchar(cmap[k])))
                    digits.append(char(toupper(uchar(cmap[k]))));
            }
            list.append({Token::Kind::Hex, digits});
            i = end + 1;
        } else if (c == '[' || c == ']') {
            list.append({c == '[' ? Token::Kind::Open : Token::Kind::Close, {}});
            ++i;
        } else if (isalpha(uchar(c))) {
            const qsizetype start = i;
            while (i < n && isalnum(uchar(cmap[i])))
                ++i;
            list.append({Token::Kind::Word, cmap.sliced(start, i - start).toByteArray()});
        } else {
            ++i;
        }
    }
    return list;
}

// dst advanced by offset in its last UTF-16 code unit, as a bfrange with a start value counts.
QByteArray advanced(const QByteArray& dst, quint32 offset)
{
    if (dst.size() < 4 || offset == 0)
        return dst;
    const quint32 last = dst.right(4).toUInt(nullptr, 16) + offset;
    return dst.left(dst.size() - 4) + QByteArray::number(last & 0xFFFF, 16).toUpper().rightJustified(4, '0');
}

} // namespace

ToUnicodeMap parseToUnicode(QByteArrayView cmap)
{
    ToUnicodeMap map;
    // Codes are two bytes; ranges that overlap again and again are not followed for ever.
    constexpr quint32 kLastCode = 0xFFFF;
    qint64 budget = 4 * 0x10000;
    const QList<Token> t = tokens(cmap);
    enum class Section { None, Char, Range } section = Section::None;
    qsizetype i = 0;
    auto hex = [&](qsizetype k) { return k < t.size() && t[k].kind == Token::Kind::Hex; };
    while (i < t.size()) {
        if (t[i].kind == Token::Kind::Word) {
            if (t[i].text == "beginbfchar")
                section = Section::Char;
            else if (t[i].text == "beginbfrange")
                section = Section::Range;
            else if (t[i].text == "endbfchar" || t[i].text == "endbfrange")
                section = Section::None;
            ++i;
        } else if (section == Section::Char && hex(i) && hex(i + 1)) {
            const quint32 code = t[i].text.toUInt(nullptr, 16);
            if (code <= kLastCode)
                map[code] = t[i + 1].text;
            i += 2;
        } else if (section == Section::Range && hex(i) && hex(i + 1) && hex(i + 2)) {
            const quint32 lo = t[i].text.toUInt(nullptr, 16), hi = t[i + 1].text.toUInt(nullptr, 16);
            for (quint32 c = lo; c <= qMin(hi, kLastCode) && budget > 0; ++c, --budget)
                map[c] = advanced(t[i + 2].text, c - lo);
            i += 3;
        } else if (section == Section::Range && hex(i) && hex(i + 1) && i + 2 < t.size() &&
                   t[i + 2].kind == Token::Kind::Open) {
            quint32 c = t[i].text.toUInt(nullptr, 16);
            const quint32 hi = t[i + 1].text.toUInt(nullptr, 16);
            i += 3;
            for (; hex(i); ++i, ++c) {
                if (c <= qMin(hi, kLastCode))
                    map[c] = t[i].text;
            }
            if (i < t.size() && t[i].kind == Token::Kind::Close)
                ++i;
        } else {
            ++i;
        }
    }
    return map;
}

QByteArray toUnicodeCMap(const ToUnicodeMap& map)
{
    QByteArray out = "/CIDInit /ProcSet findresource begin\n"
                     "12 dict begin\n"
                     "begincmap\n"
                     "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                     "/CMapName /Adobe-Identity-UCS def\n"
                     "/CMapType 2 def\n"
                     "1 begincodespacerange\n"
                     "<0000> <FFFF>\n"
                     "endcodespacerange\n";
    auto it = map.begin();
    while (it != map.end()) {
        QByteArray block;
        int count = 0;
        for (; it != map.end() && count < 100; ++it, ++count) {
            block += '<' + QByteArray::number(it->first, 16).toUpper().rightJustified(4, '0') + "> <" +
                     it->second + ">\n";
        }
        out += QByteArray::number(count) + " beginbfchar\n" + block + "endbfchar\n";
    }
    out += "endcmap\n"
           "CMapName currentdict /CMap defineresource pop\n"
           "end\n"
           "end\n";
    return out;
}

} // namespace qelprn::engine
