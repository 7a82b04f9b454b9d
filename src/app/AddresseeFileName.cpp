#include "app/AddresseeFileName.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

constexpr qsizetype kMaxNameLength = 60;

QChar fullWidth(QChar c)
{
    switch (c.unicode()) {
    case u'\\':
        return QChar(0xFF3C);
    case u'/':
        return QChar(0xFF0F);
    case u':':
        return QChar(0xFF1A);
    case u'*':
        return QChar(0xFF0A);
    case u'?':
        return QChar(0xFF1F);
    case u'"':
        return QChar(0x201D);
    case u'<':
        return QChar(0xFF1C);
    case u'>':
        return QChar(0xFF1E);
    case u'|':
        return QChar(0xFF5C);
    default:
        return c;
    }
}

bool isBlank(QChar c)
{
    return c == u' ' || c == QChar(0x3000);
}

} // namespace

QString fileNamePart(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = u' ';
        c = fullWidth(c);
        if (c == u' ' && !out.isEmpty() && out.back() == u' ')
            continue;
        out.append(c);
    }
    const auto trim = [&] {
        while (!out.isEmpty() && (isBlank(out.front()) || out.front() == u'.'))
            out.remove(0, 1);
        while (!out.isEmpty() && (isBlank(out.back()) || out.back() == u'.'))
            out.chop(1);
    };
    trim();
    if (out.size() > kMaxNameLength) {
        out.truncate(kMaxNameLength);
        if (out.back().isHighSurrogate())
            out.chop(1);
        trim();
    }
    return out.isEmpty() ? u"宛名なし"_s : out;
}

QStringList addresseeFileNames(const QString& date, const QList<AddresseeKey>& addressees)
{
    QList<QString> parts;
    QHash<QString, int> nameCount;
    for (const AddresseeKey& a : addressees) {
        parts.append(fileNamePart(a.name));
        ++nameCount[parts.last().toCaseFolded()];
    }
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (nameCount.value(parts[i].toCaseFolded()) > 1 && !addressees[i].id.trimmed().isEmpty())
            parts[i] += u'(' + fileNamePart(addressees[i].id) + u')';
    }
    QStringList names;
    QSet<QString> taken;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString amount = addressees[i].amount.isEmpty() ? u"0"_s : addressees[i].amount;
        QString name = date + u'_' + parts[i] + u'_' + amount + u".pdf"_s;
        for (int n = 2; taken.contains(name.toCaseFolded()); ++n)
            name = date + u'_' + parts[i] + u'(' + QString::number(n) + u")_"_s + amount + u".pdf"_s;
        taken.insert(name.toCaseFolded());
        names.append(name);
    }
    return names;
}

QString plainAmount(const QString& printed)
{
    QString digits;
    bool negative = false;
    bool fraction = false;
    for (QChar c : printed) {
        if (c.isDigit() && c.unicode() < 0x80)
            digits.append(c);
        else if ((c == u'-' || c == QChar(0x2212) || c == u'△' || c == u'▲') && digits.isEmpty())
            negative = true;
        else if (c == u'.' && !digits.isEmpty() && !fraction) {
            fraction = true; // a fraction the form prints stays in the name
            digits.append(c);
        } else if (!digits.isEmpty() && c != u',')
            break;
    }
    if (fraction) {
        while (digits.back() == u'0')
            digits.chop(1);
        if (digits.back() == u'.')
            digits.chop(1);
    }
    if (digits.isEmpty())
        return {};
    while (digits.size() > 1 && digits.front() == u'0' && digits.at(1) != u'.')
        digits.remove(0, 1);
    return negative && digits != u"0"_s ? u'-' + digits : digits;
}

} // namespace qelprn
