#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"
#include "shell/TrayTip.h"

#include <QAction>
#include <QTest>

static QStringList rename(LoadedMainWindow &m, const QStringList &answers)
{
    m.fp.input.answers = answers;
    m.w->mnuChangeProgramName->trigger();
    return TestDatabase(m.fp.testDir.dbPath()).rows("SELECT strprogramname FROM tblprogramsetting");
}

class RenameTest : public QObject {
    Q_OBJECT

private slots:
    void anAcceptedNameShowsEverywhere()
    {
        LoadedMainWindow m;
        const QString fifty(50, 'x');
        QCOMPARE(rename(m, {"  " + fifty + " "}), QStringList(fifty)); // measured trimmed
        QCOMPARE(m.fp.input.asked.value(0).defaultText, "Quorvel Alarm Clock");
        QCOMPARE(m.w->windowTitle(), fifty);
        QCOMPARE(m.fp.tray.calls, QStringList({"remove", "remove", "add:" + visibleTrayTip(trayTipField(fifty, {}))}));
        // An alarm's tip keeps only the first 15 characters of the name.
        m.setRow(0, "Sep 30, 2031", "07:30");
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(7, 30, 0, 5)));
        QCOMPARE(visibleTrayTip(m.fp.tray.field), "[" + fifty.left(15) + "..]ALARM @ Sep, 30 at 07:30");

        QCOMPARE(rename(m, {"Tom & Jerry"}), QStringList("Tom & Jerry"));
        QCOMPARE(m.fp.input.asked.value(1).defaultText, fifty);
        QCOMPARE(m.w->mnuAlarmClock->text(), "Tom && Jerry"); // not an accelerator
    }

    // The rejected text is shown cut at 50; the new question offers the current name.
    void tooLongIsShownCutAndAskedAgain()
    {
        LoadedMainWindow m;
        QCOMPARE(rename(m, {" " + QString(50, 'a') + "b", "Short"}), QStringList("Short"));
        QCOMPARE(m.fp.messages.texts(), QStringList("Your program name can only be 50 characters long, here is "
                                                    "where it will truncate:\r\n" + QString(50, 'a')));
        QCOMPARE(m.fp.messages.shown[0].title, "OOPS! YOUR PROGRAM NAME IS TOO LONG, Please Try Again...");
        QCOMPARE(m.fp.input.asked.value(1).defaultText, "Quorvel Alarm Clock");
    }

    // Cancelled: nothing stored, but the caption is read back from the database.
    void cancelRefreshesFromTheDatabase()
    {
        LoadedMainWindow m;
        QVERIFY(TestDatabase(m.fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET strprogramname = 'Elsewhere'"));
        QCOMPARE(rename(m, {"   "}), QStringList("Elsewhere"));
        QCOMPARE(m.w->windowTitle(), "Elsewhere");
        QCOMPARE(visibleTrayTip(m.fp.tray.field), "[Elsewhere] Double LEFT Click me.");
    }

    void anEmptySettingsTableGetsItsRecord()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            QVERIFY(TestDatabase(fp.testDir.dbPath()).exec("DELETE FROM tblprogramsetting"));
        });
        QCOMPARE(rename(m, {}), QStringList());
        QCOMPARE(rename(m, {"Desk Clock"}), QStringList("Desk Clock"));
        QCOMPARE(m.fp.input.asked.value(1).defaultText, "Alarm Clock");
    }

    void aFailingDatabaseIsReportedAndAsksNothing()
    {
        LoadedMainWindow m;
        QVERIFY(TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblprogramsetting RENAME TO gone"));
        rename(m, {"Never Asked"});
        QVERIFY(m.fp.input.asked.isEmpty());
        QVERIFY(m.fp.messages.texts().value(0).startsWith("subAlarmclockCaptionModify\r\n"));
        QCOMPARE(m.w->windowTitle(), "Quorvel Alarm Clock");
    }
};

QTEST_MAIN(RenameTest)
#include "tst_rename.moc"
