// The sounding cycle after a trip: plays, timers, the snooze button and missing sound files.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

static const QDateTime kTrip(QDate(2031, 9, 30), QTime(14, 6, 0));

// Row 0 trips at kTrip, with the sound-times box as given.
static void armRow0(LoadedMainWindow &m, const QString &times)
{
    m.t->txtSoundOffTimes->setText(times);
    m.setRow(0, QString(), QStringLiteral("14:06"));
}

class SoundingTest : public QObject {
    Q_OBJECT

private slots:
    void playsTheCountFifteenSecondsApart_data()
    {
        QTest::addColumn<QString>("times");
        QTest::addColumn<int>("plays");
        QTest::addColumn<QString>("secondCaption"); // the snooze button's, at the second play
        QTest::newRow("1") << "1" << 1 << "";
        QTest::newRow("0") << "0" << 1 << "";
        QTest::newRow("3") << "3" << 3 << "turn off? 1 alarms to play";
    }
    void playsTheCountFifteenSecondsApart()
    {
        QFETCH(QString, times);
        QFETCH(int, plays);
        QFETCH(QString, secondCaption);
        LoadedMainWindow m;
        armRow0(m, times);
        QStringList captions;
        m.fp.sound.onPlay = [&](const QString &) { captions << m.t->cmdSnooze->text(); };
        m.tickAt(kTrip);
        // A single play needs neither the repeat timer nor the snooze button.
        QCOMPARE(m.t->cmdSnooze->isVisibleTo(m.t), plays > 1);
        for (int guard = 0; m.t->tmrAlarmSound->isActive() && guard < 10; ++guard) {
            QCOMPARE(m.t->tmrAlarmSound->interval(), 15000);
            m.t->tmrAlarmSound_Timer();
        }
        QCOMPARE(m.fp.sound.played.size(), plays);
        QCOMPARE(m.fp.sound.beeps, plays);
        QCOMPARE(captions.value(1), secondCaption);
        QVERIFY(!m.t->tmrAlarmSoundFlash->isActive());
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
        QCOMPARE(m.t->cmdSnooze->text(), QStringLiteral("click me to turn off the alarm"));
    }

    void snoozeStopsTheCycleAtOnce()
    {
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("5"));
        m.t->txtACDetails[0]->setText(QStringLiteral("Dentist"));
        m.tickAt(kTrip);
        QCOMPARE(m.fp.notifier.shown, QStringList{QStringLiteral("ALARM @ Sep, 30 at 14:06|Dentist")});
        // The button flashes: greyed deeper red, then clickable pale red.
        m.t->tmrAlarmSoundFlash_Timer();
        QVERIFY(!m.t->cmdSnooze->isEnabled());
        QCOMPARE(m.t->cmdSnooze->palette().color(QPalette::Button), QColor(0xFF, 0x80, 0x80));
        m.t->tmrAlarmSoundFlash_Timer();
        QCOMPARE(m.t->cmdSnooze->palette().color(QPalette::Button), QColor(0xFF, 0xC0, 0xC0));
        QTest::mouseClick(m.t->cmdSnooze, Qt::LeftButton);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QVERIFY(!m.t->tmrAlarmSoundFlash->isActive());
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
        QCOMPARE(m.fp.notifier.closed, 1);

        // The next alarm starts a fresh cycle; the notification's Stop during
        // its first play silences that play and ends the cycle.
        int stopsDuringPlay = -1;
        m.fp.sound.onPlay = [&](const QString &) {
            m.fp.notifier.pressStop();
            stopsDuringPlay = m.fp.sound.stops;
        };
        m.setRow(1, QString(), QStringLiteral("14:07"));
        m.tickAt(kTrip.addSecs(60));
        QCOMPARE(stopsDuringPlay, 2);
        QCOMPARE(m.fp.sound.played.size(), 2);
        QCOMPARE(m.state().lngAlarmPlaysLeft, 0);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QCOMPARE(m.fp.notifier.closed, 2);
    }

    // A first play of 20 s: the repeat due at 15 s waits for its end, and
    // the next one keeps to the timer again.
    void aLongPlayIsFollowedWithoutOverlapOrLoss()
    {
        LoadedMainWindow m;
        armRow0(m, QStringLiteral("3"));
        int sounding = 0;
        int most = 0;
        m.fp.sound.onPlay = [&](const QString &) {
            most = std::max(most, ++sounding);
            if (m.fp.sound.played.size() == 1) {
                m.fp.clock.advanceSeconds(15);
                m.t->tmrAlarmSound_Timer(); // the repeat timer fires in mid-play
                m.fp.clock.advanceSeconds(5);
            }
            --sounding;
        };
        m.tickAt(kTrip);
        for (int guard = 0; guard < 10; ++guard)
            QCoreApplication::processEvents();
        QCOMPARE(m.fp.sound.played.size(), 2);
        QVERIFY(m.t->tmrAlarmSound->isActive());
        m.t->tmrAlarmSound_Timer();
        QCOMPARE(most, 1);
        QCOMPARE(m.fp.sound.played.size(), 3);
        QVERIFY(!m.t->tmrAlarmSound->isActive());
        QCOMPARE(m.fp.notifier.closed, 1);
    }

    // A user who chose silence starts in silence.
    void startUpWithSoundStoredOffPlaysNothing()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath())
                .exec(QStringLiteral("UPDATE tblprogramsetting SET booSound = 0"));
        });
        QVERIFY(m.fp.sound.played.isEmpty());
        QCOMPARE(m.fp.sound.beeps, 0);
        QVERIFY(!m.t->chkSoundOnOff->isChecked() && m.w->mnuSoundOff->isChecked());
    }

    // Closed while a start-up box is open: nothing is left that could ring.
    void closingDuringStartUpEndsTheProgram()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath()).exec(QStringLiteral("DROP TABLE tblalarmclock"));
            fp.messages.onShow = [](const ShownMessage &) {
                for (QWidget *w : QApplication::topLevelWidgets())
                    if (w->objectName() == QStringLiteral("mdiAlarmClock"))
                        w->close();
            };
        });
        QVERIFY(m.w->isUnloaded());
        QVERIFY(!m.fp.wallTimer.active);
    }

    // Sound Off chosen while Sound On still plays its check: the database
    // keeps the last choice, as the window shows it.
    void aChoiceDuringTheCheckSoundIsTheOneStored()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath()).exec(QStringLiteral("UPDATE tblprogramsetting SET booSound = 0"));
        });
        m.fp.sound.onPlay = [&](const QString &) {
            m.fp.sound.onPlay = {};
            m.w->mnuSoundOff->trigger();
        };
        m.w->mnuSoundOn->trigger();
        QCOMPARE(m.fp.sound.played.size(), 1);
        QVERIFY(!m.t->chkSoundOnOff->isChecked() && m.w->mnuSoundOff->isChecked());
        const auto stored = [&] {
            return TestDatabase(m.fp.testDir.dbPath()).first(QStringLiteral("SELECT booSound FROM tblprogramsetting"));
        };
        QCOMPARE(stored(), QStringLiteral("0"));
        // A check sound that is missing turns the switch straight off again:
        // the database keeps saying off too.
        m.fp.testDir.remove(QStringLiteral("alarm.wav"));
        m.w->mnuSoundOn->trigger();
        QVERIFY(!m.t->chkSoundOnOff->isChecked());
        QCOMPARE(stored(), QStringLiteral("0"));
    }

    void aRowsOwnSoundPlaysWhileTheClockTicksOn()
    {
        LoadedMainWindow m;
        const QString own = m.fp.testDir.path() + QStringLiteral("/own.wav");
        QVERIFY(QFile::copy(m.fp.testDir.path() + QStringLiteral("/alarm.wav"), own));
        m.t->txtWAVEFileNamePath[0]->setText(QStringLiteral("  ") + own + QStringLiteral(" "));
        armRow0(m, QStringLiteral("1"));
        // A tick that arrives during a play behaves like any other tick.
        m.fp.sound.onPlay = [&](const QString &) { m.tickAt(kTrip.addSecs(1)); };
        m.tickAt(kTrip);
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:06:01"));
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
        QCOMPARE(m.t->chkSoundOnOff->toolTip(), QStringLiteral("File Not Found: ") + missing);
        QVERIFY(m.w->mnuSoundOff->isChecked() && !m.w->mnuSoundOn->isChecked());
        // Later alarms stay silent: no beep, no play.
        m.setRow(1, QString(), QStringLiteral("14:07"));
        m.tickAt(kTrip.addSecs(60));
        QCOMPARE(m.fp.sound.beeps, 1);

        // Turning it on plays the default sound as a check...
        m.t->chkSoundOnOff->setChecked(true);
        const QString alarm = m.fp.testDir.path() + QStringLiteral("/alarm.wav");
        QCOMPARE(m.fp.sound.played, QStringList{alarm});
        // ...and turns it straight off again when that is missing too.
        m.fp.testDir.remove(QStringLiteral("alarm.wav"));
        m.t->chkSoundOnOff->setChecked(false);
        m.t->chkSoundOnOff->setChecked(true);
        QVERIFY(!m.t->chkSoundOnOff->isChecked());
        QCOMPARE(m.t->chkSoundOnOff->toolTip(), QStringLiteral("File Not Found: ") + alarm);
    }
};

QTEST_MAIN(SoundingTest)
#include "tst_sounding.moc"
