// The menu commands that change settings, checked against what the program
// stores in its database.

#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QPointer>
#include <QTest>

namespace {

QAction *command(LoadedMainWindow &m, const QString &name)
{
    auto *action = m.w->findChild<QAction *>(name);
    if (!action)
        qFatal("no menu command %s", qPrintable(name));
    return action;
}

QCheckBox *tableSwitch(LoadedMainWindow &m, const QString &name) { return m.t->findChild<QCheckBox *>(name); }

// The column in every settings record, in record order.
QStringList stored(LoadedMainWindow &m, const QString &column)
{
    TestDatabase db(m.fp.testDir.dbPath());
    return db.rows(QStringLiteral("SELECT %1 FROM tblprogramsetting ORDER BY lngprogramsettingid").arg(column));
}

void renameSettingsTable(LoadedMainWindow &m)
{
    TestDatabase db(m.fp.testDir.dbPath());
    QVERIFY(db.exec(QStringLiteral("ALTER TABLE tblprogramsetting RENAME TO tblprogramsetting_gone")));
}

} // namespace

class MenusTest : public QObject {
    Q_OBJECT

private slots:
    void pairsSwitchMarksTableAndEveryRecord_data()
    {
        QTest::addColumn<QString>("on");
        QTest::addColumn<QString>("off");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("onCaption");
        QTest::addColumn<QString>("offCaption");
        QTest::newRow("sound") << "mnuSoundOn" << "mnuSoundOff" << "chkSoundOnOff" << "booSound" << "Sound [on]"
                               << "Sound [off]";
        QTest::newRow("popup") << "mnuPopupFormOn" << "mnuPopupFormOff" << "chkShow" << "booAlarmPopupForm"
                               << "On Alarm Popup the Form [on]" << "On Alarm Popup the Form [off]";
        QTest::newRow("time row") << "mnuActivateTimeRow" << "mnuDeactivateTimeRow" << "chkTimeRow" << "booTimeRow"
                                  << "Time Row [Activated]" << "Time Row [Deactivated]";
        QTest::newRow("tray") << "mnuMinimizedToTrayOn" << "mnuMinimizedToTrayOff" << "chkMinimizeToTray"
                              << "booMinimizeToTray" << "Minimize to Tray [Allowed]" << "Minimize to Tray [Disabled]";
    }
    void pairsSwitchMarksTableAndEveryRecord()
    {
        QFETCH(QString, on);
        QFETCH(QString, off);
        QFETCH(QString, box);
        QFETCH(QString, column);
        QFETCH(QString, onCaption);
        QFETCH(QString, offCaption);
        // A second record: the statements have no WHERE clause.
        LoadedMainWindow m([](FakePlatform &fp) {
            TestDatabase db(fp.testDir.dbPath());
            QVERIFY(db.exec(QStringLiteral("INSERT INTO tblprogramsetting (strprogramname) VALUES ('Second')")));
        });

        for (const bool turnOn : {false, true, false}) {
            command(m, turnOn ? on : off)->trigger();
            QCOMPARE(command(m, on)->isChecked(), turnOn);
            QCOMPARE(command(m, off)->isChecked(), !turnOn);
            QCOMPARE(tableSwitch(m, box)->isChecked(), turnOn);
            QCOMPARE(tableSwitch(m, box)->text(), turnOn ? onCaption : offCaption);
            const QString value = turnOn ? QStringLiteral("1") : QStringLiteral("0");
            QCOMPARE(stored(m, column), QStringList({value, value}));
        }
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void anAlreadyCheckedCommandWritesItsValueAgain_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("column");
        QTest::addColumn<bool>("on");
        // The shipped record has these checked.
        QTest::newRow("sound on") << "mnuSoundOn" << "chkSoundOnOff" << "booSound" << true;
        QTest::newRow("popup off") << "mnuPopupFormOff" << "chkShow" << "booAlarmPopupForm" << false;
        QTest::newRow("time row off") << "mnuDeactivateTimeRow" << "chkTimeRow" << "booTimeRow" << false;
        QTest::newRow("tray allowed") << "mnuMinimizedToTrayOn" << "chkMinimizeToTray" << "booMinimizeToTray" << true;
    }
    void anAlreadyCheckedCommandWritesItsValueAgain()
    {
        QFETCH(QString, name);
        QFETCH(QString, box);
        QFETCH(QString, column);
        QFETCH(bool, on);
        LoadedMainWindow m;
        QVERIFY(command(m, name)->isChecked());
        {
            TestDatabase db(m.fp.testDir.dbPath());
            QVERIFY(db.exec(QStringLiteral("UPDATE tblprogramsetting SET %1 = %2").arg(column).arg(on ? 0 : 1)));
        }
        const QString caption = tableSwitch(m, box)->text();
        const int beeps = m.fp.sound.beeps;

        command(m, name)->trigger();
        QVERIFY(command(m, name)->isChecked());
        QCOMPARE(tableSwitch(m, box)->isChecked(), on);
        QCOMPARE(tableSwitch(m, box)->text(), caption);
        // The switch did not change, so its own handling (the sound check) did not run.
        QCOMPARE(m.fp.sound.beeps, beeps);
        QCOMPARE(stored(m, column), QStringList(on ? QStringLiteral("1") : QStringLiteral("0")));
    }

    void colourCommandsSwitchTheScheme()
    {
        LoadedMainWindow m;
        const QList<QAction *> colours{m.w->mnuColorRegular, m.w->mnuColorMatrix, m.w->mnuColorCustom};
        for (const qint16 scheme : {qint16(1), qint16(2), qint16(0), qint16(0)}) {
            QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
            m.w->resize(900, 700);
            m.state().bEvaluateNow = false;

            colours[scheme]->trigger();
            for (int i = 0; i < 3; ++i)
                QCOMPARE(colours[i]->isChecked(), i == scheme);
            QCOMPARE(m.state().intColorPick, scheme);
            QCOMPARE(stored(m, QStringLiteral("intColorPick")), QStringList(QString::number(scheme)));
            QVERIFY(!legend || !legend->isVisible());
            QCOMPARE(m.w->size(), QSize(804, 616));
            QVERIFY(m.state().bEvaluateNow);
        }
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void modifyCustomColoursShowsTheCustomSchemeFirst()
    {
        LoadedMainWindow m;
        m.w->mnuColorMatrix->trigger();
        m.w->mnuColorCustomModify->trigger();
        QWidget *dialog = m.w->form(SecondaryForm::CustomColors);
        QVERIFY(dialog && dialog->isVisible());
        QVERIFY(m.w->mnuColorCustom->isChecked() && !m.w->mnuColorMatrix->isChecked());
        QCOMPARE(m.state().intColorPick, qint16(2));
        QCOMPARE(stored(m, QStringLiteral("intColorPick")), QStringList(QStringLiteral("2")));

        // Already Custom: the scheme is not selected again, so an open
        // secondary window stays open.
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.w->mnuColorCustomModify->trigger();
        QVERIFY(legend && legend->isVisible());
        QCOMPARE(m.w->form(SecondaryForm::CustomColors), dialog);
    }

    void limitQuestionsTogglesAndStoresTheWord()
    {
        LoadedMainWindow m;
        QVERIFY(!m.w->questionsLimited());
        m.w->mnuDonotAskAnyMoreQuestions->trigger();
        QVERIFY(m.w->mnuDonotAskAnyMoreQuestions->isChecked());
        QVERIFY(m.w->questionsLimited());
        QCOMPARE(stored(m, QStringLiteral("booDonotAskAnyMore")), QStringList(QStringLiteral("1")));
        m.w->mnuDonotAskAnyMoreQuestions->trigger();
        QVERIFY(!m.w->mnuDonotAskAnyMoreQuestions->isChecked());
        QCOMPARE(stored(m, QStringLiteral("booDonotAskAnyMore")), QStringList(QStringLiteral("0")));
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    // Which commands report a failed statement and which go on quietly.
    void aFailedStatement_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reportedBy"); // empty: nothing is reported
        QTest::newRow("sound off") << "mnuSoundOff" << "";
        QTest::newRow("popup on") << "mnuPopupFormOn" << "";
        QTest::newRow("time row on") << "mnuActivateTimeRow" << "";
        QTest::newRow("tray disabled") << "mnuMinimizedToTrayOff" << "";
        QTest::newRow("matrix") << "mnuColorMatrix" << "";
        QTest::newRow("limit") << "mnuDonotAskAnyMoreQuestions" << "mnuDonotAskAnyMoreQuestions_Click";
    }
    void aFailedStatement()
    {
        QFETCH(QString, name);
        QFETCH(QString, reportedBy);
        LoadedMainWindow m;
        renameSettingsTable(m);
        QAction *action = command(m, name);
        const bool wasChecked = action->isChecked();

        action->trigger();
        // The marks change before the statement runs, and stay changed.
        QCOMPARE(action->isChecked(), !wasChecked);
        if (reportedBy.isEmpty()) {
            QVERIFY(m.fp.messages.shown.isEmpty());
            return;
        }
        QCOMPARE(m.fp.messages.shown.size(), 1);
        const ShownMessage box = m.fp.messages.shown.first();
        QCOMPARE(box.title, QStringLiteral("ERROR"));
        QCOMPARE(box.buttons, MsgButtons::Ok);
        const QStringList lines = box.text.split(QStringLiteral("\r\n"));
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0], reportedBy);
        QVERIFY(lines[2].contains(QStringLiteral("tblprogramsetting")));
    }
};

QTEST_MAIN(MenusTest)
#include "tst_menus.moc"
