#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "shell/mdiAlarmClock.h"
#include "table/frmAlarmClock.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>

// Loads the main window; true when the program went on running.
static bool load(mdiAlarmClock &w)
{
    try {
        w.MDIForm_Load();
        return true;
    } catch (const ProgramEnded &) {
        return false;
    }
}

// The checked menu commands, in menu order.
static QStringList checkedCommands(const mdiAlarmClock &w)
{
    QStringList names;
    for (const QAction *a : w.findChildren<QAction *>())
        if (a->isChecked())
            names << a->objectName();
    return names;
}

static const QStringList shipped{"mnuSoundOn", "mnuPopupFormOff", "mnuDeactivateTimeRow", "mnuMinimizedToTrayOn", "mnuColorRegular"};

class StartupTest : public QObject {
    Q_OBJECT

private slots:
    // Start with the shipped settings, bring the windows back, exit.
    void aNormalRun()
    {
        FakePlatform fp;
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QCOMPARE(w.windowTitle(), "Quorvel Alarm Clock");
        QVERIFY(w.isVisible());
        QCOMPARE(w.size(), QSize(804, 616));
        QVERIFY(!w.mnuAdminMode->menuAction()->isVisible());
        QVERIFY(w.tableSubWindow()->isMaximized());
        QVERIFY(w.state().bEvaluateNow);
        QCOMPARE(checkedCommands(w), shipped);
        QVERIFY(w.tableWindow()->chkSoundOnOff->isChecked());
        QCOMPARE(w.tableWindow()->txtSoundOffTimes->text(), "3");
        QVERIFY(fp.tray.field.startsWith("[Quorvel Alarm Clock] Double LEFT Click me."));

        w.hide();
        w.state().intMDIWindowState = 1;
        w.state().bEvaluateNow = false;
        w.resize(300, 200);
        QPointer<QWidget> stray = w.showForm(SecondaryForm::About);
        w.mnuAlarmClock->trigger();
        QVERIFY(w.isVisible());
        // Maximizing the table window records its own state last.
        QCOMPARE(w.state().intMDIWindowState, 2);
        QCOMPARE(w.size(), QSize(804, 616));
        QVERIFY(w.state().bEvaluateNow);
        QVERIFY(!stray || !stray->isVisible());

        w.mnuExit->trigger();
        QVERIFY(w.isUnloaded() && !w.isVisible());
        QCOMPARE(fp.tray.calls.last(), "remove");
        QVERIFY(!w.tableWindow()->tmrAlarmClock->isActive());
        QVERIFY(fp.messages.shown.isEmpty());
    }

    void missingDatabaseEndsBeforeAnythingElse_data()
    {
        QTest::addColumn<bool>("folder");
        QTest::newRow("no file") << false;
        QTest::newRow("a folder of that name") << true;
    }
    void missingDatabaseEndsBeforeAnythingElse()
    {
        QFETCH(bool, folder);
        FakePlatform fp;
        fp.testDir.remove("alarmclock.mdb");
        fp.testDir.remove("alarm.wav");
        if (folder)
            QVERIFY(QDir(fp.testDir.path()).mkdir("alarmclock.mdb"));
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));

        QCOMPARE(fp.messages.texts(), QStringList({"Missing the file:\r\n" + fp.testDir.dbPath(),
                                                   "The program cannot continue without the database."}));
        QCOMPARE(fp.messages.shown[0].title, "ERROR! DATABASE FILE NOT FOUND");
        QCOMPARE(fp.messages.shown[0].buttons, MsgButtons::OkCancel);
        // The sound file is never looked at, no window is shown and no file is made.
        QVERIFY(!fp.files.asked.contains(fp.testDir.filePath("alarm.wav")));
        QVERIFY(fp.tray.calls.isEmpty());
        QCOMPARE(QFileInfo::exists(fp.testDir.dbPath()), folder);
    }

    void unusableDatabaseShowsBothMyDbMessagesAndEnds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("zero bytes") << QByteArray();
        QTest::newRow("random bytes") << QByteArray("\x13\x37 not a database, just some bytes", 34).repeated(100);
    }
    void unusableDatabaseShowsBothMyDbMessagesAndEnds()
    {
        QFETCH(QByteArray, bytes);
        FakePlatform fp;
        QVERIFY(fp.testDir.writeBytes("alarmclock.mdb", bytes));
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));

        const QStringList lines = fp.messages.texts().value(0).split("\r\n");
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.mid(0, 3), QStringList({"MyDB ERROR,", "FILE PATH:", fp.testDir.dbPath()}));
        QVERIFY(lines[3].startsWith("Error #"));
        QCOMPARE(fp.messages.shown[0].title, QString());
        QCOMPARE(fp.messages.texts().value(1), "The application will now close safely, contact your developer.");
        QFile file(fp.testDir.dbPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), bytes); // left exactly as it was
    }

    void missingSoundWarnsTwiceThenStarts()
    {
        FakePlatform fp;
        fp.testDir.remove("alarm.wav");
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        const QString wav = fp.testDir.filePath("alarm.wav");
        QCOMPARE(fp.messages.texts().mid(0, 2),
                 QStringList({"Missing the file:\r\n" + wav, "The program CAN continue without:\r\n" + wav}));
        QCOMPARE(fp.messages.shown[0].title, "DEFAULT WAV FILE NOT FOUND");
        QCOMPARE(fp.messages.shown[1].title, "ABLE TO CONTINUE...");
        QCOMPARE(fp.messages.shown[1].buttons, MsgButtons::OkCancel);
        QVERIFY(w.isVisible());
    }

    void secondInstanceNamesTheStoredProgramAndEnds()
    {
        FakePlatform fp;
        QVERIFY(TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET strprogramname = 'Kitchen Timer'"));
        fp.instance.running = true;
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));
        QCOMPARE(fp.messages.texts(),
                 QStringList("The application,\r\nKitchen Timer is already activated and running.\r\nYou may find "
                             "it on your task bar or to the bottom right within your task tray icons."));
        QCOMPARE(fp.messages.shown[0].title, "CLICK TO END,");
        QVERIFY(fp.tray.calls.isEmpty());
    }

    // No record: the defaults. Two: only the first counts. An unknown scheme checks no colour.
    void settingsRecords_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("checked");
        QTest::addColumn<QString>("soundTimes");
        QTest::newRow("none") << QStringList("DELETE FROM tblprogramsetting") << "Quorvel Alarm Clock" << shipped << "0";
        QTest::newRow("two") << QStringList{"UPDATE tblprogramsetting SET booSound = 0, intColorPick = 1, "
                                            "strprogramname = 'First', intSoundAlarmTimes = 7",
                                            "INSERT INTO tblprogramsetting (strprogramname) VALUES ('Second')"}
                             << "First" << QStringList{"mnuSoundOff", "mnuPopupFormOff", "mnuDeactivateTimeRow",
                                                       "mnuMinimizedToTrayOn", "mnuColorMatrix"} << "7";
        QTest::newRow("unknown scheme") << QStringList("UPDATE tblprogramsetting SET intColorPick = 5")
                                        << "Quorvel Alarm Clock" << shipped.mid(0, 4) << "3";
    }
    void settingsRecords()
    {
        QFETCH(QStringList, statements);
        QFETCH(QString, title);
        QFETCH(QStringList, checked);
        QFETCH(QString, soundTimes);
        FakePlatform fp;
        for (const QString &statement : statements)
            QVERIFY(TestDatabase(fp.testDir.dbPath()).exec(statement));
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QVERIFY(fp.messages.shown.isEmpty());
        QCOMPARE(w.windowTitle(), title);
        QCOMPARE(checkedCommands(w), checked);
        QCOMPARE(w.tableWindow()->txtSoundOffTimes->text(), soundTimes);
    }

    void aNullProgramNameIsReportedNotDefaulted()
    {
        FakePlatform fp;
        QVERIFY(TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET strprogramname = NULL, strVersion = NULL"));
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QCOMPARE(fp.messages.texts().value(0), "subReturnAlarmclockName\r\n94\r\nInvalid use of Null");
        fp.messages.shown.clear();
        QCOMPARE(w.settings().subReturnAlarmclockVersion(), QString());
        QCOMPARE(fp.messages.texts(), QStringList("subReturnAlarmclockVersion\r\n94\r\nInvalid use of Null"));
    }
};

QTEST_MAIN(StartupTest)
#include "tst_startup.moc"
