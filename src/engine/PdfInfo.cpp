#include "engine/PdfInfo.h"

#include <QFile>
#include <QRegularExpression>
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

bool appendDocumentInfo(const QString& path, const PdfDocumentInfo& info, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) {
        *error = file.errorString();
        return false;
    }
    const qint64 size = file.size();
    file.seek(qMax<qint64>(0, size - 2048));
    const QByteArray tail = file.readAll();
    static const QRegularExpression trailer(uR"(trailer\s*<<(.*)>>\s*startxref\s*(\d+)\s*%%EOF\s*$)"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch m = trailer.match(QString::fromLatin1(tail));
    const QString dictionary = m.captured(1);
    const QRegularExpressionMatch sizeMatch = QRegularExpression(uR"(/Size\s+(\d+))"_s).match(dictionary);
    const QRegularExpressionMatch rootMatch =
        QRegularExpression(uR"(/Root\s+(\d+\s+\d+\s+R))"_s).match(dictionary);
    const QRegularExpressionMatch idMatch = QRegularExpression(uR"(/ID\s*(\[[^\]]*\]))"_s).match(dictionary);
    if (!m.hasMatch() || !sizeMatch.hasMatch() || !rootMatch.hasMatch()) {
        *error = u"PDF の末尾（trailer）を読めません"_s;
        return false;
    }
    const int object = sizeMatch.captured(1).toInt();
    const QDateTime created = info.created;
    const QByteArray date = "D:" + created.toString(u"yyyyMMddHHmmss"_s).toLatin1() +
                            offsetText(created, u"'"_s).toLatin1() + "'";
    QByteArray update = "\n";
    const qint64 objectOffset = size + update.size();
    update += QByteArray::number(object) + " 0 obj\n<<\n/Title " + pdfText(info.title) + "\n/Author " +
              pdfText(info.author) + "\n/Subject " + pdfText(info.subject) + "\n/Creator " +
              pdfText(info.creator) + "\n/Producer " + pdfText(info.producer) + "\n/CreationDate (" + date +
              ")\n>>\nendobj\n";
    const qint64 xrefOffset = size + update.size();
    update += "xref\n" + QByteArray::number(object) + " 1\n" +
              QByteArray::number(objectOffset).rightJustified(10, '0') + " 00000 n \n";
    update += "trailer\n<<\n/Size " + QByteArray::number(object + 1) + "\n/Root " +
              rootMatch.captured(1).toLatin1() + "\n/Info " + QByteArray::number(object) + " 0 R\n";
    if (idMatch.hasMatch())
        update += "/ID " + idMatch.captured(1).toLatin1() + "\n";
    update += "/Prev " + m.captured(2).toLatin1() + "\n>>\nstartxref\n" + QByteArray::number(xrefOffset) +
              "\n%%EOF\n";
    file.seek(size);
    if (file.write(update) != update.size() || !file.flush()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

} // namespace qelprn::engine
