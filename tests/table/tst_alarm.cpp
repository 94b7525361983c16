// The alarm from the trip to its last sound: the sounding cycle driven by its
// events alone (the repeat timer, the end of a play, Stop), a trip that
// waits for nothing, the sound a missing file gives way to, and the check
// sound at start-up.

#include "appearance/frmCustomColors.h"
#include "fakes/LoadedMainWindow.h"
#include "shell/SecondaryForms.h"

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QDateTime at(int h, int mi, int s = 0) { return QDateTime(QDate(2031, 9, 30), QTime(h, mi, s)); }

// Row 0 trips at 14:06 and row 1 at 14:07, with the sound-times box as given.
void armRows(LoadedMainWindow &m, const QString &times)
{
    m.t->txtSoundOffTimes->setText(times);
    m.setRow(0, QString(), QStringLiteral("14:06"));
    m.setRow(1, QString(), QStringLiteral("14:07"));
}

// The cycle as a user meets it: the plays so far; s while one sounds; b and
// the plays left the button counts (c: its first caption) while it shows;
// n while the notification is open; t while the repeat timer runs at 15 s.
QString cycle(LoadedMainWindow &m)
{
    const QPushButton *b = m.t->cmdSnooze;
    const QString left = b->text().startsWith(QStringLiteral("turn off? ")) ? b->text().section(u' ', 2, 2) : QStringLiteral("c");
    const QTimer *repeat = m.t->tmrAlarmSound;
    return QString::number(m.fp.sound.played.size()) + (m.fp.sound.sounding.isEmpty() ? "-" : "s")
           + (b->isVisibleTo(m.t) ? "b" + left : "--") + (m.fp.notifier.open ? "n" : "-")
           + (!repeat->isActive() ? "-" : repeat->interval() == 15000 ? "t" : "?");
}

} // namespace

class AlarmTest : public QObject {
    Q_OBJECT

private slots:
    // Script: E a play ends, T the repeat timer fires (when it runs), S the button is pressed, N the
    // notification's Stop, X Exit, A row 1 trips. The state after the trip and after each step.
    void theCycleRunsOnItsEvents_data()
    {
        QTest::addColumn<QString>("times");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("states");
        QTest::addColumn<int>("stops"); // of a play that sounded
        QTest::newRow("three, 15 s apart") << "3" << "ETETE" << "1sbcnt 1-bcnt 2sb1nt 2-b1nt 3sb0n- 3-----" << 0;
        QTest::newRow("a long play pushes the next") << "3" << "TETEE" << "1sbcnt 1sbcnt 2sb1nt 2sb1nt 3sb0n- 3-----" << 0;
        QTest::newRow("stop while it sounds") << "3" << "S" << "1sbcnt 1-----" << 1;
        QTest::newRow("stop between plays") << "3" << "EST" << "1sbcnt 1-bcnt 1----- 1-----" << 0;
        QTest::newRow("stop in the last play") << "3" << "ETETS" << "1sbcnt 1-bcnt 2sb1nt 2-b1nt 3sb0n- 3-----" << 1;
        QTest::newRow("the notification's stop in it") << "2" << "ETN" << "1sbcnt 1-bcnt 2sb0n- 2-----" << 1;
        QTest::newRow("one play") << "1" << "E" << "1s--n- 1-----" << 0;
        QTest::newRow("one play, stopped") << "0" << "N" << "1s--n- 1-----" << 1;
        QTest::newRow("exit") << "3" << "EXT" << "1sbcnt 1-bcnt 1----- 1-----" << 0;
        QTest::newRow("a trip while it counts") << "3" << "AE" << "1sbcnt 1sbcnt 1-bcnt" << 0;
        QTest::newRow("a trip takes over the last play") << "2" << "ETA" << "1sbcnt 1-bcnt 2sb0n- 3sbcnt" << 1;
    }
    void theCycleRunsOnItsEvents()
    {
        QFETCH(QString, times);
        QFETCH(QString, script);
        QFETCH(QString, states);
        QFETCH(int, stops);
        LoadedMainWindow m;
        armRows(m, times);
        m.fp.sound.holding = true;
        m.tickAt(at(14, 6));
        const QHash<QChar, std::function<void()>> steps{
            {'E', [&] { m.fp.sound.endPlays(); }}, {'S', [&] { m.t->cmdSnooze_Click(); }}, {'N', [&] { m.fp.notifier.pressStop(); }},
            {'T', [&] { m.t->tmrAlarmSound->isActive() ? m.t->tmrAlarmSound_Timer() : void(); }},
            {'X', [&] { m.w->mnuExit->trigger(); }}, {'A', [&] { m.tickAt(at(14, 7)); }}};
        QStringList seen{cycle(m)};
        for (const QChar step : script)
            steps[step](), seen << cycle(m);
        QCOMPARE(seen.join(u' '), states);
        QVERIFY(m.fp.sound.stops == stops && m.fp.sound.beeps == m.fp.sound.played.size());
    }

    // Before any alarm the button is hidden and greyed (a screen reader finds nothing to press);
    // while one sounds it flashes, clickable pale red, then greyed deeper red; a click stops it.
    void theButtonIsGreyedTillAnAlarmThenFlashes()
    {
        LoadedMainWindow m;
        armRows(m, QStringLiteral("3"));
        QStringList phases{QString::number(m.t->cmdSnooze->isEnabled())};
        m.tickAt(at(14, 6));
        for (int flash = 0; flash < 3; ++flash, m.t->tmrAlarmSoundFlash_Timer())
            phases << QString::number(m.t->cmdSnooze->isEnabled()) + m.t->cmdSnooze->palette().color(QPalette::Button).name();
        QTest::mouseClick(m.t->cmdSnooze, Qt::LeftButton);
        QCOMPARE(phases.join(u' ') + QString::number(m.t->cmdSnooze->isEnabled() || m.t->tmrAlarmSoundFlash->isActive()), "0 0#ffc0c0 1#ffc0c0 0#ff80800");
    }

    // A database another program holds or moves away at the alarm second: the alarm
    // sounds at once with no box before it, even hidden in the tray with the pop-up on and the
    // custom colours previewed (the pop-up closes them, and they read the stored ones back);
    // the tip keeps the name it had.
    void nothingStandsBetweenTheTripAndTheSound_data()
    {
        QTest::addColumn<QString>("database");
        QTest::newRow("held by another program") << "held";
        QTest::newRow("moved away") << "moved";
    }
    void nothingStandsBetweenTheTripAndTheSound()
    {
        QFETCH(QString, database);
        LoadedMainWindow m(withSql({"UPDATE tblprogramsetting SET booAlarmPopupForm = 1, strprogramname = 'Kitchen'"}));
        armRows(m, QStringLiteral("2"));
        qobject_cast<frmCustomColors *>(m.w->showForm(SecondaryForm::CustomColors))->cmdShowLegend_Click();
        m.w->mnuMinimizeToTrayNow->trigger();
        TestDatabase other(m.fp.testDir.dbPath(), QStringLiteral("other"));
        if (database == "held")
            QVERIFY(other.exec("BEGIN EXCLUSIVE"));
        else
            QVERIFY(QFile::rename(m.fp.testDir.dbPath(), m.fp.testDir.dbPath() + ".moved"));
        QStringList order;
        QElapsedTimer took;
        took.start();
        m.fp.sound.onPlay = [&](const QString &) { order << QString::number(took.elapsed() < 100); };
        m.fp.messages.onShow = [&](const ShownMessage &box) { order << box.title; };
        try {
            m.tickAt(at(14, 6));
        } catch (const ProgramEnded &) { // a database gone when the custom colours close
        }
        QCOMPARE(order.value(0), "1");
        QCOMPARE(m.fp.tray.field, "[Kitchen..]ALARM @ Sep, 30 at 14:06");
    }

    // A row's sound that is missing gives way to the default one (and that to the player's tone);
    // the sound stays on, so the next alarm rings too. The tip says which file was played or missing.
    void aMissingSoundGivesWayAndTheSoundStaysOn()
    {
        LoadedMainWindow m;
        const QString own = m.fp.testDir.filePath(QStringLiteral("alarm.wav")), gone = m.fp.testDir.filePath(QStringLiteral("gone.wav"));
        armRows(m, QStringLiteral("1"));
        m.t->txtWAVEFileNamePath[0]->setText("  " + gone + " ");
        m.t->txtWAVEFileNamePath[1]->setText(own);
        m.tickAt(at(14, 6));
        QStringList seen{m.t->chkSoundOnOff->toolTip(), QString::number(m.t->chkSoundOnOff->isChecked() && m.w->mnuSoundOn->isChecked())};
        m.tickAt(at(14, 7));
        QCOMPARE(seen << m.t->chkSoundOnOff->toolTip() << m.fp.sound.played << m.fp.sound.fallbacks,
                 QStringList({"File Not Found: " + gone, "1", "Played: " + own, gone, own, own, own}));
    }

    // The switch's audible check at start-up plays for a user who keeps the sound on, only. A
    // silent alarm's notification is not critical.
    void soundOnOrOff()
    {
        for (const bool on : {true, false}) {
            LoadedMainWindow m(withSql({QStringLiteral("UPDATE tblprogramsetting SET booSound = %1").arg(int(on))}));
            QCOMPARE(m.startUpPlays.size(), int(on));
            armRows(m, QStringLiteral("1"));
            m.tickAt(at(14, 6));
            QCOMPARE(m.fp.notifier.shown.join(u'/') + "|" + QString::number(m.fp.sound.played.size()), on ? "ALARM @ Sep, 30 at 14:06||1" : "ALARM @ Sep, 30 at 14:06| (silent)|0");
        }
    }

    // With neither a tray nor a notification server to show it, an alarm brings the window forward.
    void aBareDesktopShowsTheWindow()
    {
        for (const bool bare : {true, false}) {
            LoadedMainWindow m;
            armRows(m, QStringLiteral("1"));
            m.fp.tray.hostAvailable = m.fp.notifier.server = !bare;
            m.w->setWindowState(Qt::WindowMinimized);
            m.tickAt(at(14, 6));
            QCOMPARE(m.w->isMinimized(), !bare);
        }
    }

    // The wake-up keeps 90 s ahead of the next alarm that would sound: a daily row passed today
    // comes back tomorrow; with the sound off there is none.
    void theWakeUpKeepsAheadOfTheNextAlarm()
    {
        LoadedMainWindow m;
        m.setRow(0, QString(), QStringLiteral("14:00"));
        m.setRow(1, QStringLiteral("Oct 01, 2031"), QStringLiteral("09:00"));
        m.tickAt(at(14, 6));
        QCOMPARE(m.fp.wake.next, QDateTime(QDate(2031, 10, 1), QTime(8, 58, 30)));
        m.setRow(1, QString(), QString());
        m.state().bEvaluateNow = true; // as a change asks
        m.tickAt(at(14, 6, 1));
        QCOMPARE(m.fp.wake.next, QDateTime(QDate(2031, 10, 1), QTime(13, 58, 30)));
        m.w->mnuSoundOff->trigger();
        m.state().bEvaluateNow = true;
        m.tickAt(at(14, 6, 2));
        QVERIFY(!m.fp.wake.next.isValid());
    }

    // Missed moments caught up after a gap ring in turn, but none after Exit.
    void exitStopsACatchUp()
    {
        LoadedMainWindow m;
        armRows(m, QStringLiteral("1"));
        m.tickAt(at(14, 5));
        m.fp.notifier.onShow = [&] { m.w->mnuExit->trigger(); };
        m.tickAt(at(14, 8));
        QCOMPARE(m.fp.notifier.shown.size(), 1);
    }
};

QTEST_MAIN(AlarmTest)
#include "tst_alarm.moc"
