#include "fakes/LoadedMainWindow.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

// How the program fits the desktop it runs on: a missing tray host, an
// install folder the user may not write to, starting at login.
class DesktopTest : public QObject {
    Q_OBJECT

    static bool load(mdiAlarmClock &w)
    {
        try {
            w.MDIForm_Load();
            return true;
        } catch (const ProgramEnded &) {
            return false;
        }
    }

private slots:
    void minimizingWithoutATrayHost_data()
    {
        QTest::addColumn<bool>("now");
        QTest::newRow("Minimize To Tray Now") << true;
        QTest::newRow("minimized, tray allowed") << false;
    }

    void minimizingWithoutATrayHost()
    {
        QFETCH(bool, now);
        LoadedMainWindow m([](FakePlatform &fp) { fp.tray.hostAvailable = false; });
        if (now)
            m.w->mnuMinimizeToTrayNow->trigger();
        else
            m.w->setWindowState(m.w->windowState() | Qt::WindowMinimized);
        QCoreApplication::processEvents();
        // Still on the task bar, never hidden with nothing to bring it back.
        QVERIFY(m.w->isVisible());
        QVERIFY(m.w->isMinimized());
        QCOMPARE(m.state().intMDIWindowState, 1);

        m.fp.tray.hostAvailable = true; // a panel started meanwhile
        m.w->setWindowState(Qt::WindowNoState);
        m.w->mnuMinimizeToTrayNow->trigger();
        QVERIFY(!m.w->isVisible());
    }

    void whereTheDatabaseLives_data()
    {
        QTest::addColumn<bool>("folderWritable");
        QTest::addColumn<bool>("userCopy");
        QTest::addColumn<bool>("shipped");
        QTest::addColumn<bool>("copyFails");
        QTest::addColumn<QString>("used"); // "shipped", "user" or "" (the program ends)
        QTest::newRow("writable folder") << true << true << true << false << "shipped";
        QTest::newRow("writable folder, no file") << true << true << false << false << "";
        QTest::newRow("read-only, first start") << false << false << true << false << "user";
        QTest::newRow("read-only, user copy") << false << true << true << false << "user";
        QTest::newRow("read-only, only the user copy") << false << true << false << false << "user";
        QTest::newRow("read-only, neither") << false << false << false << false << "";
        QTest::newRow("read-only, copy impossible") << false << false << true << true << "shipped";
    }

    void whereTheDatabaseLives()
    {
        QFETCH(bool, folderWritable);
        QFETCH(bool, userCopy);
        QFETCH(bool, shipped);
        QFETCH(bool, copyFails);
        QFETCH(QString, used);

        FakePlatform fp;
        QTemporaryDir home;
        fp.appDir.userData = home.filePath(QStringLiteral("share/quorvel-alarmclock"));
        const QString shippedPath = fp.testDir.dbPath();
        const QString userPath = fp.appDir.userData + QStringLiteral("/alarmclock.mdb");
        if (!folderWritable)
            fp.files.readOnly.insert(fp.appDir.path());
        if (userCopy) {
            QVERIFY(QDir().mkpath(fp.appDir.userData));
            QVERIFY(QFile::copy(shippedPath, userPath));
        }
        if (!shipped)
            QVERIFY(fp.testDir.remove(QStringLiteral("alarmclock.mdb")));
        fp.files.copyFails = copyFails;

        mdiAlarmClock w(fp.platform());
        QCOMPARE(load(w), !used.isEmpty());
        if (used.isEmpty()) {
            QCOMPARE(fp.messages.texts(), QStringList({"Missing the file:\r\n" + shippedPath,
                                                       "The program cannot continue without the database."}));
            return;
        }
        QCOMPARE(w.database().path(), used == "user" ? userPath : shippedPath);
        QVERIFY(fp.messages.shown.isEmpty());
        // Seeded once, from the shipped file, and nothing half-written left behind.
        const bool seeded = !folderWritable && !userCopy && shipped;
        QCOMPARE(fp.files.copies, seeded ? QStringList(shippedPath + '>' + userPath) : QStringList());
        if (seeded && !copyFails) {
            QCOMPARE(QDir(fp.appDir.userData).entryList(QDir::Files), QStringList("alarmclock.mdb"));
            QFile a(shippedPath), b(userPath);
            QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
            QVERIFY(a.readAll() == b.readAll());
        }
    }

    void startAtLogin_data()
    {
        QTest::addColumn<bool>("startsOn");
        QTest::addColumn<bool>("works");
        QTest::addColumn<bool>("endsOn");
        QTest::newRow("turn on") << false << true << true;
        QTest::newRow("turn off") << true << true << false;
        QTest::newRow("cannot write") << false << false << false;
    }

    void startAtLogin()
    {
        QFETCH(bool, startsOn);
        QFETCH(bool, works);
        QFETCH(bool, endsOn);
        LoadedMainWindow m([&](FakePlatform &fp) {
            fp.autostart.on = startsOn;
            fp.autostart.works = works;
        });
        QAction *command = m.w->mnuStartAtLogin;
        QCOMPARE(command->isChecked(), startsOn);
        command->trigger();
        QCOMPARE(m.fp.autostart.on, endsOn);
        QCOMPARE(command->isChecked(), endsOn);
        QCOMPARE(m.fp.messages.shown.size(), works ? 0 : 1);
        if (!works)
            QCOMPARE(m.fp.messages.shown[0].title, "START AT LOGIN");

        // Removed elsewhere (the desktop's own settings): the mark follows.
        m.fp.autostart.on = !endsOn;
        emit m.w->mnuUtilities->aboutToShow();
        QCOMPARE(command->isChecked(), !endsOn);
    }
};

QTEST_MAIN(DesktopTest)
#include "tst_desktop.moc"
