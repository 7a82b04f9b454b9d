#include "engine/FontFile.h"

#include <QtEndian>
#include <algorithm>

namespace qelprn::engine {

namespace {

quint16 read16(const QByteArray& data, qsizetype at)
{
    if (at < 0 || at + 2 > data.size())
        return 0;
    return qFromBigEndian<quint16>(data.constData() + at);
}

quint32 read32(const QByteArray& data, qsizetype at)
{
    if (at < 0 || at + 4 > data.size())
        return 0;
    return qFromBigEndian<quint32>(data.constData() + at);
}

void put16(QByteArray& out, quint16 v)
{
    char b[2];
    qToBigEndian(v, b);
    out.append(b, 2);
}

void put32(QByteArray& out, quint32 v)
{
    char b[4];
    qToBigEndian(v, b);
    out.append(b, 4);
}

void readFormat4(const QByteArray& cmap, qsizetype at, CharMap& map)
{
    const qsizetype segments = read16(cmap, at + 6) / 2;
    const qsizetype ends = at + 14;
    const qsizetype starts = ends + 2 * segments + 2;
    const qsizetype deltas = starts + 2 * segments;
    const qsizetype ranges = deltas + 2 * segments;
    for (qsizetype i = 0; i < segments; ++i) {
        const quint32 start = read16(cmap, starts + 2 * i);
        const quint32 end = read16(cmap, ends + 2 * i);
        const quint16 delta = read16(cmap, deltas + 2 * i);
        const quint16 range = read16(cmap, ranges + 2 * i);
        for (quint32 c = start; c <= end && c < 0xFFFF; ++c) {
            quint32 glyph = 0;
            if (range == 0) {
                glyph = quint16(c + delta);
            } else {
                glyph = read16(cmap, ranges + 2 * i + range + 2 * qsizetype(c - start));
                if (glyph != 0)
                    glyph = quint16(glyph + delta);
            }
            if (glyph != 0)
                map[c] = glyph;
        }
    }
}

void readFormat12(const QByteArray& cmap, qsizetype at, CharMap& map)
{
    const quint32 groups = read32(cmap, at + 12);
    for (quint32 i = 0; i < groups && at + 16 + 12 * qsizetype(i) + 12 <= cmap.size(); ++i) {
        const qsizetype g = at + 16 + 12 * qsizetype(i);
        const quint32 start = read32(cmap, g);
        const quint32 end = qMin<quint32>(read32(cmap, g + 4), 0x10FFFF);
        const quint32 glyph = read32(cmap, g + 8);
        for (quint32 c = start; c <= end; ++c) {
            if (glyph + (c - start) != 0)
                map[c] = glyph + (c - start);
        }
    }
}

// The Unicode map of the font: its full-repertoire subtable (format 12) when it has one, else its
// basic-plane subtable (format 4).
CharMap readUnicodeMap(const QByteArray& cmap)
{
    CharMap map;
    const int tables = read16(cmap, 2);
    qsizetype format4 = -1;
    qsizetype format12 = -1;
    for (int i = 0; i < tables; ++i) {
        const quint16 platform = read16(cmap, 4 + 8 * i);
        const quint16 encoding = read16(cmap, 6 + 8 * i);
        const qsizetype at = read32(cmap, 8 + 8 * i);
        const bool unicode = platform == 0 || (platform == 3 && (encoding == 1 || encoding == 10));
        if (!unicode)
            continue;
        const quint16 format = read16(cmap, at);
        if (format == 4 && format4 < 0)
            format4 = at;
        else if (format == 12 && format12 < 0)
            format12 = at;
    }
    if (format12 >= 0)
        readFormat12(cmap, format12, map);
    else if (format4 >= 0)
        readFormat4(cmap, format4, map);
    return map;
}

// Basic-plane subtable: one segment per run of code points (short gaps filled with glyph 0), the
// glyphs listed in the glyph array. Empty when it would not fit the format's 64 KiB.
QByteArray writeFormat4(const CharMap& map)
{
    struct Segment
    {
        quint32 start, end;
        qsizetype firstGlyph; // index into glyphs
    };
    QList<Segment> segments;
    QList<quint16> glyphs;
    for (const auto& [c, glyph] : map) {
        if (c >= 0xFFFF)
            break;
        if (!segments.isEmpty() && c - segments.last().end <= 4) {
            for (quint32 gap = segments.last().end + 1; gap < c; ++gap)
                glyphs.append(0);
            segments.last().end = c;
        } else {
            segments.append({c, c, glyphs.size()});
        }
        glyphs.append(quint16(glyph));
    }
    const int count = int(segments.size()) + 1; // and the closing 0xFFFF segment
    const qsizetype length = 16 + 8 * qsizetype(count) + 2 * glyphs.size();
    if (length > 0xFFFF)
        return {};
    int entrySelector = 0;
    while ((2 << entrySelector) <= count)
        ++entrySelector;
    const int searchRange = 2 << entrySelector;
    QByteArray out;
    put16(out, 4);
    put16(out, quint16(length));
    put16(out, 0);
    put16(out, quint16(2 * count));
    put16(out, quint16(searchRange));
    put16(out, quint16(entrySelector));
    put16(out, quint16(2 * count - searchRange));
    for (const Segment& s : segments)
        put16(out, quint16(s.end));
    put16(out, 0xFFFF);
    put16(out, 0); // reserved
    for (const Segment& s : segments)
        put16(out, quint16(s.start));
    put16(out, 0xFFFF);
    for (qsizetype i = 0; i < segments.size(); ++i)
        put16(out, 0);
    put16(out, 1);
    for (qsizetype i = 0; i < segments.size(); ++i)
        put16(out, quint16(2 * (count - i) + 2 * segments[i].firstGlyph));
    put16(out, 0);
    for (quint16 g : std::as_const(glyphs))
        put16(out, g);
    return out;
}

QByteArray writeFormat12(const CharMap& map)
{
    struct Group
    {
        quint32 start, end, glyph;
    };
    QList<Group> groups;
    for (const auto& [c, glyph] : map) {
        if (!groups.isEmpty() && groups.last().end + 1 == c &&
            groups.last().glyph + (c - groups.last().start) == glyph)
            groups.last().end = c;
        else
            groups.append({c, c, glyph});
    }
    QByteArray out;
    put16(out, 12);
    put16(out, 0);
    put32(out, quint32(16 + 12 * groups.size()));
    put32(out, 0);
    put32(out, quint32(groups.size()));
    for (const Group& g : std::as_const(groups)) {
        put32(out, g.start);
        put32(out, g.end);
        put32(out, g.glyph);
    }
    return out;
}

QByteArray writeCmap(const CharMap& map)
{
    const QByteArray basic = writeFormat4(map);
    const QByteArray full = writeFormat12(map);
    const int tables = basic.isEmpty() ? 1 : 2;
    QByteArray out;
    put16(out, 0);
    put16(out, quint16(tables));
    quint32 offset = 4 + 8 * tables;
    if (!basic.isEmpty()) {
        put16(out, 3);
        put16(out, 1);
        put32(out, offset);
        offset += quint32(basic.size());
    }
    put16(out, 3);
    put16(out, 10);
    put32(out, offset);
    return out + basic + full;
}

// The name table with the family, full and PostScript names replaced by family; the other records
// (copyright, licence, version) stay as they are.
QByteArray writeName(const QByteArray& name, const QString& family)
{
    struct Record
    {
        quint16 platform, encoding, language, id;
        QByteArray text;
        bool operator<(const Record& o) const
        {
            return std::tie(platform, encoding, language, id) <
                   std::tie(o.platform, o.encoding, o.language, o.id);
        }
    };
    static constexpr quint16 replaced[] = {1, 3, 4, 6, 16, 17, 18, 21, 22};
    QList<Record> records;
    const int count = read16(name, 2);
    const qsizetype strings = read16(name, 4);
    for (int i = 0; i < count; ++i) {
        const qsizetype at = 6 + 12 * qsizetype(i);
        Record r{read16(name, at), read16(name, at + 2), read16(name, at + 4), read16(name, at + 6), {}};
        if (std::find(std::begin(replaced), std::end(replaced), r.id) != std::end(replaced))
            continue;
        r.text = name.mid(strings + read16(name, at + 10), read16(name, at + 8));
        records.append(r);
    }
    auto utf16 = [](const QString& text) {
        QByteArray out;
        for (QChar c : text)
            put16(out, c.unicode());
        return out;
    };
    for (quint16 id : {quint16(1), quint16(3), quint16(4), quint16(6)})
        records.append({3, 1, 0x409, id, utf16(family)});
    std::sort(records.begin(), records.end());
    QByteArray out;
    QByteArray storage;
    put16(out, 0);
    put16(out, quint16(records.size()));
    put16(out, quint16(6 + 12 * records.size()));
    for (const Record& r : std::as_const(records)) {
        put16(out, r.platform);
        put16(out, r.encoding);
        put16(out, r.language);
        put16(out, r.id);
        put16(out, quint16(r.text.size()));
        put16(out, quint16(storage.size()));
        storage += r.text;
    }
    return out + storage;
}

// The tables a TrueType or OpenType font may have; the file is rebuilt from those the font has.
constexpr const char* kTableTags[] = {
    "BASE", "CBDT", "CBLC", "CFF ", "CFF2", "COLR", "CPAL", "DSIG", "EBDT", "EBLC", "EBSC", "GDEF", "GPOS",
    "GSUB", "HVAR", "JSTF", "LTSH", "MATH", "MVAR", "OS/2", "PCLT", "STAT", "SVG ", "VDMX", "VORG", "VVAR",
    "avar", "cmap", "cvar", "cvt ", "fpgm", "fvar", "gasp", "glyf", "gvar", "hdmx", "head", "hhea", "hmtx",
    "kern", "loca", "maxp", "meta", "name", "post", "prep", "sbix", "vhea", "vmtx"};

QByteArray buildFont(QList<std::pair<QByteArray, QByteArray>> tables)
{
    std::sort(tables.begin(), tables.end());
    const int count = int(tables.size());
    int entrySelector = 0;
    while ((2 << entrySelector) <= count)
        ++entrySelector;
    const int searchRange = 16 << entrySelector;
    bool cff = false;
    for (auto& [tag, data] : tables) {
        cff = cff || tag == "CFF " || tag == "CFF2";
        if (tag == "head" && data.size() >= 12)
            std::fill_n(data.data() + 8, 4, 0); // checkSumAdjustment, set below
    }
    QByteArray out;
    put32(out, cff ? 0x4F54544F : 0x00010000);
    put16(out, quint16(count));
    put16(out, quint16(searchRange));
    put16(out, quint16(entrySelector));
    put16(out, quint16(16 * count - searchRange));
    quint32 offset = quint32(12 + 16 * count);
    for (const auto& [tag, data] : std::as_const(tables)) {
        out.append(tag);
        put32(out, tableChecksum(data));
        put32(out, offset);
        put32(out, quint32(data.size()));
        offset += quint32((data.size() + 3) & ~qsizetype(3));
    }
    qsizetype headAt = -1;
    for (const auto& [tag, data] : std::as_const(tables)) {
        if (tag == "head")
            headAt = out.size();
        out.append(data);
        out.append(QByteArray((4 - data.size() % 4) % 4, '\0'));
    }
    if (headAt >= 0)
        qToBigEndian<quint32>(0xB1B0AFBA - tableChecksum(out), out.data() + headAt + 8);
    return out;
}

} // namespace

CharMap readCharMap(const QRawFont& font)
{
    return readUnicodeMap(font.fontTable("cmap"));
}

QByteArray fontFileWith(const QRawFont& font, const CharMap& map, const QString& family)
{
    QList<std::pair<QByteArray, QByteArray>> tables;
    for (const char* tag : kTableTags) {
        QByteArray data = font.fontTable(tag);
        if (tag == QByteArrayView("cmap"))
            data = writeCmap(map);
        else if (tag == QByteArrayView("name") && !data.isEmpty())
            data = writeName(data, family);
        if (!data.isEmpty())
            tables.append({QByteArray(tag), data});
    }
    return buildFont(tables);
}

quint32 tableChecksum(QByteArrayView data)
{
    quint32 sum = 0;
    for (qsizetype i = 0; i < data.size(); i += 4) {
        char word[4] = {}; // the last word padded with zeros
        std::copy_n(data.data() + i, std::min<qsizetype>(4, data.size() - i), word);
        sum += qFromBigEndian<quint32>(word);
    }
    return sum;
}

} // namespace qelprn::engine
