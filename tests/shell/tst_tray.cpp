#include "fakes/LoadedMainWindow.h"
#include "shell/TrayTip.h"

#include <QAction>
#include <QMdiArea>
#include <QMenu>
#include <QTest>

class TrayTest : public QObject {
    Q_OBJECT

    static void minimize(LoadedMainWindow &m)
    {
        m.w->setWindowState(m.w->windowState() | Qt::WindowMinimized);
        QCoreApplication::processEvents();
    }

private slots:
    void minimizingFollowsTheTraySwitch()
    {
        const QString added = "add:" + visibleTrayTip(trayTipField("Quorvel Alarm Clock", {}));
        LoadedMainWindow now;
        now.w->mnuMinimizeToTrayNow->trigger();
        QVERIFY(!now.w->isVisible());
        QCOMPARE(now.fp.tray.calls, QStringList(added)); // added again without a remove first

        LoadedMainWindow allowed;
        minimize(allowed);
        QVERIFY(!allowed.w->isVisible());
        QCOMPARE(allowed.fp.tray.calls, QStringList({"remove", added}));

        LoadedMainWindow disabled;
        disabled.w->mnuMinimizedToTrayOff->trigger();
        minimize(disabled);
        QVERIFY(disabled.w->isVisible() && disabled.w->isMinimized()); // left on the task bar
        QVERIFY(disabled.fp.tray.calls.isEmpty());

        // Restored before the minimize settled: nothing to hide.
        LoadedMainWindow restored;
        restored.w->setWindowState(restored.w->windowState() | Qt::WindowMinimized);
        restored.w->setWindowState(restored.w->windowState() & ~Qt::WindowMinimized);
        QCoreApplication::processEvents();
        QVERIFY(restored.w->isVisible());
        QVERIFY(restored.fp.tray.calls.isEmpty());
    }

    void theIconRestoresPopsUpTheMenuAndGoesOnExit()
    {
        LoadedMainWindow m;
        m.w->setWindowState(Qt::WindowMaximized);
        minimize(m);
        m.state().bEvaluateNow = false;
        m.fp.tray.calls.clear();
        m.fp.tray.sendMouse(TrayIcon::LeftDoubleClick);
        QVERIFY(m.w->isVisible());
        QCOMPARE(m.w->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), Qt::WindowStates());
        QCOMPARE(m.state().intMDIWindowState, 0);
        QVERIFY(m.state().bEvaluateNow);
        QVERIFY(m.fp.tray.calls.isEmpty()); // the icon stays

        m.fp.tray.sendMouse(512); // a plain move does nothing
        QVERIFY(!m.w->mnuProgram->isVisible());
        m.fp.tray.sendMouse(TrayIcon::RightButtonDown);
        QVERIFY(m.w->mnuProgram->isVisible());
        m.w->mnuProgram->close();
        QTest::mousePress(m.w->findChild<QMdiArea *>()->viewport(), Qt::RightButton, {}, QPoint(3, 3));
        QVERIFY(m.w->mnuProgram->isVisible());
        m.w->mnuProgram->close();

        m.w->mnuExit->trigger();
        QCOMPARE(m.fp.tray.calls.last(), "remove");
    }
};

QTEST_MAIN(TrayTest)
#include "tst_tray.moc"
