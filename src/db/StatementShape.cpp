#include "db/StatementShape.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c.unicode() >= 0x80;
}

bool isWord(QStringView word, QStringView keyword)
{
    return word.compare(keyword, Qt::CaseInsensitive) == 0;
}

} // namespace

std::optional<StatementShape> shapeOfSelect(const QString& sql)
{
    const qsizetype n = sql.size();
    qsizetype i = 0;
    while (i < n && sql.at(i).isSpace())
        ++i;
    if (!QStringView(sql).mid(i).startsWith(u"SELECT", Qt::CaseInsensitive))
        return std::nullopt;

    StatementShape shape;
    shape.text.reserve(n);
    // Per parenthesis level: whether that level is between its SELECT and its FROM.
    QList<bool> inSelectList{false};
    qsizetype selectListLevels = 0;
    bool frozen = false; // from the first ORDER BY / GROUP BY on, literals stay as written
    QStringView lastWord;

    const auto literalMayGo = [&] { return !frozen && selectListLevels == 0 && !isWord(lastWord, u"AS"); };

    i = 0;
    while (i < n) {
        const QChar c = sql.at(i);
        if (c == u'\'') {
            qsizetype j = i + 1;
            QString value;
            for (;;) {
                if (j >= n)
                    return std::nullopt; // unterminated: let the database say so
                if (sql.at(j) == u'\'') {
                    if (j + 1 < n && sql.at(j + 1) == u'\'') {
                        value.append(u'\'');
                        j += 2;
                        continue;
                    }
                    break;
                }
                value.append(sql.at(j));
                ++j;
            }
            if (literalMayGo()) {
                shape.text.append(u'?');
                shape.values.append(value);
            } else {
                shape.text.append(QStringView(sql).mid(i, j + 1 - i));
            }
            i = j + 1;
            lastWord = QStringView();
            continue;
        }
        if (c == u'"' || c == u'`') {
            const qsizetype close = sql.indexOf(c, i + 1);
            if (close < 0)
                return std::nullopt;
            shape.text.append(QStringView(sql).mid(i, close + 1 - i));
            i = close + 1;
            lastWord = QStringView();
            continue;
        }
        if (c == u'?' || c == u':' || c == u'@' || c == u'$' || c == u'[' || c == u';')
            return std::nullopt;
        if ((c == u'-' && i + 1 < n && sql.at(i + 1) == u'-') ||
            (c == u'/' && i + 1 < n && sql.at(i + 1) == u'*'))
            return std::nullopt;
        if (c.isDigit() && c.unicode() < 0x80) {
            qsizetype j = i;
            while (j < n && sql.at(j).isDigit())
                ++j;
            bool fraction = false;
            if (j + 1 < n && sql.at(j) == u'.' && sql.at(j + 1).isDigit()) {
                fraction = true;
                ++j;
                while (j < n && sql.at(j).isDigit())
                    ++j;
            }
            const QStringView number = QStringView(sql).mid(i, j - i);
            const bool standsAlone = (j >= n || (!isWordChar(sql.at(j)) && sql.at(j) != u'.'));
            bool ok = false;
            const QVariant value =
                fraction ? QVariant(number.toDouble(&ok)) : QVariant(number.toLongLong(&ok));
            if (standsAlone && ok && literalMayGo()) {
                shape.text.append(u'?');
                shape.values.append(value);
            } else {
                shape.text.append(number);
            }
            i = j;
            lastWord = QStringView();
            continue;
        }
        if (isWordChar(c)) {
            qsizetype j = i;
            while (j < n && isWordChar(sql.at(j)))
                ++j;
            const QStringView word = QStringView(sql).mid(i, j - i);
            if (isWord(word, u"SELECT") && !inSelectList.last()) {
                inSelectList.last() = true;
                ++selectListLevels;
            } else if (isWord(word, u"FROM") && inSelectList.last()) {
                inSelectList.last() = false;
                --selectListLevels;
            } else if (isWord(word, u"BY") && (isWord(lastWord, u"ORDER") || isWord(lastWord, u"GROUP"))) {
                frozen = true;
            }
            shape.text.append(word);
            lastWord = word;
            i = j;
            continue;
        }
        if (c == u'(') {
            inSelectList.append(false);
        } else if (c == u')') {
            if (inSelectList.size() == 1)
                return std::nullopt;
            if (inSelectList.takeLast())
                --selectListLevels;
        }
        if (!c.isSpace())
            lastWord = QStringView();
        shape.text.append(c);
        ++i;
    }
    if (shape.values.isEmpty())
        return std::nullopt;
    return shape;
}

} // namespace qelprn
