#include "engine/PdfPageSplitter.h"

#include "engine/PdfToUnicode.h"
#include "engine/TrueTypeGlyphs.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QSet>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

bool isWhite(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

bool isDelimiter(char c)
{
    return isWhite(c) || c == '(' || c == ')' || c == '<' || c == '>' || c == '[' || c == ']' || c == '{' ||
           c == '}' || c == '/' || c == '%';
}

// The whole number after at (blanks skipped), or -1.
qint64 numberAt(QByteArrayView text, qsizetype at)
{
    while (at < text.size() && isWhite(text[at]))
        ++at;
    qint64 value = -1;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        if (value > (qint64(1) << 40))
            return -1; // no offset or length of a file this reads
        value = qMax<qint64>(value, 0) * 10 + (text[at] - '0');
    }
    return value;
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// An indirect reference "n g R" in an object's text, with the last name before it (the key of a
// dictionary entry, or of the entry whose array holds it).
struct Ref
{
    qsizetype at = 0;
    qsizetype end = 0;
    int number = 0;
    QByteArrayView key;
};

qsizetype skipLiteralString(QByteArrayView text, qsizetype i)
{
    int depth = 0;
    for (; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '(')
            ++depth;
        else if (text[i] == ')' && --depth == 0)
            return i + 1;
    }
    return i;
}

QList<Ref> refsIn(QByteArrayView text)
{
    QList<Ref> refs;
    QByteArrayView key;
    struct Number
    {
        qsizetype at = -1;
        int value = 0;
    } older, last; // the two tokens before, when they are whole numbers
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        const char c = text[i];
        if (isWhite(c)) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        bool number = false;
        if (c == '%') {
            while (i < n && text[i] != '\n' && text[i] != '\r')
                ++i;
            continue;
        } else if (c == '(') {
            i = skipLiteralString(text, i);
        } else if (c == '<' || c == '>') {
            if (i + 1 < n && text[i + 1] == c)
                i += 2;
            else if (c == '<')
                i = qMax(text.indexOf('>', i), i) + 1;
            else
                ++i;
        } else if (c == '[' || c == ']' || c == '{' || c == '}') {
            ++i;
        } else if (c == '/') {
            ++i;
            while (i < n && !isDelimiter(text[i]))
                ++i;
            key = text.sliced(start + 1, i - start - 1);
        } else if (c == ')') {
            ++i; // a stray closing parenthesis: a broken file, not a token
        } else {
            while (i < n && !isDelimiter(text[i]))
                ++i;
            const QByteArrayView word = text.sliced(start, i - start);
            bool whole = false;
            const int value = word.toInt(&whole);
            number = whole && word.front() != '+' && word.front() != '-';
            if (number) {
                older = last;
                last = {start, value};
                continue;
            }
            if (word == "R" && older.at >= 0 && last.at >= 0)
                refs.append({older.at, i, older.value, key});
        }
        if (!number)
            older = last = {};
    }
    return refs;
}

// text with each reference replaced by "m 0 R", m from renumber.
template <typename Renumber> QByteArray rewritten(QByteArrayView text, const Renumber& renumber)
{
    QByteArray out;
    out.reserve(text.size() + 16);
    qsizetype at = 0;
    for (const Ref& r : refsIn(text)) {
        out.append(text.sliced(at, r.at - at));
        out.append(QByteArray::number(renumber(r)) + " 0 R");
        at = r.end;
    }
    out.append(text.sliced(at));
    return out;
}

int refOf(QByteArrayView text, QByteArrayView key)
{
    for (const Ref& r : refsIn(text)) {
        if (r.key == key)
            return r.number;
    }
    return 0;
}

QByteArray streamObject(const QByteArray& dictionaryEntries, const QByteArray& data)
{
    return "<<\n" + dictionaryEntries + "/Length " + QByteArray::number(data.size()) + "\n>>\nstream\n" +
           data + "\nendstream";
}

// Marks the glyphs a page's content draws, per font: "/Fn size Tf" chooses the font (by its name
// in fonts), and each hex string shows two-byte glyph codes in it.
void markGlyphs(QByteArrayView content, const QHash<QByteArray, int>& fonts,
                QHash<int, std::vector<bool>>& glyphs)
{
    QByteArrayView name;
    std::vector<bool>* current = nullptr;
    const qsizetype n = content.size();
    qsizetype i = 0;
    while (i < n) {
        const char c = content[i];
        if (c == '/') {
            const qsizetype start = ++i;
            while (i < n && !isDelimiter(content[i]))
                ++i;
            name = content.sliced(start, i - start);
        } else if (c == '<' && i + 1 < n && content[i + 1] == '<') {
            i += 2;
        } else if (c == '<') {
            const qsizetype end = content.indexOf('>', i);
            if (end < 0)
                return;
            if (current) {
                quint32 code = 0;
                int digits = 0;
                for (qsizetype k = i + 1; k < end; ++k) {
                    const int v = hexValue(content[k]);
                    if (v < 0)
                        continue;
                    code = code * 16 + quint32(v);
                    if (++digits == 4) {
                        if (current->size() <= code)
                            current->resize(code + 1, false);
                        (*current)[code] = true;
                        code = 0;
                        digits = 0;
                    }
                }
            }
            i = end + 1;
        } else if (c == '(') {
            i = skipLiteralString(content, i);
        } else if (c == '%') {
            while (i < n && content[i] != '\n' && content[i] != '\r')
                ++i;
        } else if (c == 'T' && i + 1 < n && content[i + 1] == 'f' &&
                   (i == 0 || isDelimiter(content[i - 1])) && (i + 2 == n || isDelimiter(content[i + 2]))) {
            const int font = fonts.value(name.toByteArray());
            current = font ? &glyphs[font] : nullptr;
            i += 2;
        } else {
            ++i;
        }
    }
}

} // namespace

bool PdfPageSplitter::open(const QString& path, QString* error)
{
    m_file.setFileName(path);
    const uchar* mapped = m_file.open(QIODevice::ReadOnly) ? m_file.map(0, m_file.size()) : nullptr;
    if (!mapped) {
        *error = m_file.errorString();
        return false;
    }
    m_data = QByteArrayView(reinterpret_cast<const char*>(mapped), m_file.size());
    const auto fail = [&](const QString& what) {
        *error = what;
        return false;
    };
    if (!m_data.startsWith("%PDF-"))
        return fail(u"PDF ではありません"_s);
    m_version = m_data.first(m_data.indexOf('\n') + 1).toByteArray();

    const qsizetype startxref = m_data.lastIndexOf("startxref");
    const qint64 xref = startxref < 0 ? -1 : numberAt(m_data, startxref + 9);
    if (xref < 0 || xref >= m_data.size() || !m_data.sliced(xref).startsWith("xref"))
        return fail(u"PDF の相互参照表を読めません"_s);
    // The trailer lies between the table and the startxref that names it (the table's offset
    // may even point into the word "startxref" itself).
    const qsizetype trailer = m_data.indexOf("trailer", xref);
    if (trailer < 0 || trailer > startxref)
        return fail(u"PDF の末尾（trailer）を読めません"_s);
    const QList<QByteArray> lines = m_data.sliced(xref + 4, trailer - xref - 4).toByteArray().split('\n');
    int next = 0, left = 0;
    for (const QByteArray& line : lines) {
        const QList<QByteArray> f = line.simplified().split(' ');
        if (f.size() == 2 && left == 0) {
            next = f[0].toInt();
            left = f[1].toInt();
            // An entry takes 20 bytes: a section cannot name more objects than the file has room for.
            if (next < 0 || left < 0 || qint64(next) + left > m_data.size() / 20 + 1)
                return fail(u"PDF の相互参照表を読めません"_s);
        } else if (f.size() == 3 && left > 0) {
            if (size_t(next) >= m_offsets.size())
                m_offsets.resize(size_t(next) + 1, -1);
            // An offset past the file's end is caught where the object is read.
            m_offsets[size_t(next)] = f[2] == "n" ? f[0].toLongLong() : -1;
            ++next;
            --left;
        }
    }
    const QByteArrayView trailerText = m_data.sliced(trailer, startxref - trailer);
    if (trailerText.contains("/Prev") || trailerText.contains("/Encrypt"))
        return fail(u"更新または暗号化された PDF は分けられません"_s);
    m_catalog = refOf(trailerText, "Root");
    Object catalog;
    QSet<int> seen;
    if (!object(m_catalog, catalog) || !readPageTree(refOf(catalog.text, "Pages"), seen) ||
        m_pages.isEmpty() || !readPages())
        return fail(u"PDF のページを読めません"_s);
    return true;
}

bool PdfPageSplitter::object(int number, Object& o) const
{
    if (number <= 0 || size_t(number) >= m_offsets.size() || m_offsets[size_t(number)] < 0)
        return false;
    const qsizetype at = m_offsets[size_t(number)];
    const qsizetype obj = m_data.indexOf("obj", at);
    const qsizetype end = obj < 0 ? -1 : m_data.indexOf("endobj", obj);
    if (obj < 0 || end < 0 || obj - at > 24)
        return false;
    const QByteArrayView body = m_data.sliced(obj + 3, end - obj - 3);
    const qsizetype stream = body.indexOf("stream");
    o.isStream = stream >= 0;
    if (!o.isStream) {
        o.text = body.trimmed();
        o.stream = {};
        return true;
    }
    o.text = body.first(stream).trimmed();
    qsizetype data = obj + 3 + stream + 6;
    if (m_data.sliced(data).startsWith("\r\n"))
        data += 2;
    else if (m_data.sliced(data).startsWith("\n"))
        data += 1;
    // The length, given in the dictionary or as an object of its own.
    qint64 length = -1;
    const qsizetype key = o.text.indexOf("/Length ");
    if (key >= 0) {
        const int lengthObject = refOf(o.text.sliced(key), "Length");
        Object value;
        if (lengthObject && object(lengthObject, value))
            length = numberAt(value.text, 0);
        else if (!lengthObject)
            length = numberAt(o.text, key + 8);
    }
    if (length < 0 || data + length > m_data.size())
        return false;
    o.stream = m_data.sliced(data, length);
    return true;
}

bool PdfPageSplitter::readPageTree(int pages, QSet<int>& seen)
{
    Object node;
    // A node met twice would be a loop; Qt writes one node for all pages.
    if (seen.size() > 32 || seen.contains(pages) || !object(pages, node))
        return false;
    seen.insert(pages);
    for (const Ref& kid : refsIn(node.text)) {
        if (kid.key != "Kids")
            continue;
        Object child;
        if (!object(kid.number, child))
            return false;
        if (child.text.contains("/Type /Pages")) {
            if (!readPageTree(kid.number, seen))
                return false;
        } else {
            m_pages.append(kid.number);
        }
    }
    return true;
}

QByteArray PdfPageSplitter::inflated(const Object& o) const
{
    if (!o.text.contains("/FlateDecode"))
        return o.stream.toByteArray();
    // qUncompress wants the expected size in front; it grows its buffer when the guess is short.
    QByteArray framed(4, '\0');
    qToBigEndian(quint32(qMin<qsizetype>(o.stream.size() * 4, 1 << 30)), framed.data());
    framed.append(o.stream);
    return qUncompress(framed);
}

PdfPageSplitter::FontParts PdfPageSplitter::readFontParts(int type0) const
{
    FontParts parts;
    Object font, descendant, descriptor;
    if (object(type0, font) && object(refOf(font.text, "DescendantFonts"), descendant) &&
        descendant.text.contains("/CIDFontType2") && descendant.text.contains("/CIDToGIDMap /Identity") &&
        object(refOf(descendant.text, "FontDescriptor"), descriptor)) {
        parts.fontFile = refOf(descriptor.text, "FontFile2");
        parts.cidSet = refOf(descriptor.text, "CIDSet");
        parts.toUnicode = refOf(font.text, "ToUnicode");
    }
    return parts;
}

bool PdfPageSplitter::readPages()
{
    QHash<QByteArray, int> fontSetOf; // by resource dictionary text: every page of a job names the same fonts
    for (int number : std::as_const(m_pages)) {
        Object page, resources;
        if (!object(number, page))
            return false;
        const int resourcesObject = refOf(page.text, "Resources");
        if (resourcesObject && !object(resourcesObject, resources))
            return false;
        const QByteArray resourcesText = (resourcesObject ? resources.text : page.text).toByteArray();
        auto set = fontSetOf.constFind(resourcesText);
        if (set == fontSetOf.constEnd()) {
            QHash<QByteArray, int> named;
            for (const Ref& r : refsIn(resourcesText)) {
                Object font, o;
                if (!object(r.number, font) || !font.text.contains("/Subtype /Type0"))
                    continue;
                named.insert(r.key.toByteArray(), r.number);
                if (m_fonts.contains(r.number))
                    continue;
                const FontParts parts = readFontParts(r.number);
                m_fonts.insert(r.number, parts);
                if (parts.fontFile && object(parts.fontFile, o))
                    m_fontFiles.insert(parts.fontFile, inflated(o));
                if (parts.toUnicode && object(parts.toUnicode, o))
                    m_toUnicode.insert(parts.toUnicode, parseToUnicode(inflated(o)));
            }
            set = fontSetOf.insert(resourcesText, int(m_fontSets.size()));
            m_fontSets.append(named);
        }
        PageParts parts;
        parts.fontSet = *set;
        for (const Ref& r : refsIn(page.text)) {
            if (r.key == "Contents")
                parts.contents.append(r.number);
        }
        m_pageParts.push_back(parts);
    }
    return true;
}

bool PdfPageSplitter::glyphsOfPages(int first, int count, QHash<int, std::vector<bool>>& glyphs) const
{
    for (int p = first; p < first + count; ++p) {
        const PageParts& parts = m_pageParts[size_t(p)];
        const QHash<QByteArray, int>& fonts = m_fontSets[parts.fontSet];
        for (int font : fonts)
            glyphs[font]; // a font the page names keeps its glyph 0 even when unused here
        for (int number : parts.contents) {
            Object content;
            if (!object(number, content) || !content.isStream)
                return false;
            markGlyphs(inflated(content), fonts, glyphs);
        }
    }
    return true;
}

bool PdfPageSplitter::writePages(int first, int count, const PdfDocumentInfo& info, bool pdfa,
                                 const QString& path, QString* error) const
{
    const auto fail = [&](const QString& what) {
        *error = what;
        return false;
    };
    if (first < 0 || count <= 0 || first + count > m_pages.size())
        return fail(u"ページの範囲が PDF にありません"_s);
    QHash<int, std::vector<bool>> glyphs;
    if (!glyphsOfPages(first, count, glyphs))
        return fail(u"PDF のページを読めません"_s);

    // The objects written anew: each font program with just the glyphs drawn here, its CID set and
    // its ToUnicode map with just those glyphs.
    QHash<int, QByteArray> made;
    for (auto it = glyphs.cbegin(); it != glyphs.cend(); ++it) {
        const FontParts parts = m_fonts.value(it.key());
        std::vector<bool> used = it.value();
        if (used.empty())
            used.push_back(true);
        used[0] = true;
        const QByteArray program = keepTrueTypeGlyphs(m_fontFiles.value(parts.fontFile), used);
        if (program.isEmpty())
            continue; // not a font program this knows: it is copied whole
        // Stored as it is: compressing a font program again for every file would cost more time
        // than the rest of the file (a month of invoice-receipts is thousands of files) for a few
        // kilobytes each.
        made.insert(parts.fontFile,
                    streamObject("/Length1 " + QByteArray::number(program.size()) + '\n', program));
        if (parts.cidSet) {
            QByteArray bits((used.size() + 7) / 8, '\0');
            for (size_t g = 0; g < used.size(); ++g) {
                if (used[g])
                    bits[qsizetype(g / 8)] = char(bits[qsizetype(g / 8)] | (0x80 >> (g % 8)));
            }
            made.insert(parts.cidSet, streamObject({}, bits));
        }
        if (parts.toUnicode) {
            ToUnicodeMap map = m_toUnicode.value(parts.toUnicode);
            std::erase_if(map, [&](const auto& e) { return e.first >= used.size() || !used[e.first]; });
            made.insert(parts.toUnicode, streamObject({}, toUnicodeCMap(map)));
        }
    }

    // New numbers: 1 the catalog, 2 the page tree, 3 the information dictionary, 4 the metadata,
    // then every object the pages and the catalog reach, in the order they are met.
    constexpr int kCatalog = 1, kPages = 2, kInfo = 3, kMetadata = 4;
    QHash<int, int> renumbered;
    QList<int> queue;
    const auto numberOf = [&](int old) {
        auto it = renumbered.find(old);
        if (it == renumbered.end()) {
            it = renumbered.insert(old, kMetadata + 1 + int(queue.size()));
            queue.append(old);
        }
        return *it;
    };
    QByteArray kids;
    for (int p = first; p < first + count; ++p)
        kids += QByteArray::number(numberOf(m_pages[p])) + " 0 R\n";
    Object catalog;
    if (!object(m_catalog, catalog))
        return fail(u"PDF のカタログを読めません"_s);
    bool hasMetadata = false;
    QByteArray catalogText = rewritten(catalog.text, [&](const Ref& r) {
        if (r.key == "Pages")
            return kPages;
        if (r.key == "Metadata") {
            hasMetadata = true;
            return kMetadata;
        }
        return numberOf(r.number);
    });
    if (!hasMetadata)
        catalogText.insert(catalogText.lastIndexOf(">>"), "/Metadata 4 0 R\n");

    QByteArray out;
    out.reserve(256 * 1024);
    out += m_version + "%\xE2\xE3\xCF\xD3\n";
    std::vector<qint64> offsets(1, 0);
    const auto put = [&](int number, const QByteArray& body) {
        if (size_t(number) >= offsets.size())
            offsets.resize(size_t(number) + 1, 0);
        offsets[size_t(number)] = out.size();
        out += QByteArray::number(number) + " 0 obj\n" + body + "\nendobj\n";
    };
    for (qsizetype q = 0; q < queue.size(); ++q) {
        const int old = queue[q];
        const int number = kMetadata + 1 + int(q);
        if (made.contains(old)) {
            put(number, made.value(old));
            continue;
        }
        Object o;
        if (!object(old, o))
            return fail(u"PDF のオブジェクト %1 を読めません"_s.arg(old));
        const bool isPage = o.text.contains("/Type /Page") && !o.text.contains("/Type /Pages");
        QByteArray body = rewritten(
            o.text, [&](const Ref& r) { return isPage && r.key == "Parent" ? kPages : numberOf(r.number); });
        if (o.isStream)
            body += "\nstream\n" + o.stream.toByteArray() + "\nendstream";
        put(number, body);
    }
    put(kCatalog, catalogText);
    put(kPages, "<<\n/Type /Pages\n/Kids [\n" + kids + "]\n/Count " + QByteArray::number(count) + "\n>>");
    put(kInfo, infoDictionary(info));
    put(kMetadata, streamObject("/Type /Metadata\n/Subtype /XML\n", xmpMetadata(info, pdfa)));

    const qint64 xref = out.size();
    out += "xref\n0 " + QByteArray::number(offsets.size()) + "\n0000000000 65535 f \n";
    for (size_t i = 1; i < offsets.size(); ++i)
        out += QByteArray::number(offsets[i]).rightJustified(10, '0') + " 00000 n \n";
    const QByteArray id = QCryptographicHash::hash(path.toUtf8() + info.title.toUtf8() +
                                                       QByteArray::number(info.created.toMSecsSinceEpoch()) +
                                                       QByteArray::number(out.size()),
                                                   QCryptographicHash::Md5)
                              .toHex()
                              .toUpper();
    out += "trailer\n<<\n/Size " + QByteArray::number(offsets.size()) + "\n/Info 3 0 R\n/Root 1 0 R\n/ID [<" +
           id + "> <" + id + ">]\n>>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n";

    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(out) != out.size() || !file.flush())
        return fail(file.errorString());
    return true;
}

} // namespace qelprn::engine
