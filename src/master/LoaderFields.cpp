#include "master/LoaderFields.h"

#include "app/NullValue.h"
#include "app/RunTimeError.h"
#include "db/RecordSet.h"
#include "db/ScopedConnection.h"

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

bool isNull(const QVariant& v)
{
    return !v.isValid() || v.isNull();
}

} // namespace

QDateTime dateTimeOf(const QVariant& v)
{
    if (isNull(v))
        return {};
    if (v.metaType().id() == QMetaType::QDateTime)
        return v.toDateTime();
    if (v.metaType().id() == QMetaType::QDate)
        return v.toDate().startOfDay();
    // "yyyy/mm/dd hh:mm:ss" or "yyyy/mm/dd"; ISO separators are accepted as well.
    QString text = v.toString().trimmed();
    text.replace(u'-', u'/').replace(u'T', u' ');
    const QDateTime dt = QDateTime::fromString(text.left(19), u"yyyy/MM/dd HH:mm:ss"_s);
    if (dt.isValid())
        return dt;
    const QDate d = QDate::fromString(text.left(10), u"yyyy/MM/dd"_s);
    return d.isValid() ? d.startOfDay() : QDateTime();
}

QDate dateOf(const QVariant& v)
{
    return dateTimeOf(v).date();
}

void readLoaderField(const RecordSet& rs, const QString& name, QString& out)
{
    out = csNullToStr(rs.field(name));
}

void readLoaderField(const RecordSet& rs, const QString& name, qint32& out)
{
    const QVariant v = rs.field(name);
    if (!isNull(v))
        out = nNullToLng(v);
}

void readLoaderField(const RecordSet& rs, const QString& name, QDate& out)
{
    const QVariant v = rs.field(name);
    if (!isNull(v))
        out = dateOf(v);
}

void readLoaderField(const RecordSet& rs, const QString& name, QDateTime& out)
{
    const QVariant v = rs.field(name);
    if (!isNull(v))
        out = dateTimeOf(v);
}

QString ownSiteRowStatement(const AppContext& ctx, const QString& table, qint32 nIDNo)
{
    return u"SELECT * FROM "_s + table + u" WHERE nIDNo = "_s + QString::number(nIDNo) +
           u" and iKyotenCd = "_s + QString::number(ctx.iBaseKyotenCd) + u" and iKyotenEb = "_s +
           QString::number(ctx.iBaseKyotenEb);
}

bool loadSingleRow(const AppContext& ctx, const QString& sql, QString* errorText,
                   const std::function<void(const RecordSet&)>& fill)
{
    ScopedConnection con;
    if (!con.openAdodbQuery(ctx, sql)) {
        if (errorText)
            *errorText = con.errorText();
        return false;
    }
    RecordSet& rs = con.rs;
    if (rs.isEOF()) {
        if (rs.hasError() && errorText)
            *errorText = rs.errorText();
        return false;
    }
    try {
        fill(rs);
    } catch (const RunTimeError& e) { // a number beyond 32 bits
        if (errorText)
            *errorText = runTimeErrorText(e);
        return false;
    }
    if (rs.hasError()) { // a column the table lacks, or a read that broke off
        if (errorText)
            *errorText = rs.errorText();
        return false;
    }
    return true;
}

} // namespace qelprn
