// Moving the 13 rows between the window and the database, and emptying them:
// round trips, short and long tables, the questions and the flags they keep,
// and a save that fails half way.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QLabel>
#include <QTest>

namespace {

const QString kReloadTitle = QStringLiteral("UNDO and RELOAD PREVIOUS DATA: ARE YOU SURE?");
const QString kLoseWork = QStringLiteral("You will lose any of your current work, are you sure?");

struct Row {
    QString date, time, details, url, sound;
};

// A row of text that a naive store would mangle.
Row hostileRow(int i)
{
    const QString tricky = QStringLiteral("it's \"%1\" \\ ✓ é 日本 '); DROP TABLE tblalarmclock; --").arg(i);
    return Row{i % 3 == 0 ? QString() : QStringLiteral("Oct %1, 2031").arg(i + 10, 2, 10, QLatin1Char('0')),
               QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(i * 4, 2, 10, QLatin1Char('0')),
               tricky, i == 5 ? QString(220, QLatin1Char('u')) : QStringLiteral("https://example.org/?q=%1&x='y'").arg(i),
               QStringLiteral("/home/user/sounds/row %1 \"loud\".wav").arg(i)};
}

void fill(LoadedMainWindow &m, int i, const Row &r)
{
    m.t->txtACDate[i]->setText(r.date);
    m.t->txtACTime[i]->setText(r.time);
    m.t->txtACDetails[i]->setText(r.details);
    m.t->txtURL[i]->setText(r.url);
    m.t->txtWAVEFileNamePath[i]->setText(r.sound);
    m.t->txtACDate_LostFocus(i);
    m.t->txtACTime_LostFocus(i);
}

Row shown(LoadedMainWindow &m, int i)
{
    return Row{m.t->txtACDate[i]->text(), m.t->txtACTime[i]->text(), m.t->txtACDetails[i]->text(),
               m.t->txtURL[i]->text(), m.t->txtWAVEFileNamePath[i]->text()};
}

bool same(const Row &a, const Row &b)
{
    return a.date == b.date && a.time == b.time && a.details == b.details && a.url == b.url && a.sound == b.sound;
}

void insertRows(const QString &db, int count)
{
    TestDatabase peek(db);
    for (int i = 0; i < count; ++i)
        peek.exec(QStringLiteral("INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, stralarmclock, "
                                 "strURL, strWAVEFileNamePath, booRepeat) VALUES (?, ?, ?, ?, ?, 1)"),
                  {QStringLiteral("Sep 30, 2031"), QStringLiteral("%1:00").arg(i + 1, 2, 10, QLatin1Char('0')),
                   QStringLiteral("record %1").arg(i), QStringLiteral("u%1").arg(i), QStringLiteral("s%1").arg(i)});
}

} // namespace

class LoadSaveTest : public QObject {
    Q_OBJECT

private slots:
    void allThirteenRowsSurviveSaveAndARestart()
    {
        TestAppDir *dir = nullptr;
        QList<Row> typed;
        LoadedMainWindow m;
        dir = &m.fp.testDir;
        for (int i = 0; i < 13; ++i) {
            typed << hostileRow(i);
            fill(m, i, typed.last());
        }
        m.t->cmdSave_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());
        QVERIFY(!m.t->bDataChanged);
        QVERIFY(m.state().bEvaluateNow);
        QCOMPARE(m.state().intMDIWindowState, 0);

        TestDatabase peek(dir->dbPath());
        QCOMPARE(peek.value("SELECT count(*) FROM tblalarmclock").toInt(), 13);
        // Daily rows store no date and carry the repeat mark.
        QCOMPARE(peek.rows("SELECT dtalarmclockmmmddyyyy, booRepeat FROM tblalarmclock ORDER BY lngalarmclockid LIMIT 2"),
                 (QStringList{"NULL|1", "Oct 11, 2031|0"}));

        // A second window on the same folder, as after a restart.
        mdiAlarmClock again(m.fp.platform());
        again.MDIForm_Load();
        for (int i = 0; i < 13; ++i) {
            frmAlarmClock *t = again.tableWindow();
            const Row back{t->txtACDate[i]->text(), t->txtACTime[i]->text(), t->txtACDetails[i]->text(),
                           t->txtURL[i]->text(), t->txtWAVEFileNamePath[i]->text()};
            QVERIFY2(same(back, typed[i]), qPrintable(QStringLiteral("row %1").arg(i)));
            QCOMPARE(t->lbl24[i]->isVisibleTo(t), typed[i].date.isEmpty());
            QCOMPARE(again.state().strAlarmTimes[size_t(i)], typed[i].time);
            QCOMPARE(t->lblUrlToolTip[i]->text(), QStringLiteral("*"));
            QCOMPARE(t->lblUrlToolTip[i]->toolTip(), typed[i].url);
        }
    }

    void savingABlankWindowWritesThirteenEmptyRecords()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 4); });
        m.fp.messages.answers = {MsgResult::Yes};
        m.t->cmdClearForm_Click();
        m.t->cmdSave_Click();
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.value("SELECT count(*) FROM tblalarmclock").toInt(), 13);
        QCOMPARE(peek.value("SELECT count(*) FROM tblalarmclock WHERE dtalarmclockmmmddyyyy IS NULL AND "
                            "dtalarmclockhhnn IS NULL AND stralarmclock IS NULL AND strURL = '' AND "
                            "strWAVEFileNamePath = ''").toInt(),
                 13);
    }

    void aDateThatIsNotADateIsSavedWithout()
    {
        LoadedMainWindow m;
        m.t->txtACDate[2]->setText(QStringLiteral("someday"));
        m.t->txtACTime[2]->setText(QStringLiteral("08:00"));
        m.t->basSaveAlarmClocks();
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.rows("SELECT dtalarmclockmmmddyyyy, dtalarmclockhhnn FROM tblalarmclock ORDER BY lngalarmclockid")
                     .value(2),
                 QStringLiteral("NULL|08:00"));
    }

    void aShortTableEmptiesTheRestButKeepsTheirAddressAndSound()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 3); });
        for (int i : {3, 12}) {
            m.t->txtURL[i]->setText(QStringLiteral("https://kept.example"));
            m.t->lblUrlToolTip[i]->setText(QStringLiteral("!"));
            m.t->txtWAVEFileNamePath[i]->setText(QStringLiteral("/kept.wav"));
            m.t->txtACDetails[i]->setText(QStringLiteral("goes"));
            m.t->lbl24[i]->setVisible(true);
        }
        m.t->basLoadAlarmClocks(false);
        QCOMPARE(m.t->txtACTime[2]->text(), QStringLiteral("03:00"));
        for (int i : {3, 12}) {
            QCOMPARE(m.t->txtACDetails[i]->text(), QString());
            QCOMPARE(m.t->txtACDate[i]->text(), QString());
            QVERIFY(!m.t->lbl24[i]->isVisibleTo(m.t));
            QCOMPARE(m.t->txtURL[i]->text(), QStringLiteral("https://kept.example"));
            QCOMPARE(m.t->lblUrlToolTip[i]->text(), QStringLiteral("!"));
            QCOMPARE(m.t->txtWAVEFileNamePath[i]->text(), QStringLiteral("/kept.wav"));
            QCOMPARE(m.state().strAlarmTimes[size_t(i)], QString());
        }
    }

    void aLongTableShowsTheFirstThirteenByKey()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            insertRows(fp.testDir.dbPath(), 15);
            TestDatabase peek(fp.testDir.dbPath());
            // Physical order differs from key order.
            peek.exec("UPDATE tblalarmclock SET lngalarmclockid = lngalarmclockid + 100 WHERE lngalarmclockid <= 2");
        });
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 2"));
        QCOMPARE(m.t->txtACDetails[12]->text(), QStringLiteral("record 14"));
    }

    void theDailyMarkIsDerivedNeverRead()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase peek(fp.testDir.dbPath());
            peek.exec("INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, booRepeat) VALUES "
                      "(NULL, '07:30', 0), ('Sep 30, 2031', '07:30', 1), ('junk', '07:30', 0), (NULL, NULL, 1), "
                      "('  sep 30 2031 ', '7:5', 0)");
        });
        QVERIFY(m.t->lbl24[0]->isVisibleTo(m.t));
        QVERIFY(!m.t->lbl24[1]->isVisibleTo(m.t));
        QVERIFY(m.t->lbl24[2]->isVisibleTo(m.t));
        QCOMPARE(m.t->txtACDate[2]->text(), QStringLiteral("junk"));
        QVERIFY(!m.t->lbl24[3]->isVisibleTo(m.t));
        // Stored texts are shown in their display forms.
        QCOMPARE(m.t->txtACDate[4]->text(), QStringLiteral("Sep 30, 2031"));
        QCOMPARE(m.t->txtACTime[4]->text(), QStringLiteral("07:05"));
        QCOMPARE(m.t->lblUrlToolTip[0]->text(), QStringLiteral("?"));
        QCOMPARE(m.t->lblUrlToolTip[0]->toolTip(), QStringLiteral("Reveals the URL description."));
    }

    void reloadingAsksOnlyWhenThereIsSomethingToLose()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 1); });
        m.t->cmdLoad_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());

        m.t->txtACDetails[0]->setText(QStringLiteral("edited"));
        QVERIFY(m.t->bDataChanged);
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdLoad_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.fp.messages.shown[0].title, kReloadTitle);
        QCOMPARE(m.fp.messages.shown[0].text, kLoseWork);
        QCOMPARE(m.fp.messages.shown[0].buttons, MsgButtons::YesNo);
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("edited"));
        // No still clears the flag: the next Load reloads without asking.
        QVERIFY(!m.t->bDataChanged);
        m.t->cmdLoad_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 0"));

        m.t->txtACDetails[0]->setText(QStringLiteral("edited again"));
        m.fp.messages.answers = {MsgResult::Yes};
        m.t->cmdLoad_Click();
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 0"));

        m.w->mnuDonotAskAnyMoreQuestions->setChecked(true);
        m.t->txtACDetails[0]->setText(QStringLiteral("unasked"));
        m.t->cmdLoad_Click();
        QCOMPARE(m.fp.messages.shown.size(), 2);
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 0"));
    }

    void clearingTheFormAsksThenEmptiesEveryRowButStoresNothing()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 13); });
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdClearForm_Click();
        QCOMPARE(m.fp.messages.shown.value(0).title, QStringLiteral("CLEAR THE FORM: ARE YOU SURE?"));
        QCOMPARE(m.fp.messages.shown.value(0).text, kLoseWork);
        QCOMPARE(m.t->txtACDetails[5]->text(), QStringLiteral("record 5"));

        m.fp.messages.answers = {MsgResult::Yes};
        m.t->cmdClearForm_Click();
        QVERIFY(!m.t->bDataChanged);
        for (int i = 0; i < 13; ++i) {
            const Row r = shown(m, i);
            QVERIFY(same(r, Row{}));
            QCOMPARE(m.t->lblUrlToolTip[i]->text(), QStringLiteral("?"));
            QVERIFY(!m.t->lbl24[i]->isVisibleTo(m.t));
            QCOMPARE(m.state().strAlarmDates[size_t(i)], QString());
        }
        TestDatabase peek(m.fp.testDir.dbPath());
        QCOMPARE(peek.value("SELECT count(*) FROM tblalarmclock WHERE stralarmclock IS NOT NULL").toInt(), 13);

        m.w->mnuDonotAskAnyMoreQuestions->setChecked(true);
        m.t->cmdClearForm_Click();
        QCOMPARE(m.fp.messages.shown.size(), 2);
    }

    void clearingARowClearsTheChangedFlagWhateverTheAnswer()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 13); });
        m.t->txtACDetails[7]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdClearRow_Click(7);
        QCOMPARE(m.fp.messages.shown.value(0).title, QStringLiteral("CLEAR THE ROW: ARE YOU SURE?"));
        QCOMPARE(m.fp.messages.shown.value(0).text,
                 QStringLiteral("You will lose any changes you made to this row, are you sure?"));
        QCOMPARE(m.t->txtACDetails[7]->text(), QStringLiteral("edited"));
        QVERIFY(!m.t->bDataChanged);

        m.fp.messages.answers = {MsgResult::Yes};
        m.t->cmdClearRow_Click(7);
        QVERIFY(same(shown(m, 7), Row{}));
        QCOMPARE(m.t->txtACDetails[6]->text(), QStringLiteral("record 6"));
        QCOMPARE(m.t->txtACDetails[8]->text(), QStringLiteral("record 8"));
        QVERIFY(!m.t->bDataChanged);
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
        const QStringList before = TestDatabase(m.fp.testDir.dbPath(), "before").rows(
            "SELECT * FROM tblalarmclock ORDER BY lngalarmclockid");

        TestDatabase other(m.fp.testDir.dbPath(), "other");
        QVERIFY(other.exec(fault));
        for (int i = 0; i < 13; ++i)
            m.t->txtACDetails[i]->setText(QStringLiteral("new %1").arg(i));
        m.t->basSaveAlarmClocks();

        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.fp.messages.shown[0].title, QStringLiteral("ERROR"));
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("basSaveAlarmClocks\r\n")));
        // The window keeps the edits, the table keeps the rows it had.
        QCOMPARE(m.t->txtACDetails[12]->text(), QStringLiteral("new 12"));
        other.exec("ROLLBACK");
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath(), "after").rows("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid"),
                 before);
    }

    void aFailedLoadReportsAndLeavesTheRows()
    {
        LoadedMainWindow m([](FakePlatform &fp) { insertRows(fp.testDir.dbPath(), 2); });
        TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblalarmclock RENAME TO moved");
        m.t->txtACDetails[0]->setText(QStringLiteral("kept"));
        m.t->basLoadAlarmClocks(false);
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("basLoadAlarmClocks\r\n")));
        QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("kept"));
        // The routine stopped: the unsaved-changes flag is still set.
        QVERIFY(m.t->bDataChanged);
    }

    void saveTurnsEditedAddressMarksIntoStoredOnes()
    {
        LoadedMainWindow m;
        m.t->txtURL[4]->setText(QStringLiteral("https://example.org"));
        m.t->lblUrlToolTip[4]->setText(QStringLiteral("!"));
        m.t->cmdSave_Click();
        QCOMPARE(m.t->lblUrlToolTip[4]->text(), QStringLiteral("*"));
        QCOMPARE(m.t->lblUrlToolTip[4]->toolTip(), QStringLiteral("https://example.org"));
    }
};

QTEST_MAIN(LoadSaveTest)
#include "tst_loadsave.moc"
