// The tray icon: its tip, going to the tray (by command and by minimizing),
// coming back on a double-click, and the Program menu popping up from the
// icon and from the main window's empty area.

#include "fakes/LoadedMainWindow.h"
#include "shell/TrayTip.h"

#include <QAction>
#include <QCheckBox>
#include <QMdiArea>
#include <QMenu>
#include <QTest>
#include <QTimer>

namespace {

const QString kPlainTip = QStringLiteral("[Quorvel Alarm Clock] Double LEFT Click me.");

QString addedWithPlainTip() { return QStringLiteral("add:") + trayTipField(QStringLiteral("Quorvel Alarm Clock"), {}); }

} // namespace

class TrayTest : public QObject {
    Q_OBJECT

private slots:
    void minimizeToTrayNowHidesAndAddsWithoutRemoving()
    {
        LoadedMainWindow m;
        QVERIFY(m.fp.tray.visible);
        QCOMPARE(visibleTrayTip(m.fp.tray.field), kPlainTip);

        m.w->mnuMinimizeToTrayNow->trigger();
        QVERIFY(!m.w->isVisible());
        QCOMPARE(m.state().intMDIWindowState, 1);
        QCOMPARE(m.fp.tray.calls, QStringList(addedWithPlainTip()));
        QCOMPARE(visibleTrayTip(m.fp.tray.field), kPlainTip);
    }

    void minimizingFollowsTheTraySwitch_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::newRow("allowed") << true;
        QTest::newRow("disabled") << false;
    }
    void minimizingFollowsTheTraySwitch()
    {
        QFETCH(bool, allowed);
        LoadedMainWindow m;
        if (!allowed)
            m.w->mnuMinimizedToTrayOff->trigger();
        QCOMPARE(m.t->chkMinimizeToTray->isChecked(), allowed);
        m.fp.tray.calls.clear();

        m.w->setWindowState(m.w->windowState() | Qt::WindowMinimized);
        QCoreApplication::processEvents();
        QCOMPARE(m.state().intMDIWindowState, 1);
        if (allowed) {
            QVERIFY(!m.w->isVisible());
            QCOMPARE(m.fp.tray.calls, QStringList({QStringLiteral("remove"), addedWithPlainTip()}));
        } else {
            // Left on the task bar.
            QVERIFY(m.w->isVisible());
            QVERIFY(m.w->isMinimized());
            QVERIFY(m.fp.tray.calls.isEmpty());
        }
    }

    void restoringBeforeTheMinimizeSettlesKeepsTheWindow()
    {
        LoadedMainWindow m;
        m.w->setWindowState(m.w->windowState() | Qt::WindowMinimized);
        m.w->setWindowState(m.w->windowState() & ~Qt::WindowMinimized);
        QCoreApplication::processEvents();
        QVERIFY(m.w->isVisible());
        QVERIFY(m.fp.tray.calls.isEmpty());
    }

    void doubleClickBringsTheWindowBackInTheNormalState()
    {
        LoadedMainWindow m;
        m.w->setWindowState(Qt::WindowMaximized);
        m.w->setWindowState(m.w->windowState() | Qt::WindowMinimized);
        QCoreApplication::processEvents();
        QVERIFY(!m.w->isVisible());
        m.fp.tray.calls.clear();
        m.state().bEvaluateNow = false;

        m.fp.tray.sendMouse(TrayIcon::LeftDoubleClick);
        QVERIFY(m.w->isVisible());
        QCOMPARE(m.w->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), Qt::WindowStates());
        QCOMPARE(m.state().intMDIWindowState, 0);
        QVERIFY(m.state().bEvaluateNow);
        // The icon stays.
        QVERIFY(m.fp.tray.calls.isEmpty());
        QVERIFY(m.fp.tray.visible);
    }

    void rightButtonOnTheIconPopsUpTheProgramMenu()
    {
        LoadedMainWindow m;
        m.w->mnuMinimizeToTrayNow->trigger();
        m.fp.tray.sendMouse(TrayIcon::RightButtonDown);
        QVERIFY(m.w->mnuProgram->isVisible());
        m.w->mnuProgram->close();

        // Other messages do nothing.
        m.fp.tray.sendMouse(512);
        m.fp.tray.sendMouse(514);
        QVERIFY(!m.w->mnuProgram->isVisible());
        QVERIFY(!m.w->isVisible());
    }

    void rightClickOnTheEmptyAreaPopsUpTheProgramMenu_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("pops");
        QTest::newRow("right") << int(Qt::RightButton) << true;
        QTest::newRow("left") << int(Qt::LeftButton) << false;
    }
    void rightClickOnTheEmptyAreaPopsUpTheProgramMenu()
    {
        QFETCH(int, button);
        QFETCH(bool, pops);
        LoadedMainWindow m;
        QWidget *empty = m.w->findChild<QMdiArea *>(QStringLiteral("mdiArea"))->viewport();
        QTest::mousePress(empty, Qt::MouseButton(button), {}, QPoint(3, 3));
        QCOMPARE(m.w->mnuProgram->isVisible(), pops);
        m.w->mnuProgram->close();
        QTest::mouseRelease(empty, Qt::MouseButton(button), {}, QPoint(3, 3));
    }

    void exitFromTheTrayEndsAndRemovesTheIcon()
    {
        LoadedMainWindow m;
        m.w->mnuMinimizeToTrayNow->trigger();
        m.fp.tray.sendMouse(TrayIcon::RightButtonDown);
        m.w->mnuExit->trigger();
        QVERIFY(m.w->isUnloaded());
        QCOMPARE(m.fp.tray.calls.last(), QStringLiteral("remove"));
        QVERIFY(!m.fp.tray.visible);
        QVERIFY(!m.t->tmrAlarmClock->isActive());
    }
};

QTEST_MAIN(TrayTest)
#include "tst_tray.moc"
