// "Change Program Name": what is asked, what is stored, and where the name
// shows afterwards (caption, the Program menu's first command, the tray tip).

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"
#include "shell/TrayTip.h"

#include <QAction>
#include <QTest>

namespace {

const QString kDefaultName = QStringLiteral("Quorvel Alarm Clock");
const QString kTooLongTitle = QStringLiteral("OOPS! YOUR PROGRAM NAME IS TOO LONG, Please Try Again...");

QStringList storedNames(LoadedMainWindow &m)
{
    TestDatabase db(m.fp.testDir.dbPath());
    return db.rows(QStringLiteral("SELECT strprogramname FROM tblprogramsetting ORDER BY lngprogramsettingid"));
}

void rename(LoadedMainWindow &m, const QStringList &answers)
{
    m.fp.input.answers = answers;
    m.w->mnuChangeProgramName->trigger();
}

void emptySettingsTable(FakePlatform &fp)
{
    TestDatabase db(fp.testDir.dbPath());
    QVERIFY(db.exec(QStringLiteral("DELETE FROM tblprogramsetting")));
}

QString plainTip(const QString &name) { return QLatin1Char('[') + name + QStringLiteral("] Double LEFT Click me."); }

} // namespace

class RenameTest : public QObject {
    Q_OBJECT

private slots:
    void anAcceptedNameShowsEverywhere_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("menuText");
        const QString fifty(50, QLatin1Char('x'));
        QTest::newRow("plain") << "Kitchen Timer" << "Kitchen Timer" << "Kitchen Timer";
        QTest::newRow("exactly 50") << fifty << fifty << fifty;
        QTest::newRow("blanks around, measured trimmed") << "  " + fifty + " " << fifty << fifty;
        QTest::newRow("ampersand is not an accelerator") << "Tom & Jerry" << "Tom & Jerry" << "Tom && Jerry";
    }
    void anAcceptedNameShowsEverywhere()
    {
        QFETCH(QString, typed);
        QFETCH(QString, name);
        QFETCH(QString, menuText);
        LoadedMainWindow m;
        rename(m, {typed});

        QCOMPARE(m.fp.input.asked.size(), 1);
        QCOMPARE(m.fp.input.asked[0].prompt, QStringLiteral("TYPE THE NAME OF YOUR PROGRAM:"));
        QCOMPARE(m.fp.input.asked[0].title, QStringLiteral("MODIFY PROGRAM NAME"));
        QCOMPARE(m.fp.input.asked[0].defaultText, kDefaultName);
        QVERIFY(m.fp.messages.shown.isEmpty());
        QCOMPARE(storedNames(m), QStringList(name));
        QCOMPARE(m.w->windowTitle(), name);
        QCOMPARE(m.w->mnuAlarmClock->text(), menuText);
        QCOMPARE(m.fp.tray.calls, QStringList({QStringLiteral("remove"), QStringLiteral("remove"),
                                               QStringLiteral("add:") + trayTipField(name, {})}));
    }

    void tooLongIsShownCutAndAskedAgain()
    {
        LoadedMainWindow m;
        const QString typed = QString(50, QLatin1Char('a')) + QStringLiteral("bc");
        rename(m, {QStringLiteral(" ") + typed.left(51), QStringLiteral("Short")});

        QCOMPARE(m.fp.messages.shown.size(), 1);
        const ShownMessage box = m.fp.messages.shown.first();
        QCOMPARE(box.title, kTooLongTitle);
        QCOMPARE(box.text, QStringLiteral("Your program name can only be 50 characters long, here is where it will "
                                          "truncate:\r\n")
                               + typed.left(50));
        QCOMPARE(box.icon, MsgIcon::Critical);
        QCOMPARE(box.buttons, MsgButtons::Ok);
        // Asked again with the current name, not the rejected text.
        QCOMPARE(m.fp.input.asked.size(), 2);
        QCOMPARE(m.fp.input.asked[1].defaultText, kDefaultName);
        QCOMPARE(storedNames(m), QStringList(QStringLiteral("Short")));
    }

    void noAnswerStoresNothingButRefreshes_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("cancelled") << "";
        QTest::newRow("only blanks") << "   ";
    }
    void noAnswerStoresNothingButRefreshes()
    {
        QFETCH(QString, typed);
        LoadedMainWindow m;
        // Changed behind the window's back: the refresh reads the database.
        {
            TestDatabase db(m.fp.testDir.dbPath());
            QVERIFY(db.exec(QStringLiteral("UPDATE tblprogramsetting SET strprogramname = 'Stored Elsewhere'")));
        }
        rename(m, {typed});
        QCOMPARE(storedNames(m), QStringList(QStringLiteral("Stored Elsewhere")));
        QCOMPARE(m.w->windowTitle(), QStringLiteral("Stored Elsewhere"));
        QCOMPARE(m.w->mnuAlarmClock->text(), QStringLiteral("Stored Elsewhere"));
        QCOMPARE(visibleTrayTip(m.fp.tray.field), plainTip(QStringLiteral("Stored Elsewhere")));
        QCOMPARE(m.fp.tray.calls.first(), QStringLiteral("remove"));
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void anEmptySettingsTableGetsItsRecord()
    {
        LoadedMainWindow m(emptySettingsTable);
        QCOMPARE(m.w->windowTitle(), kDefaultName);
        rename(m, {});
        QCOMPARE(m.fp.input.asked.value(0).defaultText, QStringLiteral("Alarm Clock"));
        QCOMPARE(storedNames(m), QStringList());

        rename(m, {QStringLiteral("Desk Clock")});
        QCOMPARE(m.fp.input.asked.value(1).defaultText, QStringLiteral("Alarm Clock"));
        QCOMPARE(storedNames(m), QStringList(QStringLiteral("Desk Clock")));
        QCOMPARE(m.w->windowTitle(), QStringLiteral("Desk Clock"));
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void aLongNameInTheTrayTip_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("plainFits"); // the plain tip keeps its closing NUL
        QTest::newRow("16") << "Kitchen Timer 16" << true;
        QTest::newRow("45") << "Grandmother Kitchen Countertop Alarm Clock #2" << false;
    }
    void aLongNameInTheTrayTip()
    {
        QFETCH(QString, name);
        QFETCH(bool, plainFits);
        LoadedMainWindow m;
        rename(m, {name});
        QCOMPARE(m.fp.tray.field.size(), 64);
        QCOMPARE(m.fp.tray.field.contains(QChar(0)), plainFits);
        QCOMPARE(visibleTrayTip(m.fp.tray.field), plainTip(name).left(64));

        // An alarm trips: the tip names the first 15 characters and the moment.
        m.setRow(0, QStringLiteral("Sep 30, 2031"), QStringLiteral("07:30"));
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(7, 30, 0, 5)));
        QCOMPARE(visibleTrayTip(m.fp.tray.field),
                 QLatin1Char('[') + name.left(15) + QStringLiteral("..]ALARM @ Sep, 30 at 07:30"));
    }

    void aFailingDatabaseIsReportedAndChangesNothing()
    {
        LoadedMainWindow m;
        {
            TestDatabase db(m.fp.testDir.dbPath());
            QVERIFY(db.exec(QStringLiteral("ALTER TABLE tblprogramsetting RENAME TO tblprogramsetting_gone")));
        }
        rename(m, {QStringLiteral("Never Asked")});
        QVERIFY(m.fp.input.asked.isEmpty());
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.fp.messages.shown[0].title, QStringLiteral("ERROR"));
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("subAlarmclockCaptionModify\r\n")));
        QCOMPARE(m.w->windowTitle(), kDefaultName);
        QVERIFY(m.fp.tray.calls.isEmpty());
    }
};

QTEST_MAIN(RenameTest)
#include "tst_rename.moc"
