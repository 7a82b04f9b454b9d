#include "engine/PdfInfo.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace qelprn::engine {

namespace {

QByteArray escapedXml(const QString& text)
{
    return text.toHtmlEscaped().toUtf8();
}

// A PDF text string as UTF-16BE with its byte-order mark, in hex.
QByteArray pdfText(const QString& text)
{
    QByteArray bytes("\xFE\xFF", 2);
    for (QChar c : text) {
        bytes.append(char(c.unicode() >> 8));
        bytes.append(char(c.unicode() & 0xFF));
    }
    return '<' + bytes.toHex().toUpper() + '>';
}

QString offsetText(const QDateTime& time, const QString& separator)
{
    const int seconds = time.offsetFromUtc();
    const int minutes = qAbs(seconds) / 60;
    return (seconds < 0 ? u"-"_s : u"+"_s) + u"%1"_s.arg(minutes / 60, 2, 10, QChar(u'0')) + separator +
           u"%1"_s.arg(minutes % 60, 2, 10, QChar(u'0'));
}

} // namespace

QByteArray xmpMetadata(const PdfDocumentInfo& info, bool pdfa)
{
    const QDateTime created = info.created.toOffsetFromUtc(info.created.offsetFromUtc());
    const QString date = created.toString(u"yyyy-MM-ddTHH:mm:ss"_s) + offsetText(created, u":"_s);
    QByteArray x;
    x += "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
         "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
         "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
         "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\">\n"
         "<dc:format>application/pdf</dc:format>\n"
         "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">" +
         escapedXml(info.title) + "</rdf:li></rdf:Alt></dc:title>\n";
    if (!info.author.isEmpty())
        x += "<dc:creator><rdf:Seq><rdf:li>" + escapedXml(info.author) + "</rdf:li></rdf:Seq></dc:creator>\n";
    if (!info.subject.isEmpty())
        x += "<dc:description><rdf:Alt><rdf:li xml:lang=\"x-default\">" + escapedXml(info.subject) +
             "</rdf:li></rdf:Alt></dc:description>\n";
    x += "</rdf:Description>\n"
         "<rdf:Description rdf:about=\"\" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\">\n"
         "<xmp:CreatorTool>" +
         escapedXml(info.creator) + "</xmp:CreatorTool>\n<xmp:CreateDate>" + date.toUtf8() +
         "</xmp:CreateDate>\n</rdf:Description>\n"
         "<rdf:Description rdf:about=\"\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\">\n"
         "<pdf:Producer>" +
         escapedXml(info.producer) + "</pdf:Producer>\n</rdf:Description>\n";
    if (pdfa)
        x += "<rdf:Description rdf:about=\"\" xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n"
             "<pdfaid:part>1</pdfaid:part>\n<pdfaid:conformance>B</pdfaid:conformance>\n</rdf:Description>\n";
    x += "</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>";
    return x;
}

QByteArray infoDictionary(const PdfDocumentInfo& info)
{
    const QDateTime created = info.created;
    const QByteArray date = "D:" + created.toString(u"yyyyMMddHHmmss"_s).toLatin1() +
                            offsetText(created, u"'"_s).toLatin1() + "'";
    return "<<\n/Title " + pdfText(info.title) + "\n/Author " + pdfText(info.author) + "\n/Subject " +
           pdfText(info.subject) + "\n/Creator " + pdfText(info.creator) + "\n/Producer " +
           pdfText(info.producer) + "\n/CreationDate (" + date + ")\n>>";
}

} // namespace qelprn::engine
