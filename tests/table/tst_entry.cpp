// Date, time and description entry in the alarm table, driven through real
// key, focus and mouse events on the shown main window.

#include "fakes/LoadedMainWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QTest>
#include <QTestEventList>
#include <QTimer>

namespace {

enum class Box { Date, Time };

QLineEdit *box(frmAlarmClock *t, Box which, int row)
{
    return which == Box::Date ? t->txtACDate[row] : t->txtACTime[row];
}

QString committed(LoadedMainWindow &m, Box which, int row)
{
    return which == Box::Date ? m.state().strAlarmDates[size_t(row)] : m.state().strAlarmTimes[size_t(row)];
}

QColor detailsColour(frmAlarmClock *t, int row) { return t->txtACDetails[row]->palette().color(QPalette::Base); }

void paintDetails(frmAlarmClock *t, int row, const QColor &c)
{
    QPalette p = t->txtACDetails[row]->palette();
    p.setColor(QPalette::Base, c);
    t->txtACDetails[row]->setPalette(p);
}

bool dailyMark(frmAlarmClock *t, int row) { return t->lbl24[row]->isVisibleTo(t); }

// Focus only moves between boxes of an active window.
bool activate(LoadedMainWindow &m)
{
    m.w->activateWindow();
    return QTest::qWaitForWindowActive(m.w.get());
}

void enter(QLineEdit *b) { b->setFocus(Qt::MouseFocusReason); }

// The user tabs on to the next control.
void leave(QLineEdit *b) { QTest::keyClick(b, Qt::Key_Tab); }

QDateTime at(int h, int mi, int s) { return QDateTime(QDate(2031, 9, 30), QTime(h, mi, s)); }

} // namespace

Q_DECLARE_METATYPE(Box)

class EntryTest : public QObject {
    Q_OBJECT

private slots:
    void typingMarksTheRowAsChanged_data()
    {
        QTest::addColumn<Box>("which");
        QTest::addColumn<QTestEventList>("keys");
        QTestEventList letter;
        letter.addKeyClick(Qt::Key_X);
        QTestEventList backspace;
        backspace.addKeyClick(Qt::Key_End);
        backspace.addKeyClick(Qt::Key_Backspace);
        QTestEventList blank = backspace;
        blank.addKeyClick(Qt::Key_Space);
        QTestEventList space;
        space.addKeyClick(Qt::Key_Space);
        QTest::newRow("date, a letter") << Box::Date << letter;
        QTest::newRow("date, a blank") << Box::Date << space;
        QTest::newRow("time, backspace") << Box::Time << backspace;
        QTest::newRow("time, backspace and blank") << Box::Time << blank;
    }
    void typingMarksTheRowAsChanged()
    {
        QFETCH(Box, which);
        QFETCH(QTestEventList, keys);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        const int row = 5;
        // A daily row five minutes ahead: marked, counted down and coloured.
        m.setRow(row, QString(), QStringLiteral("14:10"));
        enter(m.t->txtACTime[row]);
        leave(m.t->txtACTime[row]);
        m.tickAt(at(14, 5, 0));
        QVERIFY(dailyMark(m.t, row));
        QCOMPARE(m.t->lblCountDownHours[row]->text(), QStringLiteral("0d 0h 5m 0s "));
        QCOMPARE(detailsColour(m.t, row), QColor(0, 255, 0));

        QLineEdit *b = box(m.t, which, row);
        enter(b);
        m.t->bDataChanged = false;
        const QString before = committed(m, which, row);
        keys.simulate(b);

        QVERIFY(m.t->bDataChanged);
        QVERIFY(!dailyMark(m.t, row));
        QCOMPARE(m.t->lblCountDownHours[row]->text(), QString());
        QCOMPARE(detailsColour(m.t, row), QColor(255, 255, 255));
        // The tick keeps the old value until the box is left.
        QCOMPARE(committed(m, which, row), before);
        QCOMPARE(QApplication::focusWidget(), b);
    }

    void aDroppedKeyChangesNothing()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        m.setRow(2, QString(), QStringLiteral("06:00"));
        QLineEdit *time = m.t->txtACTime[2];
        enter(time);
        leave(time);
        QVERIFY(dailyMark(m.t, 2));
        enter(time);
        // Typed over a selection, so the box's length limit cannot be what stops them.
        time->selectAll();
        m.t->bDataChanged = false;
        QTest::keyClicks(time, QStringLiteral("ab-/.x"));
        QCOMPARE(time->text(), QStringLiteral("06:00"));
        QVERIFY(!m.t->bDataChanged);
        QVERIFY(dailyMark(m.t, 2));
    }

    void theTimeBoxFiltersTypedKeys_data()
    {
        QTest::addColumn<QTestEventList>("keys");
        QTest::addColumn<QString>("text");
        auto typed = [](const QString &s) {
            QTestEventList l;
            l.addKeyClicks(s);
            return l;
        };
        QTest::newRow("blank becomes colon") << typed(QStringLiteral("07 30")) << QStringLiteral("07:30");
        QTest::newRow("letters dropped") << typed(QStringLiteral("0a7Z:3.0-")) << QStringLiteral("07:30");
        QTestEventList corrected = typed(QStringLiteral("07:35"));
        corrected.addKeyClick(Qt::Key_Backspace);
        corrected.addKeyClicks(QStringLiteral("0"));
        QTest::newRow("backspace") << corrected << QStringLiteral("07:30");
        // The colon lands at the caret, not at the end.
        QTestEventList caret = typed(QStringLiteral("0730"));
        caret.addKeyClick(Qt::Key_Left);
        caret.addKeyClick(Qt::Key_Left);
        caret.addKeyClick(Qt::Key_Space);
        QTest::newRow("blank at the caret") << caret << QStringLiteral("07:30");
    }
    void theTimeBoxFiltersTypedKeys()
    {
        QFETCH(QTestEventList, keys);
        QFETCH(QString, text);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QLineEdit *time = m.t->txtACTime[8];
        enter(time);
        keys.simulate(time);
        QCOMPARE(time->text(), text);
    }

    // Dead keys, compose sequences and input methods deliver their text in
    // one commit instead of key presses; it is typing all the same.
    void textFromAnInputMethodIsFilteredToo()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QLineEdit *time = m.t->txtACTime[8];
        enter(time);
        QTest::keyClicks(time, QStringLiteral("07"));
        QInputMethodEvent commit;
        commit.setCommitString(QStringLiteral("\u00e9 3"));
        QApplication::sendEvent(time, &commit);
        QCOMPARE(time->text(), QStringLiteral("07:3"));
    }

    void leavingATimeBoxRepairsIt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::newRow("one-digit hour") << "7:30" << "";
        QTest::newRow("no colon") << "0730" << "";
        QTest::newRow("one digit") << "7" << "";
        QTest::newRow("empty") << "" << "";
        QTest::newRow("two-digit form") << "07:30" << "07:30";
        QTest::newRow("last minute") << "23:59" << "23:59";
        QTest::newRow("midnight as 24") << "24:00" << "00:00";
        QTest::newRow("hour too big") << "25:10" << "00:10";
        QTest::newRow("minutes too big") << "12:75" << "12:00";
        QTest::newRow("both too big") << "24:60" << "00:00";
        QTest::newRow("not a time, kept") << "12:3a" << "12:3a";
    }
    void leavingATimeBoxRepairsIt()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QLineEdit *time = m.t->txtACTime[3];
        enter(time);
        time->setText(text); // as a paste would bring it
        paintDetails(m.t, 3, QColor(255, 0, 0));
        m.state().bEvaluateNow = false;
        leave(time);
        QCOMPARE(time->text(), result);
        QCOMPARE(m.state().strAlarmTimes[3], result);
        QCOMPARE(detailsColour(m.t, 3), QColor(255, 255, 255));
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void aTimeThatStaysBrokenDoesNotStopTheClock()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("14:10"));
        QLineEdit *time = m.t->txtACTime[4];
        enter(time);
        time->setText(QStringLiteral("1a:b2"));
        leave(time);
        QCOMPARE(m.state().strAlarmTimes[4], QStringLiteral("1a:b2"));

        m.tickAt(at(14, 6, 0));
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:06:00"));
        QCOMPARE(m.t->lblCountDownHours[0]->text(), QStringLiteral("0d 0h 4m 0s "));
        QVERIFY(m.fp.messages.shown.isEmpty());
        QVERIFY(m.fp.sound.played.isEmpty());
        // And the clock goes on ticking.
        QVERIFY(m.t->tmrAlarmClock->isActive());
        m.tickAt(at(14, 6, 1));
        QCOMPARE(m.t->txtCurrentDateTime->text(), QStringLiteral("Sep 30, 2031 14:06:01"));
    }

    void leavingADateBoxNormalisesIt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        const QString sep30 = QStringLiteral("Sep 30, 2031");
        QTest::newRow("as shown") << "Sep 30, 2031" << sep30;
        QTest::newRow("full month, lower case") << "september 30 2031" << sep30;
        QTest::newRow("day first") << "30 Sep 2031" << sep30;
        QTest::newRow("slashes") << "9/30/2031" << sep30;
        QTest::newRow("iso") << "2031-09-30" << sep30;
        QTest::newRow("blanks around") << "   sep 30 2031  " << sep30;
        QTest::newRow("one-digit day") << "oct 5 2031" << "Oct 05, 2031";
        QTest::newRow("leap day") << "Feb 29, 2032" << "Feb 29, 2032";
        QTest::newRow("Feb 30") << "Feb 30, 2031" << "";
        QTest::newRow("Feb 29, not a leap year") << "Feb 29, 2031" << "";
        QTest::newRow("a word") << "tomorrow" << "";
        QTest::newRow("blanks") << "     " << "";
        QTest::newRow("5000 characters") << QString(5000, u'7') << "";
    }
    void leavingADateBoxNormalisesIt()
    {
        QFETCH(QString, text);
        QFETCH(QString, result);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QLineEdit *date = m.t->txtACDate[6];
        enter(date);
        date->setText(text);
        m.t->lblCountDownHours[6]->setText(QStringLiteral("stale"));
        paintDetails(m.t, 6, QColor(255, 0, 0));
        m.state().bEvaluateNow = false;
        leave(date);
        QCOMPARE(date->text(), result);
        QCOMPARE(m.state().strAlarmDates[6], result);
        QCOMPARE(m.t->lblCountDownHours[6]->text(), QString());
        QCOMPARE(detailsColour(m.t, 6), QColor(255, 255, 255));
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void enterNormalisesWithoutLeaving_data()
    {
        QTest::addColumn<Box>("which");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("result");
        QTest::newRow("date, Return") << Box::Date << "30 sep 2031" << int(Qt::Key_Return) << "Sep 30, 2031";
        QTest::newRow("date, keypad Enter") << Box::Date << "feb 30 2031" << int(Qt::Key_Enter) << "";
        QTest::newRow("time, Return") << Box::Time << "25 10" << int(Qt::Key_Return) << "00:10";
        QTest::newRow("time, keypad Enter") << Box::Time << "7:3" << int(Qt::Key_Enter) << "";
    }
    void enterNormalisesWithoutLeaving()
    {
        QFETCH(Box, which);
        QFETCH(QString, typed);
        QFETCH(int, key);
        QFETCH(QString, result);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QLineEdit *b = box(m.t, which, 10);
        enter(b);
        QTest::keyClicks(b, typed);
        // Other keys going up do nothing of the kind.
        QVERIFY(b->text() != result);
        QCOMPARE(committed(m, which, 10), QString());

        QTest::keyClick(b, Qt::Key(key));
        QCOMPARE(b->text(), result);
        QCOMPARE(committed(m, which, 10), result);
        QCOMPARE(QApplication::focusWidget(), b);
    }

    void losingFocusToAnotherWindowIsNotLeaving()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QLineEdit *time = m.t->txtACTime[1];
        enter(time);
        time->setText(QStringLiteral("7:30"));

        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(time->text(), QStringLiteral("7:30"));
        QCOMPARE(m.state().strAlarmTimes[1], QString());

        // Back in the window the box still holds the focus; leaving it now counts.
        QVERIFY(activate(m));
        QCOMPARE(QApplication::focusWidget(), time);
        leave(time);
        QCOMPARE(time->text(), QString());
    }

    void theDailyMarkFollowsTheDateAndTime()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        const int row = 4;
        QLineEdit *date = m.t->txtACDate[row];
        QLineEdit *time = m.t->txtACTime[row];

        enter(time);
        QTest::keyClicks(time, QStringLiteral("06 00"));
        QVERIFY(!dailyMark(m.t, row));
        leave(time);
        QVERIFY(dailyMark(m.t, row));

        enter(date);
        QTest::keyClicks(date, QStringLiteral("oct 1 2031"));
        leave(date);
        QCOMPARE(date->text(), QStringLiteral("Oct 01, 2031"));
        QVERIFY(!dailyMark(m.t, row));

        // A date that is thrown away makes the row daily again.
        enter(date);
        date->selectAll();
        QTest::keyClicks(date, QStringLiteral("tomorrow"));
        leave(date);
        QCOMPARE(date->text(), QString());
        QVERIFY(dailyMark(m.t, row));

        // A date without a time is no daily alarm.
        m.setRow(row + 1, QString(), QString());
        enter(m.t->txtACDate[row + 1]);
        QTest::keyClicks(m.t->txtACDate[row + 1], QStringLiteral("2031-10-01"));
        leave(m.t->txtACDate[row + 1]);
        QVERIFY(!dailyMark(m.t, row + 1));
    }

    void leavingTheDescription_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::addColumn<QString>("time");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("empty row, Regular") << 0 << "" << QColor(255, 255, 255);
        QTest::newRow("empty row, Matrix") << 1 << "" << QColor(0, 64, 0);
        QTest::newRow("row with a time keeps its colour") << 0 << "14:02" << QColor(255, 0, 0);
    }
    void leavingTheDescription()
    {
        QFETCH(int, scheme);
        QFETCH(QString, time);
        QFETCH(QColor, colour);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        const int row = 9;
        m.setRow(row, QString(), time);
        m.state().intColorPick = qint16(scheme);
        paintDetails(m.t, row, QColor(255, 0, 0));
        QLineEdit *details = m.t->txtACDetails[row];
        enter(details);
        m.t->bDataChanged = false;
        m.state().bEvaluateNow = false;
        QTest::keyClicks(details, QStringLiteral("Dentist"));
        QVERIFY(m.t->bDataChanged);
        QCOMPARE(detailsColour(m.t, row), QColor(255, 0, 0));

        leave(details);
        QCOMPARE(detailsColour(m.t, row), colour);
        QVERIFY(m.state().bEvaluateNow);
    }

    void typingADescriptionLeavesTheRowAsItIs()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        m.setRow(7, QString(), QStringLiteral("14:20"));
        enter(m.t->txtACTime[7]);
        leave(m.t->txtACTime[7]); // lands in the description
        m.tickAt(at(14, 5, 0));
        QCOMPARE(QApplication::focusWidget(), m.t->txtACDetails[7]);
        QTest::keyClicks(m.t->txtACDetails[7], QStringLiteral("Call"));
        QVERIFY(dailyMark(m.t, 7));
        QCOMPARE(m.t->lblCountDownHours[7]->text(), QStringLiteral("0d 0h 15m 0s "));
        QCOMPARE(detailsColour(m.t, 7), QColor(255, 255, 0));
    }

    void doubleClickFillsOrEmpties_data()
    {
        QTest::addColumn<Box>("which");
        QTest::addColumn<QString>("initial");
        QTest::addColumn<QStringList>("offsets");
        QTest::addColumn<QString>("filled");
        // Now is Sep 30, 2031 14:05.
        QTest::newRow("date, no offset") << Box::Date << "" << QStringList{"0", "0", "0"} << "Sep 30, 2031";
        QTest::newRow("date, two days") << Box::Date << "" << QStringList{"2", "0", "0"} << "Oct 02, 2031";
        QTest::newRow("date, hours roll over") << Box::Date << "" << QStringList{"0", "12", "0"} << "Oct 01, 2031";
        QTest::newRow("date, blanks are empty") << Box::Date << "   " << QStringList{"1", "0", "0"} << "Oct 01, 2031";
        QTest::newRow("time, no offset") << Box::Time << "" << QStringList{"0", "0", "0"} << "14:05";
        QTest::newRow("time, minutes roll over") << Box::Time << "" << QStringList{"0", "1", "70"} << "16:15";
        QTest::newRow("time, days ignored") << Box::Time << "" << QStringList{"3", "0", "0"} << "14:05";
    }
    void doubleClickFillsOrEmpties()
    {
        QFETCH(Box, which);
        QFETCH(QString, initial);
        QFETCH(QStringList, offsets);
        QFETCH(QString, filled);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        m.t->chkTimeRow->setChecked(true);
        for (int b = 0; b < 3; ++b)
            m.t->txtJump[size_t(b)]->setText(offsets[b]);
        const int row = 11;
        QLineEdit *b = box(m.t, which, row);
        QLineEdit *other = box(m.t, which == Box::Date ? Box::Time : Box::Date, row);
        b->setText(initial);
        m.t->lblCountDownHours[row]->setText(QStringLiteral("stale"));
        m.t->bDataChanged = false;
        m.state().bEvaluateNow = false;

        QTest::mouseDClick(b, Qt::LeftButton);
        QCOMPARE(b->text(), filled);
        QCOMPARE(committed(m, which, row), filled);
        QCOMPARE(other->text(), QString());
        QCOMPARE(m.t->lblCountDownHours[row]->text(), QString());
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.t->bDataChanged);
        // A filled time on a dateless row is a daily alarm.
        QCOMPARE(dailyMark(m.t, row), which == Box::Time);

        m.t->lblCountDownHours[row]->setText(QStringLiteral("stale"));
        m.state().bEvaluateNow = false;
        QTest::mouseDClick(b, Qt::LeftButton);
        QCOMPARE(b->text(), QString());
        QCOMPARE(committed(m, which, row), QString());
        QCOMPARE(m.t->lblCountDownHours[row]->text(), QString());
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.fp.messages.shown.isEmpty());
    }
};

QTEST_MAIN(EntryTest)
#include "tst_entry.moc"
