// The suite's value helpers: rounding of money, null values, blank trims, Val, CSV records and file
// tests.
#include "app/CsvRecord.h"
#include "app/FileUtil.h"
#include "app/Kiriage.h"
#include "app/NullValue.h"
#include "app/RunTimeError.h"
#include "app/SpaceTrim.h"
#include "app/Val.h"
#include "support/FileBytes.h"
#include "support/TestInteraction.h"

#include <QtTest>
#include <functional>

using namespace Qt::StringLiterals;
using qelprn::test::TestInteraction;

namespace {

// The text of the run-time error the work raises, or "" when it raises none.
QString overflowText(const std::function<void()>& work)
{
    try {
        work();
    } catch (const qelprn::RunTimeError& e) {
        return qelprn::runTimeErrorText(e);
    }
    return QString();
}

} // namespace

class tst_values : public QObject
{
    Q_OBJECT

private slots:
    void rounding_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("up exact") << 1 << 1 << 100.0 << 100;
        QTest::newRow("up fraction") << 1 << 1 << 100.2 << 101;
        QTest::newRow("up tens") << 1 << 10 << 101.0 << 110;
        QTest::newRow("half up") << 3 << 1 << 100.5 << 101;
        QTest::newRow("half down") << 3 << 1 << 100.49 << 100;
        QTest::newRow("down negative") << 2 << 1 << -0.5 << -1;
        QTest::newRow("down") << 2 << 1 << 100.9 << 100;
        QTest::newRow("none") << 0 << 1 << 123.4 << 0;
    }

    void rounding()
    {
        QFETCH(int, kind);
        QFETCH(int, unit);
        QFETCH(double, value);
        QFETCH(int, expected);
        const qelprn::Kiriage rule{qint16(kind), qint16(unit)};
        QCOMPARE(qelprn::nKiriage(rule, value), expected);
    }

    void roundingWithoutUnitWarns()
    {
        TestInteraction ui;
        QCOMPARE(qelprn::nKiriage({1, 0}, 5.5, &ui), 0);
        QCOMPARE(ui.calls, QStringList({u"message:警告！:切り上げ桁が設定されていません。"_s}));
        // A result beyond 32 bits raises the suite's overflow error.
        QCOMPARE(overflowText([&] { qelprn::nKiriage({1, 1}, 3e9); }), u"( 6)オーバーフローしました。"_s);
        // down: the largest 32-bit value itself
        QCOMPARE(qelprn::nKiriage({2, 1}, 2147483647.0), 2147483647);
    }

    void valueHelpers()
    {
        QCOMPARE(qelprn::csNullToStr(QVariant()), QString());
        QCOMPARE(qelprn::csNullToStr(QVariant(QMetaType::fromType<QString>())), QString());
        QCOMPARE(qelprn::csNullToRTrim(u" a  "_s), u" a"_s);
        QCOMPARE(qelprn::nNullToLng(QVariant()), 0);
        QCOMPARE(qelprn::nNullToLng(u"12"_s), 12);
        QCOMPARE(overflowText([] { qelprn::nNullToLng(-2147483649.0); }), u"( 6)オーバーフローしました。"_s);
        // The suite's trims remove spaces only.
        QCOMPARE(QStringList({qelprn::trimRightSpaces(u" a\t\u3000  "_s), qelprn::trimSpaces(u"  \ta "_s),
                              qelprn::trimSpaces(u"   "_s)}),
                 QStringList({u" a\t\u3000"_s, u"\ta"_s, QString()}));
        // Val skips blanks, tabs, line feeds and ideographic spaces in front, no other white space.
        QList<int> numbers;
        for (const QString& text : {u" 12X3"_s, u"X1"_s, u"\u3000\t\n 12"_s, u"\r12"_s, u"\u00a012"_s})
            numbers << qelprn::leadingNumber(text);
        QCOMPARE(numbers, QList<int>({12, 0, 12, 0, 0}));
        // A quoted field keeps its commas and blanks and reads a doubled quote as one; an unquoted
        // field loses its spaces.
        QCOMPARE(qelprn::splitCsvRecord(u"\"a\"\"b\", c ,\" d,\""_s),
                 (QStringList{u"a\"b"_s, u"c"_s, u" d,"_s}));
        // A folder is no file.
        QTemporaryDir dir;
        QVERIFY(qelprn::bFileExists(dir.filePath(u"."_s)) == false);
        QVERIFY(qelprn::test::writeAll(dir.filePath(u"f"_s), "x"));
        QVERIFY(qelprn::bFileExists(dir.filePath(u"f"_s)));
        QCOMPARE(qelprn::csCutNull(u"ab"_s + QChar(0) + u"c"_s), u"ab"_s);
    }
};

QTEST_GUILESS_MAIN(tst_values)
#include "tst_values.moc"
