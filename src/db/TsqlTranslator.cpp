#include "db/TsqlTranslator.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QMutexLocker>

using namespace Qt::StringLiterals;

namespace qelprn {

namespace {

enum class Kind { Space, Word, Literal, QuotedName, Number, Punct, Comment };

struct Token
{
    Kind kind;
    QString text;
};

using Tokens = QList<Token>;

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || c == u'@' || c == u'#' || c == u'$' || c.unicode() > 0x7f;
}

Tokens tokenize(const QString& s)
{
    Tokens out;
    const qsizetype n = s.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = s.at(i);
        qsizetype j = i + 1;
        Kind kind = Kind::Punct;
        if (c.isSpace()) {
            while (j < n && s.at(j).isSpace())
                ++j;
            kind = Kind::Space;
        } else if (c == u'\'' || ((c == u'N' || c == u'n') && i + 1 < n && s.at(i + 1) == u'\'')) {
            // A string literal; N'..' loses its prefix. A doubled quote inside ends this token and
            // starts the next literal at once, and the two join back to the same text.
            if (c != u'\'')
                ++i;
            j = s.indexOf(u'\'', i + 1);
            j = j < 0 ? n : j + 1;
            kind = Kind::Literal;
        } else if (c == u'"' || c == u'[') {
            const QChar close = c == u'"' ? u'"' : u']';
            while (j < n && s.at(j) != close)
                ++j;
            if (j < n)
                ++j;
            kind = Kind::QuotedName;
        } else if (c == u'-' && i + 1 < n && s.at(i + 1) == u'-') {
            while (j < n && s.at(j) != u'\n')
                ++j;
            kind = Kind::Comment;
        } else if (c == u'/' && i + 1 < n && s.at(i + 1) == u'*') {
            const qsizetype end = s.indexOf(u"*/"_s, i + 2);
            j = end < 0 ? n : end + 2;
            kind = Kind::Comment;
        } else if (c.isDigit()) {
            // Only TOP reads a number, and its count is whole: a decimal point may split one.
            while (j < n && s.at(j).isDigit())
                ++j;
            kind = Kind::Number;
        } else if (isWordChar(c)) {
            while (j < n && isWordChar(s.at(j)))
                ++j;
            kind = Kind::Word;
        }
        // Anything else is punctuation of one character: no rule looks at an operator of two ("<>",
        // ">="), and its characters join back unchanged.
        Token t{kind, s.mid(i, j - i)};
        if (t.text.startsWith(u'[')) // only a quoted name starts so
            t.text = u'"' + t.text.mid(1, t.text.size() - 2) + u'"';
        out.append(std::move(t));
        i = j;
    }
    return out;
}

QString join(const Tokens& tokens, qsizetype from = 0, qsizetype to = -1)
{
    if (to < 0)
        to = tokens.size();
    QString s;
    for (qsizetype i = from; i < to; ++i)
        s += tokens.at(i).text;
    return s;
}

bool isWord(const Token& t, QStringView word)
{
    return t.kind == Kind::Word && t.text.compare(word, Qt::CaseInsensitive) == 0;
}

bool isPunct(const Token& t, QStringView p)
{
    return t.kind == Kind::Punct && t.text == p;
}

bool significant(const Token& t)
{
    return t.kind != Kind::Space && t.kind != Kind::Comment;
}

qsizetype nextSignificant(const Tokens& t, qsizetype i)
{
    for (++i; i < t.size(); ++i) {
        if (significant(t.at(i)))
            return i;
    }
    return -1;
}

qsizetype prevSignificant(const Tokens& t, qsizetype i)
{
    for (--i; i >= 0; --i) {
        if (significant(t.at(i)))
            return i;
    }
    return -1;
}

// Index of the ')' matching the '(' at open, or -1.
qsizetype matchingClose(const Tokens& t, qsizetype open)
{
    int depth = 0;
    for (qsizetype i = open; i < t.size(); ++i) {
        if (isPunct(t.at(i), u"("))
            ++depth;
        else if (isPunct(t.at(i), u")") && --depth == 0)
            return i;
    }
    return -1;
}

qsizetype matchingOpen(const Tokens& t, qsizetype close)
{
    int depth = 0;
    for (qsizetype i = close; i >= 0; --i) {
        if (isPunct(t.at(i), u")"))
            ++depth;
        else if (isPunct(t.at(i), u"(") && --depth == 0)
            return i;
    }
    return -1;
}

// Every function the translator knows, in one table: whether its result is text (a '+' beside
// its call then joins texts) and how SQLite spells the call (nullptr: as T-SQL does). A rewrite
// returns false to leave a call of another argument count as it is.
using Rewrite = bool (*)(const QList<Tokens>& args, QString& out);

struct FunctionRule
{
    QStringView name;
    bool returnsText;
    Rewrite rewrite;
};

QString text(const Tokens& tokens);

const FunctionRule kFunctions[] = {
    {u"ISNULL", false,
     [](const QList<Tokens>& args, QString& out) {
         if (args.size() != 2)
             return false;
         out = u"IFNULL("_s + join(args[0]) + u',' + join(args[1]) + u')';
         return true;
     }},
    {u"SUBSTRING", true,
     [](const QList<Tokens>& args, QString& out) {
         QStringList parts;
         for (const Tokens& a : args)
             parts.append(join(a));
         out = u"SUBSTR("_s + parts.join(u',') + u')';
         return true;
     }},
    {u"LEFT", true,
     [](const QList<Tokens>& args, QString& out) {
         if (args.size() != 2)
             return false;
         out = u"SUBSTR("_s + join(args[0]) + u",1,"_s + join(args[1]) + u')';
         return true;
     }},
    {u"RIGHT", true,
     [](const QList<Tokens>& args, QString& out) {
         if (args.size() != 2)
             return false;
         out = u"SUBSTR("_s + join(args[0]) + u",-("_s + text(args[1]) + u"))"_s;
         return true;
     }},
    {u"LEN", false,
     [](const QList<Tokens>& args, QString& out) {
         if (args.size() != 1)
             return false;
         out = u"LENGTH("_s + join(args[0]) + u')';
         return true;
     }},
    {u"GETDATE", false,
     [](const QList<Tokens>& args, QString& out) {
         if (args.size() != 1 || !text(args[0]).isEmpty())
             return false;
         out = u"strftime('%Y/%m/%d %H:%M:%S','now','localtime')"_s;
         return true;
     }},
    {u"CONVERT", true,
     [](const QList<Tokens>& args, QString& out) {
         if (args.size() < 2)
             return false;
         out = u"CAST("_s + text(args[1]) + u" AS TEXT)"_s;
         return true;
     }},
    {u"SUBSTR", true, nullptr},
    {u"LTRIM", true, nullptr},
    {u"RTRIM", true, nullptr},
    {u"UPPER", true, nullptr},
    {u"LOWER", true, nullptr},
    {u"REPLACE", true, nullptr},
};

const FunctionRule* functionRule(QStringView name)
{
    for (const FunctionRule& f : kFunctions) {
        if (name.compare(f.name, Qt::CaseInsensitive) == 0)
            return &f;
    }
    return nullptr;
}

bool isTextFunctionAt(const Tokens& t, qsizetype i)
{
    if (i < 0 || t.at(i).kind != Kind::Word)
        return false;
    const FunctionRule* rule = functionRule(t.at(i).text);
    if (!rule || !rule->returnsText)
        return false;
    const qsizetype open = nextSignificant(t, i);
    return open >= 0 && isPunct(t.at(open), u"(");
}

// '+' with a text operand on either side joins texts: SQLite spells that '||'.
void translateConcatenation(Tokens& t)
{
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (!isPunct(t.at(i), u"+"))
            continue;
        const qsizetype l = prevSignificant(t, i);
        const qsizetype r = nextSignificant(t, i);
        bool text = false;
        if (l >= 0) {
            if (t.at(l).kind == Kind::Literal)
                text = true;
            else if (isPunct(t.at(l), u")"))
                text = isTextFunctionAt(t, prevSignificant(t, matchingOpen(t, l)));
        }
        if (!text && r >= 0)
            text = t.at(r).kind == Kind::Literal || isTextFunctionAt(t, r);
        if (text)
            t[i].text = u"||"_s;
    }
}

// SELECT [DISTINCT] TOP n ... becomes SELECT [DISTINCT] ... LIMIT n at the end of that SELECT.
void translateTop(Tokens& t)
{
    for (qsizetype i = 0; i < t.size(); ++i) {
        if (!isWord(t.at(i), u"SELECT"))
            continue;
        qsizetype k = nextSignificant(t, i);
        if (k >= 0 && isWord(t.at(k), u"DISTINCT"))
            k = nextSignificant(t, k);
        if (k < 0 || !isWord(t.at(k), u"TOP"))
            continue;
        const qsizetype num = nextSignificant(t, k);
        if (num < 0 || t.at(num).kind != Kind::Number)
            continue;
        const QString count = t.at(num).text;
        const qsizetype last = num + 1 < t.size() && t.at(num + 1).kind == Kind::Space ? num + 1 : num;
        t.remove(k, last - k + 1);
        int depth = 0;
        qsizetype end = k;
        for (; end < t.size(); ++end) {
            if (isPunct(t.at(end), u"("))
                ++depth;
            else if (isPunct(t.at(end), u")") && --depth < 0)
                break;
            else if (depth == 0 && isPunct(t.at(end), u";"))
                break;
        }
        t.insert(end, Token{Kind::Word, u" LIMIT "_s + count + u' '});
    }
}

struct Call
{
    qsizetype name;
    qsizetype open;
    qsizetype close;
    QList<Tokens> args;
};

Tokens translateRange(const Tokens& t, qsizetype from, qsizetype to);

QString text(const Tokens& tokens)
{
    return join(tokens).trimmed();
}

// Rewrites a recognised function call; false leaves it as it is.
bool rewriteCall(const QString& name, const QList<Tokens>& args, QString& out)
{
    const FunctionRule* rule = functionRule(name);
    return rule && rule->rewrite && rule->rewrite(args, out);
}

// Translates tokens [from, to): function calls are rewritten with their arguments translated first.
Tokens translateRange(const Tokens& t, qsizetype from, qsizetype to)
{
    Tokens out;
    for (qsizetype i = from; i < to; ++i) {
        const Token& tok = t.at(i);
        if (tok.kind == Kind::Word) {
            const qsizetype open = nextSignificant(t, i);
            if (open >= 0 && open < to && isPunct(t.at(open), u"(")) {
                const qsizetype close = matchingClose(t, open);
                if (close >= 0 && close < to) {
                    QList<Tokens> args;
                    qsizetype start = open + 1;
                    int depth = 0;
                    for (qsizetype k = open + 1; k <= close; ++k) {
                        if (isPunct(t.at(k), u"("))
                            ++depth;
                        else if (isPunct(t.at(k), u")") && depth > 0)
                            --depth;
                        else if ((depth == 0 && isPunct(t.at(k), u",")) || k == close) {
                            args.append(translateRange(t, start, k));
                            start = k + 1;
                        }
                    }
                    QString rewritten;
                    if (rewriteCall(tok.text, args, rewritten)) {
                        out.append(Token{Kind::Word, rewritten});
                        i = close;
                        continue;
                    }
                }
            }
        }
        out.append(tok);
    }
    return out;
}

// UPDATE t SET a = x, t.b = y FROM t JOIN u ON ... WHERE ... becomes
// UPDATE t SET a = x, b = y WHERE rowid IN (SELECT t.rowid FROM t JOIN u ON ... WHERE ...).
Tokens translateUpdateFrom(const Tokens& t)
{
    const qsizetype upd = nextSignificant(t, -1);
    if (upd < 0 || !isWord(t.at(upd), u"UPDATE"))
        return t;
    const qsizetype target = nextSignificant(t, upd);
    if (target < 0)
        return t;
    const QString table = t.at(target).text;
    const qsizetype set = nextSignificant(t, target);
    if (set < 0 || !isWord(t.at(set), u"SET"))
        return t;
    qsizetype from = -1;
    int depth = 0;
    for (qsizetype i = set + 1; i < t.size(); ++i) {
        if (isPunct(t.at(i), u"("))
            ++depth;
        else if (isPunct(t.at(i), u")"))
            --depth;
        else if (depth == 0 && isWord(t.at(i), u"FROM")) {
            from = i;
            break;
        }
    }
    if (from < 0)
        return t;
    Tokens out = t.mid(0, set + 1);
    // The assignments, without the qualifier on their targets.
    bool atTarget = true;
    depth = 0;
    for (qsizetype i = set + 1; i < from; ++i) {
        const Token& tok = t.at(i);
        if (isPunct(tok, u"("))
            ++depth;
        else if (isPunct(tok, u")"))
            --depth;
        if (atTarget && tok.kind == Kind::Word && tok.text.compare(table, Qt::CaseInsensitive) == 0) {
            const qsizetype dot = nextSignificant(t, i);
            if (dot >= 0 && dot < from && isPunct(t.at(dot), u".")) {
                i = dot;
                continue;
            }
        }
        if (significant(tok) && !isPunct(tok, u","))
            atTarget = false;
        if (depth == 0 && isPunct(tok, u","))
            atTarget = true;
        out.append(tok);
    }
    out.append(Token{Kind::Word, u" WHERE rowid IN (SELECT "_s + table + u".rowid "_s});
    out.append(t.mid(from));
    out.append(Token{Kind::Punct, u")"_s});
    return out;
}

// Most statements of a run (the per-patient look-ups) hold nothing to translate. One pass over the
// text finds what could: a concatenation, a bracketed name, a national string, TOP, UPDATE, or a
// call of a function that SQLite spells differently (LEFT followed by "(", not the LEFT of LEFT
// JOIN). A false alarm only costs the tokenizer.
bool mayNeedTranslation(const QString& tsql)
{
    const auto isWordChar = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    const qsizetype n = tsql.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = tsql.at(i);
        if (c == u'+' || c == u'[')
            return true;
        if (!isWordChar(c)) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        while (i < n && isWordChar(tsql.at(i)))
            ++i;
        const QStringView word = QStringView(tsql).mid(start, i - start);
        if (i < n && tsql.at(i) == u'\'' && word.compare(u"N", Qt::CaseInsensitive) == 0)
            return true;
        if (word.size() < 3 || word.size() > 9)
            continue;
        if (word.compare(u"TOP", Qt::CaseInsensitive) == 0 ||
            word.compare(u"UPDATE", Qt::CaseInsensitive) == 0)
            return true;
        if (const FunctionRule* rule = functionRule(word); rule && rule->rewrite) {
            qsizetype j = i;
            while (j < n && tsql.at(j).isSpace())
                ++j;
            if (j < n && tsql.at(j) == u'(')
                return true;
        }
    }
    return false;
}

QString translate(const QString& tsql)
{
    Tokens tokens = tokenize(tsql);
    translateConcatenation(tokens);
    translateTop(tokens);
    tokens = translateRange(tokens, 0, tokens.size());
    // Re-tokenise so the UPDATE rewrite sees plain tokens again.
    tokens = translateUpdateFrom(tokenize(join(tokens)));
    return join(tokens);
}

} // namespace

QString translateTsqlToSqlite(const QString& tsql)
{
    if (!mayNeedTranslation(tsql))
        return tsql;
    static QMutex mutex;
    static QHash<QString, QString> cache;
    constexpr qsizetype kCacheLimit = 4096;
    {
        QMutexLocker lock(&mutex);
        const auto it = cache.constFind(tsql);
        if (it != cache.constEnd())
            return it.value();
    }
    QString sqlite = translate(tsql);
    QMutexLocker lock(&mutex);
    if (cache.size() >= kCacheLimit)
        cache.clear();
    cache.insert(tsql, sqlite);
    return sqlite;
}

} // namespace qelprn
