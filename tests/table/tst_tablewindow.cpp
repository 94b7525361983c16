// The table window as a whole: its load, resize and activation, the two
// switches that mirror menu entries, and the sound-times box.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QCheckBox>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QPointer>
#include <QTest>
#include <QTimer>

class TableWindowTest : public QObject {
    Q_OBJECT

private slots:
    void soundTimesAreStoredAtOnce_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("zero") << "0" << "1";
        QTest::newRow("negative") << "-3" << "1";
        QTest::newRow("empty") << "" << "1";
        QTest::newRow("words") << "abc" << "1";
        QTest::newRow("four") << "4" << "4";
        QTest::newRow("blanks and a fraction") << " 4.6 " << "5";
        QTest::newRow("too big for the box") << "70000" << "1";
    }
    void soundTimesAreStoredAtOnce()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        LoadedMainWindow m;
        m.t->txtSoundOffTimes->setText(typed);
        // Leaving the box by the user's hand (a Tab).
        QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(m.t->txtSoundOffTimes, &leave);
        QCOMPARE(m.t->txtSoundOffTimes->text(), shown);
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.value("SELECT intSoundAlarmTimes FROM tblprogramsetting").toString(), shown);
    }

    void switchesKeepTheirCaptionAndMenuMarksInStep()
    {
        LoadedMainWindow m;
        const int storedShow = TestDatabase(m.fp.testDir.dbPath()).value("SELECT booAlarmPopupForm FROM tblprogramsetting").toInt();
        m.t->chkShow->setChecked(true);
        QCOMPARE(m.t->chkShow->text(), QStringLiteral("On Alarm Popup the Form [on]"));
        QVERIFY(m.w->mnuPopupFormOn->isChecked() && !m.w->mnuPopupFormOff->isChecked());
        m.t->chkShow->setChecked(false);
        QCOMPARE(m.t->chkShow->text(), QStringLiteral("On Alarm Popup the Form [off]"));
        QVERIFY(!m.w->mnuPopupFormOn->isChecked() && m.w->mnuPopupFormOff->isChecked());

        m.t->chkMinimizeToTray->setChecked(false);
        QCOMPARE(m.t->chkMinimizeToTray->text(), QStringLiteral("Minimize to Tray [Disabled]"));
        QVERIFY(!m.w->mnuMinimizedToTrayOn->isChecked() && m.w->mnuMinimizedToTrayOff->isChecked());
        m.t->chkMinimizeToTray->setChecked(true);
        QCOMPARE(m.t->chkMinimizeToTray->text(), QStringLiteral("Minimize to Tray [Allowed]"));
        QVERIFY(m.w->mnuMinimizedToTrayOn->isChecked() && !m.w->mnuMinimizedToTrayOff->isChecked());

        // A click on a switch stores nothing; only the menu commands do.
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath()).value("SELECT booAlarmPopupForm FROM tblprogramsetting").toInt(),
                 storedShow);
        QTest::mouseClick(m.t->chkShow, Qt::LeftButton, {}, QPoint(6, m.t->chkShow->height() / 2));
        QVERIFY(m.t->chkShow->isChecked());
        QVERIFY(m.w->mnuPopupFormOn->isChecked());
    }

    void maximizingReEvaluatesResetsTheSizeAndClosesSecondaryWindows()
    {
        LoadedMainWindow m;
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.w->resize(900, 700);
        m.state().bEvaluateNow = false;
        m.t->Form_Resize(0);
        QCOMPARE(m.state().intMDIWindowState, 0);
        QVERIFY(!m.state().bEvaluateNow);
        QCOMPARE(m.w->size(), QSize(900, 700));

        m.t->Form_Resize(2);
        QCOMPARE(m.state().intMDIWindowState, 2);
        QVERIFY(m.state().bEvaluateNow);
        QCOMPARE(m.w->size(), QSize(804, 616));
        QVERIFY(!legend || !legend->isVisible());
    }

    void activatingTheWindowAsksForAnEvaluation()
    {
        LoadedMainWindow m;
        m.state().bEvaluateNow = false;
        QEvent activate(QEvent::WindowActivate);
        QApplication::sendEvent(m.t, &activate);
        QVERIFY(m.state().bEvaluateNow);

        // Losing the focus to another window is not leaving the box.
        m.t->txtSoundOffTimes->setText(QStringLiteral("9"));
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(m.t->txtSoundOffTimes, &away);
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath()).value("SELECT intSoundAlarmTimes FROM tblprogramsetting").toInt(), 3);
    }

    void loadTurnsSoundOnWhateverWasStoredThenTheStoredSwitchesWin()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET booSound = 0, intSoundAlarmTimes = 2");
        });
        QVERIFY(m.t->isLoaded());
        QCOMPARE(m.state().lngAlarmPlaysLeft, 0);
        QVERIFY(!m.t->cmdSnooze->isVisibleTo(m.t));
        QVERIFY(m.t->tmrAlarmClock->isActive());
        QCOMPARE(m.t->txtSoundOffTimes->text(), QStringLiteral("2"));
        QVERIFY(!m.t->bDataChanged);
        // The main window applies the stored switches after the table's own load.
        QVERIFY(!m.t->chkSoundOnOff->isChecked());
        QVERIFY(m.w->mnuSoundOff->isChecked());
    }

    void aBrokenSettingsTableIsReportedByTheSoundTimesReader()
    {
        LoadedMainWindow m;
        TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblprogramsetting RENAME TO moved");
        m.t->subApplyAlarmClockFormProgramSettings();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("subApplyAlarmClockFormProgramSettings\r\n")));
    }
};

QTEST_MAIN(TableWindowTest)
#include "tst_tablewindow.moc"
