#pragma once

#include <QString>
#include <QVariant>
#include <memory>

namespace qelprn {

// A forward-only record set as the suite's code walks it: test EOF, read fields by name, MoveNext.
// Field names match case-insensitively and width-insensitively (full-width "ｃByoumei" finds the
// column cByoumei), as the server's name matching does. A Null column reads as an invalid/null
// QVariant; pass it through the null helpers (csNullToStr, nNullToLng, ...).
class RecordSet
{
public:
    RecordSet();
    ~RecordSet();
    RecordSet(RecordSet&&) noexcept;
    RecordSet& operator=(RecordSet&&) noexcept;

    bool isOpen() const;
    bool isEOF() const;
    void moveNext();
    // The value of the named column in the current record; a null QVariant for Null. An unknown
    // name gives a null QVariant and sets hasError().
    QVariant field(const QString& name) const;
    QVariant field(int index) const;
    int fieldCount() const;
    QString fieldName(int index) const;
    // Error while stepping (a read that fails midway); the rows read so far stay valid.
    bool hasError() const;
    QString errorText() const;
    void close();

    struct Impl;
    Impl* impl() const { return d.get(); }

private:
    std::unique_ptr<Impl> d;
};

} // namespace qelprn
