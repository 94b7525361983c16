// The clock tick on a fake clock: read-out, evaluation, countdowns, colours and the exact-zero trip.

#include "fakes/LoadedMainWindow.h"
#include "table/TickSchedule.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <ctime>

// A moment on Sep 30, 2031.
static QDateTime at(int h, int mi, int s, int ms = 0) { return QDateTime(QDate(2031, 9, 30), QTime(h, mi, s, ms)); }

class TickTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // A zone with daylight saving, for the clock-change days.
        qputenv("TZ", "Europe/Berlin");
        tzset();
    }

    void everyTickShowsTheTimeButRowsWaitForTheMinute()
    {
        LoadedMainWindow m;
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("15:06"));
        m.state().bEvaluateNow = false;
        m.tickAt(at(14, 5, 7, 420));
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:05:07"));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QString());
        m.tickAt(at(14, 6, 0, 3));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 1h 0m 0s "));
        // A change asks for the next tick to evaluate at once.
        m.state().bEvaluateNow = true;
        m.tickAt(at(14, 6, 1, 3));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 0h 59m 59s "));
        // Each tick is armed for the start of the next wall-clock second,
        // and the timer's call is the tick.
        m.tickAt(at(14, 5, 10, 999));
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 5, 11));
        m.fp.clock.set(at(14, 5, 11, 0));
        m.fp.wallTimer.expire();
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:05:11"));
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 5, 12));
    }

    void theTicksDoNotLayTheWindowOutAgain()
    {
        // The read-out changes every second and the countdowns every
        // minute; were their sizes to follow the text, each would lay out
        // the whole table again.
        LoadedMainWindow m;
        m.w->show();
        QVERIFY(QTest::qWaitForWindowExposed(m.w.get()));
        m.tickAt(at(14, 5, 1));
        QTest::qWait(20);
        struct LayoutCounter : QObject {
            int requests = 0;
            bool eventFilter(QObject *, QEvent *event) override
            {
                requests += event->type() == QEvent::LayoutRequest;
                return false;
            }
        } counter;
        for (QWidget *w = m.t->txtCurrentDateTime->parentWidget(); w; w = w->parentWidget())
            w->installEventFilter(&counter);
        for (int s = 2; s < 12; ++s) {
            m.tickAt(at(14, 5, s));
            QCoreApplication::processEvents();
        }
        // Nor do a minute's new countdowns.
        m.setRow(0, QString(), QStringLiteral("15:06"));
        m.setRow(1, QStringLiteral("Sep 30, 2099"), QStringLiteral("15:06"));
        m.tickAt(at(14, 6, 0));
        QCoreApplication::processEvents();
        QVERIFY(!m.t->lblCountDownHours[1]->text().isEmpty());
        QCOMPARE(counter.requests, 0);
    }

    void countdownAndStateColourFollowTheRow_data()
    {
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("countdown");
        QTest::addColumn<QColor>("colour");
        // Now is Sep 30, 2031 14:05:00, Regular scheme.
        QTest::newRow("far ahead") << "Oct 01, 2031" << "14:05" << "1d 0h 0m 0s " << QColor(255, 255, 255);
        QTest::newRow("within eight") << "" << "14:06" << "0d 0h 1m 0s " << QColor(0, 255, 0);
        QTest::newRow("dated, sounded") << "Sep 29, 2031" << "14:10" << "done" << QColor(255, 0, 0);
        QTest::newRow("not a date is daily") << "tomorrow" << "13:30" << "zZZzz" << QColor(128, 255, 128);
    }
    void countdownAndStateColourFollowTheRow()
    {
        QFETCH(QString, date);
        QFETCH(QString, time);
        QFETCH(QString, countdown);
        QFETCH(QColor, colour);
        LoadedMainWindow m;
        m.setRow(4, date, time);
        m.tickAt(at(14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[4]->text(), countdown);
        QCOMPARE(m.t->txtACDetails[4]->palette().color(QPalette::Base), colour);
    }

    void onlyAnExactZeroTrips()
    {
        LoadedMainWindow m;
        m.setRow(2, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:06"));
        m.tickAt(at(14, 5, 59, 990));
        QVERIFY(m.fp.sound.played.isEmpty());
        m.tickAt(at(14, 6, 0, 2));
        QCOMPARE(m.fp.sound.played, QStringList{m.fp.testDir.path() + QStringLiteral("/alarm.wav")});
        QVERIFY(m.fp.tray.field.startsWith(QStringLiteral("[Quorvel Alarm C..]ALARM @ Sep, 30 at 14:06")));

    }

    void aLaterRowWinsAndASoundingCycleIsNotRestarted()
    {
        LoadedMainWindow m;
        m.t->txtSoundOffTimes->setText(QStringLiteral("3"));
        m.setRow(3, QString(), QStringLiteral("14:06"));
        m.setRow(9, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:06"));
        m.setRow(1, QString(), QStringLiteral("14:07"));
        const QString nine = m.fp.testDir.path() + QStringLiteral("/nine.wav");
        QVERIFY(QFile::copy(m.fp.testDir.path() + QStringLiteral("/alarm.wav"), nine));
        m.t->txtWAVEFileNamePath[9]->setText(nine);
        m.tickAt(at(14, 6, 0));
        QCOMPARE(m.fp.sound.played, QStringList{nine});
        // A second alarm while the first still sounds (its last play to
        // come) only updates the tray tip.
        m.t->tmrAlarmSound_Timer();
        m.tickAt(at(14, 7, 0));
        QCOMPARE(m.state().lngAlarmPlaysLeft, 1);
        QCOMPARE(m.fp.sound.played.size(), 2);
        QVERIFY(m.fp.tray.field.contains(QStringLiteral("ALARM @ Sep, 30 at 14:07")));
    }

    void minimizedTheCountdownsFreezeButAlarmsTripAndMayRestore()
    {
        LoadedMainWindow m;
        m.setRow(0, QString(), QStringLiteral("14:06"));
        m.tickAt(at(14, 5, 0));
        const QString shown = m.t->txtCurrentDateTime->text();
        m.t->chkShow->setChecked(true);
        m.w->hide();
        m.state().intMDIWindowState = 1;
        m.tickAt(at(14, 5, 30, 400));
        // Out of sight only a minute's first second matters: sleep till then.
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 6, 0));
        m.tickAt(at(14, 6, 0));
        QCOMPARE(m.t->txtCurrentDateTime->text(), shown);
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 0h 1m 0s "));
        QCOMPARE(m.fp.sound.played.size(), 1);
        // The pop-up switch brings the window back.
        QVERIFY(m.w->isVisible());
        QCOMPARE(m.state().intMDIWindowState, 0);
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 6, 1));

        // A clock set back within that second wakes the timer again: the
        // second is not ticked twice, so the alarm does not trip twice.
        m.tickAt(at(14, 6, 0, 900));
        QCOMPARE(m.fp.sound.played.size(), 1);

        // The table window minimized inside the main window sleeps by the
        // minute too, and wakes for the next second when restored.
        m.t->Form_Resize(1);
        m.tickAt(at(14, 6, 5));
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 7, 0));
        m.t->Form_Resize(0);
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 6, 6));
    }

    void aDailyRowCountsDownAgainAfterMidnight()
    {
        LoadedMainWindow m;
        m.setRow(6, QString(), QStringLiteral("00:01"));
        m.tickAt(at(23, 59, 0));
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QStringLiteral("zZZzz"));
        m.tickAt(QDateTime(QDate(2031, 10, 1), QTime(0, 0, 0)));
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QStringLiteral("0d 0h 1m 0s "));
    }

    void aRowThatCannotBeEvaluatedSilencesNoOther()
    {
        LoadedMainWindow m;
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QString()); // no time: left alone
        m.t->lblCountDownHours[0]->setText(QStringLiteral("as it was"));
        m.setRow(1, QString(), QStringLiteral("14:10"));
        m.setRow(2, QString(), QStringLiteral("1::23"));
        m.setRow(3, QString(), QStringLiteral("14:06"));
        m.tickAt(at(14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("as it was"));
        QCOMPARE(m.t->lblCountDownHours[1]->text(), QStringLiteral("0d 0h 5m 0s "));
        QCOMPARE(m.t->lblCountDownHours[3]->text(), QStringLiteral("0d 0h 1m 0s "));
        m.tickAt(at(14, 6, 0));
        QCOMPARE(m.fp.sound.played.size(), 1);
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    // The clock as it moves in life: stalls, sleeps, settings and the two
    // daylight-saving days of a Berlin year, ticked second by second.
    // Each tick span is "from to" in UTC (one second apart); daily rows.
    void noAlarmIsLostOrRungTwice_data()
    {
        QTest::addColumn<QStringList>("spans");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("trips"); // the notification of each trip
        const QStringList lunch{QStringLiteral("14:06"), QStringLiteral("14:10")};
        QTest::newRow("the minute's second missed")
            << QStringList{"2031-09-30T12:05:59.5", "2031-09-30T12:06:01.5"} << lunch
            << QStringList{"ALARM @ Sep, 30 at 14:06|14:06"};
        QTest::newRow("9 min asleep") << QStringList{"2031-09-30T12:05:58", "2031-09-30T12:14:58"} << lunch
                                      << QStringList{"ALARM @ Sep, 30 at 14:06|14:06", "ALARM @ Sep, 30 at 14:10|14:10"};
        QTest::newRow("asleep across midnight")
            << QStringList{"2031-09-30T21:58:58", "2031-09-30T22:00:03"} << QStringList{QStringLiteral("23:59")}
            << QStringList{"ALARM @ Sep, 30 at 23:59|23:59"};
        QTest::newRow("11 min asleep") << QStringList{"2031-09-30T12:05:58", "2031-09-30T12:16:58"} << lunch
                                       << QStringList{};
        QTest::newRow("set back 0.5 s") << QStringList{"2031-09-30T12:06:00.2", "2031-09-30T12:05:59.7",
                                                       "2031-09-30T12:06:00.1 2031-09-30T12:06:02.1"}
                                        << lunch << QStringList{"ALARM @ Sep, 30 at 14:06|14:06"};
        QTest::newRow("set back 1 h") << QStringList{"2031-09-30T12:06:00", "2031-09-30T11:05:58 2031-09-30T11:06:02"}
                                      << lunch << QStringList{"ALARM @ Sep, 30 at 14:06|14:06"};
        const QStringList night{QStringLiteral("01:30"), QStringLiteral("02:30"), QStringLiteral("03:30")};
        QTest::newRow("spring forward") << QStringList{"2031-03-30T00:29:58 2031-03-30T01:30:01"} << night
                                        << QStringList{"ALARM @ Mar, 30 at 01:30|01:30", "ALARM @ Mar, 30 at 02:30|02:30",
                                                       "ALARM @ Mar, 30 at 03:30|03:30"};
        QTest::newRow("autumn") << QStringList{"2031-10-25T23:29:58 2031-10-26T02:30:01"} << night
                                << QStringList{"ALARM @ Oct, 26 at 01:30|01:30", "ALARM @ Oct, 26 at 02:30|02:30",
                                               "ALARM @ Oct, 26 at 03:30|03:30"};
    }
    void noAlarmIsLostOrRungTwice()
    {
        QFETCH(QStringList, spans);
        QFETCH(QStringList, rows);
        QFETCH(QStringList, trips);
        LoadedMainWindow m;
        for (int i = 0; i < rows.size(); ++i) {
            m.setRow(i, QString(), rows[i]);
            m.t->txtACDetails[i]->setText(rows[i]);
        }
        QDateTime spring;
        for (const QString &span : spans) {
            const QStringList ends = span.split(u' ');
            const QDateTime to = QDateTime::fromString(ends.last() + u'Z', Qt::ISODateWithMs);
            for (QDateTime t = QDateTime::fromString(ends.first() + u'Z', Qt::ISODateWithMs); t <= to; t = t.addSecs(1)) {
                m.tickAt(t.toLocalTime());
                if (spring.isNull() && m.fp.notifier.shown.size() == 2)
                    spring = t.toLocalTime();
            }
        }
        QCOMPARE(m.fp.notifier.shown, trips);
        // The hour skipped in spring rings its row at 03:00:00, late.
        if (QTest::currentDataTag() == QByteArray("spring forward"))
            QCOMPARE(spring.time(), QTime(3, 0));
    }
};

QTEST_MAIN(TickTest)
#include "tst_tick.moc"
