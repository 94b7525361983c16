// The clock tick on a fake clock: read-out, when rows are evaluated, their
// countdowns and colours, and the exact-zero trip.

#include "fakes/LoadedMainWindow.h"
#include "table/TickSchedule.h"

#include <QCheckBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QDateTime at(int y, int mo, int d, int h, int mi, int s, int ms = 0)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s, ms));
}

QColor detailsColour(frmAlarmClock *t, int i) { return t->txtACDetails[i]->palette().color(QPalette::Base); }

} // namespace

class TickTest : public QObject {
    Q_OBJECT

private slots:
    void everyTickShowsTheTimeButRowsWaitForTheMinute()
    {
        LoadedMainWindow m;
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("15:06"));
        m.state().bEvaluateNow = false;
        m.tickAt(at(2031, 9, 30, 14, 5, 7, 420));
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:05:07"));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QString());

        m.tickAt(at(2031, 9, 30, 14, 6, 0, 3));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 1h 0m 0s "));
        QVERIFY(!m.state().bEvaluateNow);

        // A change asks for the next tick to evaluate at once.
        m.state().bEvaluateNow = true;
        m.tickAt(at(2031, 9, 30, 14, 6, 1, 3));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 0h 59m 59s "));
        QVERIFY(!m.state().bEvaluateNow);
    }

    void countdownAndStateColourFollowTheRow_data()
    {
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("countdown");
        QTest::addColumn<QColor>("colour");
        // Now is Sep 30, 2031 14:05:00, Regular scheme.
        QTest::newRow("far ahead") << "Oct 01, 2031" << "14:05" << "1d 0h 0m 0s " << QColor(255, 255, 255);
        QTest::newRow("within the hour") << "Sep 30, 2031" << "14:20" << "0d 0h 15m 0s " << QColor(255, 255, 0);
        QTest::newRow("within eight") << "Sep 30, 2031" << "14:10" << "0d 0h 5m 0s " << QColor(0, 255, 0);
        QTest::newRow("dated, sounded") << "Sep 29, 2031" << "14:10" << "done" << QColor(255, 0, 0);
        QTest::newRow("daily, just passed") << "" << "14:02" << "zZZzz" << QColor(255, 0, 0);
        QTest::newRow("daily, passed within hour") << "" << "13:30" << "zZZzz" << QColor(128, 255, 128);
        QTest::newRow("daily, passed long ago") << "" << "06:00" << "zZZzz" << QColor(255, 255, 255);
        QTest::newRow("not a date is daily") << "tomorrow" << "14:06" << "0d 0h 1m 0s " << QColor(0, 255, 0);
    }
    void countdownAndStateColourFollowTheRow()
    {
        QFETCH(QString, date);
        QFETCH(QString, time);
        QFETCH(QString, countdown);
        QFETCH(QColor, colour);
        LoadedMainWindow m;
        m.setRow(4, date, time);
        m.tickAt(at(2031, 9, 30, 14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[4]->text(), countdown);
        QCOMPARE(detailsColour(m.t, 4), colour);
    }

    void onlyAnExactZeroTrips()
    {
        LoadedMainWindow m;
        m.setRow(2, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:06"));
        m.tickAt(at(2031, 9, 30, 14, 5, 59, 990));
        QVERIFY(m.fp.sound.played.isEmpty());
        m.tickAt(at(2031, 9, 30, 14, 6, 0, 2));
        QCOMPARE(m.fp.sound.played, QStringList{m.fp.testDir.path() + QStringLiteral("/alarm.wav")});
        QCOMPARE(m.fp.sound.beeps, 1);
        QCOMPARE(m.state().intAlarmRow, qint16(2));
        QVERIFY(m.state().bEvaluateNow);
        // The tray tip says when.
        QCOMPARE(m.fp.tray.calls.value(0), QStringLiteral("remove"));
        QVERIFY(m.fp.tray.field.startsWith(QStringLiteral("[Quorvel Alarm C..]ALARM @ Sep, 30 at 14:06")));
        QCOMPARE(m.t->lblCountDownHours[2]->text(), QStringLiteral("done"));
    }

    void aMissedSecondMeansNoTrip()
    {
        LoadedMainWindow m;
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:06"));
        m.setRow(1, QString(), QStringLiteral("14:06"));
        m.tickAt(at(2031, 9, 30, 14, 5, 59));
        m.tickAt(at(2031, 9, 30, 14, 6, 1));
        m.state().bEvaluateNow = true;
        m.tickAt(at(2031, 9, 30, 14, 6, 2));
        QVERIFY(m.fp.sound.played.isEmpty());
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("done"));
        QCOMPARE(detailsColour(m.t, 0), QColor(255, 0, 0));
        QCOMPARE(m.t->lblCountDownHours[1]->text(), QStringLiteral("zZZzz"));
    }

    void twoRowsAtOneMomentPlayTheHigherRowsSound()
    {
        LoadedMainWindow m;
        m.setRow(3, QString(), QStringLiteral("14:06"));
        m.setRow(9, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:06"));
        m.t->txtWAVEFileNamePath[3]->setText(m.fp.testDir.path() + QStringLiteral("/alarm.wav"));
        const QString nine = m.fp.testDir.path() + QStringLiteral("/nine.wav");
        QVERIFY(QFile::copy(m.fp.testDir.path() + QStringLiteral("/alarm.wav"), nine));
        m.t->txtWAVEFileNamePath[9]->setText(nine);
        m.tickAt(at(2031, 9, 30, 14, 6, 0));
        QCOMPARE(m.fp.sound.played, QStringList{nine});
        QCOMPARE(m.state().intAlarmRow, qint16(9));
    }

    void aSecondAlarmWhileOneSoundsNeitherRestartsNorPlays()
    {
        LoadedMainWindow m;
        m.t->txtSoundOffTimes->setText(QStringLiteral("3"));
        m.setRow(0, QString(), QStringLiteral("14:06"));
        m.setRow(1, QString(), QStringLiteral("14:07"));
        m.tickAt(at(2031, 9, 30, 14, 6, 0));
        QCOMPARE(m.state().lngAlarmPlaysLeft, 2);
        QCOMPARE(m.fp.sound.played.size(), 1);
        m.tickAt(at(2031, 9, 30, 14, 7, 0));
        QCOMPARE(m.state().lngAlarmPlaysLeft, 2);
        QCOMPARE(m.fp.sound.played.size(), 1);
        QVERIFY(m.fp.tray.field.contains(QStringLiteral("ALARM @ Sep, 30 at 14:07")));
        QCOMPARE(m.state().intAlarmRow, qint16(1));
    }

    void minimizedTheCountdownsFreezeButAlarmsTrip()
    {
        LoadedMainWindow m;
        m.setRow(0, QString(), QStringLiteral("14:06"));
        m.tickAt(at(2031, 9, 30, 14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 0h 1m 0s "));
        const QString shown = m.t->txtCurrentDateTime->text();
        m.state().intMDIWindowState = 1;
        m.tickAt(at(2031, 9, 30, 14, 5, 30));
        m.tickAt(at(2031, 9, 30, 14, 6, 0));
        QCOMPARE(m.t->txtCurrentDateTime->text(), shown);
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 0h 1m 0s "));
        QCOMPARE(m.fp.sound.played.size(), 1);
    }

    void aDailyRowCountsDownAgainAfterMidnight()
    {
        LoadedMainWindow m;
        m.setRow(6, QString(), QStringLiteral("00:01"));
        m.tickAt(at(2031, 9, 30, 23, 59, 0));
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QStringLiteral("zZZzz"));
        m.tickAt(at(2031, 10, 1, 0, 0, 0));
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QStringLiteral("0d 0h 1m 0s "));
        QCOMPARE(detailsColour(m.t, 6), QColor(0, 255, 0));
        m.tickAt(at(2031, 10, 1, 0, 1, 0));
        QCOMPARE(m.fp.sound.played.size(), 1);
    }

    void rowsWithoutATimeAreLeftAlone()
    {
        LoadedMainWindow m;
        m.setRow(5, QStringLiteral("Sep 30, 2031"), QString());
        m.t->lblCountDownHours[5]->setText(QStringLiteral("as it was"));
        m.tickAt(at(2031, 9, 30, 14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[5]->text(), QStringLiteral("as it was"));
    }

    void aBadTimeEndsTheTickQuietly()
    {
        LoadedMainWindow m;
        m.setRow(1, QString(), QStringLiteral("14:10"));
        m.setRow(2, QString(), QStringLiteral("1::23"));
        m.setRow(3, QString(), QStringLiteral("14:10"));
        m.tickAt(at(2031, 9, 30, 14, 5, 0));
        QCOMPARE(m.t->lblCountDownHours[1]->text(), QStringLiteral("0d 0h 5m 0s "));
        QCOMPARE(m.t->lblCountDownHours[3]->text(), QString());
        QVERIFY(m.fp.messages.shown.isEmpty());
        // And the clock keeps going.
        QVERIFY(m.t->tmrAlarmClock->isActive());
    }

    void thePopUpSwitchBringsTheWindowBack()
    {
        LoadedMainWindow m;
        m.t->chkShow->setChecked(true);
        m.w->hide();
        m.state().intMDIWindowState = 1;
        m.setRow(0, QString(), QStringLiteral("14:06"));
        m.tickAt(at(2031, 9, 30, 14, 6, 0));
        QVERIFY(m.w->isVisible());
        QCOMPARE(m.state().intMDIWindowState, 0);
    }

    void theTickIsArmedForJustAfterTheNextSecond()
    {
        LoadedMainWindow m;
        for (int ms : {0, 1, 2, 500, 997, 999}) {
            m.tickAt(at(2031, 9, 30, 14, 5, 10, ms));
            QCOMPARE(m.t->tmrAlarmClock->interval(), 1000 - ms + kTickOffsetMs);
            QVERIFY(m.t->tmrAlarmClock->isSingleShot());
            QCOMPARE(m.t->tmrAlarmClock->timerType(), Qt::PreciseTimer);
        }
    }

    void aDayOfTicksTripsEveryDailyRowOnce()
    {
        LoadedMainWindow m;
        m.t->txtSoundOffTimes->setText(QStringLiteral("1"));
        for (int i = 0; i < 13; ++i)
            m.setRow(i, QString(), QStringLiteral("%1:%2").arg(i * 2 % 24, 2, 10, QLatin1Char('0')).arg(i * 7 % 60, 2, 10, QLatin1Char('0')));
        QDateTime moment = at(2031, 9, 30, 0, 0, 0, 2);
        for (int s = 0; s < 86400; ++s) {
            m.tickAt(moment);
            moment = moment.addSecs(1);
        }
        QCOMPARE(m.fp.sound.played.size(), 13);
    }
};

QTEST_MAIN(TickTest)
#include "tst_tick.moc"
