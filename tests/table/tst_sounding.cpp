// The sounding cycle after a trip: how many plays, the repeat and flash
// timers, the snooze button, and what a missing sound file does.

#include "fakes/LoadedMainWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

const QDateTime kTrip(QDate(2031, 9, 30), QTime(14, 6, 0));

// A window whose row 0 trips at kTrip, with the sound-times box as given.
void armRow0(LoadedMainWindow &m, const QString &times)
{
    m.t->txtSoundOffTimes->setText(times);
    m.setRow(0, QString(), QStringLiteral("14:06"));
}

} // namespace

class SoundingTest : public QObject {
    Q_OBJECT

private slots:
    void startingUpMakesNoSound()
    {
        LoadedMainWindow m;
        QVERIFY(m.fp.sound.played.isEmpty());
        QCOMPARE(m.fp.sound.beeps, 0);
        QVERIFY(m.state().bSoundOn);
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
    }

    void oneOrNoCountPlaysOnceWithoutTimers_data()
    {
        QTest::addColumn<QString>("times");
        QTest::newRow("1") << "1";
        QTest::newRow("0") << "0";
        QTest::newRow("empty") << "";
        QTest::newRow("abc") << "abc";
        QTest::newRow("-4") << "-4";
    }
    void oneOrNoCountPlaysOnceWithoutTimers()
    {
        QFETCH(QString, times);
        LoadedMainWindow m;
        armRow0(m, times);
        m.tickAt(kTrip);
        QCOMPARE(m.fp.sound.played.size(), 1);
        QCOMPARE(m.fp.sound.beeps, 1);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QVERIFY(!m.t->tmrAlarmSoundFlash->isActive());
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
    }

    void threePlaysFifteenSecondsApartThenStop()
    {
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("3"));
        QStringList captionsAtPlay;
        m.fp.sound.onPlay = [&](const QString &) { captionsAtPlay << m.t->cmdSnooze->text(); };

        m.tickAt(kTrip);
        QCOMPARE(m.state().lngAlarmPlaysLeft, 2);
        QVERIFY(m.t->cmdSnooze->isVisibleTo(m.t));
        QVERIFY(m.t->tmrAlarmSoundFlash->isActive());
        QCOMPARE(m.t->tmrAlarmSoundFlash->interval(), 300);
        QVERIFY(m.t->tmrAlarmSound->isActive());
        QCOMPARE(m.t->tmrAlarmSound->interval(), 15000);

        m.t->tmrAlarmSound_Timer(); // 15 s
        QCOMPARE(m.state().lngAlarmPlaysLeft, 1);
        QCOMPARE(m.t->cmdSnooze->text(), QStringLiteral("turn off? 1 alarms to play"));
        QVERIFY(m.t->tmrAlarmSound->isActive());

        m.t->tmrAlarmSound_Timer(); // 30 s: the last play, and the cycle ends
        QCOMPARE(m.state().lngAlarmPlaysLeft, 0);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QVERIFY(!m.t->tmrAlarmSoundFlash->isActive());
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
        QCOMPARE(m.t->cmdSnooze->text(), QStringLiteral("click me to turn off the alarm"));

        QCOMPARE(m.fp.sound.played.size(), 3);
        QCOMPARE(m.fp.sound.beeps, 3);
        QCOMPARE(captionsAtPlay.value(1), QStringLiteral("turn off? 1 alarms to play"));
    }

    void snoozeStopsTheCycleAtOnce()
    {
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("5"));
        m.tickAt(kTrip);
        // A click lands only in the enabled phase of the flashing.
        if (!m.t->cmdSnooze->isEnabled())
            m.t->tmrAlarmSoundFlash_Timer();
        QVERIFY(m.t->cmdSnooze->isEnabled());
        QTest::mouseClick(m.t->cmdSnooze, Qt::LeftButton);
        QCOMPARE(m.state().lngAlarmPlaysLeft, 0);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QCOMPARE(m.t->tmrAlarmSound->interval(), 0);
        QVERIFY(!m.t->tmrAlarmSoundFlash->isActive());
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
        QVERIFY(!m.t->cmdSnooze->isEnabled());
        QCOMPARE(m.fp.sound.played.size(), 1);

        // The next alarm starts a fresh cycle.
        m.setRow(1, QString(), QStringLiteral("14:07"));
        m.tickAt(kTrip.addSecs(60));
        QCOMPARE(m.state().lngAlarmPlaysLeft, 4);
        QCOMPARE(m.fp.sound.played.size(), 2);
    }

    void snoozeDuringAPlayEndsTheCycleAfterIt()
    {
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("4"));
        m.fp.sound.onPlay = [&](const QString &) { m.t->cmdSnooze_Click(); };
        m.tickAt(kTrip);
        QCOMPARE(m.state().lngAlarmPlaysLeft, 0);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QCOMPARE(m.fp.sound.played.size(), 1);
    }

    void theSnoozeButtonFlashes()
    {
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("2"));
        m.tickAt(kTrip);
        const auto colour = [&] { return m.t->cmdSnooze->palette().color(QPalette::Button); };
        // Enabled turns deeper red and greyed; greyed turns pale and clickable.
        for (int flash = 0; flash < 4; ++flash) {
            const bool wasEnabled = m.t->cmdSnooze->isEnabled();
            m.t->tmrAlarmSoundFlash_Timer();
            QCOMPARE(m.t->cmdSnooze->isEnabled(), !wasEnabled);
            QCOMPARE(colour(), wasEnabled ? QColor(0xFF, 0x80, 0x80) : QColor(0xFF, 0xC0, 0xC0));
        }
    }

    void aRowsOwnSoundOrTheDefaultPlays()
    {
        LoadedMainWindow m;
        const QString own = m.fp.testDir.path() + QStringLiteral("/own.wav");
        QVERIFY(QFile::copy(m.fp.testDir.path() + QStringLiteral("/alarm.wav"), own));
        m.t->txtWAVEFileNamePath[0]->setText(QStringLiteral("  ") + own + QStringLiteral(" "));
        armRow0(m, QStringLiteral("1"));
        m.tickAt(kTrip);
        QCOMPARE(m.fp.sound.played, QStringList{own});
        QCOMPARE(m.t->chkSoundOnOff->toolTip(), QStringLiteral("Played: ") + own);
    }

    void aMissingFileTurnsTheSoundOffUntilTurnedOnAgain()
    {
        LoadedMainWindow m;
        const QString missing = m.fp.testDir.path() + QStringLiteral("/gone.wav");
        m.t->txtWAVEFileNamePath[0]->setText(missing);
        armRow0(m, QStringLiteral("1"));
        m.tickAt(kTrip);
        QVERIFY(m.fp.sound.played.isEmpty());
        QVERIFY(!m.t->chkSoundOnOff->isChecked());
        QVERIFY(!m.state().bSoundOn);
        QCOMPARE(m.t->chkSoundOnOff->text(), QStringLiteral("Sound [off]"));
        QCOMPARE(m.t->chkSoundOnOff->toolTip(), QStringLiteral("File Not Found: ") + missing);
        QVERIFY(m.w->mnuSoundOff->isChecked() && !m.w->mnuSoundOn->isChecked());

        // Later alarms stay silent: no beep, no play.
        m.setRow(1, QString(), QStringLiteral("14:07"));
        m.tickAt(kTrip.addSecs(60));
        QVERIFY(m.fp.sound.played.isEmpty());
        QCOMPARE(m.fp.sound.beeps, 1);
    }

    void turningSoundOnPlaysACheckAndMayTurnItOffAgain()
    {
        LoadedMainWindow m;
        m.t->chkSoundOnOff->setChecked(false);
        QVERIFY(!m.state().bSoundOn);
        m.t->chkSoundOnOff->setChecked(true);
        QCOMPARE(m.fp.sound.played, QStringList{m.fp.testDir.path() + QStringLiteral("/alarm.wav")});
        QCOMPARE(m.t->chkSoundOnOff->text(), QStringLiteral("Sound [on]"));
        QVERIFY(m.w->mnuSoundOn->isChecked());

        m.fp.testDir.remove(QStringLiteral("alarm.wav"));
        m.t->chkSoundOnOff->setChecked(false);
        m.t->chkSoundOnOff->setChecked(true);
        QVERIFY(!m.t->chkSoundOnOff->isChecked());
        QCOMPARE(m.t->chkSoundOnOff->toolTip(),
                 QStringLiteral("File Not Found: ") + m.fp.testDir.path() + QStringLiteral("/alarm.wav"));
    }

    void theClockKeepsTickingWhileASoundPlays()
    {
        // A tick that arrives during a play behaves like any other tick.
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("1"));
        int nestedTicks = 0;
        m.fp.sound.onPlay = [&](const QString &) {
            if (nestedTicks++ == 0)
                m.tickAt(kTrip.addSecs(1));
        };
        m.tickAt(kTrip);
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:06:01"));
        QCOMPARE(m.fp.sound.played.size(), 1);
    }
};

QTEST_MAIN(SoundingTest)
#include "tst_sounding.moc"
