#include "table/CountdownText.h"
#include "table/TickSchedule.h"
#include "table/ValueConversions.h"

#include <QTest>
#include <limits>

class TestValueRules : public QObject {
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void variants();
    void wholePart();
    void countdown_data();
    void countdown();
    void nextTick();
};

// Text fed through all three numeric conversions.
void TestValueRules::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("integer");
    QTest::addColumn<int>("longInt");
    QTest::addColumn<double>("real");
    constexpr int min32 = std::numeric_limits<qint32>::min();

    QTest::newRow("empty") << "" << 0 << 0 << 0.0;
    QTest::newRow("blanks and sign") << " \t-7 " << -7 << -7 << -7.0;
    QTest::newRow("true any case") << " tRuE " << -1 << -1 << -1.0;
    QTest::newRow("half to even down") << "2.5" << 2 << 2 << 2.5;
    QTest::newRow("half to even up") << "-3.5" << -4 << -4 << -3.5;
    QTest::newRow("point forms") << ".5" << 0 << 0 << 0.5;
    QTest::newRow("exponent") << "+25E-1" << 2 << 2 << 2.5;
    QTest::newRow("int16 edge") << "-32768" << -32768 << -32768 << -32768.0;
    QTest::newRow("rounds into int16 overflow") << "32767.5" << 0 << 32768 << 32767.5;
    QTest::newRow("int32 min") << "-2147483648" << 0 << min32 << -2147483648.0;
    QTest::newRow("int32 overflow") << "2147483648" << 0 << 0 << 2147483648.0;
    QTest::newRow("double overflow") << "1e400" << 0 << 0 << 0.0;
    QTest::newRow("hex only for 32-bit") << "&HFFFF" << 0 << 65535 << 0.0;
    QTest::newRow("hex lower-case h") << " &hff " << 0 << 255 << 0.0;
    QTest::newRow("hex 32-bit pattern") << "&HFFFFFFFF" << 0 << -1 << 0.0;
    QTest::newRow("hex too long") << "&H123456789" << 0 << 0 << 0.0;
    QTest::newRow("hex junk") << "&HFF&" << 0 << 0 << 0.0;
    for (const char *junk : {"inf", "nan", "0x10", "12abc", "-", ".", "1e", "- 5", "1,000", "&H"})
        QTest::newRow(junk) << junk << 0 << 0 << 0.0;
    QTest::newRow("non-ascii digits") << QStringLiteral(u"\u0661\u0662") << 0 << 0 << 0.0;
}

void TestValueRules::numbers()
{
    QFETCH(QString, text);
    QFETCH(int, integer);
    QFETCH(int, longInt);
    QFETCH(double, real);
    QCOMPARE(integerValue(text), qint16(integer));
    QCOMPARE(longValue(text), qint32(longInt));
    QCOMPARE(doubleValue(text), real);
}

void TestValueRules::variants()
{
    QCOMPARE(textValue(QVariant()), QString());
    QCOMPARE(textValue(QVariant(QMetaType::fromType<QString>())), QString());
    QCOMPARE(textValue(QVariant(" \tWake  up ")), QStringLiteral("Wake  up"));
    QCOMPARE(textValue(QVariant(false)), QStringLiteral("False"));
    QCOMPARE(longValue(QVariant(true)), -1);
    QCOMPARE(integerValue(QVariant(2.5)), qint16(2));
    QCOMPARE(integerValue(QVariant(40000)), qint16(0));
    QCOMPARE(longValue(QVariant(qint64(1) << 31)), 0);
    QCOMPARE(doubleValue(QVariant(std::numeric_limits<double>::infinity())), 0.0);
    QCOMPARE(longValue(QVariant(QDate(2031, 9, 30))), 0);
}

void TestValueRules::wholePart()
{
    QCOMPARE(::wholePart(2.9), 2.0);
    QCOMPARE(::wholePart(-2.9), -2.0);
    QCOMPARE(::wholePart(0.9999999999999999), 1.0); // 15 significant digits round up
    QCOMPARE(::wholePart(1e-5), 0.0);               // "1E-05"
    QCOMPARE(::wholePart(1e20), 1e20);
}

void TestValueRules::countdown_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("expected");
    QTest::newRow("every unit") << 90061 << "1d 1h 1m 1s ";
    QTest::newRow("seconds only") << 59 << "0d 0h 0m 59s ";
    QTest::newRow("exact day") << 86400 << "1d 0h 0m 0s ";
    QTest::newRow("one short of a day") << 86399 << "0d 23h 59m 59s ";
    QTest::newRow("zero") << 0 << "*";
    QTest::newRow("negative") << -1 << "*";
    QTest::newRow("INT_MIN") << std::numeric_limits<qint32>::min() << "*";
    QTest::newRow("INT_MAX") << std::numeric_limits<qint32>::max() << "24855d 3h 14m 7s ";
}

void TestValueRules::countdown()
{
    QFETCH(int, seconds);
    QFETCH(QString, expected);
    QCOMPARE(strPrintCountDownHours(seconds, QStringLiteral("*")), expected);
}

void TestValueRules::nextTick()
{
    // Wherever a tick lands, even a little early, the next one falls just
    // past the start of the following second.
    for (int ms = 0; ms < 1000; ++ms) {
        const int next = ms + msUntilNextTick(ms);
        QVERIFY2(next / 1000 == 1 && next % 1000 == kTickOffsetMs, qPrintable(QString::number(ms)));
    }
    QCOMPARE(msUntilNextTick(-50), 1000 + kTickOffsetMs);
    QCOMPARE(msUntilNextTick(5000), 1 + kTickOffsetMs);
}

QTEST_GUILESS_MAIN(TestValueRules)
#include "tst_valuerules.moc"
