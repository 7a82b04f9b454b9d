#include "engine/TrueTypeGlyphs.h"

#include "engine/FontFile.h"

#include <QtEndian>
#include <map>

namespace qelprn::engine {

namespace {

struct Table
{
    quint32 offset = 0;
    quint32 length = 0;
};

quint16 u16(const QByteArray& d, qsizetype at)
{
    return qFromBigEndian<quint16>(d.constData() + at);
}

quint32 u32(const QByteArray& d, qsizetype at)
{
    return qFromBigEndian<quint32>(d.constData() + at);
}

void put16(QByteArray& d, qsizetype at, quint16 v)
{
    qToBigEndian(v, d.data() + at);
}

void put32(QByteArray& d, qsizetype at, quint32 v)
{
    qToBigEndian(v, d.data() + at);
}

void append32(QByteArray& d, quint32 v)
{
    d.resize(d.size() + 4);
    put32(d, d.size() - 4, v);
}

void append16(QByteArray& d, quint16 v)
{
    d.resize(d.size() + 2);
    put16(d, d.size() - 2, v);
}

// The glyphs a composite glyph is made of (none for a simple glyph or a damaged one).
std::vector<quint16> components(const QByteArray& d, qsizetype at, qsizetype end)
{
    std::vector<quint16> parts;
    if (end - at < 10 || qint16(u16(d, at)) >= 0)
        return parts;
    qsizetype p = at + 10;
    quint16 flags = 0;
    do {
        if (p + 4 > end)
            break;
        flags = u16(d, p);
        parts.push_back(u16(d, p + 2));
        p += 4 + ((flags & 0x0001) ? 4 : 2);
        if (flags & 0x0008)
            p += 2;
        else if (flags & 0x0040)
            p += 4;
        else if (flags & 0x0080)
            p += 8;
    } while (flags & 0x0020);
    return parts;
}

} // namespace

QByteArray keepTrueTypeGlyphs(const QByteArray& font, const std::vector<bool>& keep)
{
    if (font.size() < 12)
        return {};
    const int tableCount = u16(font, 4);
    if (font.size() < 12 + 16 * tableCount)
        return {};
    std::map<QByteArray, Table> tables; // ordered by tag, as the directory must be
    for (int i = 0; i < tableCount; ++i) {
        const qsizetype at = 12 + 16 * i;
        const Table t{u32(font, at + 8), u32(font, at + 12)};
        if (qint64(t.offset) + t.length > font.size())
            return {};
        tables[font.mid(at, 4)] = t;
    }
    if (!tables.count("glyf") || !tables.count("loca") || !tables.count("head") || !tables.count("maxp") ||
        tables["head"].length < 54 || tables["maxp"].length < 6)
        return {};
    const Table head = tables["head"];
    const Table glyf = tables["glyf"];
    const Table loca = tables["loca"];
    const bool longOffsets = qint16(u16(font, head.offset + 50)) != 0;
    const int glyphCount = u16(font, tables["maxp"].offset + 4);
    if (loca.length < quint32(glyphCount + 1) * (longOffsets ? 4 : 2))
        return {};
    auto glyphStart = [&](int g) -> quint32 {
        return longOffsets ? u32(font, loca.offset + 4 * g) : 2u * u16(font, loca.offset + 2 * g);
    };

    // What is kept: the marked glyphs, glyph 0, and the parts of kept composites (parts may be
    // composites themselves, so the list is worked through until nothing new comes).
    std::vector<bool> kept(size_t(glyphCount), false);
    std::vector<int> work;
    for (int g = 0; g < glyphCount; ++g) {
        if (g == 0 || (size_t(g) < keep.size() && keep[size_t(g)])) {
            kept[size_t(g)] = true;
            work.push_back(g);
        }
    }
    while (!work.empty()) {
        const int g = work.back();
        work.pop_back();
        const quint32 start = glyphStart(g), end = glyphStart(g + 1);
        if (start > end || end > glyf.length)
            return {};
        for (quint16 part : components(font, glyf.offset + start, glyf.offset + end)) {
            if (part < glyphCount && !kept[part]) {
                kept[part] = true;
                work.push_back(part);
            }
        }
    }

    QByteArray newGlyf;
    std::vector<quint32> starts;
    starts.reserve(size_t(glyphCount) + 1);
    for (int g = 0; g < glyphCount; ++g) {
        starts.push_back(quint32(newGlyf.size()));
        if (kept[size_t(g)]) {
            newGlyf.append(font.constData() + glyf.offset + glyphStart(g), glyphStart(g + 1) - glyphStart(g));
            while (newGlyf.size() % 4 != 0)
                newGlyf.append('\0');
        }
    }
    starts.push_back(quint32(newGlyf.size()));
    const bool newLong = longOffsets || newGlyf.size() / 2 > 0xFFFF;
    QByteArray newLoca;
    for (quint32 s : starts) {
        if (newLong)
            append32(newLoca, s);
        else
            append16(newLoca, quint16(s / 2));
    }

    // The file again: the same tables in the same order, glyf and loca new, checksums new.
    QByteArray out = font.left(12);
    out.resize(12 + 16 * tableCount);
    qsizetype headAt = -1;
    int index = 0;
    for (const auto& [tag, table] : tables) {
        QByteArray data = tag == "glyf"   ? newGlyf
                          : tag == "loca" ? newLoca
                                          : font.mid(table.offset, table.length);
        if (tag == "head") {
            put32(data, 8, 0); // checkSumAdjustment, set once the whole file is known
            put16(data, 50, newLong ? 1 : 0);
        }
        const qsizetype at = 12 + 16 * index++;
        out.replace(at, 4, tag);
        put32(out, at + 4, tableChecksum(data));
        put32(out, at + 8, quint32(out.size()));
        put32(out, at + 12, quint32(data.size()));
        if (tag == "head")
            headAt = out.size();
        out.append(data);
        while (out.size() % 4 != 0)
            out.append('\0');
    }
    put32(out, headAt + 8, 0xB1B0AFBAu - tableChecksum(out));
    return out;
}

} // namespace qelprn::engine
