// Start-up, the single-instance rule and shutdown of the main window, run
// against the fakes and a private copy of the shipped database.

#include "fakes/FakePlatform.h"
#include "shell/mdiAlarmClock.h"
#include "table/frmAlarmClock.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace {

// Runs statements on the test's database with a connection of its own.
void sql(const QString &dbPath, const QStringList &statements)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("fixture"));
        db.setDatabaseName(dbPath);
        QVERIFY(db.open());
        for (const QString &s : statements) {
            QSqlQuery q(db);
            QVERIFY2(q.exec(s), qPrintable(s));
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("fixture"));
}

QString fileBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll().toHex()) : QString();
}

// Loads the main window; true when the program went on running.
bool load(mdiAlarmClock &w)
{
    try {
        w.MDIForm_Load();
        return true;
    } catch (const ProgramEnded &) {
        return false;
    }
}

} // namespace

class StartupTest : public QObject {
    Q_OBJECT

private slots:
    void normalStartShowsTheTableAndAppliesTheSettings()
    {
        FakePlatform fp;
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));

        QVERIFY(fp.messages.shown.isEmpty());
        QCOMPARE(w.windowTitle(), QStringLiteral("Quorvel Alarm Clock"));
        QCOMPARE(w.mnuAlarmClock->text(), QStringLiteral("Quorvel Alarm Clock"));
        QVERIFY(w.isVisible());
        QCOMPARE(w.size(), QSize(804, 616));
        QVERIFY(!w.mnuAdminMode->menuAction()->isVisible());
        QVERIFY(w.tableWindow()->isLoaded());
        QVERIFY(w.tableSubWindow()->isMaximized());
        QVERIFY(w.state().bEvaluateNow);

        // The shipped settings record.
        QVERIFY(w.mnuColorRegular->isChecked());
        QVERIFY(!w.mnuColorMatrix->isChecked() && !w.mnuColorCustom->isChecked());
        QVERIFY(w.mnuSoundOn->isChecked() && !w.mnuSoundOff->isChecked());
        QVERIFY(w.mnuPopupFormOff->isChecked() && !w.mnuPopupFormOn->isChecked());
        QVERIFY(w.mnuDeactivateTimeRow->isChecked() && !w.mnuActivateTimeRow->isChecked());
        QVERIFY(w.mnuMinimizedToTrayOn->isChecked() && !w.mnuMinimizedToTrayOff->isChecked());
        QVERIFY(!w.mnuDonotAskAnyMoreQuestions->isChecked());
        QVERIFY(w.tableWindow()->chkSoundOnOff->isChecked());
        QVERIFY(!w.tableWindow()->chkShow->isChecked());
        QVERIFY(w.tableWindow()->chkMinimizeToTray->isChecked());
        QCOMPARE(w.tableWindow()->txtSoundOffTimes->text(), QStringLiteral("3"));

        // The icon goes into the tray with the plain tip.
        QVERIFY(fp.tray.visible);
        QVERIFY(fp.tray.field.startsWith(QStringLiteral("[Quorvel Alarm Clock] Double LEFT Click me.")));
        QCOMPARE(fp.tray.field.size(), 64);
    }

    void everyMenuCaptionIsInPlace()
    {
        FakePlatform fp;
        mdiAlarmClock w(fp.platform());
        QStringList captions;
        const QList<QMenu *> menus{w.mnuProgram, w.mnuUtilities, w.mnuSound, w.mnuOnAlarmPopupForm, w.mnuTimeRow,
                                   w.mnuMinimizeToTray, w.mnuColors, w.mnuHelp, w.mnuAdminMode};
        for (QMenu *m : menus) {
            captions << m->title();
            for (QAction *a : m->actions())
                if (!a->menu())
                    captions << a->text();
        }
        const QStringList expected{
            "Program", "Alarm Clock", "Cancel Menu Selection", "Exit", "Utilities", "Change Program Name",
            "Limit Application Questions Asked", "Sound", "Sound On", "Sound Off", "On Alarm Popup Form",
            "Popup Form On", "Popup Form Off", "Time Row", "Activate Time Row", "Deactivate Time Row",
            "Minimize To Tray", "Minimize To Tray Allowed", "Minimized To Tray Disabled", "Minimize To Tray Now",
            "Colors", "Regular", "Matrix", "Custom", "Modify Custom Colors", "Help", "About", "Legend",
            "Administration Mode", "Tables"};
        QCOMPARE(captions, expected);
    }

    void missingDatabaseEndsBeforeAnythingElse()
    {
        FakePlatform fp;
        fp.testDir.remove(QStringLiteral("alarmclock.mdb"));
        fp.testDir.remove(QStringLiteral("alarm.wav"));
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));

        QVERIFY(fp.end.ended);
        QCOMPARE(fp.messages.shown.size(), 2);
        const QString path = fp.testDir.path() + QStringLiteral("/alarmclock.mdb");
        QCOMPARE(fp.messages.shown[0].title, QStringLiteral("ERROR! DATABASE FILE NOT FOUND"));
        QCOMPARE(fp.messages.shown[0].text, QStringLiteral("Missing the file:\r\n") + path);
        QCOMPARE(fp.messages.shown[0].buttons, MsgButtons::OkCancel);
        QCOMPARE(fp.messages.shown[1].title, QStringLiteral("ERROR! DATABASE FILE NOT FOUND"));
        QCOMPARE(fp.messages.shown[1].text, QStringLiteral("The program cannot continue without the database."));
        // The sound file is never looked at, and no window was shown.
        QVERIFY(!fp.files.asked.contains(fp.testDir.path() + QStringLiteral("/alarm.wav")));
        QVERIFY(!w.isVisible());
        QVERIFY(fp.tray.calls.isEmpty());
        QVERIFY(!QFile::exists(path));
    }

    void aFolderNamedLikeTheDatabaseIsNotADatabase()
    {
        FakePlatform fp;
        fp.testDir.remove(QStringLiteral("alarmclock.mdb"));
        QVERIFY(QDir(fp.testDir.path()).mkdir(QStringLiteral("alarmclock.mdb")));
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));
        QCOMPARE(fp.messages.shown.size(), 2);
        QCOMPARE(fp.messages.shown[0].title, QStringLiteral("ERROR! DATABASE FILE NOT FOUND"));
    }

    void unusableDatabaseShowsBothMyDbMessagesAndEnds_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("zero bytes") << QByteArray();
        QTest::newRow("random bytes") << QByteArray("\x13\x37 this is not a database at all, just some bytes", 48)
                                                .repeated(100);
        QTest::newRow("truncated header") << QByteArray("SQLite format 3\0", 16);
    }

    void unusableDatabaseShowsBothMyDbMessagesAndEnds()
    {
        QFETCH(QByteArray, bytes);
        FakePlatform fp;
        QVERIFY(fp.testDir.writeBytes(QStringLiteral("alarmclock.mdb"), bytes));
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));

        QCOMPARE(fp.messages.shown.size(), 2);
        const QString path = fp.testDir.path() + QStringLiteral("/alarmclock.mdb");
        const QStringList lines = fp.messages.shown[0].text.split(QStringLiteral("\r\n"));
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines[0], QStringLiteral("MyDB ERROR,"));
        QCOMPARE(lines[1], QStringLiteral("FILE PATH:"));
        QCOMPARE(lines[2], path);
        QVERIFY(lines[3].startsWith(QStringLiteral("Error #")));
        QVERIFY(!lines[4].isEmpty());
        QCOMPARE(fp.messages.shown[0].buttons, MsgButtons::Ok);
        QCOMPARE(fp.messages.shown[0].title, QString());
        QCOMPARE(fp.messages.shown[1].text,
                 QStringLiteral("The application will now close safely, contact your developer."));
        QCOMPARE(fp.messages.shown[1].icon, MsgIcon::Information);
        QVERIFY(!w.isVisible());
        // The file is left exactly as it was.
        QCOMPARE(fileBytes(path), QString::fromLatin1(bytes.toHex()));
    }

    void missingSoundWarnsTwiceThenStarts()
    {
        FakePlatform fp;
        fp.testDir.remove(QStringLiteral("alarm.wav"));
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        const QString wav = fp.testDir.path() + QStringLiteral("/alarm.wav");
        QVERIFY(fp.messages.shown.size() >= 2);
        QCOMPARE(fp.messages.shown[0].title, QStringLiteral("DEFAULT WAV FILE NOT FOUND"));
        QCOMPARE(fp.messages.shown[0].text, QStringLiteral("Missing the file:\r\n") + wav);
        QCOMPARE(fp.messages.shown[1].title, QStringLiteral("ABLE TO CONTINUE..."));
        QCOMPARE(fp.messages.shown[1].text, QStringLiteral("The program CAN continue without:\r\n") + wav);
        QCOMPARE(fp.messages.shown[1].buttons, MsgButtons::OkCancel);
        QVERIFY(w.isVisible());
        QVERIFY(!fp.end.ended);
    }

    void secondInstanceNamesTheStoredProgramAndEnds()
    {
        FakePlatform fp;
        sql(fp.testDir.dbPath(), {"UPDATE tblprogramsetting SET strprogramname = 'Kitchen Timer'"});
        fp.instance.running = true;
        mdiAlarmClock w(fp.platform());
        QVERIFY(!load(w));
        QCOMPARE(fp.messages.shown.size(), 1);
        QCOMPARE(fp.messages.shown[0].title, QStringLiteral("CLICK TO END,"));
        QCOMPARE(fp.messages.shown[0].text,
                 QStringLiteral("The application,\r\nKitchen Timer is already activated and running.\r\nYou may find "
                                "it on your task bar or to the bottom right within your task tray icons."));
        QCOMPARE(fp.messages.shown[0].buttons, MsgButtons::Ok);
        QVERIFY(!w.isVisible());
        QVERIFY(fp.tray.calls.isEmpty());
    }

    void emptySettingsTableFallsBackToDefaults()
    {
        FakePlatform fp;
        sql(fp.testDir.dbPath(), {"DELETE FROM tblprogramsetting"});
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QVERIFY(fp.messages.shown.isEmpty());
        QCOMPARE(w.windowTitle(), QStringLiteral("Quorvel Alarm Clock"));
        QVERIFY(w.mnuColorRegular->isChecked());
        QVERIFY(w.mnuSoundOn->isChecked());
        QVERIFY(w.mnuMinimizedToTrayOn->isChecked());
        QVERIFY(w.mnuDeactivateTimeRow->isChecked());
        QVERIFY(w.mnuPopupFormOff->isChecked());
        QVERIFY(!w.mnuDonotAskAnyMoreQuestions->isChecked());
        QCOMPARE(w.tableWindow()->txtSoundOffTimes->text(), QStringLiteral("0"));
        QCOMPARE(w.settings().subReturnAlarmclockVersion(), QStringLiteral("1.00"));
    }

    void onlyTheFirstOfTwoSettingsRecordsIsRead()
    {
        FakePlatform fp;
        sql(fp.testDir.dbPath(),
            {"UPDATE tblprogramsetting SET booTimeRow = 1, booAlarmPopupForm = 1, booSound = 0, "
             "booMinimizeToTray = 0, intColorPick = 1, booDonotAskAnyMore = 1, strprogramname = 'First', "
             "intSoundAlarmTimes = 7",
             "INSERT INTO tblprogramsetting (booTimeRow, booAlarmPopupForm, booSound, booMinimizeToTray, "
             "intColorPick, booDonotAskAnyMore, strprogramname, intSoundAlarmTimes, strVersion) "
             "VALUES (0, 0, 1, 1, 2, 0, 'Second', 2, '9.99')"});
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QCOMPARE(w.windowTitle(), QStringLiteral("First"));
        QVERIFY(w.mnuColorMatrix->isChecked() && !w.mnuColorRegular->isChecked());
        QVERIFY(w.mnuActivateTimeRow->isChecked());
        QVERIFY(w.mnuPopupFormOn->isChecked());
        QVERIFY(w.mnuSoundOff->isChecked());
        QVERIFY(w.mnuMinimizedToTrayOff->isChecked());
        QVERIFY(w.mnuDonotAskAnyMoreQuestions->isChecked());
        QVERIFY(w.tableWindow()->chkTimeRow->isChecked());
        QVERIFY(!w.tableWindow()->chkSoundOnOff->isChecked());
        QCOMPARE(w.tableWindow()->txtSoundOffTimes->text(), QStringLiteral("7"));
        QCOMPARE(w.state().intColorPick, qint16(1));
    }

    void anUnknownSchemeChecksNoColourCommand()
    {
        FakePlatform fp;
        sql(fp.testDir.dbPath(), {"UPDATE tblprogramsetting SET intColorPick = 5"});
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QVERIFY(!w.mnuColorRegular->isChecked());
        QVERIFY(!w.mnuColorMatrix->isChecked());
        QVERIFY(!w.mnuColorCustom->isChecked());
    }

    void aNullProgramNameIsReportedNotDefaulted()
    {
        FakePlatform fp;
        sql(fp.testDir.dbPath(), {"UPDATE tblprogramsetting SET strprogramname = NULL, strVersion = NULL"});
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        QVERIFY(!fp.messages.shown.isEmpty());
        QCOMPARE(fp.messages.shown[0].title, QStringLiteral("ERROR"));
        QCOMPARE(fp.messages.shown[0].text, QStringLiteral("subReturnAlarmclockName\r\n94\r\nInvalid use of Null"));
        fp.messages.shown.clear();
        QCOMPARE(w.settings().subReturnAlarmclockVersion(), QString());
        QCOMPARE(fp.messages.shown.value(0).text, QStringLiteral("subReturnAlarmclockVersion\r\n94\r\nInvalid use of Null"));
    }

    void unloadClosesTheDatabaseRemovesTheIconAndEnds()
    {
        FakePlatform fp;
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
        const QByteArray before = QFile(fp.testDir.dbPath()).exists() ? QByteArray("ok") : QByteArray();
        w.mnuExit->trigger();
        QVERIFY(w.isUnloaded());
        QVERIFY(!w.isVisible());
        QCOMPARE(fp.tray.calls.last(), QStringLiteral("remove"));
        QVERIFY(!fp.tray.visible);
        QVERIFY(!w.tableWindow()->tmrAlarmClock->isActive());
        QVERIFY(fp.messages.shown.isEmpty());
        QCOMPARE(before, QByteArray("ok"));
    }

    void showWindowsBringsTheMainWindowBackToNormal()
    {
        FakePlatform fp;
        mdiAlarmClock w(fp.platform());
        QVERIFY(load(w));
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
        QVERIFY(w.tableSubWindow()->isMaximized());
        QVERIFY(!stray || !stray->isVisible());
    }
};

QTEST_MAIN(StartupTest)
#include "tst_startup.moc"
