// The time row: its three offset boxes, the per-row SET buttons that write
// now plus the offset into a row, and the switch that shows the row.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

const QColor kOrange(255, 128, 0);
const QColor kWhite(255, 255, 255);

QColor background(QLineEdit *box) { return box->palette().color(QPalette::Base); }

bool activate(LoadedMainWindow &m)
{
    m.w->activateWindow();
    return QTest::qWaitForWindowActive(m.w.get());
}

// Shows the time row by clicking its switch, as the user would.
void switchOn(LoadedMainWindow &m)
{
    if (!m.t->chkTimeRow->isChecked())
        QTest::mouseClick(m.t->chkTimeRow, Qt::LeftButton);
}

void setOffsets(LoadedMainWindow &m, const QStringList &texts)
{
    for (int b = 0; b < 3; ++b)
        m.t->txtJump[size_t(b)]->setText(texts[b]);
}

QDateTime at(int d, int h, int mi, int s, int ms = 0)
{
    return QDateTime(QDate(2031, 9, d), QTime(h, mi, s, ms));
}

} // namespace

class TimeRowTest : public QObject {
    Q_OBJECT

private slots:
    void setWritesNowPlusTheOffset_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QStringList>("offsets");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("time");
        QTest::newRow("late evening, into tomorrow")
            << at(30, 23, 50, 0) << QStringList{"0", "0", "15"} << "Oct 01, 2031" << "00:05";
        QTest::newRow("minutes carry into hours")
            << at(30, 10, 45, 0) << QStringList{"0", "0", "130"} << "Sep 30, 2031" << "12:55";
        QTest::newRow("no offset, seconds dropped")
            << at(30, 14, 5, 59, 999) << QStringList{"0", "0", "0"} << "Sep 30, 2031" << "14:05";
        QTest::newRow("days and hours")
            << at(30, 14, 5, 0) << QStringList{"1", "30", "0"} << "Oct 02, 2031" << "20:05";
        // The boxes are read as numbers, whatever they hold.
        QTest::newRow("hex and junk")
            << at(30, 14, 5, 0) << QStringList{"abc", "&H2", ""} << "Sep 30, 2031" << "16:05";
        QTest::newRow("a day back") << at(1, 0, 0, 0) << QStringList{"-1", "0", "0"} << "Aug 31, 2031" << "00:00";
    }
    void setWritesNowPlusTheOffset()
    {
        QFETCH(QDateTime, now);
        QFETCH(QStringList, offsets);
        QFETCH(QString, date);
        QFETCH(QString, time);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        setOffsets(m, offsets);
        const int row = 6;
        // A daily row before: the SET makes it a dated one.
        m.setRow(row, QString(), QStringLiteral("06:00"));
        m.t->lbl24[row]->setVisible(true);
        m.t->lblCountDownHours[row]->setText(QStringLiteral("stale"));
        m.t->bDataChanged = false;
        m.state().bEvaluateNow = false;
        m.fp.clock.set(now);

        QTest::mouseClick(m.t->cmdSetDateTime[row], Qt::LeftButton);
        QCOMPARE(m.t->txtACDate[row]->text(), date);
        QCOMPARE(m.t->txtACTime[row]->text(), time);
        QCOMPARE(m.state().strAlarmDates[size_t(row)], date);
        QCOMPARE(m.state().strAlarmTimes[size_t(row)], time);
        QVERIFY(!m.t->lbl24[row]->isVisibleTo(m.t));
        QCOMPARE(m.t->lblCountDownHours[row]->text(), QString());
        QVERIFY(m.t->bDataChanged);
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.fp.messages.shown.isEmpty());
        // Only that row.
        QCOMPARE(m.t->txtACDate[row + 1]->text(), QString());
        QCOMPARE(m.t->txtACTime[row - 1]->text(), QString());

        // A second SET in the same minute changes no text, yet still counts as a change.
        m.t->bDataChanged = false;
        QTest::mouseClick(m.t->cmdSetDateTime[row], Qt::LeftButton);
        QCOMPARE(m.t->txtACTime[row]->text(), time);
        QVERIFY(m.t->bDataChanged);
    }

    void setWithNoOffsetIsDueAtOnce_data()
    {
        QTest::addColumn<QDateTime>("setAt");
        QTest::addColumn<QDateTime>("tickAt");
        QTest::addColumn<bool>("trips");
        QTest::newRow("in the minute's first second") << at(30, 14, 5, 0, 100) << at(30, 14, 5, 0, 300) << true;
        QTest::newRow("later in the minute") << at(30, 14, 5, 30) << at(30, 14, 5, 31) << false;
    }
    void setWithNoOffsetIsDueAtOnce()
    {
        QFETCH(QDateTime, setAt);
        QFETCH(QDateTime, tickAt);
        QFETCH(bool, trips);
        LoadedMainWindow m;
        m.fp.clock.set(setAt);
        QTest::mouseClick(m.t->cmdSetDateTime[2], Qt::LeftButton);
        m.tickAt(tickAt);
        QCOMPARE(m.t->lblCountDownHours[2]->text(), QStringLiteral("done"));
        QCOMPARE(m.fp.sound.played.size(), trips ? 1 : 0);
    }

    void setReportsAnOffsetOutOfRange()
    {
        LoadedMainWindow m;
        switchOn(m);
        setOffsets(m, {QStringLiteral("2147483647"), QStringLiteral("0"), QStringLiteral("0")});
        m.setRow(3, QStringLiteral("Sep 30, 2031"), QStringLiteral("15:00"));
        QTest::mouseClick(m.t->cmdSetDateTime[3], Qt::LeftButton);
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.fp.messages.shown[0].title, QStringLiteral("ERROR"));
        QCOMPARE(m.fp.messages.shown[0].text, QStringLiteral("subCalculateDayHourMins\r\n6\r\nOverflow"));
        QCOMPARE(m.fp.messages.shown[0].buttons, MsgButtons::Ok);
        QCOMPARE(m.t->txtACDate[3]->text(), QStringLiteral("Sep 30, 2031"));
        QCOMPARE(m.t->txtACTime[3]->text(), QStringLiteral("15:00"));
        QCOMPARE(m.state().strAlarmDates[3], QStringLiteral("Sep 30, 2031"));
    }

    void enteringAnOffsetBoxClearsARestingZero_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("entered");
        QTest::newRow("resting zero") << "0" << "";
        QTest::newRow("two zeros") << "00" << "00";
        QTest::newRow("a number") << "5" << "5";
        QTest::newRow("zero with a blank") << "0 " << "0 ";
    }
    void enteringAnOffsetBoxClearsARestingZero()
    {
        QFETCH(QString, text);
        QFETCH(QString, entered);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        for (QLineEdit *box : m.t->txtJump) {
            box->setText(text);
            QTest::mouseClick(box, Qt::LeftButton);
            QCOMPARE(QApplication::focusWidget(), box);
            QCOMPARE(box->text(), entered);
        }
    }

    void aKeyTurnsAnOffsetBoxOrange()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        QLineEdit *hours = m.t->txtJumpHour;
        hours->setFocus(Qt::MouseFocusReason);
        QCOMPARE(background(hours), kWhite);
        QTest::keyClicks(hours, QStringLiteral("12"));
        QCOMPARE(hours->text(), QStringLiteral("12"));
        QCOMPARE(background(hours), kOrange);
        QCOMPARE(background(m.t->txtJumpDay), kWhite);
        QCOMPARE(background(m.t->txtJumpMinutes), kWhite);
        // Leaving rewrites the number but keeps the colour.
        QTest::keyClick(hours, Qt::Key_Tab);
        QCOMPARE(background(hours), kOrange);
    }

    void tabbingThroughAnOffsetBoxIsNotTyping()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        m.t->txtJumpDay->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(m.t->txtJumpDay, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), m.t->txtJumpHour);
        QCOMPARE(background(m.t->txtJumpDay), kWhite);
    }

    void leavingAnOffsetBoxRewritesTheNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("left");
        QTest::newRow("empty") << "" << "0";
        QTest::newRow("letters") << "abc" << "0";
        QTest::newRow("hex") << "&H10" << "16";
        QTest::newRow("leading zeros") << "007" << "7";
        QTest::newRow("negative") << "-3" << "-3";
        QTest::newRow("blanks") << " 42 " << "42";
    }
    void leavingAnOffsetBoxRewritesTheNumber()
    {
        QFETCH(QString, text);
        QFETCH(QString, left);
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        for (QLineEdit *box : m.t->txtJump) {
            box->setFocus(Qt::MouseFocusReason);
            box->setText(text);
            m.t->txtACDetails[0]->setFocus(Qt::MouseFocusReason);
            QCOMPARE(box->text(), left);
        }
    }

    void anOffsetBoxKeepsItsTextWhenTheWindowLosesFocus()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        QLineEdit *minutes = m.t->txtJumpMinutes;
        minutes->setFocus(Qt::MouseFocusReason);
        minutes->setText(QStringLiteral("&H10"));
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(minutes->text(), QStringLiteral("&H10"));
    }

    void doubleClickResetsAnOffsetBox()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        switchOn(m);
        for (QLineEdit *box : m.t->txtJump) {
            box->setFocus(Qt::MouseFocusReason);
            QTest::keyClicks(box, QStringLiteral("42"));
            QCOMPARE(background(box), kOrange);
            QTest::mouseDClick(box, Qt::LeftButton);
            QCOMPARE(box->text(), QStringLiteral("0"));
            QCOMPARE(background(box), kWhite);
        }
    }

    void theSwitchShowsHidesAndResetsTheTimeRow()
    {
        LoadedMainWindow m;
        QVERIFY(activate(m));
        QCheckBox *chk = m.t->chkTimeRow;
        auto boxesShown = [&](bool shown) {
            for (int b = 0; b < 3; ++b)
                if (m.t->txtJump[size_t(b)]->isVisibleTo(m.t) != shown
                    || m.t->lblJump[size_t(b)]->isVisibleTo(m.t) != shown)
                    return false;
            return true;
        };
        auto dirty = [&] {
            for (QLineEdit *box : m.t->txtJump) {
                box->setFocus(Qt::MouseFocusReason);
                QTest::keyClicks(box, QStringLiteral("9"));
            }
            m.t->txtACDate[0]->setFocus(Qt::MouseFocusReason);
        };
        auto reset = [&] {
            for (QLineEdit *box : m.t->txtJump)
                if (box->text() != QLatin1String("0") || background(box) != kWhite)
                    return false;
            return true;
        };
        QVERIFY(boxesShown(false));

        QTest::mouseClick(chk, Qt::LeftButton);
        QVERIFY(chk->isChecked());
        QCOMPARE(chk->text(), QStringLiteral("Time Row [Activated]"));
        QCOMPARE(chk->accessibleName(), QStringLiteral("Time Row [Activated]"));
        QVERIFY(m.w->mnuActivateTimeRow->isChecked());
        QVERIFY(!m.w->mnuDeactivateTimeRow->isChecked());
        QVERIFY(boxesShown(true));
        QVERIFY(reset());

        dirty();
        QVERIFY(!reset());
        QTest::mouseClick(chk, Qt::LeftButton);
        QVERIFY(!chk->isChecked());
        QCOMPARE(chk->text(), QStringLiteral("Time Row [Deactivated]"));
        QCOMPARE(chk->accessibleName(), QStringLiteral("Time Row [Deactivated]"));
        QVERIFY(!m.w->mnuActivateTimeRow->isChecked());
        QVERIFY(m.w->mnuDeactivateTimeRow->isChecked());
        QVERIFY(boxesShown(false));
        QVERIFY(reset());
    }

    void theStoredSettingOpensTheTimeRow()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase db(fp.testDir.dbPath());
            QVERIFY(db.exec(QStringLiteral("UPDATE tblprogramsetting SET booTimeRow = True")));
        });
        QVERIFY(m.t->chkTimeRow->isChecked());
        QCOMPARE(m.t->chkTimeRow->text(), QStringLiteral("Time Row [Activated]"));
        QVERIFY(m.w->mnuActivateTimeRow->isChecked());
        for (QLineEdit *box : m.t->txtJump) {
            QVERIFY(box->isVisibleTo(m.t));
            // Nothing has entered a box yet, so each rests at "0".
            QCOMPARE(box->text(), QStringLiteral("0"));
        }
    }
};

QTEST_MAIN(TimeRowTest)
#include "tst_timerow.moc"
