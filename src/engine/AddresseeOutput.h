#pragma once

#include "app/AddresseeFileName.h"
#include "engine/EngineError.h"
#include "engine/FormDocument.h"

#include <QString>
#include <functional>

namespace qelprn::engine {

// What one PDF per addressee is written with.
struct AddresseeOutputOptions
{
    QString folder;     // created when missing
    QString date;       // the issue date for the names, yyyymmdd
    QString author;     // the files' author when the layout names no issuer column
    QString subject;    // the billing month
    QString cancelFile; // when this file exists before an addressee, the run stops there
    bool pdfa = false;  // write PDF/A-1b
};

// One finished file: its name in the folder, its addressee and its pages.
struct AddresseeFile
{
    QString fileName;
    AddresseeKey key;
    int pages = 0;
};

// Writes one PDF per group of document (per addressee) into the folder, named by
// addresseeFileNames. The whole document is painted once (painting learns each page done), then
// each group's pages are copied into a file of their own. Each file is written under a hidden
// temporary name and renamed when complete (an older file of that name is replaced), then reported
// to done, so a stopped run leaves whole files only. planned learns the number of addressees before
// the first page. cancelled is set when the cancel file stopped the run (the result is then true).
bool writeAddresseePdfs(FormDocument& document, const AddresseeOutputOptions& options,
                        const std::function<void(int addressees)>& planned,
                        const std::function<void(int page, int pages)>& painting,
                        const std::function<void(const AddresseeFile&)>& done, bool* cancelled,
                        EngineError* error);

} // namespace qelprn::engine
