#include "demo/DemoInserter.h"

#include <QSqlDriver>
#include <QVariant>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace qelprn {

DemoInserter::DemoInserter(QSqlDatabase& db, const QString& table, const QStringList& columns)
    : m_columns(int(columns.size())), m_table(table)
{
    const QVariant handle = db.driver()->handle();
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0)
        m_db = *static_cast<sqlite3* const*>(handle.constData());
    if (!m_db) {
        m_error = table + u": not an SQLite connection"_s;
        return;
    }
    QStringList marks;
    for (int i = 0; i < columns.size(); ++i)
        marks.append(u"?"_s);
    const QByteArray sql = (u"INSERT INTO "_s + table + u" ("_s + columns.join(u',') + u") VALUES ("_s +
                            marks.join(u',') + u")"_s)
                               .toUtf8();
    if (sqlite3_prepare_v2(m_db, sql.constData(), int(sql.size()), &m_statement, nullptr) != SQLITE_OK)
        m_error = table + u": "_s + QString::fromUtf8(sqlite3_errmsg(m_db));
}

DemoInserter::~DemoInserter()
{
    sqlite3_finalize(m_statement);
}

void DemoInserter::add(const QVariantList& values)
{
    if (!m_error.isEmpty())
        return;
    if (values.size() != m_columns) {
        m_error = m_table + u": wrong number of values"_s;
        return;
    }
    for (int i = 0; i < m_columns; ++i) {
        const QVariant& v = values.at(i);
        int rc = SQLITE_OK;
        switch (v.typeId()) {
        case QMetaType::UnknownType:
            rc = sqlite3_bind_null(m_statement, i + 1);
            break;
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::Bool:
            rc = sqlite3_bind_int64(m_statement, i + 1, v.toLongLong());
            break;
        case QMetaType::Double:
            rc = sqlite3_bind_double(m_statement, i + 1, v.toDouble());
            break;
        default: {
            const QByteArray text = v.toString().toUtf8();
            rc = sqlite3_bind_text(m_statement, i + 1, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        }
        }
        if (rc != SQLITE_OK) {
            m_error = m_table + u": "_s + QString::fromUtf8(sqlite3_errmsg(m_db));
            sqlite3_reset(m_statement);
            return;
        }
    }
    if (sqlite3_step(m_statement) != SQLITE_DONE)
        m_error = m_table + u": "_s + QString::fromUtf8(sqlite3_errmsg(m_db));
    sqlite3_reset(m_statement);
}

} // namespace qelprn
