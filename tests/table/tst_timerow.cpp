#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

static QColor background(QLineEdit *box) { return box->palette().color(QPalette::Base); }

// An active window with the time row switched on by a click, as the user would.
static bool openTimeRow(LoadedMainWindow &m)
{
    m.w->activateWindow();
    if (!QTest::qWaitForWindowActive(m.w.get()))
        return false;
    QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
    return m.t->chkTimeRow->isChecked();
}

class TimeRowTest : public QObject {
    Q_OBJECT

private slots:
    void setWritesNowPlusTheOffset()
    {
        LoadedMainWindow m;
        QVERIFY(openTimeRow(m));
        // The boxes are read as numbers, whatever they hold.
        m.t->txtJumpDay->setText(QStringLiteral("1"));
        m.t->txtJumpHour->setText(QStringLiteral("&H2"));
        m.t->txtJumpMinutes->setText(QStringLiteral("abc"));
        m.t->lbl24[6]->setVisible(true);
        m.state().bEvaluateNow = false;
        m.fp.clock.set(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 59, 999)));
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QCOMPARE(m.t->txtACDate[6]->text(), QStringLiteral("Oct 01, 2031"));
        QCOMPARE(m.state().strAlarmTimes[6], QStringLiteral("16:05"));
        QVERIFY(!m.t->lbl24[6]->isVisibleTo(m.t));
        QVERIFY(m.state().bEvaluateNow);
        // A second SET in the same minute changes no text, yet still counts as a change.
        m.t->bDataChanged = false;
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QVERIFY(m.t->bDataChanged);

        m.t->txtJumpDay->setText(QStringLiteral("2147483647"));
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QCOMPARE(m.fp.messages.shown.value(0).text, QStringLiteral("subCalculateDayHourMins\r\n6\r\nOverflow"));
        QCOMPARE(m.t->txtACDate[6]->text(), QStringLiteral("Oct 01, 2031"));
    }

    void setWithNoOffsetInTheMinutesFirstSecondTrips()
    {
        LoadedMainWindow m;
        m.fp.clock.set(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0, 100)));
        QTest::mouseClick(m.t->cmdSetDateTime[2], Qt::LeftButton);
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0, 300)));
        QCOMPARE(m.fp.sound.played.size(), 1);
    }

    void anOffsetBoxClearsARestingZeroAndRewritesItsNumberOnLeaving()
    {
        LoadedMainWindow m;
        QVERIFY(openTimeRow(m));
        for (QLineEdit *box : m.t->txtJump) {
            QTest::mouseClick(box, Qt::LeftButton);
            QCOMPARE(box->text(), QString());
            box->setText(QStringLiteral("&H10"));
            // Another window taking the focus is not leaving.
            QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
            QApplication::sendEvent(box, &away);
            QCOMPARE(box->text(), QStringLiteral("&H10"));
            m.t->txtACDetails[0]->setFocus(Qt::MouseFocusReason);
            QCOMPARE(box->text(), QStringLiteral("16"));
        }
        m.t->txtJumpDay->setText(QStringLiteral("00"));
        QTest::mouseClick(m.t->txtJumpDay, Qt::LeftButton);
        QCOMPARE(m.t->txtJumpDay->text(), QStringLiteral("00")); // only a single "0" rests
    }

    void typingTurnsAnOffsetBoxOrangeUntilResetOrSwitchedOff()
    {
        LoadedMainWindow m;
        QVERIFY(openTimeRow(m));
        QVERIFY(m.w->mnuActivateTimeRow->isChecked() && !m.w->mnuDeactivateTimeRow->isChecked());
        // Tabbing through a box is not typing in it.
        m.t->txtJumpDay->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(m.t->txtJumpDay, Qt::Key_Tab);
        QCOMPARE(background(m.t->txtJumpDay), QColor(Qt::white));
        QTest::keyClicks(m.t->txtJumpHour, QStringLiteral("12"));
        QTest::keyClick(m.t->txtJumpHour, Qt::Key_Tab);
        QCOMPARE(background(m.t->txtJumpHour), QColor(255, 128, 0));
        QTest::mouseDClick(m.t->txtJumpHour, Qt::LeftButton);
        QCOMPARE(m.t->txtJumpHour->text(), QStringLiteral("0"));
        QCOMPARE(background(m.t->txtJumpHour), QColor(Qt::white));

        QTest::keyClicks(m.t->txtJumpMinutes, QStringLiteral("9"));
        QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
        QVERIFY(!m.w->mnuActivateTimeRow->isChecked() && m.w->mnuDeactivateTimeRow->isChecked());
        QVERIFY(!m.t->txtJumpMinutes->isVisibleTo(m.t) && !m.t->lblJump[2]->isVisibleTo(m.t));
        QCOMPARE(m.t->txtJumpMinutes->text(), QStringLiteral("0"));
        QCOMPARE(background(m.t->txtJumpMinutes), QColor(Qt::white));
    }

    void theStoredSettingOpensTheTimeRow()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath()).exec(QStringLiteral("UPDATE tblprogramsetting SET booTimeRow = True"));
        });
        QVERIFY(m.t->txtJumpDay->isVisibleTo(m.t));
        QCOMPARE(m.t->txtJumpDay->text(), QStringLiteral("0")); // nothing has entered it yet
    }
};

QTEST_MAIN(TimeRowTest)
#include "tst_timerow.moc"
