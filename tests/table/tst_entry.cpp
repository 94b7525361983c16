// Date, time and description entry, driven through real key, focus and mouse events.

#include "fakes/LoadedMainWindow.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QTest>

enum class Box { Date, Time };
Q_DECLARE_METATYPE(Box)

static QLineEdit *box(LoadedMainWindow &m, Box which, int row) { return (which == Box::Date ? m.t->txtACDate : m.t->txtACTime)[row]; }

static QString committed(LoadedMainWindow &m, Box which, int row) { return (which == Box::Date ? m.state().strAlarmDates : m.state().strAlarmTimes)[size_t(row)]; }

static QColor detailsColour(LoadedMainWindow &m, int row) { return m.t->txtACDetails[row]->palette().color(QPalette::Base); }

// Focus only moves between boxes of an active window. The row is made a
// daily one five minutes ahead: marked, counted down and coloured.
static bool activateWithDailyRow(LoadedMainWindow &m, int row)
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

static void leave(QLineEdit *b) { QTest::keyClick(b, Qt::Key_Tab); }

class EntryTest : public QObject {
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
        QVERIFY(m.t->bDataChanged);
        QVERIFY(!m.t->lbl24[3]->isVisibleTo(m.t));
        QCOMPARE(m.t->lblCountDownHours[3]->text(), QString());
        QCOMPARE(detailsColour(m, 3), QColor(Qt::white));
        QCOMPARE(committed(m, which, 3), before); // the tick keeps the old value meanwhile

        m.state().bEvaluateNow = false;
        key ? QTest::keyClick(b, Qt::Key(key)) : leave(b);
        QCOMPARE(b->text(), result);
        QCOMPARE(committed(m, which, 3), result);
        QCOMPARE(m.t->lbl24[3]->isVisibleTo(m.t), daily);
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.fp.messages.shown.isEmpty());
        QCOMPARE(QApplication::focusWidget() == b, key != 0);
    }

    void theTimeBoxFiltersTypedAndComposedText()
    {
        LoadedMainWindow m;
        QVERIFY(activateWithDailyRow(m, 8));
        QLineEdit *time = m.t->txtACTime[8];
        time->setFocus(Qt::MouseFocusReason);
        time->clear();
        QTest::keyClicks(time, QStringLiteral("0a7Z"));
        // Dead keys, compose sequences and input methods commit text without key presses; it is typing all the same.
        QInputMethodEvent commit;
        commit.setCommitString(QStringLiteral("\u00e9 3"));
        QApplication::sendEvent(time, &commit);
        QTest::keyClicks(time, QStringLiteral(".-0"));
        QCOMPARE(time->text(), QStringLiteral("07:30"));
        // Dropped keys change nothing, even typed over a selection.
        time->selectAll();
        m.t->bDataChanged = false;
        QTest::keyClicks(time, QStringLiteral("ab-/.x"));
        QCOMPARE(time->text(), QStringLiteral("07:30"));
        QVERIFY(!m.t->bDataChanged);
        // A blank becomes a colon at the caret.
        time->setText(QStringLiteral("0730"));
        time->setCursorPosition(2);
        QTest::keyClick(time, Qt::Key_Space);
        QCOMPARE(time->text(), QStringLiteral("07:30"));
    }

    void losingFocusToAnotherWindowIsNotLeaving()
    {
        LoadedMainWindow m;
        QVERIFY(activateWithDailyRow(m, 1));
        QLineEdit *time = m.t->txtACTime[1];
        time->setFocus(Qt::MouseFocusReason);
        time->setText(QStringLiteral("7:30"));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(time->text(), QStringLiteral("7:30"));
        QCOMPARE(m.state().strAlarmTimes[1], QStringLiteral("14:10"));
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
        QCOMPARE(m.t->lblCountDownHours[7]->text(), QStringLiteral("0d 0h 5m 0s "));
        QCOMPARE(detailsColour(m, 7), QColor(0, 255, 0));
        // An empty row's description takes the scheme's colour on leaving.
        m.t->txtACDetails[9]->setFocus(Qt::MouseFocusReason);
        QTest::keyClicks(m.t->txtACDetails[9], QStringLiteral("Dentist"));
        leave(m.t->txtACDetails[9]);
        QCOMPARE(detailsColour(m, 9), QColor(0, 64, 0));
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
            QCOMPARE(b->text(), expected);
            QCOMPARE(committed(m, which, 11), expected);
            QVERIFY(m.state().bEvaluateNow);
        }
        QCOMPARE(box(m, which == Box::Date ? Box::Time : Box::Date, 11)->text(), QString());
    }
};

QTEST_MAIN(EntryTest)
#include "tst_entry.moc"
