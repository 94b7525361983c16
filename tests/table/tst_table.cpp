// The table window: entry through real key, focus and mouse events, the time
// row and switches, moving the 13 rows to and from the database, and the
// clock tick on a fake clock.

#include "fakes/LoadedMainWindow.h"
#include "platform/qt/QtPictureLoader.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>

#include <ctime>

enum class Box { Date, Time };
// Typed over row 3's box, then left by the key (0: Tab): what the box and the tick hold then, and the daily mark.
struct Typing { Box which; QString typed; int key; QString result; bool daily; };
Q_DECLARE_METATYPE(Typing)
// Each tick span is "from to" in UTC (one second apart); the daily rows; the day and the time of each trip's notification.
struct Ticks { QStringList spans, rows, trips; };
Q_DECLARE_METATYPE(Ticks)

namespace {

const QString kLoseWork = QStringLiteral("You will lose any of your current work, are you sure?");

// A moment on Sep 30, 2031. Built when asked for: the zone is set at the start.
QDateTime at(int h, int mi, int s = 0, int ms = 0) { return QDateTime(QDate(2031, 9, 30), QTime(h, mi, s, ms)); }

QLineEdit *box(LoadedMainWindow &m, Box which, int row) { return (which == Box::Date ? m.t->txtACDate : m.t->txtACTime)[row]; }
QString committed(LoadedMainWindow &m, Box which, int row) { return (which == Box::Date ? m.state().strAlarmDates : m.state().strAlarmTimes)[size_t(row)]; }
QColor back(QLineEdit *b) { return b->palette().color(QPalette::Base); }
void leave(QLineEdit *b) { QTest::keyClick(b, Qt::Key_Tab); }
void focusOut(QWidget *w, Qt::FocusReason reason) { QFocusEvent out(QEvent::FocusOut, reason); QApplication::sendEvent(w, &out); }
QString boxOf(const FakeMessageBox &messages, int n) { return messages.shown.value(n).title + "|" + messages.shown.value(n).text; }

// A row's daily mark, countdown and description colour: "1|0d 0h 5m 0s |#00ff00".
QString rowState(LoadedMainWindow &m, int i) { return QStringList{QString::number(m.t->lbl24[i]->isVisibleTo(m.t)), m.t->lblCountDownHours[i]->text(), back(m.t->txtACDetails[i]).name()}.join(u'|'); }
// The five texts of a row as the window shows them.
QString shown(frmAlarmClock *t, int i) { return QStringList{t->txtACDate[i]->text(), t->txtACTime[i]->text(), t->txtACDetails[i]->text(), t->txtURL[i]->text(), t->txtWAVEFileNamePath[i]->text()}.join(u'|'); }

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
    m.tickAt(at(14, 5));
    return m.t->lbl24[row]->isVisibleTo(m.t);
}

// Daily rows "record i" at i+1 o'clock.
std::function<void(FakePlatform &)> withRows(int count)
{
    QStringList inserts;
    for (int i = 0; i < count; ++i)
        inserts << QStringLiteral("INSERT INTO tblalarmclock (dtalarmclockhhnn, stralarmclock, strURL, strWAVEFileNamePath) "
                                  "VALUES ('%1:00', 'record %2', 'u', 's')").arg(i + 1, 2, 10, QLatin1Char('0')).arg(i);
    return withSql(inserts);
}


QString copyOfTheAlarm(LoadedMainWindow &m, const QString &name) { return QFile::copy(m.fp.testDir.filePath("alarm.wav"), m.fp.testDir.filePath(name)) ? m.fp.testDir.filePath(name) : QString(); }

} // namespace

class TableTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("TZ", "Europe/Berlin"); // a zone with daylight saving, for the clock-change days
        tzset();
    }

    void typingMarksTheRowChangedAndLeavingOrEnterCommits_data()
    {
        QTest::addColumn<Typing>("c");
        QTest::newRow("date") << Typing{Box::Date, "september 30 2031", 0, "Sep 30, 2031", false};
        QTest::newRow("not a date") << Typing{Box::Date, "Feb 30, 2031", 0, "", true};
        QTest::newRow("date, Return") << Typing{Box::Date, "30 sep 2031", Qt::Key_Return, "Sep 30, 2031", false};
        QTest::newRow("time too big") << Typing{Box::Time, "25 10", 0, "00:10", true};
        QTest::newRow("not five long") << Typing{Box::Time, "7:30", 0, "", false};
        QTest::newRow("five long, no time") << Typing{Box::Time, "12  3", 0, "", false};
        QTest::newRow("time, keypad Enter") << Typing{Box::Time, "7:3", Qt::Key_Enter, "", false};
    }
    void typingMarksTheRowChangedAndLeavingOrEnterCommits()
    {
        QFETCH(Typing, c);
        LoadedMainWindow m;
        QVERIFY(activateWithDailyRow(m, 3));
        QLineEdit *b = box(m, c.which, 3);
        b->setFocus(Qt::MouseFocusReason);
        b->selectAll();
        m.t->bDataChanged = false;
        const QString before = committed(m, c.which, 3);
        QTest::keyClicks(b, c.typed);
        // Typing unmarks, uncounts and whitens the row; the tick keeps the old value meanwhile.
        QVERIFY(m.t->bDataChanged && committed(m, c.which, 3) == before);
        QCOMPARE(rowState(m, 3), "0||#ffffff");
        m.state().bEvaluateNow = false;
        c.key ? QTest::keyClick(b, Qt::Key(c.key)) : leave(b);
        QCOMPARE(b->text() + "|" + committed(m, c.which, 3), c.result + "|" + c.result);
        QVERIFY(m.t->lbl24[3]->isVisibleTo(m.t) == c.daily && m.state().bEvaluateNow && m.fp.messages.shown.isEmpty());
        QCOMPARE(QApplication::focusWidget() == b, c.key != 0); // Enter and Return stay
    }

    // The description leaves the row as it is unless it is empty; the time box
    // drops what is no time, however typed. Boxes are stored on leaving them,
    // not on losing the focus to another window; activation evaluates.
    void theBoxesOfARowAndTheTimeRow()
    {
        LoadedMainWindow m;
        QVERIFY(m.t->tmrAlarmClock->isActive() && !m.t->bDataChanged);
        m.state().intColorPick = 1; // Matrix
        QVERIFY(activateWithDailyRow(m, 7));
        m.t->bDataChanged = false;
        QTest::keyClicks(m.t->txtACDetails[7], QStringLiteral("Call"));
        QVERIFY(m.t->bDataChanged);
        leave(m.t->txtACDetails[7]);
        QCOMPARE(rowState(m, 7), "1|0d 0h 5m 0s |#00ff00");
        m.t->txtACDetails[9]->setFocus(Qt::MouseFocusReason);
        QTest::keyClicks(m.t->txtACDetails[9], QStringLiteral("Dentist"));
        leave(m.t->txtACDetails[9]);
        QCOMPARE(back(m.t->txtACDetails[9]), QColor(0, 64, 0)); // the scheme's colour

        QLineEdit *time = m.t->txtACTime[7];
        time->setFocus(Qt::MouseFocusReason);
        time->clear();
        QTest::keyClicks(time, QStringLiteral("0a7Z"));
        QTest::keyClicks(time, QStringLiteral(" 3.-0"));
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
        // Shortcuts work as in any text box: Ctrl+A, then Ctrl+V pastes what no key could type.
        QApplication::clipboard()->setText(QStringLiteral("ab:cd"));
        QTest::keyClick(time, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(time, Qt::Key_V, Qt::ControlModifier);
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(time->text() + "|" + m.state().strAlarmTimes[7], QStringLiteral("ab:cd|14:10"));

        QString stored = QStringLiteral("3");
        for (const QStringList &c : QList<QStringList>{{"0", "1"}, {" 4.6 ", "5"}, {"70000", "1"}}) { // the last too big for the box
            m.t->txtSoundOffTimes->setText(c[0]);
            focusOut(m.t->txtSoundOffTimes, Qt::ActiveWindowFocusReason);
            QCOMPARE(m.setting("intSoundAlarmTimes"), stored);
            focusOut(m.t->txtSoundOffTimes, Qt::TabFocusReason);
            stored = c[1];
            QCOMPARE(m.t->txtSoundOffTimes->text() + "|" + m.setting("intSoundAlarmTimes"), stored + "|" + stored);
        }
        m.state().bEvaluateNow = false;
        QEvent activate(QEvent::WindowActivate);
        QApplication::sendEvent(m.t, &activate);
        QVERIFY(m.state().bEvaluateNow);

        m.w->activateWindow(); // back from the other window, for the time row
        QVERIFY(QTest::qWaitForWindowActive(m.w.get()));
        QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
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
        // SET writes now plus the offsets; the boxes are read as numbers, whatever they hold.
        m.t->txtJumpDay->setText(QStringLiteral("1"));
        m.t->txtJumpHour->setText(QStringLiteral("&H2"));
        m.t->txtJumpMinutes->setText(QStringLiteral("abc"));
        m.t->lbl24[6]->setVisible(true);
        m.state().bEvaluateNow = false;
        m.fp.clock.set(at(14, 5, 59, 999));
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QCOMPARE(m.t->txtACDate[6]->text() + "|" + m.state().strAlarmTimes[6], QStringLiteral("Oct 01, 2031|16:05"));
        QVERIFY(!m.t->lbl24[6]->isVisibleTo(m.t) && m.state().bEvaluateNow);
        m.t->bDataChanged = false; // a second SET in the same minute still counts as a change
        QTest::mouseClick(m.t->cmdSetDateTime[6], Qt::LeftButton);
        QVERIFY(m.t->bDataChanged);
        // Typing turns a box orange until it is reset or the row switched off; tabbing through is not typing.
        m.t->txtJumpDay->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(m.t->txtJumpDay, Qt::Key_Tab);
        QTest::keyClicks(m.t->txtJumpHour, QStringLiteral("12"));
        QTest::keyClick(m.t->txtJumpHour, Qt::Key_Tab);
        QCOMPARE(QList<QColor>({back(m.t->txtJumpDay), back(m.t->txtJumpHour)}), QList<QColor>({Qt::white, QColor(255, 128, 0)}));
        QTest::mouseDClick(m.t->txtJumpHour, Qt::LeftButton);
        QVERIFY(m.t->txtJumpHour->text() == "0" && back(m.t->txtJumpHour) == QColor(Qt::white));
        QTest::keyClicks(m.t->txtJumpMinutes, QStringLiteral("9"));
        QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
        QVERIFY(!m.w->mnuActivateTimeRow->isChecked() && m.w->mnuDeactivateTimeRow->isChecked() && !m.t->lblJump[2]->isVisibleTo(m.t));
        QVERIFY(m.t->txtJumpMinutes->text() == "0" && back(m.t->txtJumpMinutes) == QColor(Qt::white));
        // With no offset, SET in a minute's first second trips at once.
        m.fp.clock.set(at(14, 6, 0, 100));
        m.t->cmdSetDateTime_Click(2);
        m.tickAt(at(14, 6, 0, 300));
        QCOMPARE(m.fp.sound.played.size(), 1);
    }

    // A picture that cannot be read leaves the one shown before, under the new colours.
    void aMissingPictureLeavesThePreviousOne()
    {
        QtPictureLoader pictures;
        LoadedMainWindow m({}, [&](FakePlatform &fp) { return fp.withServices(nullptr, nullptr, &pictures); });
        QCOMPARE(m.t->palette().brush(QPalette::Window).style(), Qt::TexturePattern);
        const qint64 regular = m.t->palette().brush(QPalette::Window).texture().cacheKey();
        QVERIFY(m.fp.testDir.remove("backgroundmatrix.bmp"));
        m.w->mnuColorMatrix->trigger();
        QCOMPARE(m.t->palette().brush(QPalette::Window).texture().cacheKey(), regular);
        QVERIFY(m.t->txtACDetails[0]->palette().color(QPalette::Base) == QColor(0, 0x40, 0) && m.fp.messages.shown.isEmpty());
    }

    // Quotes, SQL, control characters, right-to-left marks and a long text
    // come back exactly as typed (bracketed: blanks at the ends are trimmed on loading).
    void allThirteenRowsSurviveSaveAndARestart()
    {
        QString junk = QStringLiteral("[");
        QRandomGenerator random(20311030);
        for (int c = 1; c < 556; ++c) // every Latin-1 character, then 300 from below the surrogates
            junk += QChar(char16_t(c < 256 ? c : random.bounded(1, 0xD800)));
        const QStringList texts{"it's \"quoted\" `back` \\ %s %n ?1 :name", "'); DROP TABLE tblalarmclock; --", junk + "]",
                                QStringLiteral(u"\u200Fright\u202Eto-left\u202C \u05E9\u05DC\u05D5\u05DD"), QStringLiteral("0123456789").repeated(1000)};
        LoadedMainWindow m;
        QStringList typed;
        for (int i = 0; i < 13; ++i) {
            m.t->txtACDate[i]->setText(i % 3 ? QStringLiteral("oct %1 2031").arg(i + 10) : QString());
            m.t->txtACTime[i]->setText(QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(i * 4, 2, 10, QLatin1Char('0')));
            m.t->txtACDetails[i]->setText(texts[i % 5]);
            m.t->txtURL[i]->setText(i == 5 ? QString(220, u'u') : texts[(i + 1) % 5]);
            m.t->txtWAVEFileNamePath[i]->setText(texts[(i + 2) % 5]);
            m.t->txtACDate_LostFocus(i);
            m.t->txtACTime_LostFocus(i);
            typed << shown(m.t, i);
        }
        m.t->txtACDate[2]->setText(QStringLiteral("someday")); // not a date: saved without one
        m.t->cmdSave_Click();
        QVERIFY(!m.t->bDataChanged && m.fp.messages.shown.isEmpty());
        typed[2] = shown(m.t, 2);
        // Daily rows store no date and carry the repeat mark, which loading ignores.
        QCOMPARE(m.rows("SELECT dtalarmclockmmmddyyyy, booRepeat FROM tblalarmclock ORDER BY lngalarmclockid LIMIT 3"),
                 (QStringList{"NULL|1", "Oct 11, 2031|0", "NULL|0"}));
        mdiAlarmClock again(m.fp.platform()); // as after a restart
        again.MDIForm_Load();
        frmAlarmClock *t = again.tableWindow();
        for (int i = 0; i < 13; ++i) {
            QVERIFY2(shown(t, i) == typed[i], qPrintable(QString::number(i)));
            QCOMPARE(QStringList({QString::number(t->lbl24[i]->isVisibleTo(t)), again.state().strAlarmTimes[size_t(i)], t->lblUrlToolTip[i]->text(),
                                  t->lblUrlToolTip[i]->toolTip(), t->lblUrlToolTip[i]->accessibleDescription()}),
                     QStringList({QString::number(t->txtACDate[i]->text().isEmpty()), t->txtACTime[i]->text(), "*", t->txtURL[i]->text(), t->txtURL[i]->text()}));
        }
    }

    // The daily mark is derived, never read; a stored time that is none is emptied; the first
    // thirteen rows by key are shown. Reloading asks only when there is something to lose.
    void loadingReloadingAndFailures()
    {
        LoadedMainWindow m(withSql({"INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, booRepeat) VALUES "
                                    "('junk', '07:30', 0), (NULL, NULL, 1), ('  sep 30 2031 ', '7:5', 1), (NULL, 'ab:cd', 0)"}));
        QVERIFY(m.t->lbl24[0]->isVisibleTo(m.t) && !m.t->lbl24[1]->isVisibleTo(m.t) && !m.t->lbl24[2]->isVisibleTo(m.t) && !m.t->lbl24[3]->isVisibleTo(m.t));
        QCOMPARE(QStringList({m.t->txtACDate[0]->text(), m.t->txtACDate[2]->text() + " " + m.t->txtACTime[2]->text(), m.t->txtACTime[3]->text()}),
                 QStringList({"junk", "Sep 30, 2031 07:05", ""}));
        QCOMPARE(m.t->lblUrlToolTip[0]->text() + m.t->lblUrlToolTip[0]->toolTip(), QStringLiteral("?Reveals the URL description."));
        // Rows past the table's end are emptied but keep their address, marker and sound.
        m.t->txtURL[12]->setText(QStringLiteral("https://kept.example"));
        m.t->lblUrlToolTip[12]->setText(QStringLiteral("!"));
        m.t->txtWAVEFileNamePath[12]->setText(QStringLiteral("/kept.wav"));
        m.t->txtACDetails[12]->setText(QStringLiteral("goes"));
        m.t->lbl24[12]->setVisible(true);
        m.t->basLoadAlarmClocks(false);
        QCOMPARE(shown(m.t, 12) + m.t->lblUrlToolTip[12]->text(), QStringLiteral("|||https://kept.example|/kept.wav!"));
        QVERIFY(!m.t->lbl24[12]->isVisibleTo(m.t));
        // Fifteen rows, whose physical order differs from their key order.
        QVERIFY(m.sql("DELETE FROM tblalarmclock"));
        withRows(15)(m.fp);
        QVERIFY(m.sql("UPDATE tblalarmclock SET lngalarmclockid = lngalarmclockid + 100 WHERE stralarmclock IN ('record 0', 'record 1')"));
        m.t->cmdLoad_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());
        QCOMPARE(m.t->txtACDetails[0]->text() + "|" + m.t->txtACDetails[12]->text(), QStringLiteral("record 2|record 14"));
        m.t->txtACDetails[0]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdLoad_Click();
        QCOMPARE(boxOf(m.fp.messages, 0), "UNDO and RELOAD PREVIOUS DATA: ARE YOU SURE?|" + kLoseWork);
        QVERIFY(m.fp.messages.shown[0].buttons == MsgButtons::YesNo && m.t->txtACDetails[0]->text() == "edited" && !m.t->bDataChanged);
        // No still cleared the flag: the next Load reloads without asking; Yes reloads; so does a limit on questions.
        for (const QString edit : {"", "edited again", "unasked"}) {
            m.w->mnuDonotAskAnyMoreQuestions->setChecked(edit == "unasked");
            if (!edit.isEmpty())
                m.t->txtACDetails[0]->setText(edit);
            m.t->cmdLoad_Click();
            QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 2"));
        }
        QCOMPARE(m.fp.messages.shown.size(), 2);

        // A save that fails half way (old rows deleted, some new written) or at once, or a failed
        // load, is reported; the window keeps the edits and the flag, the table its rows.
        m.fp.messages.shown.clear();
        const QString all = QStringLiteral("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid");
        const QStringList before = m.rows(all);
        QVERIFY(m.sql("CREATE TRIGGER fail BEFORE INSERT ON tblalarmclock WHEN (SELECT count(*) FROM tblalarmclock) >= 6 "
                      "BEGIN SELECT RAISE(ABORT, 'disk I/O error'); END"));
        for (int i = 0; i < 13; ++i)
            m.t->txtACDetails[i]->setText(QStringLiteral("new %1").arg(i));
        m.t->cmdSave_Click();
        QVERIFY(m.fp.messages.shown.size() == 1 && boxOf(m.fp.messages, 0).startsWith(QStringLiteral("ERROR|basSaveAlarmClocks\r\n")));
        QVERIFY(m.t->txtACDetails[12]->text() == "new 12" && m.t->bDataChanged);
        QCOMPARE(m.rows(all), before);
        { // another program holds the file locked for writing: the save waits, then fails the same way
            TestDatabase other(m.fp.testDir.dbPath(), "other");
            QVERIFY(other.exec("DROP TRIGGER fail") && other.exec("BEGIN IMMEDIATE"));
            m.t->cmdSave_Click();
            QVERIFY(boxOf(m.fp.messages, 1).endsWith("database is locked") && m.t->bDataChanged && m.rows(all) == before);
        }
        QVERIFY(m.sql("ALTER TABLE tblalarmclock RENAME TO moved"));
        m.t->basLoadAlarmClocks(false); // it stops before clearing the flag
        QVERIFY(boxOf(m.fp.messages, 2).startsWith(QStringLiteral("ERROR|basLoadAlarmClocks\r\n")) && m.t->txtACDetails[0]->text() == "new 0" && m.t->bDataChanged);
    }

    // Clearing asks first (unless questions are limited), empties the row's boxes, marks and
    // colours, and stores nothing. No leaves the boxes, yet clears the changed flag and re-evaluates.
    void clearingARowOrTheForm()
    {
        LoadedMainWindow m(withRows(13));
        m.tickAt(at(7, 30)); // row 7 (08:00) within the hour, row 6 just passed
        QCOMPARE(rowState(m, 7) + "|" + back(m.t->txtACDetails[6]).name(), "1|0d 0h 30m 0s |#ffff00|#80ff80");
        m.t->txtACDetails[7]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No};
        m.state().bEvaluateNow = false;
        m.t->cmdClearRow_Click(7);
        QVERIFY(!m.t->bDataChanged && m.state().bEvaluateNow && m.t->txtACDetails[7]->text() == "edited");
        QCOMPARE(boxOf(m.fp.messages, 0), "CLEAR THE ROW: ARE YOU SURE?|You will lose any changes you made to this row, are you sure?");
        m.t->lblUrlToolTip[7]->setText(QStringLiteral("!"));
        m.t->cmdClearRow_Click(7); // Yes
        QCOMPARE(QStringList({shown(m.t, 7), rowState(m, 7), m.t->lblUrlToolTip[7]->text(), m.t->lblUrlToolTip[7]->accessibleDescription(), m.t->txtACDetails[8]->text()}),
                 QStringList({"||||", "0||#ffffff", "?", "Reveals the URL description.", "record 8"}));
        m.fp.messages.answers = {MsgResult::No};
        m.state().bEvaluateNow = false;
        m.t->cmdClearForm_Click();
        QCOMPARE(boxOf(m.fp.messages, 2) + m.t->txtACDetails[5]->text(), "CLEAR THE FORM: ARE YOU SURE?|" + kLoseWork + "record 5");
        QVERIFY(m.state().bEvaluateNow);
        // Limited, a No waiting unasked changes nothing.
        m.w->mnuDonotAskAnyMoreQuestions->setChecked(true);
        m.fp.messages.answers = {MsgResult::No};
        m.t->txtACDetails[8]->setText(QStringLiteral("edited"));
        m.state().bEvaluateNow = false;
        m.t->cmdClearRow_Click(8);
        QVERIFY(m.t->txtACDetails[8]->text().isEmpty() && !m.t->bDataChanged && m.state().bEvaluateNow);
        m.t->cmdClearForm_Click();
        QVERIFY(!m.t->bDataChanged && m.fp.messages.shown.size() == 3); // emptying the boxes leaves the flag as it was
        for (int i = 0; i < 13; ++i)
            QCOMPARE(shown(m.t, i) + m.state().strAlarmTimes[size_t(i)] + m.t->lblUrlToolTip[i]->text() + rowState(m, i), QStringLiteral("||||?0||#ffffff"));
        QCOMPARE(m.rows("SELECT count(*) FROM tblalarmclock WHERE stralarmclock IS NOT NULL"), QStringList("13")); // nothing stored
    }

    // A double click fills an empty box from now and the offsets, and empties a filled one.
    // Every tick shows the time, but rows wait for the minute. A row with no time is
    // left as it was, and one that cannot be evaluated silences no other.
    void theClockFillsTicksAndCountsDown()
    {
        LoadedMainWindow m; // now is Sep 30, 2031 14:05; the offsets are 3 days and 70 minutes
        m.t->txtJumpDay->setText(QStringLiteral("3"));
        m.t->txtJumpMinutes->setText(QStringLiteral("70"));
        for (const Box which : {Box::Date, Box::Time}) {
            QLineEdit *b = box(m, which, 11), *other = box(m, which == Box::Date ? Box::Time : Box::Date, 11);
            b->setText(QStringLiteral("   ")); // blanks count as empty
            for (const QString expected : {which == Box::Date ? "Oct 03, 2031" : "15:15", ""}) {
                m.state().bEvaluateNow = false;
                QTest::mouseDClick(b, Qt::LeftButton);
                QCOMPARE(b->text() + "|" + committed(m, which, 11) + "|" + other->text(), expected + "|" + expected + "|");
                QVERIFY(m.state().bEvaluateNow);
            }
        }

        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("15:06"));
        m.state().bEvaluateNow = false;
        m.tickAt(at(14, 3, 7, 420));
        QCOMPARE(m.t->txtCurrentDateTime->text() + "|" + m.t->lblCountDownHours[0]->text(), "Sep 30, 2031 14:03:07|");
        m.tickAt(at(14, 4, 0, 3));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 1h 2m 0s "));
        m.state().bEvaluateNow = true; // a change asks the next tick to evaluate at once
        m.tickAt(at(14, 4, 1, 3));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 1h 1m 59s "));
        // Each tick is armed for the start of the next wall-clock second, and the timer's call is the tick.
        m.tickAt(at(14, 4, 10, 999));
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 4, 11));
        m.fp.clock.set(at(14, 4, 11, 0));
        m.fp.wallTimer.expire();
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:04:11"));
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 4, 12));

        // At 14:05:00, Regular scheme: far ahead, within eight, dated and
        // sounded, and a date that is none (daily, passed).
        const QStringList dates{"Sep 30, 2031", "", "Oct 01, 2031", "", "Sep 29, 2031", "tomorrow"}, times{"", "1::23", "14:05", "14:06", "14:10", "13:30"};
        for (int i = 0; i < 6; ++i)
            m.setRow(i, dates[i], times[i]);
        m.t->lblCountDownHours[0]->setText(QStringLiteral("as it was"));
        m.tickAt(at(14, 5));
        QCOMPARE(QStringList({m.t->lblCountDownHours[0]->text(), rowState(m, 2), rowState(m, 3), rowState(m, 4), rowState(m, 5)}),
                 QStringList({"as it was", "0|1d 0h 0m 0s |#ffffff", "0|0d 0h 1m 0s |#00ff00", "0|done|#ff0000", "0|zZZzz|#80ff80"}));
        // Only an exact zero trips, and a later row wins the moment. A second alarm while
        // the first still sounds (its last play to come) only updates the tray tip.
        m.t->txtSoundOffTimes->setText(QStringLiteral("3"));
        m.setRow(9, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:06"));
        m.setRow(7, QString(), QStringLiteral("14:07"));
        m.t->txtWAVEFileNamePath[9]->setText(copyOfTheAlarm(m, QStringLiteral("nine.wav")));
        m.tickAt(at(14, 5, 59, 990));
        QVERIFY(m.fp.sound.played.isEmpty());
        m.tickAt(at(14, 6, 0, 2));
        QVERIFY(m.fp.sound.played == QStringList{m.t->txtWAVEFileNamePath[9]->text()} && m.fp.messages.shown.isEmpty());
        // The tick after a trip evaluates again, and clears the request: the
        // next one waits for the minute. A repeat asks for an evaluation too.
        m.tickAt(at(14, 6, 1));
        m.tickAt(at(14, 6, 2));
        const QString counted = m.t->lblCountDownHours[7]->text();
        m.t->tmrAlarmSound_Timer();
        m.tickAt(at(14, 6, 3));
        QCOMPARE(counted + "|" + m.t->lblCountDownHours[7]->text(), "0d 0h 0m 59s |0d 0h 0m 57s ");
        m.tickAt(at(14, 7));
        QVERIFY(m.state().lngAlarmPlaysLeft == 1 && m.fp.sound.played.size() == 2 && m.fp.tray.field.contains(QStringLiteral("ALARM @ Sep, 30 at 14:07")));
        // A daily row counts down again after midnight.
        m.setRow(6, QString(), QStringLiteral("00:01"));
        m.tickAt(at(23, 59));
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QStringLiteral("zZZzz"));
        m.tickAt(QDateTime(QDate(2031, 10, 1), QTime(0, 0)));
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QStringLiteral("0d 0h 1m 0s "));
    }

    void minimizedTheCountdownsFreezeButAlarmsTripAndPopUp()
    {
        LoadedMainWindow m(withSql({"UPDATE tblprogramsetting SET booAlarmPopupForm = 1"}));
        m.setRow(0, QString(), QStringLiteral("14:06"));
        m.tickAt(at(14, 5));
        const QString shown = m.t->txtCurrentDateTime->text();
        m.w->setWindowState(Qt::WindowMaximized);
        m.w->mnuMinimizeToTrayNow->trigger();
        QVERIFY(!m.w->isVisible());
        m.tickAt(at(14, 5, 30, 400));
        // Out of sight only a minute's first second matters: sleep till then.
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 6));
        m.tickAt(at(14, 6));
        QCOMPARE(m.t->txtCurrentDateTime->text() + "|" + m.t->lblCountDownHours[0]->text(), shown + "|0d 0h 1m 0s ");
        // The pop-up brings the window back in its normal state, even from maximized.
        QCoreApplication::processEvents(); // the window's own news of its state
        QVERIFY(m.fp.sound.played.size() == 1 && m.w->isVisible() && m.state().intMDIWindowState == 0);
        QCOMPARE(m.w->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), Qt::WindowStates());
        QCOMPARE(m.fp.wallTimer.armedFor, at(14, 6, 1));
        // Maximized, it evaluates, resets the main window's size and closes the other windows (which would too).
        m.w->resize(900, 700);
        m.state().bEvaluateNow = false;
        m.t->Form_Resize(2);
        QVERIFY(m.state().bEvaluateNow && m.w->size() == QSize(804, 616));
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.t->Form_Resize(2);
        QVERIFY(!legend || !legend->isVisible());
    }

    // The clock as it moves in life: stalls, sleeps, settings and the two daylight-saving days of a
    // Berlin year, ticked second by second. A span that starts with "~" comes after a sleep, told by
    // the login manager's wake; the others after the clock was set. An expected trip "day at hh:nn"
    // may say why it is late; "missed" lists the rows a long gap held, each once.
    void noAlarmIsLostOrRungTwice_data()
    {
        QTest::addColumn<Ticks>("c");
        const QStringList lunch{"14:06", "14:10"}, night{"01:30", "02:30", "03:30"}, at1406{"Sep, 30 at 14:06"};
        const auto nightOf = [&](const QString &day) { return QStringList{day + " at " + night[0], day + " at " + night[1], day + " at " + night[2]}; };
        QTest::newRow("the minute's second missed") << Ticks{{"2031-09-30T12:05:59.5", "2031-09-30T12:06:01.5"}, lunch, at1406};
        QTest::newRow("5 min asleep") << Ticks{{"2031-09-30T12:05:58", "~2031-09-30T12:11:00 2031-09-30T12:11:02"}, lunch, {"Sep, 30 at 14:06 asleep", "Sep, 30 at 14:10"}};
        QTest::newRow("asleep across midnight") << Ticks{{"2031-09-30T21:58:58", "~2031-09-30T22:00:03"}, {"23:59"}, {"Sep, 30 at 23:59 asleep"}};
        QTest::newRow("8 hours asleep") << Ticks{{"2031-09-30T22:00:00", "~2031-10-01T06:00:00"}, {"07:00"}, {"missed 07:00"}};
        QTest::newRow("a weekend asleep") << Ticks{{"2031-10-03T21:00:00", "~2031-10-06T04:30:00"}, {"07:00", "21:00"}, {"missed 07:00/21:00"}};
        QTest::newRow("set forward 20 min") << Ticks{{"2031-09-30T12:05:58", "2031-09-30T12:25:58"}, lunch, {"Sep, 30 at 14:06 set", "Sep, 30 at 14:10 set"}};
        QTest::newRow("set back 0.5 s") << Ticks{{"2031-09-30T12:06:00.2", "2031-09-30T12:05:59.7", "2031-09-30T12:06:00.1 2031-09-30T12:06:02.1"}, lunch, at1406};
        QTest::newRow("set back 1 h") << Ticks{{"2031-09-30T12:06:00", "2031-09-30T11:05:58 2031-09-30T11:06:02"}, lunch, at1406};
        QTest::newRow("spring forward") << Ticks{{"2031-03-30T00:29:58 2031-03-30T01:30:01"}, night, nightOf("Mar, 30")};
        QTest::newRow("autumn") << Ticks{{"2031-10-25T23:29:58 2031-10-26T02:30:01"}, night, nightOf("Oct, 26")};
    }
    void noAlarmIsLostOrRungTwice()
    {
        QFETCH(Ticks, c);
        auto &[spans, rows, trips] = c;
        LoadedMainWindow m;
        for (int i = 0; i < rows.size(); ++i) {
            m.setRow(i, QString(), rows[i]);
            m.t->txtACDetails[i]->setText(rows[i]);
        }
        QDateTime second; // of the second trip
        for (const QString &span : spans) {
            const QStringList ends = span.split(u' ');
            const QDateTime to = QDateTime::fromString(ends.last().mid(ends.last().startsWith(u'~')) + u'Z', Qt::ISODateWithMs);
            QDateTime t = QDateTime::fromString(ends.first().mid(span.startsWith(u'~')) + u'Z', Qt::ISODateWithMs);
            if (span.startsWith(u'~')) { // asleep till then; the wake is news at once
                m.fp.clock.sleep(m.fp.clock.now().secsTo(t.toLocalTime()));
                m.fp.sleep.tell(false);
                t = t.addSecs(1);
            }
            for (; t <= to; t = t.addSecs(1)) {
                m.tickAt(t.toLocalTime());
                if (second.isNull() && m.fp.notifier.shown.size() == 2)
                    second = t.toLocalTime();
            }
        }
        const QMap<QString, QString> notes{{"asleep", "Late: the computer was asleep.\n"}, {"set", "Late: the clock was set forward.\n"}};
        for (QString &trip : trips) {
            QStringList words = trip.split(u' ');
            if (words[0] == "missed") { // "hh:nn description" each, and the rows' descriptions are their times
                for (QString &row : words = words[1].split(u'/'))
                    row += u' ' + row;
                trip = "Missed alarms|" + words.join(u'/');
            } else {
                trip = "ALARM @ " + words.mid(0, 4).join(u' ') + "|" + notes.value(words.value(4)) + words[3];
            }
        }
        QCOMPARE(m.fp.notifier.shown, trips);
        if (QTest::currentDataTag() == QByteArray("spring forward")) // the skipped hour rings its row at 03:00:00, late
            QCOMPARE(second.time(), QTime(3, 0));
    }

    // Closed while a start-up box is open: nothing is left that could ring.
    void closingDuringStartUpEndsTheProgram()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            withSql({"DROP TABLE tblalarmclock"})(fp);
            fp.messages.onShow = [](const ShownMessage &) { QApplication::closeAllWindows(); };
        });
        QVERIFY(m.w->isUnloaded() && !m.fp.wallTimer.active);
    }
};

QTEST_MAIN(TableTest)
#include "tst_table.moc"
