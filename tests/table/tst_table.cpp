// The table window: entry through real key, focus and mouse events, the time
// row, its switches and sound-times box, the pop-up, and its background.

#include "fakes/LoadedMainWindow.h"
#include "platform/qt/QtPictureLoader.h"

#include <QAction>
#include <QCheckBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTest>

enum class Box { Date, Time };
Q_DECLARE_METATYPE(Box)

namespace {

QLineEdit *box(LoadedMainWindow &m, Box which, int row) { return (which == Box::Date ? m.t->txtACDate : m.t->txtACTime)[row]; }
QString committed(LoadedMainWindow &m, Box which, int row) { return (which == Box::Date ? m.state().strAlarmDates : m.state().strAlarmTimes)[size_t(row)]; }
QColor back(QLineEdit *b) { return b->palette().color(QPalette::Base); }
void leave(QLineEdit *b) { QTest::keyClick(b, Qt::Key_Tab); }
void focusOut(QWidget *w, Qt::FocusReason reason)
{
    QFocusEvent out(QEvent::FocusOut, reason);
    QApplication::sendEvent(w, &out);
}

// Focus only moves between boxes of an active window. The row is made a
// daily one five minutes ahead: marked, counted down and coloured.
bool activateWithDailyRow(LoadedMainWindow &m, int row)
{
    m.w->activateWindow();
    if (!QTest::qWaitForWindowActive(m.w.get()))
        return false;
    m.setRow(row, QString(), QStringLiteral("14:10"));
    m.t->txtACTime[row]->setFocus(Qt::MouseFocusReason);
    m.t->txtACDetails[row]->setFocus(Qt::MouseFocusReason);
    m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0)));
    return m.t->lbl24[row]->isVisibleTo(m.t);
}

// A main window link that cannot open any window.
struct NoWindows : ShellLink {
    void setMenuPair(MenuPair, bool) override {}
    bool questionsLimited() const override { return false; }
    void subMinimizeToTray(bool, const QString &) override {}
    void subRemoveTrayIcon() override {}
    void restoreMainWindow() override {}
    void subResetMainWindowSize() override {}
    void subUnloadSecondaryForms() override {}
    void maximizeTableWindow() override {}
    void subApplyMDIProgramSettings() override {}
    QWidget *mainPictureTarget() override { return nullptr; }
};

} // namespace

class TableTest : public QObject {
    Q_OBJECT

private slots:
    void typingMarksTheRowChangedAndLeavingOrEnterCommits_data()
    {
        QTest::addColumn<Box>("which");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("key"); // 0: leave by Tab
        QTest::addColumn<QString>("result");
        QTest::addColumn<bool>("daily");
        QTest::newRow("date") << Box::Date << "september 30 2031" << 0 << "Sep 30, 2031" << false;
        QTest::newRow("not a date") << Box::Date << "Feb 30, 2031" << 0 << "" << true;
        QTest::newRow("date, Return") << Box::Date << "30 sep 2031" << int(Qt::Key_Return) << "Sep 30, 2031" << false;
        QTest::newRow("time too big") << Box::Time << "25 10" << 0 << "00:10" << true;
        QTest::newRow("not five long") << Box::Time << "7:30" << 0 << "" << false;
        QTest::newRow("time, keypad Enter") << Box::Time << "7:3" << int(Qt::Key_Enter) << "" << false;
    }
    void typingMarksTheRowChangedAndLeavingOrEnterCommits()
    {
        QFETCH(Box, which);
        QFETCH(QString, typed);
        QFETCH(int, key);
        QFETCH(QString, result);
        QFETCH(bool, daily);
        LoadedMainWindow m;
        QVERIFY(activateWithDailyRow(m, 3));
        QLineEdit *b = box(m, which, 3);
        b->setFocus(Qt::MouseFocusReason);
        b->selectAll();
        m.t->bDataChanged = false;
        const QString before = committed(m, which, 3);
        QTest::keyClicks(b, typed);
        // Typing unmarks, uncounts and whitens the row; the tick keeps the old value meanwhile.
        QVERIFY(m.t->bDataChanged && !m.t->lbl24[3]->isVisibleTo(m.t) && m.t->lblCountDownHours[3]->text().isEmpty());
        QCOMPARE(back(m.t->txtACDetails[3]), QColor(Qt::white));
        QCOMPARE(committed(m, which, 3), before);
        m.state().bEvaluateNow = false;
        key ? QTest::keyClick(b, Qt::Key(key)) : leave(b);
        QCOMPARE(b->text() + "|" + committed(m, which, 3), result + "|" + result);
        QVERIFY(m.t->lbl24[3]->isVisibleTo(m.t) == daily && m.state().bEvaluateNow && m.fp.messages.shown.isEmpty());
        QCOMPARE(QApplication::focusWidget() == b, key != 0);
    }

    void theTimeBoxFiltersTypedAndComposedTextAndIgnoresOtherWindows()
    {
        LoadedMainWindow m;
        QVERIFY(activateWithDailyRow(m, 8));
        QLineEdit *time = m.t->txtACTime[8];
        time->setFocus(Qt::MouseFocusReason);
        time->clear();
        QTest::keyClicks(time, QStringLiteral("0a7Z"));
        // Dead keys and input methods commit text without key presses; it is typing all the same.
        QInputMethodEvent commit;
        commit.setCommitString(QStringLiteral("\u00e9 3"));
        QApplication::sendEvent(time, &commit);
        QTest::keyClicks(time, QStringLiteral(".-0"));
        QCOMPARE(time->text(), QStringLiteral("07:30"));
        // Dropped keys change nothing, even typed over a selection.
        time->selectAll();
        m.t->bDataChanged = false;
        QTest::keyClicks(time, QStringLiteral("ab-/.x"));
        QVERIFY(time->text() == "07:30" && !m.t->bDataChanged);
        // A blank becomes a colon at the caret.
        time->setText(QStringLiteral("0730"));
        time->setCursorPosition(2);
        QTest::keyClick(time, Qt::Key_Space);
        QCOMPARE(time->text(), QStringLiteral("07:30"));
        // Losing the focus to another window is not leaving.
        time->setText(QStringLiteral("7:30"));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(time->text() + "|" + m.state().strAlarmTimes[8], QStringLiteral("7:30|14:10"));
    }

    void theDescriptionLeavesTheRowAsItIsUnlessItIsEmpty()
    {
        LoadedMainWindow m;
        m.state().intColorPick = 1; // Matrix
        QVERIFY(activateWithDailyRow(m, 7));
        m.t->bDataChanged = false;
        QTest::keyClicks(m.t->txtACDetails[7], QStringLiteral("Call"));
        QVERIFY(m.t->bDataChanged);
        leave(m.t->txtACDetails[7]);
        QVERIFY(m.t->lblCountDownHours[7]->text() == "0d 0h 5m 0s " && back(m.t->txtACDetails[7]) == QColor(0, 255, 0));
        // An empty row's description takes the scheme's colour on leaving.
        m.t->txtACDetails[9]->setFocus(Qt::MouseFocusReason);
        QTest::keyClicks(m.t->txtACDetails[9], QStringLiteral("Dentist"));
        leave(m.t->txtACDetails[9]);
        QCOMPARE(back(m.t->txtACDetails[9]), QColor(0, 64, 0));
    }

    void doubleClickFillsOrEmpties_data()
    {
        QTest::addColumn<Box>("which");
        QTest::addColumn<QString>("filled");
        // Now is Sep 30, 2031 14:05; the offsets are 3 days and 70 minutes.
        QTest::newRow("date") << Box::Date << "Oct 03, 2031";
        QTest::newRow("time") << Box::Time << "15:15";
    }
    void doubleClickFillsOrEmpties()
    {
        QFETCH(Box, which);
        QFETCH(QString, filled);
        LoadedMainWindow m;
        m.t->txtJumpDay->setText(QStringLiteral("3"));
        m.t->txtJumpMinutes->setText(QStringLiteral("70"));
        QLineEdit *b = box(m, which, 11);
        b->setText(QStringLiteral("   ")); // blanks count as empty
        for (const QString &expected : {filled, QString()}) {
            m.state().bEvaluateNow = false;
            QTest::mouseDClick(b, Qt::LeftButton);
            QCOMPARE(b->text() + "|" + committed(m, which, 11), expected + "|" + expected);
            QVERIFY(m.state().bEvaluateNow);
        }
        QCOMPARE(box(m, which == Box::Date ? Box::Time : Box::Date, 11)->text(), QString());
    }

    void theTimeRow()
    {
        LoadedMainWindow m;
        m.w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m.w.get()));
        QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
        QVERIFY(m.t->chkTimeRow->isChecked() && m.w->mnuActivateTimeRow->isChecked() && !m.w->mnuDeactivateTimeRow->isChecked());
        // Entering an offset box clears a resting "0"; leaving rewrites its number; another window is not leaving.
        for (QLineEdit *b : m.t->txtJump) {
            QTest::mouseClick(b, Qt::LeftButton);
            const QString entered = b->text();
            b->setText(QStringLiteral("&H10"));
            focusOut(b, Qt::ActiveWindowFocusReason);
            const QString away = b->text();
            m.t->txtACDetails[0]->setFocus(Qt::MouseFocusReason);
            QCOMPARE(QStringList({entered, away, b->text()}), QStringList({"", "&H10", "16"}));
        }
        m.t->txtJumpDay->setText(QStringLiteral("00"));
        QTest::mouseClick(m.t->txtJumpDay, Qt::LeftButton);
        QCOMPARE(m.t->txtJumpDay->text(), QStringLiteral("00")); // only a single "0" rests

        // SET writes now plus the offsets; the boxes are read as numbers, whatever they hold.
        m.t->txtJumpDay->setText(QStringLiteral("1"));
        m.t->txtJumpHour->setText(QStringLiteral("&H2"));
        m.t->txtJumpMinutes->setText(QStringLiteral("abc"));
        m.t->lbl24[6]->setVisible(true);
        m.state().bEvaluateNow = false;
        m.fp.clock.set(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 59, 999)));
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QCOMPARE(m.t->txtACDate[6]->text() + "|" + m.state().strAlarmTimes[6], QStringLiteral("Oct 01, 2031|16:05"));
        QVERIFY(!m.t->lbl24[6]->isVisibleTo(m.t) && m.state().bEvaluateNow);
        m.t->bDataChanged = false; // a second SET in the same minute still counts as a change
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QVERIFY(m.t->bDataChanged);
        m.t->txtJumpDay->setText(QStringLiteral("2147483647"));
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QCOMPARE(m.fp.messages.texts() << m.t->txtACDate[6]->text(), QStringList({"subCalculateDayHourMins\r\n6\r\nOverflow", "Oct 01, 2031"}));

        // Typing turns a box orange until it is reset or the row switched off; tabbing through is not typing.
        m.t->txtJumpDay->setText(QStringLiteral("0"));
        m.t->txtJumpDay->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(m.t->txtJumpDay, Qt::Key_Tab);
        QCOMPARE(back(m.t->txtJumpDay), QColor(Qt::white));
        QTest::keyClicks(m.t->txtJumpHour, QStringLiteral("12"));
        QTest::keyClick(m.t->txtJumpHour, Qt::Key_Tab);
        QCOMPARE(back(m.t->txtJumpHour), QColor(255, 128, 0));
        QTest::mouseDClick(m.t->txtJumpHour, Qt::LeftButton);
        QVERIFY(m.t->txtJumpHour->text() == "0" && back(m.t->txtJumpHour) == QColor(Qt::white));
        QTest::keyClicks(m.t->txtJumpMinutes, QStringLiteral("9"));
        QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
        QVERIFY(!m.w->mnuActivateTimeRow->isChecked() && m.w->mnuDeactivateTimeRow->isChecked());
        QVERIFY(!m.t->txtJumpMinutes->isVisibleTo(m.t) && !m.t->lblJump[2]->isVisibleTo(m.t));
        QVERIFY(m.t->txtJumpMinutes->text() == "0" && back(m.t->txtJumpMinutes) == QColor(Qt::white));

        // With no offset, SET in a minute's first second trips at once.
        m.fp.clock.set(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0, 100)));
        m.t->cmdSetDateTime_Click(2);
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 5, 0, 300)));
        QCOMPARE(m.fp.sound.played.size(), 1);
        // The stored setting opens the row at start-up, untouched.
        LoadedMainWindow stored(withSql({"UPDATE tblprogramsetting SET booTimeRow = True"}));
        QVERIFY(stored.t->txtJumpDay->isVisibleTo(stored.t) && stored.t->txtJumpDay->text() == "0");
    }

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
        focusOut(m.t->txtSoundOffTimes, Qt::ActiveWindowFocusReason); // another window: not leaving
        QCOMPARE(m.setting("intSoundAlarmTimes"), "3");
        focusOut(m.t->txtSoundOffTimes, Qt::TabFocusReason);
        QCOMPARE(m.t->txtSoundOffTimes->text() + "|" + m.setting("intSoundAlarmTimes"), QString::number(stored) + "|" + QString::number(stored));
    }

    void loadResizeAndActivation()
    {
        LoadedMainWindow m(withSql({"UPDATE tblprogramsetting SET booSound = 0, intSoundAlarmTimes = 2"}));
        // Sound is turned on, then the stored switch wins.
        QVERIFY(m.t->tmrAlarmClock->isActive() && m.t->txtSoundOffTimes->text() == "2" && !m.t->bDataChanged);
        QVERIFY(!m.t->chkSoundOnOff->isChecked() && m.w->mnuSoundOff->isChecked());
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.w->resize(900, 700);
        m.state().bEvaluateNow = false;
        m.t->Form_Resize(2);
        QVERIFY(m.state().bEvaluateNow && m.w->size() == QSize(804, 616) && (!legend || !legend->isVisible()));
        m.state().bEvaluateNow = false;
        QEvent activate(QEvent::WindowActivate);
        QApplication::sendEvent(m.t, &activate);
        QVERIFY(m.state().bEvaluateNow);
        // A broken settings table is reported by the sound-times reader.
        QVERIFY(m.sql("ALTER TABLE tblprogramsetting RENAME TO moved"));
        m.t->subApplyAlarmClockFormProgramSettings();
        QVERIFY(m.fp.messages.shown.size() == 1 && m.fp.messages.shown[0].text.startsWith(QStringLiteral("subApplyAlarmClockFormProgramSettings\r\n")));
    }

    // The pop-up brings the window back in its normal state, even from maximized.
    void anAlarmPopsUpTheWindowInItsNormalState()
    {
        LoadedMainWindow m(withSql({"UPDATE tblprogramsetting SET booAlarmPopupForm = 1"}));
        m.w->setWindowState(Qt::WindowMaximized);
        m.w->mnuMinimizeToTrayNow->trigger();
        QVERIFY(!m.w->isVisible());
        m.setRow(0, QString(), QStringLiteral("14:06"));
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(14, 6, 0)));
        QVERIFY(m.w->isVisible() && m.state().intMDIWindowState == 0);
        QCOMPARE(m.w->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), Qt::WindowStates());
    }

    // A picture that cannot be read leaves the one shown before, under the new colours.
    void aMissingPictureLeavesThePreviousOne()
    {
        QtPictureLoader pictures;
        LoadedMainWindow m({}, [&](FakePlatform &fp) { return withServices(fp, nullptr, nullptr, &pictures); });
        QCOMPARE(m.t->palette().brush(QPalette::Window).style(), Qt::TexturePattern);
        const qint64 regular = m.t->palette().brush(QPalette::Window).texture().cacheKey();
        QVERIFY(m.fp.testDir.remove("backgroundmatrix.bmp"));
        m.w->mnuColorMatrix->trigger();
        QCOMPARE(m.t->palette().brush(QPalette::Window).texture().cacheKey(), regular);
        QVERIFY(m.t->txtACDetails[0]->palette().color(QPalette::Base) == QColor(0, 0x40, 0) && m.fp.messages.shown.isEmpty());
    }

    void theRowEditorsReportAWindowThatWillNotOpen()
    {
        FakePlatform fp;
        mdiAlarmClock main(fp.platform());
        NoWindows shell;
        frmAlarmClock t(fp.platform(), main.database(), main.settings(), main.state(), shell);
        t.cmdEditURL_Click(2);
        t.cmdSoundRow_Click(2);
        QCOMPARE(fp.messages.texts(), QStringList({"cmdEditURL_Click\r\n91\r\nObject variable or With block variable not set",
                                                   "cmdSoundRow_Click\r\n91\r\nObject variable or With block variable not set"}));
        QCOMPARE(fp.messages.shown[1].title, "ERROR");
    }
};

QTEST_MAIN(TableTest)
#include "tst_table.moc"
