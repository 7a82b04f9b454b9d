#pragma once

#include <QTranslator>

namespace qelprn::cli {

// The Japanese texts of QCommandLineParser's own messages and help headings, so that usage errors
// and --help read like the rest of the program whatever translations are installed.
class CliTranslator : public QTranslator
{
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* sourceText, const char* disambiguation = nullptr,
                      int n = -1) const override;
};

} // namespace qelprn::cli
