// The engine's copier of pages out of its own PDF (one PDF per addressee), with the font and
// ToUnicode readers it uses: a damaged file is refused, never read out of bounds.
#include "FuzzInput.h"
#include "engine/PdfPageSplitter.h"
#include "engine/PdfToUnicode.h"
#include "engine/TrueTypeGlyphs.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace qelprn::engine;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    {
        const QString path = qelprn::fuzz::writeInputFile(u"whole.pdf"_s, data, size);
        PdfPageSplitter splitter;
        QString error;
        if (splitter.open(path, &error)) {
            const QString part = qelprn::fuzz::programFolder() + u"/part.pdf"_s;
            for (int page = 0; page < qMin(splitter.pageCount(), 3); ++page)
                splitter.writePages(page, 1, PdfDocumentInfo(), true, part, &error);
        }
    }
    keepTrueTypeGlyphs(bytes, std::vector<bool>(64, true));
    toUnicodeCMap(parseToUnicode(bytes));
    return 0;
}
