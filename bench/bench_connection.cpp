// Figures for the connection wrapper: an open-run-close cycle with the pool against one that opens a
// new session every time, and the cost of translating a statement to SQLite's dialect.
#include "db/ConnectionPool.h"
#include "db/RecordSet.h"
#include "db/TsqlTranslator.h"
#include "db/cT_ADODB.h"
#include "demo/SuiteSchema.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

double cycleMicros(const QString& cs, int cycles, bool pooled)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < cycles; ++i) {
        qelprn::cT_ADODB ado;
        ado.iInit(cs);
        if (ado.iConnect() != 0) {
            std::fprintf(stderr, "%s\n", qPrintable(ado.sErrMsg));
            return -1;
        }
        qelprn::RecordSet rs;
        ado.iOpenRecSet(rs, u"SELECT count(*) as J_CNT  FROM JISSEKI  WHERE JISSEKI.nRiyoushaIDNo  = "_s +
                                QString::number(i));
        ado.iCloseRecSet(rs);
        ado.iDisConnect();
        if (!pooled)
            qelprn::ConnectionPool::instance().clear();
    }
    return double(timer.nsecsElapsed()) / 1e3 / cycles;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    QDir::setCurrent(dir.path());
    QString error;
    if (!qelprn::createSuiteSchema(dir.filePath(u"suite.sqlite"_s), &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    const QString cs = u"Provider=SQLOLEDB;Data Source=sqlite:.;Database=suite;uid=sa;pwd=x"_s;
    const int cycles = 2000;
    const double pooled = cycleMicros(cs, cycles, true);
    const double unpooled = cycleMicros(cs, cycles / 4, false);
    std::printf("open-run-close, pooled:   %8.1f us per cycle\n", pooled);
    std::printf("open-run-close, unpooled: %8.1f us per cycle (%.1fx)\n", unpooled, unpooled / pooled);

    const QString statement =
        u"SELECT SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cStartDate, "
        u"112),6,2) "
        u"AS YM, ISNULL(SEIKYU_SISETSU.nIDNo,0) AS ID FROM 療養費単価 LEFT JOIN SISETSU AS SEIKYU_SISETSU ON "
        u"LEFT(nIDNo,4) = '0101' WHERE iTankaKbn = "_s;
    const int statements = 20000;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < statements; ++i)
        qelprn::translateTsqlToSqlite(statement + QString::number(i));
    const double fresh = double(timer.nsecsElapsed()) / 1e3 / statements;
    timer.restart();
    for (int i = 0; i < statements; ++i)
        qelprn::translateTsqlToSqlite(statement + QString::number(i % 100));
    const double cached = double(timer.nsecsElapsed()) / 1e3 / statements;
    std::printf("translation: %.1f us per new statement, %.2f us per cached one\n", fresh, cached);
    return 0;
}
