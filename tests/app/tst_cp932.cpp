// CP932, the encoding of every file the suite and the engine share.
#include "app/Cp932.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_cp932 : public QObject
{
    Q_OBJECT

private slots:
    // One table for both converters (ICU on Linux, the system's code page on Windows): the bytes
    // are those Windows writes, so files match the suite's byte for byte.
    void cp932Table_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("full-width minus") << u"－"_s << QByteArray("\x81\x7C");
        QTest::newRow("full-width tilde") << u"～"_s << QByteArray("\x81\x60");
        QTest::newRow("circled one") << u"①"_s << QByteArray("\x87\x40");
        // Characters with an NEC-selected and an IBM code: Windows writes the FA-FC form.
        QTest::newRow("taka (IBM)") << u"髙"_s << QByteArray("\xFB\xFC");
        QTest::newRow("small roman one (IBM)") << u"ⅰ"_s << QByteArray("\xFA\x40");
        QTest::newRow("kou (IBM)") << u"纊"_s << QByteArray("\xFA\x5C");
        // Symbols in both the JIS rows and NEC row 13: Windows writes the JIS code.
        QTest::newRow("not sign") << u"￢"_s << QByteArray("\x81\xCA");
        QTest::newRow("nearly equal") << u"≒"_s << QByteArray("\x81\xE0");
        QTest::newRow("no code") << u"鷗"_s << QByteArray("?");
        QTest::newRow("mixed line") << u"髙橋 ①－～\t1"_s
                                    << QByteArray("\xFB\xFC\x8B\xB4 \x87\x40\x81\x7C\x81\x60\t1");
    }

    void cp932Table()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(qelprn::toCp932(text), bytes);
        // A second time comes from the per-thread memory of converted units.
        QCOMPARE(qelprn::toCp932(text), bytes);
        if (!bytes.contains('?'))
            QCOMPARE(qelprn::fromCp932(bytes), text);
    }

    void cp932RoundTrips()
    {
        // The NEC-selected duplicates read as the same characters.
        QCOMPARE(qelprn::fromCp932(QByteArray("\xEE\xEF\xED\x40\x87\x90\xFA\x54")), u"ⅰ纊≒￢"_s);
        // A file cut after a lead byte keeps the cut visible instead of dropping it.
        QCOMPARE(qelprn::fromCp932(QByteArray("A\x82")), u"A\uFFFD"_s);
        // One "?" per code point, also outside the basic plane.
        QCOMPARE(qelprn::toCp932(u"a€😀b"), QByteArray("a??b"));
        QByteArray out("x");
        qelprn::appendCp932(out, u"髙");
        qelprn::appendCp932(out, u"");
        QCOMPARE(out, QByteArray("x\xFB\xFC"));
        QCOMPARE(qelprn::decodeSettingsText(QByteArray("\xEF\xBB\xBF") + u"髙"_s.toUtf8()), u"髙"_s);
    }
};

QTEST_GUILESS_MAIN(tst_cp932)
#include "tst_cp932.moc"
