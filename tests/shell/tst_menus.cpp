#include "fakes/LoadedMainWindow.h"
#include "fakes/TestDatabase.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QPointer>
#include <QTest>

static QAction *command(LoadedMainWindow &m, const QString &name) { return m.w->findChild<QAction *>(name); }

static QStringList stored(LoadedMainWindow &m, const QString &column)
{
    return TestDatabase(m.fp.testDir.dbPath()).rows("SELECT " + column + " FROM tblprogramsetting");
}

class MenusTest : public QObject {
    Q_OBJECT

private slots:
    void pairsSwitchMarksTableAndEveryRecord_data()
    {
        QTest::addColumn<QString>("on");
        QTest::addColumn<QString>("off");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("column");
        QTest::newRow("sound") << "mnuSoundOn" << "mnuSoundOff" << "chkSoundOnOff" << "booSound";
        QTest::newRow("popup") << "mnuPopupFormOn" << "mnuPopupFormOff" << "chkShow" << "booAlarmPopupForm";
        QTest::newRow("time row") << "mnuActivateTimeRow" << "mnuDeactivateTimeRow" << "chkTimeRow" << "booTimeRow";
        QTest::newRow("tray") << "mnuMinimizedToTrayOn" << "mnuMinimizedToTrayOff" << "chkMinimizeToTray" << "booMinimizeToTray";
    }
    void pairsSwitchMarksTableAndEveryRecord()
    {
        QFETCH(QString, on);
        QFETCH(QString, off);
        QFETCH(QString, box);
        QFETCH(QString, column);
        // A second record: the statements have no WHERE clause.
        LoadedMainWindow m([](FakePlatform &fp) {
            QVERIFY(TestDatabase(fp.testDir.dbPath()).exec("INSERT INTO tblprogramsetting (strprogramname) VALUES ('2')"));
        });
        // Each second trigger hits an already checked command: it stays checked and writes again.
        for (const bool turnOn : {true, true, false, false}) {
            QVERIFY(TestDatabase(m.fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET " + column + " = 7"));
            command(m, turnOn ? on : off)->trigger();
            QCOMPARE(command(m, on)->isChecked(), turnOn);
            QCOMPARE(command(m, off)->isChecked(), !turnOn);
            QCOMPARE(m.t->findChild<QCheckBox *>(box)->isChecked(), turnOn);
            QCOMPARE(stored(m, column), QStringList(2, turnOn ? "1" : "0"));
        }
        QVERIFY(m.fp.messages.shown.isEmpty());
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
            QCOMPARE(stored(m, "intColorPick"), QStringList(QString::number(scheme)));
            QVERIFY(!legend || !legend->isVisible());
            QCOMPARE(m.w->size(), QSize(804, 616));
            QVERIFY(m.state().bEvaluateNow);
        }
    }

    // The dialog switches to Custom first, but only when another scheme is showing.
    void modifyCustomColoursShowsTheCustomSchemeFirst()
    {
        LoadedMainWindow m;
        m.w->mnuColorCustomModify->trigger();
        QVERIFY(m.w->form(SecondaryForm::CustomColors)->isVisible());
        QVERIFY(m.w->mnuColorCustom->isChecked() && !m.w->mnuColorRegular->isChecked());
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.w->mnuColorCustomModify->trigger();
        QVERIFY(legend && legend->isVisible());
    }

    // Only the questions limit reports a failed statement; the marks change regardless.
    void aFailedStatement_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reportedBy");
        QTest::newRow("sound off") << "mnuSoundOff" << "";
        QTest::newRow("matrix") << "mnuColorMatrix" << "";
        QTest::newRow("limit") << "mnuDonotAskAnyMoreQuestions" << "mnuDonotAskAnyMoreQuestions_Click";
    }
    void aFailedStatement()
    {
        QFETCH(QString, name);
        QFETCH(QString, reportedBy);
        LoadedMainWindow m;
        QVERIFY(TestDatabase(m.fp.testDir.dbPath()).exec("ALTER TABLE tblprogramsetting RENAME TO gone"));
        QAction *action = command(m, name);
        const bool wasChecked = action->isChecked();
        action->trigger();
        QCOMPARE(action->isChecked(), !wasChecked);
        QCOMPARE(m.fp.messages.texts().value(0).section("\r\n", 0, 0), reportedBy);
        QCOMPARE(m.fp.messages.shown.value(0).title, reportedBy.isEmpty() ? "" : "ERROR");
    }

    void limitQuestionsTogglesAndStoresTheWord()
    {
        LoadedMainWindow m;
        for (const bool limited : {true, false}) {
            m.w->mnuDonotAskAnyMoreQuestions->trigger();
            QCOMPARE(m.w->questionsLimited(), limited);
            QCOMPARE(stored(m, "booDonotAskAnyMore"), QStringList(limited ? "1" : "0"));
        }
    }
};

QTEST_MAIN(MenusTest)
#include "tst_menus.moc"
