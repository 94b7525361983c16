// A time box holding what is no time, however it got there, is emptied and
// silences no other row; shortcuts in a time box work as in any text box.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTest>

static const QDateTime kNow(QDate(2031, 9, 30), QTime(14, 5, 0));

class BadTimesTest : public QObject {
    Q_OBJECT

    // Focus in the time box of row 0 of an active window, its text selected.
    static bool focusTime(LoadedMainWindow &m)
    {
        m.w->show();
        m.w->activateWindow();
        if (!QTest::qWaitForWindowActive(m.w.get()))
            return false;
        m.t->txtACTime[0]->setFocus(Qt::MouseFocusReason);
        return QApplication::focusWidget() == m.t->txtACTime[0];
    }

private slots:
    void badTimesAreEmptiedAndTheGoodRowStillRings_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("text");
        QTest::newRow("typed, two blanks") << "typed" << "12  3";
        QTest::newRow("typed, colon last") << "typed" << "0730:";
        QTest::newRow("pasted") << "pasted" << "ab:cd";
        QTest::newRow("stored") << "stored" << "ab:cd";
    }
    void badTimesAreEmptiedAndTheGoodRowStillRings()
    {
        QFETCH(QString, how);
        QFETCH(QString, text);
        LoadedMainWindow m([&](FakePlatform &fp) {
            if (how == QStringLiteral("stored"))
                TestDatabase(fp.testDir.dbPath())
                    .exec(QStringLiteral("INSERT INTO tblalarmclock (dtalarmclockhhnn) VALUES (?)"), {text});
        });
        if (how != QStringLiteral("stored")) {
            QVERIFY(focusTime(m));
            if (how == QStringLiteral("pasted")) {
                QApplication::clipboard()->setText(text);
                QTest::keyClick(m.t->txtACTime[0], Qt::Key_V, Qt::ControlModifier);
            } else {
                QTest::keyClicks(m.t->txtACTime[0], text);
            }
            QTest::keyClick(m.t->txtACTime[0], Qt::Key_Tab);
        }
        QCOMPARE(m.t->txtACTime[0]->text(), QString());
        QVERIFY(!m.t->lbl24[0]->isVisibleTo(m.t));
        m.setRow(1, QString(), QStringLiteral("14:06"));
        m.tickAt(kNow);
        m.tickAt(kNow.addSecs(60));
        QCOMPARE(m.fp.sound.played.size(), 1);
    }

    void ctrlAThenTypingReplacesATime()
    {
        LoadedMainWindow m;
        m.t->txtACTime[0]->setText(QStringLiteral("07:30"));
        QVERIFY(focusTime(m));
        m.t->txtACTime[0]->deselect();
        QTest::keyClick(m.t->txtACTime[0], Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(m.t->txtACTime[0], QStringLiteral("08 15"));
        QCOMPARE(m.t->txtACTime[0]->text(), QStringLiteral("08:15"));
    }
};

QTEST_MAIN(BadTimesTest)
#include "tst_badtimes.moc"
