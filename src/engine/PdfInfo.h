#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace qelprn::engine {

// What a PDF says about itself: the document information dictionary and the XMP metadata, which
// an archival PDF (PDF/A-1b) must keep in step.
struct PdfDocumentInfo
{
    QString title;
    QString author;  // the issuer
    QString subject; // the billing month
    QString creator = QStringLiteral("qelprn-engine");
    QString producer;
    QDateTime created;
};

// The XMP packet for QPdfWriter::setDocumentXmpMetadata: title, author, subject, creator tool,
// producer, creation date, and the PDF/A-1b identification when pdfa.
QByteArray xmpMetadata(const PdfDocumentInfo& info, bool pdfa);

// The document information dictionary ("<< ... >>") with Title, Author, Subject, Creator, Producer
// and CreationDate as in xmpMetadata.
QByteArray infoDictionary(const PdfDocumentInfo& info);

} // namespace qelprn::engine
