// The value rules: dates, times, numbers, colours, countdowns, row states, the tray tip. Pure functions, so each family is one table.

#include <QTest>

// After <QTest> on purpose: the headers must survive Qt's "slots" macro.
#include "appearance/ColourText.h"
#include "rules/AlarmMoment.h"
#include "rules/AppError.h"
#include "rules/CountdownText.h"
#include "rules/DateText.h"
#include "rules/LatePolicy.h"
#include "rules/RowState.h"
#include "rules/TimeRowArithmetic.h"
#include "rules/TimeText.h"
#include "rules/ValueConversions.h"
#include "rules/TrayTip.h"
#include "rules/TickSchedule.h"

#include <QElapsedTimer>
#include <QTimeZone>
#include <limits>

namespace {
const qint32 kMin32 = std::numeric_limits<qint32>::min(), kMax32 = std::numeric_limits<qint32>::max();
// One text read each way a setting can be read.
struct NumberCase { const char *text; int integer, longInt; double real; };
// Seconds left, dated or daily, the state and its Regular, Matrix and Custom (slot; 0 = left alone) colours.
struct StateCase { int seconds; bool dated; RowState state; int regular, matrix, customSlot; };
} // namespace

class RulesTest : public QObject {
    Q_OBJECT

private slots:
    void datesTimesAndReadOut()
    {
        // Two-digit years below 30 are this century; an invalid date stands for "not a date".
        QList<std::pair<QString, QDate>> dates = {
            {"  Sep   30 ,2031 ", {2031, 9, 30}}, {"30 SEPTEMBER, 2031", {2031, 9, 30}}, {"09/5/2031", {2031, 9, 5}},
            {"1/2/29", {2029, 1, 2}}, {"1/2/30", {1930, 1, 2}}, {"2031-9-05", {2031, 9, 5}}, {"2/29/2000", {2000, 2, 29}}};
        for (const char *text : {"Feb 29 2031", "2/29/1900", "13/1/2031", "2031-09-00", "Jan 1 0099", "1/1/10000", "Sep 30 31",
                                 "   ", "Sep 30 2031 x", "9/30-2031", ", Sep 30 2031", "Sept 30 2031", "9/30/99999999999999999999"})
            dates.append({text, QDate()});
        // Long enough that a backtracking pattern would hang the clock.
        dates.append({QStringLiteral("1/").repeated(1 << 18), QDate()});
        for (const auto &[text, expected] : dates) {
            QElapsedTimer timer;
            timer.start();
            const bool read = parseDate(text).value_or(QDate()) == expected && timer.elapsed() < 500;
            QVERIFY2(read && formatDateText(text) == (expected.isValid() ? formatDate(expected) : text), qPrintable(text.left(30)));
        }
        // {input, formatTimeText, normaliseTime}
        const char *const times[][3] = {
            {"7:5", "07:05", ""}, {"07:30:59", "07:30", ""}, {" 7:30", "07:30", "07:30"}, {"23:59", "23:59", "23:59"},
            {"24:60", "24:60", "00:00"}, {"12:75", "12:75", "12:00"}, {"12:00:60", "12:00:60", ""}, {"99:9x", "99:9x", ""},
            {"-3:5", "-3:5", ""}, {"12::3", "12::3", ""}, {"0730:", "0730:", ""},
        };
        for (const auto &c : times) {
            const QString text = QString::fromLatin1(c[0]);
            QCOMPARE(formatTimeText(text), QString::fromLatin1(c[1]));
            QCOMPARE(parseTimeOfDay(text).has_value(), QTime::fromString(QString::fromLatin1(c[1]), "HH:mm").isValid());
            QCOMPARE(normaliseTime(text), QString::fromLatin1(c[2]));
        }
        // Digits, the colon and backspace pass; a blank becomes a colon; nothing else.
        QString kept;
        for (const QChar c : QStringLiteral("\b/09:; a\t\u0660\uFF10"))
            kept += filterTimeKey(c).value_or(u'x');
        QCOMPARE(kept, QStringLiteral("\bx09:x:xxxx"));
        // The clock's read-out and the tray's alarm time.
        for (int month = 1; month <= 12; ++month) // the month names are spelled out by hand
            QCOMPARE(formatNowText(QDateTime(QDate(2031, month, 28), QTime(23, 59, 58))), QLocale::c().monthName(month, QLocale::ShortFormat) + " 28, 2031 23:59:58");
        QCOMPARE(formatNowText(QDateTime(QDate(7, 1, 2), QTime(3, 4, 5))), QStringLiteral("Jan 02, 0007 03:04:05"));
        QVERIFY(formatNowText(QDateTime()).isEmpty());
        QCOMPARE(formatAlarmTipTime(QDateTime(QDate(2031, 9, 3), QTime(7, 5, 9))), QStringLiteral("Sep, 03 at 07:05"));
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
        // The sixtieth minute carries, a year runs through Feb 29, and a negative time is left unpadded.
        QCOMPARE(QStringList({target(2, 14, 0), target(0, 0, 15), target(0, 0, 1440 * 365), target(-30, -13, -40)}),
                 QStringList({"Oct 03, 2031|00:45", "Sep 30, 2031|11:00", "Sep 29, 2032|10:45", "Aug 31, 2031|-3:5"}));
        for (const auto &o : {QList{3000000, 0, 0}, {-800000, 0, 0}, {0, kMax32, 0}, {0, 0, kMax32}, {kMax32, 24, 0}})
            QVERIFY_THROWS_EXCEPTION(AppError, target(o[0], o[1], o[2]));
        // 02:00:00.400 happens twice in the hour the clock turns back; from the first, the next tick is 0.6 s away, not an hour.
        const QTimeZone berlin("Europe/Berlin");
        if (!berlin.isValid())
            QSKIP("no time zone data");
        const qint64 first = QDateTime(QDate(2031, 10, 26), QTime(0, 0, 0, 400), QTimeZone::utc()).toMSecsSinceEpoch();
        const QDateTime ambiguous = QDateTime::fromMSecsSinceEpoch(first, berlin);
        QCOMPARE(ambiguous.time(), QTime(2, 0, 0, 400));
        QCOMPARE(nextTickAt(ambiguous, false).toMSecsSinceEpoch() - first, 600);
        QCOMPARE(nextTickAt(ambiguous, true).toMSecsSinceEpoch() - first, 59600);
    }

    void numbersColoursAndCountdowns()
    {
        const NumberCase numbers[] = {
            {" \t-7 ", -7, -7, -7.0}, {" tRuE ", -1, -1, -1.0}, {"2.5", 2, 2, 2.5}, {"-3.5", -4, -4, -3.5}, // half to even
            {"+25E-1", 2, 2, 2.5}, {"-32768", -32768, -32768, -32768.0}, {"32767.5", 0, 32768, 32767.5},
            {"-2147483648", 0, kMin32, -2147483648.0}, {"2147483648", 0, 0, 2147483648.0}, {"1e400", 0, 0, 0.0},
            {" &hFFFF ", 0, 65535, 0.0}, {"&HFFFFFFFF", 0, -1, 0.0}, // hex only for Long
            {"", 0, 0, 0}, {"nan", 0, 0, 0}, {"0x10", 0, 0, 0}, {"12abc", 0, 0, 0}, {"- 5", 0, 0, 0},
            {"1,000", 0, 0, 0}, {"&H", 0, 0, 0}, {"&HFF&", 0, 0, 0}, {"\u0661\u0662", 0, 0, 0}, // non-ASCII digits
        };
        for (const NumberCase &c : numbers) {
            const QString text = QString::fromUtf8(c.text);
            QVERIFY2(integerValue(text) == c.integer && longValue(text) == c.longInt && doubleValue(text) == c.real, c.text);
        }
        QCOMPARE(textValue(QVariant(" \tWake  up ")) + '|' + textValue(QVariant(false)), QStringLiteral("Wake  up|False"));
        QCOMPARE(integerValue(QVariant(40000)), qint16(0));
        QCOMPARE(longValue(QVariant(QDate(2031, 9, 30))), 0);
        // The whole part counts 15 significant digits, so 0.9999999999999999 is 1.
        const double lowest = std::numeric_limits<double>::lowest();
        QCOMPARE(QList<double>({wholePart(-2.9), wholePart(0.9999999999999999), wholePart(1e-5), wholePart(1.5e15), wholePart(lowest)}),
                 QList<double>({-2.0, 1.0, 0.0, 1.5e15, lowest}));
        QStringList countdowns;
        for (const qint32 seconds : {90061, 86399, 1, 0, -3600, kMax32})
            countdowns << strPrintCountDownHours(seconds, "*");
        QCOMPARE(countdowns, QStringList({"1d 1h 1m 1s ", "0d 23h 59m 59s ", "0d 0h 0m 1s ", "*", "*", "24855d 3h 14m 7s "}));
        // Up to four hex digits without the closing "&" are 16-bit and sign-extend.
        const std::pair<const char *, int> colours[] = {
            {"&H00C000C0&", 12583104}, {"&HC000C0", 12583104}, {"&HFFFF", -1}, {"&HFFFF&", 65535}, {"&H7fff", 32767},
            {"&H0FFFF", 65535}, {"&HFFFFFFFF", -1}, {"&HFFxyz", 255}, {" 12583104 ", 12583104}, {"-5", -5}, {"2.5", 2},
            {"2147483647", 2147483647}, {"", 0}, {"&H123456789", 0}, {"&H", 0}, {"&h10", 0}, {"2147483648", 0}, {"red", 0}, {"True", 0}, {" &HFF", 0}};
        for (const auto &[text, value] : colours)
            QVERIFY2(colourFromText(QString::fromLatin1(text)) == value, text);
    }

    void rowStates()
    {
        using S = RowState;
        const StateCase rows[] = {
            {3601, true, S::FarAhead, 0xFFFFFF, 0x008000, 3}, {3601, false, S::FarAhead, 0xFFFFFF, 0x008000, 0}, {3600, false, S::WithinHour, 0x00FFFF, 0x00C000, 5},
            {481, true, S::WithinHour, 0x00FFFF, 0x00C000, 5}, {480, false, S::WithinEight, 0x00FF00, 0x00FF00, 4}, {0, true, S::Sounded, 0x0000FF, 0x00FFFF, 6},
            {0, false, S::PassedLong, 0xFFFFFF, 0x007007, 3}, {-1, false, S::JustPassed, 0x0000FF, 0x00FFFF, 4}, {-300, false, S::JustPassed, 0x0000FF, 0x00FFFF, 4},
            {-301, false, S::PassedWithinHour, 0x80FF80, 0x80FF80, 7}, {-3600, false, S::PassedWithinHour, 0x80FF80, 0x80FF80, 7},
            {-3601, false, S::PassedLong, 0xFFFFFF, 0x007007, 3}, {kMin32, false, S::PassedLong, 0xFFFFFF, 0x007007, 3},
        };
        CustomColours custom;
        for (int n = 1; n <= 10; ++n)
            custom.setSlot(n, 0x010000 * n);
        for (const StateCase &c : rows) {
            auto colour = [&](int scheme) { return rowStateColour(c.state, c.dated, scheme, custom); };
            const qint32 customColour = c.customSlot ? 0x010000 * c.customSlot : -1; // -1: left alone
            QVERIFY2(classifyRow(c.dated, c.seconds) == c.state && colour(0) == c.regular && colour(1) == c.matrix && colour(2).value_or(-1) == customColour && !colour(3),
                     QByteArray::number(c.seconds) + (c.dated ? " dated" : " daily"));
        }
    }

    // A minute late is on time, half an hour late; a wall clock that ran ahead of the boot clock was set.
    void lateAlarms()
    {
        QCOMPARE(QList<Lateness>({latenessOf(60), latenessOf(61), latenessOf(1800), latenessOf(1801)}),
                 QList<Lateness>({Lateness::OnTime, Lateness::Late, Lateness::Late, Lateness::Missed}));
        QCOMPARE(QList<GapCause>({gapCause(9000, 9000, 0), gapCause(9000, 0, 0), gapCause(9000, 9000, 8000), gapCause(2500, 1000, 0)}),
                 QList<GapCause>({GapCause::None, GapCause::ClockSet, GapCause::Asleep, GapCause::None}));
        QVERIFY(lateNote(GapCause::None).isEmpty());
    }

    void trayTip()
    {
        // The field is 64 characters, the text NUL-ended when it fits; only what comes before the NUL shows.
        const QString msg = QStringLiteral("Alarm at 07:30"), name15 = '[' + QString(15, 'N') + "..]";
        auto tip = [](int nameLength, const QString &message) { return trayTipField(QString(nameLength, 'N'), message); };
        QCOMPARE(tip(39, {}), ('[' + QString(39, 'N') + "] Double LEFT Click me." + QChar(0)).leftJustified(64, ' '));
        QCOMPARE(tip(40, {}), '[' + QString(40, 'N') + "] Double LEFT Click me."); // fills the field, no NUL
        QCOMPARE(tip(60, {}), '[' + QString(60, 'N') + "] D");
        QCOMPARE(visibleTrayTip(tip(10, msg)), '[' + QString(10, 'N') + "..]" + msg);
        QCOMPARE(visibleTrayTip(tip(16, QString(60, 'm'))), name15 + QString(45, 'm'));
        QCOMPARE(visibleTrayTip("ab  " + QString(QChar(0)) + "cd") + '|' + visibleTrayTip("  ab  "), QStringLiteral("ab  |  ab"));
    }
};

QTEST_GUILESS_MAIN(RulesTest)
#include "tst_rules.moc"
