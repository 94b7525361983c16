// The main window: start-up and its failures, where the database lives, the
// menu and its commands, renaming, the tray, starting at login and shutdown.

#include "fakes/LoadedMainWindow.h"
#include "shell/CursorBlinkRest.h"
#include "shell/TrayPresence.h"
#include "rules/TrayTip.h"

#include <QAction>
#include <QCheckBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTest>

namespace {

bool load(mdiAlarmClock &w)
{
    try {
        w.MDIForm_Load();
        return true;
    } catch (const ProgramEnded &) {
        return false;
    }
}

// The checked menu commands, in menu order.
QStringList checkedCommands(const mdiAlarmClock &w)
{
    QStringList names;
    for (const QAction *a : w.findChildren<QAction *>())
        if (a->isChecked())
            names << a->objectName();
    return names;
}

// Logs the Close events of the windows it watches into the tray's call log,
// so their order against the tray's own calls shows.
struct CloseLog : QObject {
    QStringList &log;
    explicit CloseLog(QStringList &l) : log(l) {}
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Close)
            log << "close:" + watched->objectName();
        return false;
    }
};

struct FailingTray : FakeTrayIcon {
    void add(const QString &) override { throw AppError(5, QStringLiteral("Invalid procedure call")); }
};

QString err(const char *routine, const QString &error = "1\r\nno such table: tblprogramsetting") { return QStringLiteral("ERROR|%1\r\n%2|0").arg(routine, error); }

const QStringList kShipped{"mnuSoundOn", "mnuPopupFormOff", "mnuDeactivateTimeRow", "mnuMinimizedToTrayOn", "mnuColorRegular"};
const QStringList kNoDb{"ERROR! DATABASE FILE NOT FOUND|Missing the file:\r\n%DB|1", "ERROR! DATABASE FILE NOT FOUND|The program cannot continue without the database.|1"};
const QStringList kMyDb{"|MyDB ERROR,\r\nFILE PATH:\r\n%DB\r\nError #26\r\nfile is not a database|0", "|The application will now close safely, contact your developer.|0"};

} // namespace

class ShellTest : public QObject {
    Q_OBJECT

private slots:
    // The menu as designed, before the start-up touches it; then start, bring
    // the windows back, exit: the database is let go first, then the tray
    // icon, then every window, the last opened first.
    void aNormalRunAndItsShutdown()
    {
        FakePlatform fp;
        mdiAlarmClock w(fp.platform());
        QStringList menu; // "caption[mark]" entries, indented by depth; hidden ones in parentheses
        std::function<void(const QList<QAction *> &, int)> dump = [&](const QList<QAction *> &actions, int depth) {
            for (QAction *a : actions) {
                menu << QString(depth, u' ') + (a->isVisible() ? a->text() : "(" + a->text() + ")") + (!a->isCheckable() ? "" : a->isChecked() ? "[x]" : "[ ]");
                if (a->menu())
                    dump(a->menu()->actions(), depth + 1);
            }
        };
        dump(w.menuBar()->actions(), 0);
        QCOMPARE(menu.join(u'/'), "Program/ Alarm Clock/ Cancel Menu Selection/ Exit/Utilities/ Sound/  Sound On[x]/  Sound Off[ ]/"
                                  " On Alarm Popup Form/  Popup Form On[ ]/  Popup Form Off[x]/ Time Row/  Activate Time Row[ ]/"
                                  "  Deactivate Time Row[x]/ Minimize To Tray/  Minimize To Tray Allowed[x]/  Minimized To Tray Disabled[ ]/"
                                  "  Minimize To Tray Now/ Change Program Name/ Limit Application Questions Asked[ ]/ Start at Login[ ]/ Wake Computer for Alarms[ ]/ Colors/"
                                  "  Regular[x]/  Matrix[ ]/  Custom[ ]/  Modify Custom Colors/Help/ About/ Legend/(Administration Mode)/ Tables");
        QVERIFY(load(w));
        QVERIFY(w.isVisible() && w.tableSubWindow()->isMaximized() && !w.mnuAdminMode->menuAction()->isVisible() && w.state().bEvaluateNow);
        QCOMPARE(QStringList({w.windowTitle(), QString::number(w.width()), QString::number(w.height()), w.tableWindow()->txtSoundOffTimes->text(), visibleTrayTip(fp.tray.field)}),
                 QStringList({"Quorvel Alarm Clock", "804", "616", "3", "[Quorvel Alarm Clock] Double LEFT Click me."}));
        QCOMPARE(checkedCommands(w), kShipped);

        w.hide();
        w.state().intMDIWindowState = 1;
        w.state().bEvaluateNow = false;
        w.resize(300, 200);
        QPointer<QWidget> stray = w.showForm(SecondaryForm::About);
        w.mnuAlarmClock->trigger();
        QVERIFY(w.isVisible() && w.state().bEvaluateNow && (!stray || !stray->isVisible()) && w.size() == QSize(804, 616));
        QCOMPARE(w.state().intMDIWindowState, 2); // maximizing the table window records its own state last

        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        CloseLog log(fp.tray.calls);
        for (SecondaryForm f : {SecondaryForm::Tables, SecondaryForm::Legend, SecondaryForm::About})
            w.showForm(f)->installEventFilter(&log);
        w.tableSubWindow()->installEventFilter(&log);
        fp.tray.calls.clear();
        w.mnuExit->trigger();
        QVERIFY(w.isUnloaded() && !w.isVisible() && !w.tableWindow()->tmrAlarmClock->isActive() && fp.messages.shown.isEmpty());
        QCOMPARE(fp.tray.calls, QStringList({"remove", "close:frmAbout", "close:frmLegend", "close:frmTables", "close:frmAlarmClockWindow"}));

        // A database gone by then: MyDBClose's own connection ends the program before the tray is touched, creating nothing.
        LoadedMainWindow again;
        QVERIFY(again.fp.testDir.remove("alarmclock.mdb"));
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, again.w->MDIForm_Unload());
        QCOMPARE(again.fp.messages.texts().value(0).section("\r\n", 0, 2) + "|" + again.fp.messages.texts().value(1),
                 "MyDB ERROR,\r\nFILE PATH:\r\n" + again.fp.testDir.dbPath() + "|The application will now close safely, contact your developer.");
        QVERIFY(again.fp.tray.calls.isEmpty() && !QFileInfo::exists(again.fp.testDir.dbPath()));
    }

    // Each box as "title|text|buttons"; %DB and %WAV stand for the paths.
    void startUp_data()
    {
        QTest::addColumn<QStringList>("boxes");
        QTest::addColumn<bool>("runs");
        QTest::newRow("no database") << kNoDb << false;
        QTest::newRow("zero bytes") << kMyDb << false;
        QTest::newRow("random bytes") << kMyDb << false;
        QTest::newRow("no sound") << QStringList{"DEFAULT WAV FILE NOT FOUND|Missing the file:\r\n%WAV|1", "ABLE TO CONTINUE...|The program CAN continue without:\r\n%WAV|1"} << true;
        QTest::newRow("second instance") << QStringList{"CLICK TO END,|The application,\r\nKitchen Timer is already activated and running.\r\n"
                                                        "You may find it on your task bar or to the bottom right within your task tray icons.|0"} << false;
        QTest::newRow("root folder") << QStringList() << true;
        QTest::newRow("null name") << QStringList{err("subReturnAlarmclockName", "94\r\nInvalid use of Null")} << true;
        QTest::newRow("no settings") << QStringList{err("subSetDonotAskAnyMoreQuestions"), err("subReturnAlarmclockName"),
                                                    err("intReturnColorPicked"), err("subApplyMDIProgramSettings"),
                                                    err("subApplyAlarmClockFormProgramSettings"), err("subApplyMDIProgramSettings")} << true;
        QTest::newRow("picture fails") << QStringList{err("Err_MDIForm_Load", "481\r\nInvalid picture")} << true;
        QTest::newRow("tray fails") << QStringList{err("subAlarmclockCaption", "5\r\nInvalid procedure call")} << true;
    }
    void startUp()
    {
        QFETCH(QStringList, boxes);
        QFETCH(bool, runs);
        const QString kind = QTest::currentDataTag();
        FakePlatform fp;
        FailingTray failingTray;
        const QByteArray bytes = kind == "random bytes" ? QByteArray("\x13\x37 not a database", 18).repeated(100) : QByteArray();
        TestDatabase db(fp.testDir.dbPath());
        db.exec(kind == "null name" ? "UPDATE tblprogramsetting SET strprogramname = NULL"
                : kind == "second instance" ? "UPDATE tblprogramsetting SET strprogramname = 'Kitchen Timer'"
                : kind == "no settings" ? "ALTER TABLE tblprogramsetting RENAME TO gone" : "");
        db.exec("INSERT INTO tblalarmclock (stralarmclock) VALUES ('row one')");
        if (kind == "no database")
            QVERIFY(fp.testDir.remove("alarmclock.mdb") && fp.testDir.remove("alarm.wav"));
        if (kind.endsWith("bytes"))
            QVERIFY(fp.testDir.writeBytes("alarmclock.mdb", bytes));
        if (kind == "no sound")
            QVERIFY(fp.testDir.remove("alarm.wav"));
        fp.instance.running = kind == "second instance";
        fp.pictures.fails = kind == "picture fails";
        if (kind == "root folder") // the separator is always inserted: "//" starts the path
            fp.appDir.directory = "/" + fp.testDir.path();
        mdiAlarmClock w(kind == "tray fails" ? fp.withServices(nullptr, &failingTray) : fp.platform());
        QCOMPARE(load(w), runs);
        QStringList shown;
        for (const ShownMessage &m : fp.messages.shown)
            shown << m.title + "|" + m.text + "|" + QString::number(int(m.buttons));
        for (QString &b : boxes)
            b.replace("%DB", fp.appDir.directory + "/alarmclock.mdb").replace("%WAV", fp.testDir.filePath("alarm.wav"));
        QCOMPARE(shown, boxes);
        QCOMPARE(fp.instance.asked, int(kind == "second instance")); // asked to come forward first
        if (!runs) { // no tray icon, the sound never looked for after a missing database, nothing created or changed
            QFile file(fp.testDir.dbPath());
            QVERIFY(fp.tray.calls.isEmpty() && (!kind.endsWith("bytes") || (file.open(QIODevice::ReadOnly) && file.readAll() == bytes)));
            QCOMPARE(fp.files.asked.contains(fp.testDir.filePath("alarm.wav")), kind != "no database");
            QCOMPARE(QFileInfo::exists(fp.testDir.dbPath()), kind != "no database");
        }
        // An error in the start-up steps stops them: the rows are not loaded.
        QCOMPARE(runs && w.tableWindow()->txtACDetails[0]->text() == "row one", runs && kind != "picture fails");
    }

    // A folder the user may not write to (a system-wide install) moves the
    // database to a copy of the user's own, seeded once.
    void whereTheDatabaseLives_data()
    {
        QTest::addColumn<QString>("files"); // folder writable, user copy, shipped file, the copy fails
        QTest::addColumn<QString>("used");  // "shipped", "user" or "" (the program ends)
        QTest::newRow("writable folder") << "w u s" << "shipped";
        QTest::newRow("read-only, first start") << "s" << "user";
        QTest::newRow("read-only, user copy") << "u s" << "user";
        QTest::newRow("read-only, only the user copy") << "u" << "user";
        QTest::newRow("read-only, neither") << "" << "";
        QTest::newRow("read-only, copy impossible") << "s fails" << "shipped";
    }
    void whereTheDatabaseLives()
    {
        QFETCH(QString, files);
        QFETCH(QString, used);
        const QStringList has = files.split(' ');
        FakePlatform fp;
        QTemporaryDir home;
        fp.appDir.userData = home.filePath("share/quorvel-alarmclock");
        const QString shippedPath = fp.testDir.dbPath(), userPath = fp.appDir.userData + "/alarmclock.mdb";
        if (!has.contains("w"))
            fp.files.readOnly.insert(fp.appDir.path());
        if (has.contains("u"))
            QVERIFY(QDir().mkpath(fp.appDir.userData) && QFile::copy(shippedPath, userPath));
        if (!has.contains("s"))
            QVERIFY(fp.testDir.remove("alarmclock.mdb"));
        fp.files.copyFails = has.contains("fails");
        mdiAlarmClock w(fp.platform());
        QCOMPARE(load(w), !used.isEmpty());
        QCOMPARE(fp.messages.texts().value(0), used.isEmpty() ? "Missing the file:\r\n" + shippedPath : QString());
        if (used.isEmpty())
            return;
        QCOMPARE(w.database().path(), used == "user" ? userPath : shippedPath);
        // Seeded once, from the shipped file, and nothing half-written left behind.
        const bool seeded = files.startsWith("s");
        QCOMPARE(fp.files.copies, seeded ? QStringList(shippedPath + '>' + userPath) : QStringList());
        QFile a(shippedPath), b(userPath);
        if (used == "user" && seeded)
            QVERIFY(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly) && a.readAll() == b.readAll()
                    && QDir(fp.appDir.userData).entryList(QDir::Files) == QStringList("alarmclock.mdb"));
    }

    // No record: the defaults. Two: only the first counts. An unknown scheme checks no colour.
    void settingsRecords()
    {
        const QList<std::pair<QStringList, QStringList>> cases{ // statements; title, sound times, checked commands
            {{"DELETE FROM tblprogramsetting"}, QStringList{"Quorvel Alarm Clock", "0"} + kShipped},
            {{"UPDATE tblprogramsetting SET booSound = 0, intColorPick = 1, booTimeRow = 1, booAlarmPopupForm = 1, booMinimizeToTray = 0, "
              "booDonotAskAnyMore = 1, strprogramname = 'First', intSoundAlarmTimes = 7", "INSERT INTO tblprogramsetting (strprogramname) VALUES ('2')"},
             {"First", "7", "mnuSoundOff", "mnuPopupFormOn", "mnuActivateTimeRow", "mnuMinimizedToTrayOff", "mnuDonotAskAnyMoreQuestions", "mnuColorMatrix"}},
            {{"UPDATE tblprogramsetting SET intColorPick = 5"}, QStringList{"Quorvel Alarm Clock", "3"} + kShipped.mid(0, 4)}};
        for (const auto &[statements, expected] : cases) {
            LoadedMainWindow m(withSql(statements));
            QCOMPARE(QStringList({m.w->windowTitle(), m.t->txtSoundOffTimes->text()}) + checkedCommands(*m.w), expected);
        }
    }

    void pairsSwitchMarksCaptionsAndEveryRecord_data()
    {
        QTest::addColumn<QStringList>("names"); // on, off, switch, column, caption off, caption on
        QTest::newRow("sound") << QStringList{"mnuSoundOn", "mnuSoundOff", "chkSoundOnOff", "booSound", "Sound [off]", "Sound [on]"};
        QTest::newRow("popup") << QStringList{"mnuPopupFormOn", "mnuPopupFormOff", "chkShow", "booAlarmPopupForm", "On Alarm Popup the Form [off]", "On Alarm Popup the Form [on]"};
        QTest::newRow("time row") << QStringList{"mnuActivateTimeRow", "mnuDeactivateTimeRow", "chkTimeRow", "booTimeRow", "Time Row [Deactivated]", "Time Row [Activated]"};
        QTest::newRow("tray") << QStringList{"mnuMinimizedToTrayOn", "mnuMinimizedToTrayOff", "chkMinimizeToTray", "booMinimizeToTray",
                                             "Minimize to Tray [Disabled]", "Minimize to Tray [Allowed]"};
    }
    void pairsSwitchMarksCaptionsAndEveryRecord()
    {
        QFETCH(QStringList, names);
        LoadedMainWindow m(withSql({"INSERT INTO tblprogramsetting (strprogramname) VALUES ('2')"})); // statements have no WHERE clause
        auto *check = m.t->findChild<QCheckBox *>(names[2]);
        auto state = [&] {
            return QStringList({QString::number(m.w->findChild<QAction *>(names[0])->isChecked()), QString::number(m.w->findChild<QAction *>(names[1])->isChecked()),
                                QString::number(check->isChecked()), check->text(), check->accessibleName(), m.setting(names[3])}).join('|');
        };
        // Each second trigger hits an already checked command: it stays checked and writes again.
        for (const bool on : {true, true, false, false}) {
            QVERIFY(m.sql("UPDATE tblprogramsetting SET " + names[3] + " = 7"));
            m.w->findChild<QAction *>(names[on ? 0 : 1])->trigger();
            QCOMPARE(state(), QStringList({on ? "1|0|1" : "0|1|0", names[4 + on], names[4 + on], on ? "1,1" : "0,0"}).join('|'));
        }
        // Clicking the switch moves the marks but stores nothing.
        QVERIFY(m.sql("UPDATE tblprogramsetting SET " + names[3] + " = 7"));
        QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(6, check->height() / 2));
        QCOMPARE(state(), QStringList({"1|0|1", names[5], names[5], "7,7"}).join('|'));
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    // A scheme command closes the other windows and evaluates at once.
    void schemeAndQuestionCommands()
    {
        LoadedMainWindow m;
        const QList<QAction *> colours{m.w->mnuColorRegular, m.w->mnuColorMatrix, m.w->mnuColorCustom};
        for (const int scheme : {1, 2, 0, 0}) {
            QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
            m.state().bEvaluateNow = false;
            colours[scheme]->trigger();
            const QString marks = QString::number(colours[0]->isChecked()) + QString::number(colours[1]->isChecked()) + QString::number(colours[2]->isChecked());
            QCOMPARE(marks + QString::number(m.state().intColorPick) + m.setting("intColorPick"), QString("00100").mid(2 - scheme, 3) + QString::number(scheme).repeated(2));
            QVERIFY(m.state().bEvaluateNow && (!legend || !legend->isVisible()));
        }
        // Modify switches to Custom first, but only when another scheme is showing.
        m.w->mnuColorMatrix->trigger();
        m.w->mnuColorCustomModify->trigger();
        QVERIFY(m.w->form(SecondaryForm::CustomColors)->isVisible() && m.w->mnuColorCustom->isChecked() && !m.w->mnuColorMatrix->isChecked());
        QPointer<QWidget> legend = m.w->showForm(SecondaryForm::Legend);
        m.w->mnuColorCustomModify->trigger();
        QVERIFY(legend && legend->isVisible());
        for (const bool limited : {true, false}) {
            m.w->mnuDonotAskAnyMoreQuestions->trigger();
            QVERIFY(m.w->questionsLimited() == limited && m.setting("booDonotAskAnyMore") == (limited ? "1" : "0"));
        }
        m.w->form(SecondaryForm::CustomColors)->close(); // it would reload its colours on closing
        // A failed statement: sound and colours go on regardless; the
        // questions limit and renaming report and stop (renaming asks
        // nothing); the time row has no handler, so the program reports and
        // ends. Every mark has moved all the same.
        QVERIFY(m.sql("ALTER TABLE tblprogramsetting RENAME TO gone"));
        m.w->mnuSoundOff->trigger();
        m.w->mnuColorMatrix->trigger();
        m.w->mnuDonotAskAnyMoreQuestions->trigger();
        m.w->mnuChangeProgramName->trigger();
        QVERIFY(m.fp.input.asked.isEmpty() && m.w->windowTitle() == "Quorvel Alarm Clock");
        // Called directly: an exception must not cross Qt's signal code.
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, m.w->mnuDeactivateTimeRow_Click());
        QVERIFY_THROWS_EXCEPTION(ProgramEnded, m.w->mnuActivateTimeRow_Click());
        QCOMPARE(checkedCommands(*m.w), QStringList({"mnuSoundOff", "mnuPopupFormOff", "mnuActivateTimeRow", "mnuMinimizedToTrayOn", "mnuDonotAskAnyMoreQuestions", "mnuColorMatrix"}));
        const QString runTimeError = "Run-time error '1':\r\n\r\nno such table: tblprogramsetting";
        QCOMPARE(m.fp.messages.texts(), QStringList({"mnuDonotAskAnyMoreQuestions_Click\r\n1\r\nno such table: tblprogramsetting",
                                                     "subAlarmclockCaptionModify\r\n1\r\nno such table: tblprogramsetting", runTimeError, runTimeError}));
        QCOMPARE(m.fp.messages.shown[0].title + "|" + m.fp.messages.shown[3].title, "ERROR|"); // a run-time error's box has no title
    }

    // Renaming, and the start-at-login mark, which follows the entry, also
    // when the desktop's own settings changed it.
    void renamingAndStartingAtLogin()
    {
        LoadedMainWindow m([](FakePlatform &fp) { fp.autostart.on = true; });
        auto rename = [&](const QStringList &answers) {
            m.fp.input.asked.clear();
            m.fp.messages.shown.clear();
            m.fp.input.answers = answers;
            m.w->mnuChangeProgramName->trigger();
            return m.setting("strprogramname");
        };
        const QString fifty(50, 'x');
        QCOMPARE(rename({"  " + fifty + " "}), fifty); // measured trimmed
        const InputRequest asked = m.fp.input.asked.value(0);
        QCOMPARE(QStringList({asked.prompt, asked.title, asked.defaultText, m.w->windowTitle()}),
                 QStringList({"TYPE THE NAME OF YOUR PROGRAM:", "MODIFY PROGRAM NAME", "Quorvel Alarm Clock", fifty}));
        QCOMPARE(m.fp.tray.calls, QStringList({"remove", "remove", "add:" + visibleTrayTip(trayTipField(fifty, {}))}));
        // An alarm's tip keeps only the first 15 characters of the name.
        m.setRow(0, "Sep 30, 2031", "07:30");
        m.tickAt(QDateTime(QDate(2031, 9, 30), QTime(7, 30, 0, 5)));
        QCOMPARE(visibleTrayTip(m.fp.tray.field), "[" + fifty.left(15) + "..]ALARM @ Sep, 30 at 07:30");
        // Too long: shown cut at 50 and asked again, offering the current name.
        QCOMPARE(rename({" " + QString(50, 'a') + "b", "Tom & Jerry"}), "Tom & Jerry");
        QCOMPARE(m.fp.messages.texts(), QStringList("Your program name can only be 50 characters long, here is where it will truncate:\r\n" + QString(50, 'a')));
        QCOMPARE(m.fp.messages.shown[0].title + "|" + m.fp.input.asked.value(1).defaultText, "OOPS! YOUR PROGRAM NAME IS TOO LONG, Please Try Again...|" + fifty);
        QCOMPARE(m.w->mnuAlarmClock->text(), "Tom && Jerry"); // not an accelerator
        // Cancelled: nothing stored, but the caption is read back from the database.
        QVERIFY(m.sql("UPDATE tblprogramsetting SET strprogramname = 'Elsewhere'"));
        QCOMPARE(rename({"   "}), "Elsewhere");
        QCOMPARE(m.w->windowTitle() + "|" + visibleTrayTip(m.fp.tray.field), "Elsewhere|[Elsewhere] Double LEFT Click me.");
        // An empty table gets its record; its question offers the classic name.
        QVERIFY(m.sql("DELETE FROM tblprogramsetting"));
        QCOMPARE(rename({"Desk Clock"}), "Desk Clock");
        QCOMPARE(m.fp.input.asked.value(0).defaultText, "Alarm Clock");

        QVERIFY(m.w->mnuStartAtLogin->isChecked());
        for (const bool works : {true, true, false}) {
            const bool endsOn = works != m.fp.autostart.on;
            m.fp.autostart.works = works;
            m.w->mnuStartAtLogin->trigger();
            QVERIFY(m.fp.autostart.on == endsOn && m.w->mnuStartAtLogin->isChecked() == endsOn);
        }
        QCOMPARE(m.fp.messages.shown.size() == 1 ? m.fp.messages.shown[0].title : QString(), "START AT LOGIN");
        m.fp.autostart.on = false;
        emit m.w->mnuUtilities->aboutToShow();
        QVERIFY(!m.w->mnuStartAtLogin->isChecked());
    }

    // Waking the computer: a machine or an install that cannot disables the command and says why;
    // otherwise it keeps the user's choice in the program's own settings.
    void wakingTheComputer()
    {
        LoadedMainWindow cannot([](FakePlatform &fp) { fp.wake.reason = "no clock"; fp.preferences.wake = true; });
        QVERIFY(!cannot.w->mnuWakeComputer->isEnabled() && !cannot.w->mnuWakeComputer->isChecked() && !cannot.fp.wake.enabled);
        QCOMPARE(cannot.w->mnuWakeComputer->toolTip(), "no clock");
        LoadedMainWindow m([](FakePlatform &fp) { fp.preferences.wake = true; });
        QVERIFY(m.w->mnuWakeComputer->isChecked() && m.fp.wake.enabled);
        m.w->mnuWakeComputer->trigger();
        QVERIFY(!m.w->mnuWakeComputer->isChecked() && !m.fp.wake.enabled && !m.fp.preferences.wake);
        m.w->mnuWakeComputer->trigger();
        m.fp.wake.fail(QStringLiteral("ERR no permission"));
        QVERIFY(!m.w->mnuWakeComputer->isEnabled() && !m.fp.wake.enabled && m.fp.preferences.wake);
    }

    // Hidden only when the tray switch allows it and a tray host can bring it
    // back; the icon then restores to the normal state and pops up the
    // Program menu, and a plain move over it does nothing.
    void minimizingAndTheTrayIcon_data()
    {
        QTest::addColumn<QStringList>("trayCalls");
        const QString added = "add:" + visibleTrayTip(trayTipField("Quorvel Alarm Clock", {}));
        QTest::newRow("now") << QStringList(added); // added again without a remove first
        QTest::newRow("minimized") << QStringList({"remove", added});
        QTest::newRow("minimized, tray disabled") << QStringList();
        QTest::newRow("restored before it settled") << QStringList();
        QTest::newRow("now, no tray host") << QStringList(added);
        QTest::newRow("minimized, no tray host") << QStringList();
    }
    void minimizingAndTheTrayIcon()
    {
        QFETCH(QStringList, trayCalls);
        const QString how = QTest::currentDataTag();
        const bool host = !how.endsWith("no tray host");
        LoadedMainWindow m([&](FakePlatform &fp) { fp.tray.hostAvailable = host; });
        if (how.contains("disabled"))
            m.w->mnuMinimizedToTrayOff->trigger();
        if (how.startsWith("now"))
            m.w->mnuMinimizeToTrayNow->trigger();
        else
            m.w->setWindowState(m.w->windowState() | Qt::WindowMinimized);
        if (how.startsWith("restored"))
            m.w->setWindowState(m.w->windowState() & ~Qt::WindowMinimized);
        QCoreApplication::processEvents();
        QCOMPARE(m.fp.tray.calls, trayCalls);
        QCOMPARE(m.w->isVisible(), trayCalls.isEmpty() || !host);
        if (m.w->isVisible() && !how.startsWith("restored")) // on the task bar, never hidden with nothing to bring it back
            QVERIFY(m.w->isMinimized() && m.state().intMDIWindowState == 1);
        if (!host) { // a panel started meanwhile
            m.fp.tray.hostAvailable = true;
            m.w->setWindowState(Qt::WindowNoState);
            m.w->mnuMinimizeToTrayNow->trigger();
            QVERIFY(!m.w->isVisible());
        }
        if (how != "now")
            return;
        m.state().bEvaluateNow = false;
        m.fp.tray.calls.clear();
        m.w->setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
        m.fp.tray.sendMouse(TrayIcon::LeftDoubleClick);
        QVERIFY(m.w->isVisible() && m.state().bEvaluateNow && m.fp.tray.calls.isEmpty() && m.state().intMDIWindowState == 0);
        QCOMPARE(m.w->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), Qt::WindowStates());
        m.fp.tray.sendMouse(512);
        QVERIFY(!m.w->mnuProgram->isVisible());
        m.fp.tray.sendMouse(TrayIcon::RightButtonDown);
        QVERIFY(m.w->mnuProgram->isVisible() && m.fp.tray.menu == m.w->mnuProgram); // and the icon's own menu
        m.w->mnuProgram->close();
        QTest::mousePress(m.w->findChild<QMdiArea *>()->viewport(), Qt::RightButton, {}, QPoint(3, 3));
        QVERIFY(m.w->mnuProgram->isVisible());
        m.w->mnuProgram->close();
        // Back by itself when the tray host goes away while it hides there, and at a second start's knock.
        for (const bool hostGone : {true, false}) {
            m.fp.tray.hostAvailable = true;
            m.w->mnuMinimizeToTrayNow->trigger();
            m.w->trayPresence().checkTrayHost();
            QVERIFY(!m.w->isVisible());
            m.fp.tray.hostAvailable = !hostGone;
            hostGone ? m.w->trayPresence().checkTrayHost() : m.fp.instance.knock();
            QVERIFY(m.w->isVisible() && !m.w->isMinimized());
        }
    }

    void cursorsRestWhenIdleAndWakeOnInput()
    {
        QApplication::setCursorFlashTime(1000);
        QLineEdit box;
        {
            CursorBlinkRest rest(50);
            QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
            QTest::keyClick(&box, Qt::Key_A);
            QCOMPARE(QApplication::cursorFlashTime(), 1000);
            QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
            QTest::mouseClick(&box, Qt::LeftButton);
            QCOMPARE(QApplication::cursorFlashTime(), 1000);
        }
        QCOMPARE(QApplication::cursorFlashTime(), 1000); // gone, it leaves the desktop's setting as it found it
    }
};

QTEST_MAIN(ShellTest)
#include "tst_shell.moc"
