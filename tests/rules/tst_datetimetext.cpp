#include "rules/AppError.h"
#include "rules/AlarmMoment.h"
#include "rules/DateText.h"
#include "rules/TimeRowArithmetic.h"
#include "rules/TimeText.h"

#include <QElapsedTimer>
#include <QTest>

class TestDateTimeText : public QObject {
    Q_OBJECT

private slots:
    void parseDate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("expected"); // invalid = not a date
        QTest::newRow("mmm d, yyyy") << "  Sep   30 ,2031 " << QDate(2031, 9, 30);
        QTest::newRow("d mmmm yyyy") << "30 SEPTEMBER, 2031" << QDate(2031, 9, 30);
        QTest::newRow("m/d/yyyy") << "09/5/2031" << QDate(2031, 9, 5);
        QTest::newRow("yy 29 is 2029") << "1/2/29" << QDate(2029, 1, 2);
        QTest::newRow("yy 30 is 1930") << "1/2/30" << QDate(1930, 1, 2);
        QTest::newRow("iso") << "2031-9-05" << QDate(2031, 9, 5);
        QTest::newRow("leap day of 2000") << "2/29/2000" << QDate(2000, 2, 29);
        for (const char *text : {"Feb 29 2031", "2/29/1900", "13/1/2031", "2031-09-00", "Jan 1 0099", "1/1/10000",
                                 "Sep 30 31", "tomorrow", "   ", "Sep 30 2031 x", "9/30/2031 10:00", "9/30-2031",
                                 ", Sep 30 2031", "Sept 30 2031", "9/30/99999999999999999999"})
            QTest::newRow(text) << text << QDate();
        // Long enough that a backtracking pattern would hang the clock.
        QTest::newRow("half a million characters") << QStringLiteral("1/").repeated(1 << 18) << QDate();
    }
    void parseDate()
    {
        QFETCH(QString, text);
        QFETCH(QDate, expected);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(::parseDate(text).value_or(QDate()), expected);
        QVERIFY(timer.elapsed() < 500);
        QCOMPARE(formatDateText(text), expected.isValid() ? formatDate(expected) : text);
    }

    void theReadOut()
    {
        // Every month and the ends of the day, as the locale would write them.
        for (int month = 1; month <= 12; ++month) {
            for (const QTime t : {QTime(0, 0, 0), QTime(9, 5, 7), QTime(23, 59, 59)}) {
                const QDateTime moment(QDate(2031, month, month + 17), t);
                QCOMPARE(formatNowText(moment), QLocale::c().toString(moment, QStringLiteral("MMM dd, yyyy HH:mm:ss")));
            }
        }
        QCOMPARE(formatNowText(QDateTime(QDate(7, 1, 2), QTime(3, 4, 5))), QStringLiteral("Jan 02, 0007 03:04:05"));
        QVERIFY(formatNowText(QDateTime()).isEmpty());
    }

    void times()
    {
        // {input, formatTimeText, normaliseTime}
        const char *const cases[][3] = {
            {"7:5", "07:05", ""},          {"07:30:59", "07:30", ""},   {" 7:30", "07:30", "07:30"},
            {"23:59", "23:59", "23:59"},   {"24:60", "24:60", "00:00"}, {"12:75", "12:75", "12:00"},
            {"12:00:60", "12:00:60", ""},  {"99:9x", "99:9x", ""},      {"-3:5", "-3:5", ""},
            {"12::3", "12::3", ""},        {"0730:", "0730:", ""},      {"ab:cd", "ab:cd", ""},
        };
        for (const auto &c : cases) {
            const QString text = QString::fromLatin1(c[0]);
            QCOMPARE(formatTimeText(text), QString::fromLatin1(c[1]));
            const bool isTime = QTime::fromString(QString::fromLatin1(c[1]), QStringLiteral("HH:mm")).isValid();
            QCOMPARE(parseTimeOfDay(text).has_value(), isTime);
            QCOMPARE(normaliseTime(text), QString::fromLatin1(c[2]));
        }
        for (int code = 0; code < 0x3000; ++code) {
            const bool kept = code == 8 || (code >= '0' && code <= ':');
            const std::optional<QChar> out = kept ? QChar(code) : code == ' ' ? std::optional<QChar>(u':') : std::nullopt;
            QCOMPARE(filterTimeKey(QChar(code)), out);
        }
    }

    void arithmetic()
    {
        // Across Europe's March 2031 clock change the count stays in whole days.
        QCOMPARE(secondsUntil(QDateTime(QDate(2031, 3, 29), QTime(12, 0)), QDate(2031, 3, 31), "12:00"), 2 * 86400);
        const QDateTime morning(QDate(2031, 9, 30), QTime(10, 45, 30));
        QCOMPARE(secondsUntil(morning, morning.date(), "10:45:31"), 1);
        QVERIFY_THROWS_EXCEPTION(AppError, secondsUntil(morning, morning.date(), "24:00"));
        QVERIFY_THROWS_EXCEPTION(AppError, secondsUntil(morning, QDate(9999, 12, 31), "10:00"));

        auto target = [&](int days, int hours, int minutes) {
            const TimeRowTarget t = calculateDayHourMins(morning, days, hours, minutes);
            return t.dateText + QLatin1Char('|') + t.timeText;
        };
        QCOMPARE(target(2, 14, 0), QStringLiteral("Oct 03, 2031|00:45"));
        QCOMPARE(target(0, 0, 1440 * 365), QStringLiteral("Sep 29, 2032|10:45")); // through Feb 29
        QCOMPARE(target(-30, -13, -40), QStringLiteral("Aug 31, 2031|-3:5"));     // left unpadded
        const int max = 0x7FFFFFFF;
        const int overflows[][3] = {{3000000, 0, 0}, {-800000, 0, 0}, {0, max, 0}, {0, 0, max}, {max, 24, 0}};
        for (const auto &o : overflows)
            QVERIFY_THROWS_EXCEPTION(AppError, target(o[0], o[1], o[2]));
    }
};

QTEST_GUILESS_MAIN(TestDateTimeText)
#include "tst_datetimetext.moc"
