// Moving the 13 rows between the window and the database, and emptying them.

#include "fakes/LoadedMainWindow.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QRandomGenerator>
#include <QTest>

namespace {

const QString kLoseWork = QStringLiteral("You will lose any of your current work, are you sure?");

// The five texts of a row as the window shows them.
QString shown(frmAlarmClock *t, int i)
{
    return QStringList{t->txtACDate[i]->text(), t->txtACTime[i]->text(), t->txtACDetails[i]->text(),
                       t->txtURL[i]->text(), t->txtWAVEFileNamePath[i]->text()}.join(u'|');
}

std::function<void(FakePlatform &)> withRows(int count)
{
    QStringList inserts;
    for (int i = 0; i < count; ++i)
        inserts << QStringLiteral("INSERT INTO tblalarmclock (dtalarmclockhhnn, stralarmclock, strURL, strWAVEFileNamePath) "
                                  "VALUES ('%1:00', 'record %2', 'u', 's')").arg(i + 1, 2, 10, QLatin1Char('0')).arg(i);
    return withSql(inserts);
}

QString boxOf(const FakeMessageBox &messages, int n)
{
    const ShownMessage m = messages.shown.value(n);
    return m.title + "|" + m.text;
}

} // namespace

class LoadSaveTest : public QObject {
    Q_OBJECT

private slots:
    // Quotes, SQL, control characters, right-to-left marks and a long text
    // come back exactly as typed (bracketed: blanks at the ends are trimmed on loading).
    void allThirteenRowsSurviveSaveAndARestart()
    {
        QString junk;
        for (int b = 1; b < 256; ++b)
            junk += QChar(b);
        QRandomGenerator random(20311030);
        for (int i = 0; i < 300; ++i)
            junk += QChar(char16_t(random.bounded(1, 0xD800)));
        const QStringList texts{"it's \"quoted\" `back` \\ %s %n ?1 :name", "'); DROP TABLE tblalarmclock; --",
                                "[" + junk + "]", QStringLiteral(u"\u200Fright\u202Eto-left\u202C \u05E9\u05DC\u05D5\u05DD"),
                                QStringLiteral("0123456789").repeated(1000)};
        LoadedMainWindow m;
        QStringList typed;
        for (int i = 0; i < 13; ++i) {
            m.t->txtACDate[i]->setText(i % 3 ? QStringLiteral("oct %1 2031").arg(i + 10) : QString());
            m.t->txtACTime[i]->setText(QStringLiteral("%1:%2").arg(i + 6, 2, 10, QLatin1Char('0')).arg(i * 4, 2, 10, QLatin1Char('0')));
            m.t->txtACDetails[i]->setText(texts[i % 5]);
            m.t->txtURL[i]->setText(i == 5 ? QString(220, u'u') : texts[(i + 1) % 5]);
            m.t->txtWAVEFileNamePath[i]->setText(texts[(i + 2) % 5]);
            m.t->txtACDate_LostFocus(i);
            m.t->txtACTime_LostFocus(i);
            typed << shown(m.t, i);
        }
        m.t->txtACDate[2]->setText(QStringLiteral("someday")); // not a date: saved without one
        m.t->cmdSave_Click();
        QVERIFY(!m.t->bDataChanged && m.fp.messages.shown.isEmpty());
        typed[2] = shown(m.t, 2);
        // Daily rows store no date and carry the repeat mark, which loading ignores.
        QCOMPARE(m.rows("SELECT dtalarmclockmmmddyyyy, booRepeat FROM tblalarmclock ORDER BY lngalarmclockid LIMIT 3"),
                 (QStringList{"NULL|1", "Oct 11, 2031|0", "NULL|0"}));

        mdiAlarmClock again(m.fp.platform()); // as after a restart
        again.MDIForm_Load();
        frmAlarmClock *t = again.tableWindow();
        for (int i = 0; i < 13; ++i) {
            QVERIFY2(shown(t, i) == typed[i], qPrintable(QString::number(i)));
            QCOMPARE(QStringList({QString::number(t->lbl24[i]->isVisibleTo(t)), again.state().strAlarmTimes[size_t(i)], t->lblUrlToolTip[i]->text(),
                                  t->lblUrlToolTip[i]->toolTip(), t->lblUrlToolTip[i]->accessibleDescription()}),
                     QStringList({QString::number(t->txtACDate[i]->text().isEmpty()), t->txtACTime[i]->text(), "*", t->txtURL[i]->text(), t->txtURL[i]->text()}));
        }
    }

    void aLongTableShowsTheFirstThirteenByKey()
    {
        LoadedMainWindow m([](FakePlatform &fp) {
            withRows(15)(fp);
            // Physical order differs from key order.
            TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblalarmclock SET lngalarmclockid = lngalarmclockid + 100 WHERE lngalarmclockid <= 2");
        });
        QCOMPARE(m.t->txtACDetails[0]->text() + "|" + m.t->txtACDetails[12]->text(), QStringLiteral("record 2|record 14"));
    }

    void aShortTableShowsItsRowsInDisplayFormAndEmptiesTheRest()
    {
        LoadedMainWindow m(withSql({"INSERT INTO tblalarmclock (dtalarmclockmmmddyyyy, dtalarmclockhhnn, booRepeat) VALUES "
                                    "('junk', '07:30', 0), (NULL, NULL, 1), ('  sep 30 2031 ', '7:5', 1)"}));
        // The daily mark is derived, never read.
        QCOMPARE(m.t->txtACDate[0]->text(), QStringLiteral("junk"));
        QVERIFY(m.t->lbl24[0]->isVisibleTo(m.t) && !m.t->lbl24[1]->isVisibleTo(m.t) && !m.t->lbl24[2]->isVisibleTo(m.t));
        QCOMPARE(m.t->txtACDate[2]->text() + m.t->txtACTime[2]->text(), QStringLiteral("Sep 30, 203107:05"));
        QCOMPARE(m.t->lblUrlToolTip[0]->text() + m.t->lblUrlToolTip[0]->toolTip(), QStringLiteral("?Reveals the URL description."));

        // Rows past the table's end are emptied but keep their address, marker and sound.
        m.t->txtURL[12]->setText(QStringLiteral("https://kept.example"));
        m.t->lblUrlToolTip[12]->setText(QStringLiteral("!"));
        m.t->txtWAVEFileNamePath[12]->setText(QStringLiteral("/kept.wav"));
        m.t->txtACDetails[12]->setText(QStringLiteral("goes"));
        m.t->lbl24[12]->setVisible(true);
        m.t->basLoadAlarmClocks(false);
        QCOMPARE(shown(m.t, 12) + m.t->lblUrlToolTip[12]->text(), QStringLiteral("|||https://kept.example|/kept.wav!"));
        QVERIFY(!m.t->lbl24[12]->isVisibleTo(m.t));
    }

    void reloadingAsksOnlyWhenThereIsSomethingToLose()
    {
        LoadedMainWindow m(withRows(1));
        m.t->cmdLoad_Click();
        QVERIFY(m.fp.messages.shown.isEmpty());
        m.t->txtACDetails[0]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No};
        m.t->cmdLoad_Click();
        QCOMPARE(boxOf(m.fp.messages, 0), "UNDO and RELOAD PREVIOUS DATA: ARE YOU SURE?|" + kLoseWork);
        QVERIFY(m.fp.messages.shown[0].buttons == MsgButtons::YesNo && m.t->txtACDetails[0]->text() == "edited");
        // No still clears the flag: the next Load reloads without asking; Yes reloads; so does a limit on questions.
        QVERIFY(!m.t->bDataChanged);
        for (const QString edit : {"", "edited again", "unasked"}) {
            m.w->mnuDonotAskAnyMoreQuestions->setChecked(edit == "unasked");
            if (!edit.isEmpty())
                m.t->txtACDetails[0]->setText(edit);
            m.t->cmdLoad_Click();
            QCOMPARE(m.t->txtACDetails[0]->text(), QStringLiteral("record 0"));
        }
        QCOMPARE(m.fp.messages.shown.size(), 2);
    }

    // Clearing asks first (unless questions are limited), empties the row's
    // boxes, marks and colours, and stores nothing.
    void clearingARowOrTheForm_data()
    {
        QTest::addColumn<bool>("limited");
        QTest::newRow("asking") << false;
        QTest::newRow("questions limited") << true;
    }
    void clearingARowOrTheForm()
    {
        QFETCH(bool, limited);
        LoadedMainWindow m([](FakePlatform &fp) {
            withRows(13)(fp);
            TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblalarmclock SET dtalarmclockmmmddyyyy = NULL");
        });
        m.w->mnuDonotAskAnyMoreQuestions->setChecked(limited);
        auto back = [&](int i) { return m.t->txtACDetails[i]->palette().color(QPalette::Base); };
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(7, 30))); // row 7 (08:00) within the hour, row 6 just passed
        QVERIFY(m.t->lbl24[7]->isVisibleTo(m.t) && !m.t->lblCountDownHours[7]->text().isEmpty());
        QCOMPARE(back(7), QColor(Qt::yellow));
        QCOMPARE(back(6), QColor(0x80, 0xFF, 0x80));
        // No leaves the row, yet clears the changed flag and re-evaluates.
        m.t->txtACDetails[7]->setText(QStringLiteral("edited"));
        m.fp.messages.answers = {MsgResult::No, MsgResult::No};
        m.state().bEvaluateNow = false;
        m.t->cmdClearRow_Click(7);
        QVERIFY(!m.t->bDataChanged && m.state().bEvaluateNow);
        QCOMPARE(m.t->txtACDetails[7]->text(), limited ? QString() : QStringLiteral("edited"));
        if (!limited) {
            QCOMPARE(boxOf(m.fp.messages, 0), "CLEAR THE ROW: ARE YOU SURE?|You will lose any changes you made to this row, are you sure?");
            m.t->lblUrlToolTip[7]->setText(QStringLiteral("!"));
            m.fp.messages.answers = {MsgResult::Yes};
            m.t->cmdClearRow_Click(7);
        }
        QCOMPARE(shown(m.t, 7), QStringLiteral("||||"));
        QCOMPARE(QStringList({QString::number(m.t->lbl24[7]->isVisibleTo(m.t)), m.t->lblCountDownHours[7]->text(), m.t->lblUrlToolTip[7]->text(),
                              m.t->lblUrlToolTip[7]->accessibleDescription(), m.t->txtACDetails[8]->text(), back(7).name()}),
                 QStringList({"0", "", "?", "Reveals the URL description.", "record 8", "#ffffff"}));

        m.fp.messages.shown.clear();
        m.fp.messages.answers = {MsgResult::No};
        m.state().bEvaluateNow = false;
        m.t->cmdClearForm_Click();
        QVERIFY(m.state().bEvaluateNow);
        QCOMPARE(boxOf(m.fp.messages, 0), limited ? "|" : "CLEAR THE FORM: ARE YOU SURE?|" + kLoseWork);
        QCOMPARE(m.t->txtACDetails[5]->text(), limited ? QString() : QStringLiteral("record 5"));
        m.t->bDataChanged = true;
        m.t->cmdClearForm_Click(); // Yes
        QVERIFY(m.t->bDataChanged); // emptying the boxes leaves the flag as it was
        for (int i = 0; i < 13; ++i) {
            QCOMPARE(shown(m.t, i), QStringLiteral("||||"));
            QCOMPARE(m.state().strAlarmTimes[size_t(i)] + m.t->lblCountDownHours[i]->text() + m.t->lblUrlToolTip[i]->text(), QStringLiteral("?"));
            QVERIFY(!m.t->lbl24[i]->isVisibleTo(m.t));
        }
        QCOMPARE(back(6), QColor(Qt::white));
        const QString named = QStringLiteral("SELECT count(*) FROM tblalarmclock WHERE stralarmclock IS NOT NULL");
        QCOMPARE(m.rows(named), QStringList("13"));
        // Saving the blank window writes thirteen empty records.
        m.t->cmdSave_Click();
        QCOMPARE(m.rows(named), QStringList("0"));
        QCOMPARE(m.rows("SELECT count(*) FROM tblalarmclock WHERE coalesce(dtalarmclockmmmddyyyy, dtalarmclockhhnn) IS NULL "
                        "AND strURL || strWAVEFileNamePath = ''"), QStringList("13"));
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
        LoadedMainWindow m(withRows(13));
        const QString all = QStringLiteral("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid");
        const QStringList before = m.rows(all);
        TestDatabase other(m.fp.testDir.dbPath(), "other");
        QVERIFY(other.exec(fault));
        for (int i = 0; i < 13; ++i)
            m.t->txtACDetails[i]->setText(QStringLiteral("new %1").arg(i));
        m.t->cmdSave_Click();
        QVERIFY(m.fp.messages.shown.size() == 1 && boxOf(m.fp.messages, 0).startsWith(QStringLiteral("ERROR|basSaveAlarmClocks\r\n")));
        // The window keeps the edits and the flag, the table keeps the rows it had.
        QVERIFY(m.t->txtACDetails[12]->text() == "new 12" && m.t->bDataChanged);
        other.exec("ROLLBACK");
        QCOMPARE(TestDatabase(m.fp.testDir.dbPath(), "after").rows(all), before);
    }

    void aFailedLoadReportsAndLeavesTheRows()
    {
        LoadedMainWindow m(withRows(2));
        QVERIFY(m.sql("ALTER TABLE tblalarmclock RENAME TO moved"));
        m.t->txtACDetails[0]->setText(QStringLiteral("kept"));
        m.t->basLoadAlarmClocks(false);
        // The routine stopped before clearing the flag.
        QVERIFY(boxOf(m.fp.messages, 0).startsWith(QStringLiteral("ERROR|basLoadAlarmClocks\r\n")) && m.t->txtACDetails[0]->text() == "kept" && m.t->bDataChanged);
    }
};

QTEST_MAIN(LoadSaveTest)
#include "tst_loadsave.moc"
