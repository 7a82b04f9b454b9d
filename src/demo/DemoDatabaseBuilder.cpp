#include "demo/DemoDatabaseBuilder.h"

#include "demo/DemoFees.h"
#include "demo/DemoSiteWriter.h"
#include "demo/SuiteSchema.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace qelprn {

DemoDatabaseBuilder::DemoDatabaseBuilder(QString sqliteFile, QList<DemoSite> sites, QDate month, quint64 seed,
                                         bool closedSite)
    : m_file(std::move(sqliteFile)), m_sites(std::move(sites)), m_month(month), m_seed(seed),
      m_closedSite(closedSite)
{}

bool DemoDatabaseBuilder::build(const Progress& progress, QString* error)
{
    if (!createSuiteSchema(m_file, error))
        return false;
    const QString connection = u"qelprn-demo-"_s + QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, connection);
        db.setDatabaseName(m_file);
        if (!db.open()) {
            if (error)
                *error = m_file + u": "_s + db.lastError().text();
        } else {
            QSqlQuery(db).exec(u"PRAGMA synchronous = OFF"_s);
            db.transaction();
            DemoRandom rng(m_seed);
            QString failure = DemoFees::writeFeeTables(db, m_month);
            if (failure.isEmpty()) {
                DemoSiteWriter writer(db, rng, m_month);
                int done = 0;
                int lastCode = -1;
                for (const DemoSite& site : m_sites) {
                    const bool first = site.code != lastCode;
                    lastCode = site.code;
                    if (!writer.write(site, first, [&] {
                            if (++done % 500 == 0 && progress)
                                progress(done);
                        }))
                        break;
                }
                if (writer.error().isEmpty() && m_closedSite && !m_sites.isEmpty()) {
                    const DemoSite& last = m_sites.last();
                    QSqlQuery q(db);
                    q.prepare(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cAreaName, cKyotenName, iUsedFlg) "
                              "VALUES (?, ?, ?, ?, 0)"_s);
                    q.addBindValue(last.code);
                    q.addBindValue(9);
                    q.addBindValue(u"旧出張所"_s);
                    q.addBindValue(u"旧出張所（閉鎖）"_s);
                    if (!q.exec())
                        failure = q.lastError().text();
                }
                if (failure.isEmpty())
                    failure = writer.error();
                if (progress)
                    progress(done);
            }
            if (failure.isEmpty() && !db.commit())
                failure = db.lastError().text();
            if (!failure.isEmpty()) {
                db.rollback();
                if (error)
                    *error = m_file + u": "_s + failure;
            }
            ok = failure.isEmpty();
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return ok;
}

} // namespace qelprn
