// The table window's load, resize and activation, its switches and its sound-times box.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QCheckBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

static int storedSetting(LoadedMainWindow &m, const char *column)
{
    return TestDatabase(m.fp.testDir.dbPath()).value(QStringLiteral("SELECT %1 FROM tblprogramsetting").arg(column)).toInt();
}

class TableWindowTest : public QObject {
    Q_OBJECT

private slots:
    void soundTimesAreStoredOnLeaving_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("stored");
        QTest::newRow("zero") << "0" << 1;
        QTest::newRow("blanks and a fraction") << " 4.6 " << 5;
        QTest::newRow("too big for the box") << "70000" << 1;
    }
    void soundTimesAreStoredOnLeaving()
    {
        QFETCH(QString, typed);
        QFETCH(int, stored);
        LoadedMainWindow m;
        m.t->txtSoundOffTimes->setText(typed);
        // Losing the focus to another window is not leaving the box.
        QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(m.t->txtSoundOffTimes, &away);
        QCOMPARE(storedSetting(m, "intSoundAlarmTimes"), 3);
        QFocusEvent tab(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(m.t->txtSoundOffTimes, &tab);
        QCOMPARE(m.t->txtSoundOffTimes->text(), QString::number(stored));
        QCOMPARE(storedSetting(m, "intSoundAlarmTimes"), stored);
    }

    void switchesMoveTheirMenuMarksButStoreNothing()
    {
        LoadedMainWindow m;
        const int storedShow = storedSetting(m, "booAlarmPopupForm");
        QTest::mouseClick(m.t->chkShow, Qt::LeftButton, {}, QPoint(6, m.t->chkShow->height() / 2));
        QCOMPARE(m.t->chkShow->text(), QStringLiteral("On Alarm Popup the Form [on]"));
        QVERIFY(m.w->mnuPopupFormOn->isChecked() && !m.w->mnuPopupFormOff->isChecked());
        QCOMPARE(storedSetting(m, "booAlarmPopupForm"), storedShow);
    }

    void maximizingReEvaluatesResetsTheSizeAndClosesSecondaryWindows()
    {
        LoadedMainWindow m;
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.w->resize(900, 700);
        m.state().bEvaluateNow = false;
        m.t->Form_Resize(2);
        QVERIFY(m.state().bEvaluateNow);
        QCOMPARE(m.w->size(), QSize(804, 616));
        QVERIFY(!legend || !legend->isVisible());

        // Activation asks for an evaluation too.
        m.state().bEvaluateNow = false;
        QEvent activate(QEvent::WindowActivate);
        QApplication::sendEvent(m.t, &activate);
        QVERIFY(m.state().bEvaluateNow);
    }

    void loadTurnsSoundOnThenTheStoredSwitchesWin()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET booSound = 0, intSoundAlarmTimes = 2");
        });
        QVERIFY(m.t->tmrAlarmClock->isActive());
        QCOMPARE(m.t->txtSoundOffTimes->text(), QStringLiteral("2"));
        QVERIFY(!m.t->bDataChanged);
        QVERIFY(!m.t->chkSoundOnOff->isChecked());
        QVERIFY(m.w->mnuSoundOff->isChecked());

        // A broken settings table is reported by the sound-times reader.
        TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblprogramsetting RENAME TO moved");
        m.t->subApplyAlarmClockFormProgramSettings();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("subApplyAlarmClockFormProgramSettings\r\n")));
    }
};

QTEST_MAIN(TableWindowTest)
#include "tst_tablewindow.moc"
