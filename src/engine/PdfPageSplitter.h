#pragma once

#include "engine/PdfInfo.h"
#include "engine/PdfToUnicode.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <vector>

namespace qelprn::engine {

// Copies runs of pages out of a PDF that Qt's writer wrote (one cross-reference table, no object
// streams) into PDFs of their own, each with its own information dictionary and XMP metadata.
//
// One PDF per addressee is written this way from the single PDF of the whole job, because Qt's
// writer pays a fixed cost for every font of every document it writes (tens of milliseconds) and a
// month's invoice-receipts are thousands of documents of one or two pages. The page contents,
// images and colour profile are copied byte for byte; each embedded font keeps the outlines of the
// glyphs its file's pages draw and no others, and its ToUnicode map and CID set name just those, so
// no file carries another addressee's text or the shapes of its characters.
class PdfPageSplitter
{
public:
    // Opens the PDF at path (it is mapped, not read into memory). False with the reason when the
    // file is not a PDF as Qt writes it.
    bool open(const QString& path, QString* error);
    int pageCount() const { return int(m_pages.size()); }
    // Writes pages first .. first+count-1 (0-based) to path as a PDF of their own, whose
    // information dictionary and XMP metadata say info (PDF/A-1b identified when pdfa). Safe to
    // call from several threads at once.
    bool writePages(int first, int count, const PdfDocumentInfo& info, bool pdfa, const QString& path,
                    QString* error) const;

private:
    struct Object
    {
        QByteArrayView text;   // the value, or a stream's dictionary
        QByteArrayView stream; // a stream's data as stored
        bool isStream = false;
    };
    // What a Type0 font's glyph outlines, CID set and ToUnicode map are stored in.
    struct FontParts
    {
        int fontFile = 0;
        int cidSet = 0;
        int toUnicode = 0;
    };

    // A page's content streams and the fonts its resources name.
    struct PageParts
    {
        QList<int> contents;
        int fontSet = 0; // in m_fontSets
    };

    bool object(int number, Object& o) const;
    bool readPageTree(int pages, QSet<int>& seen);
    bool readPages();
    FontParts readFontParts(int type0) const;
    QByteArray inflated(const Object& o) const;
    bool glyphsOfPages(int first, int count, QHash<int, std::vector<bool>>& glyphs) const;

    QFile m_file;
    QByteArrayView m_data;
    std::vector<qint64> m_offsets; // by object number; negative for a free entry
    int m_catalog = 0;
    QList<int> m_pages;
    std::vector<PageParts> m_pageParts;       // by page
    QList<QHash<QByteArray, int>> m_fontSets; // Type0 font objects by resource name
    QByteArray m_version;
    // Read once by open(), so that writePages only reads and may run on several threads at once.
    QHash<int, FontParts> m_fonts;        // by Type0 font object
    QHash<int, QByteArray> m_fontFiles;   // font programs, inflated, by stream object
    QHash<int, ToUnicodeMap> m_toUnicode; // by stream object
};

} // namespace qelprn::engine
