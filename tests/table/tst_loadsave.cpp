// Moving the 13 rows between the window and the database, and emptying them.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QLabel>
#include <QTest>

static const QString kLoseWork = QStringLiteral("You will lose any of your current work, are you sure?");

// The five texts of a row as the window shows them.
static QString shown(frmAlarmClock *t, int i)
{
    return QStringList{t->txtACDate[i]->text(), t->txtACTime[i]->text(), t->txtACDetails[i]->text(),
                       t->txtURL[i]->text(), t->txtWAVEFileNamePath[i]->text()}
        .join(u'|');
}

static void insertRows(const QString &db, int count)
{
    TestDatabase peek(db);
    for (int i = 0; i < count; ++i)
        peek.exec(QStringLiteral("INSERT INTO tblalarmclock (dtalarmclockhhnn, stralarmclock, strURL, strWAVEFileNamePath) "
                                 "VALUES ('%1:00', 'record %2', 'u', 's')").arg(i + 1, 2, 10, QLatin1Char('0')).arg(i));
}

class LoadSaveTest : public QObject {
    Q_OBJECT

private slots:
    void allThirteenRowsSurviveSaveAndARestart()
    {
        LoadedMainWindow m;
        QStringList typed;
        for (int i = 0; i < 13; ++i) {
            // Text that a naive store would mangle.
            m.t->txtACDate[i]->setText(i % 3 ? QStringLiteral("oct %1 2031").arg(i + 10) : QString());
            m.t->txtACTime[i]->setText(QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(i * 4, 2, 10, QLatin1Char('0')));
            m.t->txtACDetails[i]->setText(QStringLiteral("it's \"%1\" \\ ✓ 日本 '); DROP TABLE tblalarmclock; --").arg(i));
            m.t->txtURL[i]->setText(i == 5 ? QString(220, u'u') : QStringLiteral("https://example.org/?q=%1&x='y'").arg(i));
            m.t->txtWAVEFileNamePath[i]->setText(QStringLiteral("/home/user/row %1 \"loud\".wav").arg(i));
            m.t->txtACDate_LostFocus(i);
            m.t->txtACTime_LostFocus(i);
            typed << shown(m.t, i);
        }
        m.t->txtACDate[2]->setText(QStringLiteral("someday")); // not a date: saved without one
        m.t->cmdSave_Click();
        QVERIFY(!m.t->bDataChanged);
        typed[2] = shown(m.t, 2);

        // Daily rows store no date and carry the repeat mark, which loading ignores (row 2).
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.rows("SELECT dtalarmclockmmmddyyyy, booRepeat FROM tblalarmclock ORDER BY lngalarmclockid LIMIT 3"),
                 (QStringList{"NULL|1", "Oct 11, 2031|0", "NULL|0"}));

        // A second window on the same folder, as after a restart.
        mdiAlarmClock again(m.fp.platform());
        again.MDIForm_Load();
        frmAlarmClock *t = again.tableWindow();
        for (int i = 0; i < 13; ++i) {
            QCOMPARE(shown(t, i), typed[i]);
            QCOMPARE(t->lbl24[i]->isVisibleTo(t), t->txtACDate[i]->text().isEmpty());
            QCOMPARE(again.state().strAlarmTimes[size_t(i)], t->txtACTime[i]->text());
            QCOMPARE(t->lblUrlToolTip[i]->toolTip(), t->txtURL[i]->text());
        }
    }

    void aLongTableShowsTheFirstThirteenByKey()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            insertRows(fp.testDir.dbPath(), 15);
            // Physical order differs from key order.
            TestDatabase(fp.testDir.dbPath())
                .exec("UPDATE tblalarmclock SET lngalarmclockid = lngalarmclockid + 100 WHERE lngalarmclockid <= 2");
        });
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 2"));
        QCOMPARE(m.t->txtACDetails[12]->text(), QStringLiteral("record 14"));
    }

    void aShortTableShowsItsRowsInDisplayFormAndEmptiesTheRest()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase(fp.testDir.dbPath())
                .exec("INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, booRepeat) VALUES "
                      "('junk', '07:30', 0), (NULL, NULL, 1), ('  sep 30 2031 ', '7:5', 1)");
        });
        // The daily mark is derived, never read.
        QCOMPARE(m.t->txtACDate[0]->text(), QStringLiteral("junk"));
        QVERIFY(m.t->lbl24[0]->isVisibleTo(m.t));
        QVERIFY(!m.t->lbl24[1]->isVisibleTo(m.t));
        QVERIFY(!m.t->lbl24[2]->isVisibleTo(m.t));
        QCOMPARE(m.t->txtACDate[2]->text() + m.t->txtACTime[2]->text(), QStringLiteral("Sep 30, 203107:05"));
        QCOMPARE(m.t->lblUrlToolTip[0]->toolTip(), QStringLiteral("Reveals the URL description."));

        // Rows past the table's end are emptied but keep their address, marker and sound.
        m.t->txtURL[12]->setText(QStringLiteral("https://kept.example"));
        m.t->lblUrlToolTip[12]->setText(QStringLiteral("!"));
        m.t->txtWAVEFileNamePath[12]->setText(QStringLiteral("/kept.wav"));
        m.t->txtACDetails[12]->setText(QStringLiteral("goes"));
        m.t->lbl24[12]->setVisible(true);
        m.t->basLoadAlarmClocks(false);
        QCOMPARE(shown(m.t, 12), QStringLiteral("|||https://kept.example|/kept.wav"));
        QCOMPARE(m.t->lblUrlToolTip[12]->text(), QStringLiteral("!"));
        QVERIFY(!m.t->lbl24[12]->isVisibleTo(m.t));
    }

    void reloadingAsksOnlyWhenThereIsSomethingToLose()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 1); });
        m.t->cmdLoad_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());

        m.t->txtACDetails[0]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdLoad_Click();
        QCOMPARE(m.fp.messages.shown.value(0).title, QStringLiteral("UNDO and RELOAD PREVIOUS DATA: ARE YOU SURE?"));
        QCOMPARE(m.fp.messages.shown.value(0).text, kLoseWork);
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("edited"));
        // No still clears the flag: the next Load reloads without asking.
        QVERIFY(!m.t->bDataChanged);
        m.t->cmdLoad_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 0"));

        m.w->mnuDonotAskAnyMoreQuestions->setChecked(true);
        m.t->txtACDetails[0]->setText(QStringLiteral("unasked"));
        m.t->cmdLoad_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 0"));
    }

    void clearingARowOrTheFormAsksThenEmptiesButStoresNothing()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 13); });
        // A row's No still clears the changed flag.
        m.t->txtACDetails[7]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdClearRow_Click(7);
        QCOMPARE(m.fp.messages.shown.value(0).title, QStringLiteral("CLEAR THE ROW: ARE YOU SURE?"));
        QCOMPARE(m.t->txtACDetails[7]->text(), QStringLiteral("edited"));
        QVERIFY(!m.t->bDataChanged);
        m.fp.messages.answers = {MsgResult::Yes};
        m.t->cmdClearRow_Click(7);
        QCOMPARE(shown(m.t, 7), QStringLiteral("||||"));
        QCOMPARE(m.t->txtACDetails[8]->text(), QStringLiteral("record 8"));

        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdClearForm_Click();
        QCOMPARE(m.fp.messages.shown.value(2).text, kLoseWork);
        QCOMPARE(m.t->txtACDetails[5]->text(), QStringLiteral("record 5"));
        m.fp.messages.answers = {MsgResult::Yes};
        m.t->cmdClearForm_Click();
        QVERIFY(!m.t->bDataChanged); // emptying the boxes leaves the flag as it was
        for (int i = 0; i < 13; ++i) {
            QCOMPARE(shown(m.t, i), QStringLiteral("||||"));
            QCOMPARE(m.state().strAlarmTimes[size_t(i)], QString());
        }
        const QString storedRows = QStringLiteral("SELECT count(*) FROM tblalarmclock WHERE stralarmclock IS NOT NULL");
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath()).value(storedRows).toInt(), 13);
        // Saving the blank window writes thirteen empty records.
        m.t->cmdSave_Click();
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath()).value(storedRows).toInt(), 0);
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath()).value("SELECT count(*) FROM tblalarmclock WHERE coalesce(dtalarmclockmmmddyyyy, "
                 "dtalarmclockhhnn) IS NULL AND strURL || strWAVEFileNamePath = ''").toInt(), 13);
    }

    void aFailedSaveReportsAndLosesNothing_data()
    {
        QTest::addColumn<QString>("fault");
        // Half way: after the old rows were deleted and some new ones written.
        QTest::newRow("fails mid-way") << "CREATE TRIGGER fail BEFORE INSERT ON tblalarmclock WHEN (SELECT count(*) FROM "
                                          "tblalarmclock) >= 6 BEGIN SELECT RAISE(ABORT, 'disk I/O error'); END";
        QTest::newRow("locked for writing") << "BEGIN IMMEDIATE";
    }
    void aFailedSaveReportsAndLosesNothing()
    {
        QFETCH(QString, fault);
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 13); });
        const QString all = QStringLiteral("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid");
        const QStringList before = TestDatabase(m.fp.testDir.dbPath(), "before").rows(all);
        TestDatabase other(m.fp.testDir.dbPath(), "other");
        QVERIFY(other.exec(fault));
        for (int i = 0; i < 13; ++i)
            m.t->txtACDetails[i]->setText(QStringLiteral("new %1").arg(i));
        m.t->basSaveAlarmClocks();

        QCOMPARE(m.fp.messages.shown.size(), 1);
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("basSaveAlarmClocks\r\n")));
        // The window keeps the edits, the table keeps the rows it had.
        QCOMPARE(m.t->txtACDetails[12]->text(), QStringLiteral("new 12"));
        other.exec("ROLLBACK");
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath(), "after").rows(all), before);
    }

    void aFailedLoadReportsAndLeavesTheRows()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 2); });
        TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblalarmclock RENAME TO moved");
        m.t->txtACDetails[0]->setText(QStringLiteral("kept"));
        m.t->basLoadAlarmClocks(false);
        QVERIFY(m.fp.messages.shown.value(0).text.startsWith(QStringLiteral("basLoadAlarmClocks\r\n")));
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("kept"));
        QVERIFY(m.t->bDataChanged); // the routine stopped before clearing it
    }
};

QTEST_MAIN(LoadSaveTest)
#include "tst_loadsave.moc"
