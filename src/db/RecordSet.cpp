#include "db/RecordSet.h"

#include "db/RecordSetImpl.h"

#include <QSqlError>
#include <QSqlRecord>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace qelprn {

QString RecordSet::Impl::foldName(const QString& name)
{
    // Width- and case-insensitive, as the server matches names: full-width "ｃByoumei" is cByoumei.
    const bool ascii = std::all_of(name.cbegin(), name.cend(), [](QChar c) { return c.unicode() < 0x80; });
    return ascii ? name.toLower() : name.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

QString RecordSet::Impl::columnName(const QString& reported)
{
    // The SQLite ODBC driver reports a name's length in UTF-8 bytes, not characters; Qt's ODBC
    // plug-in then takes that many characters from a buffer where the name ends in a NUL and stale
    // text of an earlier column follows ("実費料金\0 2 a_fut"). No column name holds a NUL.
    const qsizetype end = reported.indexOf(QChar(u'\0'));
    return end < 0 ? reported : reported.left(end);
}

void RecordSet::Impl::attach(QSqlQuery&& q)
{
    query = std::move(q);
    open = true;
    error.clear();
    names.clear();
    asked.clear();
    columns.clear();
    const QSqlRecord rec = query.record();
    for (int i = 0; i < rec.count(); ++i) {
        columns.append(columnName(rec.fieldName(i)));
        const QString key = foldName(columns.last());
        if (!names.contains(key))
            names.insert(key, i);
    }
    step();
}

void RecordSet::Impl::step()
{
    eof = !query.next();
    if (eof && query.lastError().isValid())
        error = query.lastError().text();
}

RecordSet::RecordSet() : d(std::make_unique<Impl>()) {}
RecordSet::~RecordSet()
{
    close();
}
RecordSet::RecordSet(RecordSet&&) noexcept = default;
RecordSet& RecordSet::operator=(RecordSet&&) noexcept = default;

bool RecordSet::isOpen() const
{
    return d && d->open;
}

bool RecordSet::isEOF() const
{
    return !isOpen() || d->eof;
}

void RecordSet::moveNext()
{
    if (isOpen() && !d->eof)
        d->step();
}

QVariant RecordSet::field(const QString& name) const
{
    if (isEOF())
        return QVariant();
    auto known = d->asked.constFind(name);
    if (known == d->asked.constEnd()) {
        const auto it = d->names.constFind(Impl::foldName(name));
        if (it == d->names.constEnd()) {
            d->error =
                u"Item cannot be found in the collection corresponding to the requested name: "_s + name;
            return QVariant();
        }
        known = d->asked.insert(name, it.value());
    }
    return d->query.value(known.value());
}

QVariant RecordSet::field(int index) const
{
    if (isEOF() || index < 0 || index >= fieldCount())
        return QVariant();
    return d->query.value(index);
}

int RecordSet::fieldCount() const
{
    return isOpen() ? int(d->columns.size()) : 0;
}

QString RecordSet::fieldName(int index) const
{
    return isOpen() ? d->columns.value(index) : QString();
}

bool RecordSet::hasError() const
{
    return d && !d->error.isEmpty();
}

QString RecordSet::errorText() const
{
    return d ? d->error : QString();
}

void RecordSet::close()
{
    if (!d)
        return;
    d->query.finish();
    if (d->recycle)
        std::exchange(d->recycle, nullptr)(std::move(d->query));
    d->query = QSqlQuery();
    d->open = false;
    d->eof = true;
    d->names.clear();
    d->columns.clear();
}

} // namespace qelprn
