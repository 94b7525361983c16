#include "platform/AppError.h"
#include "table/AlarmMoment.h"
#include "table/DateText.h"
#include "table/TimeRowArithmetic.h"
#include "table/TimeText.h"

#include <QElapsedTimer>
#include <QTest>
#include <functional>
#include <limits>

namespace {
long errorNumber(const std::function<void()> &call)
{
    try {
        call();
    } catch (const AppError &e) {
        return e.number;
    }
    return 0;
}
} // namespace

class TestDateTimeText : public QObject {
    Q_OBJECT

private slots:
    void parseDate_data();
    void parseDate();
    void parseDateLongInput();
    void formats();
    void times();
    void timeKeys();
    void secondsUntil();
    void timeRow_data();
    void timeRow();
};

void TestDateTimeText::parseDate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("expected"); // invalid = not a date

    const QDate sep30(2031, 9, 30);
    QTest::newRow("mmm d, yyyy") << "  Sep   30 ,2031 " << sep30;
    QTest::newRow("mmmm d yyyy") << "september 30 2031" << sep30;
    QTest::newRow("d mmm yyyy") << "30 SEPTEMBER, 2031" << sep30;
    QTest::newRow("m/d/yyyy") << "09/5/2031" << QDate(2031, 9, 5);
    QTest::newRow("yy 29 is 2029") << "1/2/29" << QDate(2029, 1, 2);
    QTest::newRow("yy 30 is 1930") << "1/2/30" << QDate(1930, 1, 2);
    QTest::newRow("iso") << "2031-9-05" << QDate(2031, 9, 5);
    QTest::newRow("leap day") << "Feb 29 2032" << QDate(2032, 2, 29);
    QTest::newRow("leap day of 2000") << "2/29/2000" << QDate(2000, 2, 29);
    QTest::newRow("year 100") << "Jan 1 100" << QDate(100, 1, 1);

    const char *notDates[] = {"Feb 29 2031", "2/29/1900", "Feb 30 2032", "13/1/2031", "2031-09-00",
                              "Jan 1 0099", "1/1/10000", "Sep 30 31", "tomorrow", "", "   ",
                              "Sep 30 2031 x", "9/30/2031 10:00", "9/30-2031", "Sep, 30, 2031",
                              ", Sep 30 2031", "Sep Oct 2031", "Sept 30 2031", "9/30/99999999999999999999"};
    for (const char *text : notDates)
        QTest::newRow(text) << text << QDate();
}

void TestDateTimeText::parseDate()
{
    QFETCH(QString, text);
    QFETCH(QDate, expected);
    QCOMPARE(::parseDate(text).value_or(QDate()), expected);
    QCOMPARE(formatDateText(text), expected.isValid() ? formatDate(expected) : text);
}

void TestDateTimeText::parseDateLongInput()
{
    QElapsedTimer timer;
    timer.start();
    for (const QString &text : {QString(1 << 20, QLatin1Char('9')), QString(1 << 20, QLatin1Char(' ')),
                                QStringLiteral("1/").repeated(1 << 18), QString(1 << 20, QLatin1Char('a'))})
        QVERIFY(!::parseDate(text));
    QVERIFY(timer.elapsed() < 1000);
}

void TestDateTimeText::formats()
{
    const QDateTime now(QDate(2031, 9, 30), QTime(14, 5, 9, 700));
    QCOMPARE(formatDate(QDate(2031, 9, 5)), QStringLiteral("Sep 05, 2031"));
    QCOMPARE(formatNowText(now), QStringLiteral("Sep 30, 2031 14:05:09"));
    QCOMPARE(formatAlarmTipTime(now), QStringLiteral("Sep, 30 at 14:05"));
}

void TestDateTimeText::times()
{
    // {input, formatTimeText, normaliseTime}
    const char *const cases[][3] = {
        {"7:5", "07:05", ""},          {" 7:30\t", "07:30", ""},      {"07:30:59", "07:30", ""},
        {"23:59", "23:59", "23:59"},   {" 7:30", "07:30", "07:30"},   {"25:10", "25:10", "00:10"},
        {"12:75", "12:75", "12:00"},   {"24:60", "24:60", "00:00"},   {"12:00:60", "12:00:60", ""},
        {"007:3", "007:3", "007:3"},   {"0730", "0730", ""},          {"12345", "12345", "12345"},
        {"ab:cd", "ab:cd", "ab:cd"},   {"99:9x", "99:9x", "00:9x"},   {"7: 30", "7: 30", "7: 30"},
        {"1:2:3:4", "1:2:3:4", ""},    {"-3:5", "-3:5", ""},          {"", "", ""},
    };
    for (const auto &c : cases) {
        const QString text = QString::fromLatin1(c[0]);
        QCOMPARE(formatTimeText(text), QString::fromLatin1(c[1]));
        const bool isTime = QTime::fromString(QString::fromLatin1(c[1]), QStringLiteral("HH:mm")).isValid();
        QCOMPARE(parseTimeOfDay(text).has_value(), isTime);
        QCOMPARE(normaliseTime(text), QString::fromLatin1(c[2]));
    }
}

void TestDateTimeText::timeKeys()
{
    for (int code = 0; code < 0x3000; ++code) {
        const std::optional<QChar> out = filterTimeKey(QChar(code));
        if (code == 8 || (code >= '0' && code <= ':'))
            QCOMPARE(out, std::optional<QChar>(QChar(code)));
        else if (code == ' ')
            QCOMPARE(out, std::optional<QChar>(QLatin1Char(':')));
        else
            QVERIFY2(!out, qPrintable(QString::number(code)));
    }
}

void TestDateTimeText::secondsUntil()
{
    const QDateTime now(QDate(2031, 9, 30), QTime(14, 5, 9, 999)); // milliseconds ignored
    QCOMPARE(::secondsUntil(now, now.date(), "14:05:09"), 0);
    QCOMPARE(::secondsUntil(now, now.date(), "14:05"), -9);
    QCOMPARE(::secondsUntil(now, QDate(2031, 10, 1), "15:05:09"), 86400 + 3600);
    // Across Europe's March 2031 clock change the count stays in whole days.
    QCOMPARE(::secondsUntil(QDateTime(QDate(2031, 3, 29), QTime(12, 0)), QDate(2031, 3, 31), "12:00"), 2 * 86400);

    QCOMPARE(errorNumber([&] { ::secondsUntil(now, now.date(), "24:00"); }), 13L);
    QCOMPARE(errorNumber([&] { ::secondsUntil(now, QDate(), "10:00"); }), 13L);
    QCOMPARE(errorNumber([&] { ::secondsUntil(now, QDate(9999, 12, 31), "10:00"); }), 6L);
}

void TestDateTimeText::timeRow_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<int>("days");
    QTest::addColumn<int>("hours");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<QString>("expected"); // "date|time", or "" for an overflow

    const QDateTime newYearsEve(QDate(2031, 12, 31), QTime(23, 50, 59));
    const QDateTime morning(QDate(2031, 9, 30), QTime(10, 45, 30));
    constexpr int max = std::numeric_limits<qint32>::max();
    QTest::newRow("past midnight") << newYearsEve << 0 << 0 << 15 << "Jan 01, 2032|00:05";
    QTest::newRow("minutes carry") << morning << 0 << 0 << 130 << "Sep 30, 2031|12:55";
    QTest::newRow("no offset") << morning << 0 << 0 << 0 << "Sep 30, 2031|10:45";
    QTest::newRow("hours carry") << morning << 2 << 14 << 0 << "Oct 03, 2031|00:45";
    QTest::newRow("a year of minutes, leap") << morning << 0 << 0 << 1440 * 365 << "Sep 29, 2032|10:45";
    QTest::newRow("negative stays raw") << morning << -30 << -13 << -40 << "Aug 31, 2031|-3:5";
    QTest::newRow("past year 9999") << morning << 3000000 << 0 << 0 << "";
    QTest::newRow("before year 100") << morning << -800000 << 0 << 0 << "";
    QTest::newRow("hours overflow") << morning << 0 << max << 0 << "";
    QTest::newRow("minutes overflow") << morning << 0 << 0 << max << "";
    QTest::newRow("carry overflows days") << morning << max << 24 << 0 << "";
}

void TestDateTimeText::timeRow()
{
    QFETCH(QDateTime, now);
    QFETCH(int, days);
    QFETCH(int, hours);
    QFETCH(int, minutes);
    QFETCH(QString, expected);
    if (expected.isEmpty()) {
        QCOMPARE(errorNumber([&] { calculateDayHourMins(now, days, hours, minutes); }), 6L);
        return;
    }
    const TimeRowTarget target = calculateDayHourMins(now, days, hours, minutes);
    QCOMPARE(target.dateText + QLatin1Char('|') + target.timeText, expected);
}

QTEST_GUILESS_MAIN(TestDateTimeText)
#include "tst_datetimetext.moc"
