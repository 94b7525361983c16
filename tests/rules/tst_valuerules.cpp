#include "rules/CountdownText.h"
#include "table/TickSchedule.h"
#include "rules/ValueConversions.h"

#include <QTest>
#include <QTimeZone>
#include <limits>

class TestValueRules : public QObject {
    Q_OBJECT

private slots:
    void numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("integer");
        QTest::addColumn<int>("longInt");
        QTest::addColumn<double>("real");
        QTest::newRow("blanks and sign") << " \t-7 " << -7 << -7 << -7.0;
        QTest::newRow("true any case") << " tRuE " << -1 << -1 << -1.0;
        QTest::newRow("half to even down") << "2.5" << 2 << 2 << 2.5;
        QTest::newRow("half to even up") << "-3.5" << -4 << -4 << -3.5;
        QTest::newRow("exponent") << "+25E-1" << 2 << 2 << 2.5;
        QTest::newRow("int16 edge") << "-32768" << -32768 << -32768 << -32768.0;
        QTest::newRow("rounds into int16 overflow") << "32767.5" << 0 << 32768 << 32767.5;
        QTest::newRow("int32 min") << "-2147483648" << 0 << std::numeric_limits<qint32>::min() << -2147483648.0;
        QTest::newRow("int32 overflow") << "2147483648" << 0 << 0 << 2147483648.0;
        QTest::newRow("double overflow") << "1e400" << 0 << 0 << 0.0;
        QTest::newRow("hex only for 32-bit") << " &hFFFF " << 0 << 65535 << 0.0;
        QTest::newRow("hex 32-bit pattern") << "&HFFFFFFFF" << 0 << -1 << 0.0;
        for (const char *junk : {"", "inf", "nan", "0x10", "12abc", "- 5", "1,000", "&H", "&HFF&"})
            QTest::newRow(junk) << junk << 0 << 0 << 0.0;
        QTest::newRow("non-ascii digits") << QStringLiteral(u"\u0661\u0662") << 0 << 0 << 0.0;
    }
    void numbers()
    {
        QFETCH(QString, text);
        QFETCH(int, integer);
        QFETCH(int, longInt);
        QFETCH(double, real);
        QCOMPARE(integerValue(text), qint16(integer));
        QCOMPARE(longValue(text), qint32(longInt));
        QCOMPARE(doubleValue(text), real);
    }

    void variantsAndWholePart()
    {
        QCOMPARE(textValue(QVariant(" \tWake  up ")), QStringLiteral("Wake  up"));
        QCOMPARE(textValue(QVariant(false)), QStringLiteral("False"));
        QCOMPARE(integerValue(QVariant(40000)), qint16(0));
        QCOMPARE(longValue(QVariant(QDate(2031, 9, 30))), 0);
        QCOMPARE(wholePart(-2.9), -2.0);
        QCOMPARE(wholePart(0.9999999999999999), 1.0); // 15 significant digits round up
        QCOMPARE(wholePart(1e-5), 0.0);               // "1E-05"
        QCOMPARE(wholePart(1.5e15), 1.5e15);          // "1.5E+15" is whole already
        QCOMPARE(wholePart(std::numeric_limits<double>::lowest()), std::numeric_limits<double>::lowest());
    }

    void countdown()
    {
        const QString done = QStringLiteral("*");
        QCOMPARE(strPrintCountDownHours(90061, done), QStringLiteral("1d 1h 1m 1s "));
        QCOMPARE(strPrintCountDownHours(86399, done), QStringLiteral("0d 23h 59m 59s "));
        QCOMPARE(strPrintCountDownHours(0, done), done);
        QCOMPARE(strPrintCountDownHours(-1, done), done);
        QCOMPARE(strPrintCountDownHours(std::numeric_limits<qint32>::max(), done), QStringLiteral("24855d 3h 14m 7s "));
    }

    void nextTick()
    {
        const QDate day(2031, 12, 31);
        for (int ms : {0, 1, 500, 999}) {
            QCOMPARE(nextTickAt(QDateTime(day, QTime(14, 5, 7, ms)), false), QDateTime(day, QTime(14, 5, 8)));
            QCOMPARE(nextTickAt(QDateTime(day, QTime(14, 5, 7, ms)), true), QDateTime(day, QTime(14, 6, 0)));
        }
        // The first second of a minute sleeps a whole minute, not none.
        QCOMPARE(nextTickAt(QDateTime(day, QTime(14, 5, 0)), true), QDateTime(day, QTime(14, 6, 0)));
        // Over midnight and the year's end.
        QCOMPARE(nextTickAt(QDateTime(day, QTime(23, 59, 59, 999)), false), QDateTime(QDate(2032, 1, 1), QTime(0, 0)));
        QCOMPARE(nextTickAt(QDateTime(day, QTime(23, 59, 1)), true), QDateTime(QDate(2032, 1, 1), QTime(0, 0)));

        // In the hour a clock turns back, 02:00:00.400 happens twice; from
        // the first, the next tick is 0.6 s away, not an hour.
        const QTimeZone berlin("Europe/Berlin");
        if (berlin.isValid()) {
            const qint64 first = QDateTime(QDate(2031, 10, 26), QTime(0, 0, 0, 400), QTimeZone::utc()).toMSecsSinceEpoch();
            const QDateTime ambiguous = QDateTime::fromMSecsSinceEpoch(first, berlin);
            QCOMPARE(ambiguous.time(), QTime(2, 0, 0, 400));
            QCOMPARE(nextTickAt(ambiguous, false).toMSecsSinceEpoch() - first, 600);
            QCOMPARE(nextTickAt(ambiguous, true).toMSecsSinceEpoch() - first, 59600);
        }
    }
};

QTEST_GUILESS_MAIN(TestValueRules)
#include "tst_valuerules.moc"
