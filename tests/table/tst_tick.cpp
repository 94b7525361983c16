// The clock tick on a fake clock: read-out, evaluation, countdowns, colours and the exact-zero trip.

#include "fakes/LoadedMainWindow.h"
#include "table/TickSchedule.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <QTimer>

// A moment on Sep 30, 2031.
static QDateTime at(int h, int mi, int s, int ms = 0) { return QDateTime(QDate(2031, 9, 30), QTime(h, mi, s, ms)); }

class TickTest : public QObject {
    Q_OBJECT

private slots:
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

        // A missed second means no trip, for dated and daily rows alike.
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:08"));
        m.setRow(1, QString(), QStringLiteral("14:08"));
        m.tickAt(at(14, 7, 59));
        m.state().bEvaluateNow = true;
        m.tickAt(at(14, 8, 1));
        QCOMPARE(m.fp.sound.played.size(), 1);
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("done"));
        QCOMPARE(m.t->lblCountDownHours[1]->text(), QStringLiteral("zZZzz"));
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
        // A second alarm while the first still sounds only updates the tray tip.
        m.tickAt(at(14, 7, 0));
        QCOMPARE(m.state().lngAlarmPlaysLeft, 2);
        QCOMPARE(m.fp.sound.played.size(), 1);
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

    void aBadTimeEndsTheTickQuietly()
    {
        LoadedMainWindow m;
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QString()); // no time: left alone
        m.t->lblCountDownHours[0]->setText(QStringLiteral("as it was"));
        m.setRow(1, QString(), QStringLiteral("14:10"));
        m.setRow(2, QString(), QStringLiteral("1::23"));
        m.setRow(3, QString(), QStringLiteral("14:10"));
        m.tickAt(at(14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("as it was"));
        QCOMPARE(m.t->lblCountDownHours[1]->text(), QStringLiteral("0d 0h 5m 0s "));
        QCOMPARE(m.t->lblCountDownHours[3]->text(), QString());
        QVERIFY(m.fp.messages.shown.isEmpty());
        QVERIFY(m.t->tmrAlarmClock->isActive()); // and the clock keeps going
    }

    void aDayOfTicksTripsEveryDailyRowOnce()
    {
        LoadedMainWindow m;
        m.t->txtSoundOffTimes->setText(QStringLiteral("1"));
        for (int i = 0; i < 13; ++i)
            m.setRow(i, QString(), QStringLiteral("%1:%2").arg(i * 2 % 24, 2, 10, QLatin1Char('0')).arg(i * 7 % 60, 2, 10, QLatin1Char('0')));
        QDateTime moment = at(0, 0, 0, 2);
        for (int s = 0; s < 86400; ++s) {
            m.tickAt(moment);
            moment = moment.addSecs(1);
        }
        QCOMPARE(m.fp.sound.played.size(), 13);
    }
};

QTEST_MAIN(TickTest)
#include "tst_tick.moc"
