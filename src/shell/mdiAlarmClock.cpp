#include "shell/mdiAlarmClock.h"

#include "data/DatabaseLocation.h"
#include "platform/AppDirectory.h"
#include "platform/Autostart.h"
#include "rules/AppError.h"
#include "platform/FileSystem.h"
#include "platform/InputBox.h"
#include "platform/InstanceGuard.h"
#include "platform/MessageBox.h"
#include "platform/ProgramEnd.h"
#include "platform/TrayIcon.h"
#include "platform/WallTimer.h"
#include "shell/SecondaryForms.h"
#include "shell/TrayTip.h"
#include "rules/ValueConversions.h"
#include "table/frmAlarmClock.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCursor>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QShortcut>
#include <QTimer>

namespace {

// One step of a routine that ignores any error and goes on with its next step.
template <typename Step>
void resumeNext(Step step)
{
    try {
        step();
    } catch (const AppError &) {
    }
}

// A checked mark changes only when a handler sets it, never by itself when
// the command is chosen: undo the toggle Qt makes before the handler runs.
template <typename Handler>
QAction *addCommand(QMenu *menu, const char *name, const QString &caption, bool checkable, bool checked,
                    Handler handler)
{
    auto *action = menu->addAction(caption);
    action->setObjectName(QLatin1String(name));
    action->setCheckable(checkable);
    action->setChecked(checked);
    QObject::connect(action, &QAction::triggered, menu, [action, handler](bool nowChecked) {
        if (action->isCheckable())
            action->setChecked(!nowChecked);
        handler();
    });
    return action;
}

QMenu *addSubMenu(QMenu *parent, const char *name, const QString &caption)
{
    QMenu *menu = parent->addMenu(caption);
    menu->setObjectName(QLatin1String(name));
    menu->menuAction()->setObjectName(QLatin1String(name));
    return menu;
}

int windowStateCode(Qt::WindowStates states)
{
    if (states & Qt::WindowMinimized)
        return 1;
    if (states & Qt::WindowMaximized)
        return 2;
    return 0;
}

} // namespace

mdiAlarmClock::mdiAlarmClock(const Platform &platform, QWidget *parent)
    : QMainWindow(parent), m_platform(platform), m_db(platform.appDir, platform.messages, platform.end),
      m_settings(m_db)
{
    setObjectName(QStringLiteral("mdiAlarmClock"));
    setWindowTitle(QStringLiteral("Alarm Clock"));
    buildMenus();

    m_mdiArea = new QMdiArea(this);
    m_mdiArea->setObjectName(QStringLiteral("mdiArea"));
    m_mdiArea->viewport()->installEventFilter(this);
    setCentralWidget(m_mdiArea);

    m_table = new frmAlarmClock(platform, m_db, m_settings, m_state, *this);
    m_tableSub = m_mdiArea->addSubWindow(m_table);
    // The table window lives as long as the main window; closing it at unload
    // must not delete it under the main window's feet.
    m_tableSub->setAttribute(Qt::WA_DeleteOnClose, false);
    m_forms = std::make_unique<SecondaryForms>(platform, m_db, m_settings, m_state, *this, *m_table);
    m_tableSub->setObjectName(QStringLiteral("frmAlarmClockWindow"));
    // No title of its own: a maximized child would append it to the main
    // window's caption, which must read exactly the program's name.
    m_tableSub->hide();
    connect(m_tableSub, &QMdiSubWindow::windowStateChanged, this,
            [this](Qt::WindowStates, Qt::WindowStates now) {
                // The MDI area also reports its children when the main window
                // hides or minimizes; that is no resize of the table window,
                // and must not overwrite the minimized state the tray relies on.
                if (!isVisible() || isMinimized())
                    return;
                m_table->Form_Resize(windowStateCode(now));
            });

    platform.tray.setMouseHandler([this](int message) { trayMouseMessage(message); });
}

mdiAlarmClock::~mdiAlarmClock()
{
    // The windows that hold references into this one go first, while
    // everything they may call back into is still whole.
    m_tableSub->disconnect(this);
    m_platform.tray.setMouseHandler({});
    m_forms.reset();
    delete m_tableSub;
}

void mdiAlarmClock::buildMenus()
{
    QMenuBar *bar = menuBar();
    auto top = [bar](const char *name, const QString &caption) {
        QMenu *menu = bar->addMenu(caption);
        menu->setObjectName(QLatin1String(name));
        menu->menuAction()->setObjectName(QLatin1String(name));
        return menu;
    };

    mnuProgram = top("mnuProgram", QStringLiteral("Program"));
    mnuAlarmClock = addCommand(mnuProgram, "mnuAlarmClock", QStringLiteral("Alarm Clock"), false, false,
                               [this] { mnuAlarmClock_Click(); });
    mnuCancelMenu = addCommand(mnuProgram, "mnuCancelMenu", QStringLiteral("Cancel Menu Selection"), false, false,
                               [this] { mnuCancelMenu_Click(); });
    mnuExit = addCommand(mnuProgram, "mnuExit", QStringLiteral("Exit"), false, false, [this] { mnuExit_Click(); });

    mnuUtilities = top("mnuUtilities", QStringLiteral("Utilities"));
    mnuSound = addSubMenu(mnuUtilities, "mnuSound", QStringLiteral("Sound"));
    mnuSoundOn = addCommand(mnuSound, "mnuSoundOn", QStringLiteral("Sound On"), true, true,
                            [this] { mnuSoundOn_Click(); });
    mnuSoundOff = addCommand(mnuSound, "mnuSoundOff", QStringLiteral("Sound Off"), true, false,
                             [this] { mnuSoundOff_Click(); });
    mnuOnAlarmPopupForm = addSubMenu(mnuUtilities, "mnuOnAlarmPopupForm", QStringLiteral("On Alarm Popup Form"));
    mnuPopupFormOn = addCommand(mnuOnAlarmPopupForm, "mnuPopupFormOn", QStringLiteral("Popup Form On"), true, false,
                                [this] { mnuPopupFormOn_Click(); });
    mnuPopupFormOff = addCommand(mnuOnAlarmPopupForm, "mnuPopupFormOff", QStringLiteral("Popup Form Off"), true,
                                 true, [this] { mnuPopupFormOff_Click(); });
    mnuTimeRow = addSubMenu(mnuUtilities, "mnuTimeRow", QStringLiteral("Time Row"));
    mnuActivateTimeRow = addCommand(mnuTimeRow, "mnuActivateTimeRow", QStringLiteral("Activate Time Row"), true,
                                    false, [this] { mnuActivateTimeRow_Click(); });
    mnuDeactivateTimeRow = addCommand(mnuTimeRow, "mnuDeactivateTimeRow", QStringLiteral("Deactivate Time Row"),
                                      true, true, [this] { mnuDeactivateTimeRow_Click(); });
    mnuMinimizeToTray = addSubMenu(mnuUtilities, "mnuMinimizeToTray", QStringLiteral("Minimize To Tray"));
    mnuMinimizedToTrayOn = addCommand(mnuMinimizeToTray, "mnuMinimizedToTrayOn",
                                      QStringLiteral("Minimize To Tray Allowed"), true, true,
                                      [this] { mnuMinimizedToTrayOn_Click(); });
    mnuMinimizedToTrayOff = addCommand(mnuMinimizeToTray, "mnuMinimizedToTrayOff",
                                       QStringLiteral("Minimized To Tray Disabled"), true, false,
                                       [this] { mnuMinimizedToTrayOff_Click(); });
    mnuMinimizeToTrayNow = addCommand(mnuMinimizeToTray, "mnuMinimizeToTrayNow",
                                      QStringLiteral("Minimize To Tray Now"), false, false,
                                      [this] { mnuMinimizeToTrayNow_Click(); });
    mnuChangeProgramName = addCommand(mnuUtilities, "mnuChangeProgramName", QStringLiteral("Change Program Name"),
                                      false, false, [this] { mnuChangeProgramName_Click(); });
    mnuDonotAskAnyMoreQuestions =
        addCommand(mnuUtilities, "mnuDonotAskAnyMoreQuestions", QStringLiteral("Limit Application Questions Asked"),
                   true, false, [this] { mnuDonotAskAnyMoreQuestions_Click(); });
    mnuStartAtLogin = addCommand(mnuUtilities, "mnuStartAtLogin", QStringLiteral("Start at Login"), true,
                                 m_platform.autostart.enabled(), [this] { mnuStartAtLogin_Click(); });
    // The entry may have been removed elsewhere (a desktop's settings) meanwhile.
    connect(mnuUtilities, &QMenu::aboutToShow, this,
            [this] { mnuStartAtLogin->setChecked(m_platform.autostart.enabled()); });
    mnuColors = addSubMenu(mnuUtilities, "mnuColors", QStringLiteral("Colors"));
    mnuColorRegular = addCommand(mnuColors, "mnuColorRegular", QStringLiteral("Regular"), true, true,
                                 [this] { mnuColorRegular_Click(); });
    mnuColorMatrix = addCommand(mnuColors, "mnuColorMatrix", QStringLiteral("Matrix"), true, false,
                                [this] { mnuColorMatrix_Click(); });
    mnuColorCustom = addCommand(mnuColors, "mnuColorCustom", QStringLiteral("Custom"), true, false,
                                [this] { mnuColorCustom_Click(); });
    mnuColorCustomModify = addCommand(mnuColors, "mnuColorCustomModify", QStringLiteral("Modify Custom Colors"),
                                      false, false, [this] { mnuColorCustomModify_Click(); });

    mnuHelp = top("mnuHelp", QStringLiteral("Help"));
    mnuAbout = addCommand(mnuHelp, "mnuAbout", QStringLiteral("About"), false, false, [this] { mnuAbout_Click(); });
    mnuLegend =
        addCommand(mnuHelp, "mnuLegend", QStringLiteral("Legend"), false, false, [this] { mnuLegend_Click(); });

    mnuAdminMode = top("mnuAdminMode", QStringLiteral("Administration Mode"));
    mnuTables =
        addCommand(mnuAdminMode, "mnuTables", QStringLiteral("Tables"), false, false, [this] { mnuTables_Click(); });
    mnuAdminMode->menuAction()->setVisible(false);

    // The menu captions carry no accelerators, so F10 opens the menu bar from
    // the keyboard, as on other desktops.
    auto *menuKey = new QShortcut(QKeySequence(Qt::Key_F10), this);
    connect(menuKey, &QShortcut::activated, this, [this] { menuBar()->setActiveAction(mnuProgram->menuAction()); });
}

// ---------------------------------------------------------------------------
// Start-up

void mdiAlarmClock::subStartupFileCheck()
{
    const QString dbPath = locateDatabase(m_platform.appDir, m_platform.files);
    const QString wavPath = m_platform.appDir.path() + QStringLiteral("/alarm.wav");
    if (dbPath.isEmpty()) {
        const QString title = QStringLiteral("ERROR! DATABASE FILE NOT FOUND");
        m_platform.messages.show(QStringLiteral("Missing the file:\r\n") + shippedDatabasePath(m_platform.appDir),
                                 MsgButtons::OkCancel, MsgIcon::None, title);
        m_platform.messages.show(QStringLiteral("The program cannot continue without the database."),
                                 MsgButtons::OkCancel, MsgIcon::None, title);
        m_platform.end.endProgram();
    }
    m_db.useFile(dbPath);
    if (!m_platform.files.fileExists(wavPath)) {
        m_platform.messages.show(QStringLiteral("Missing the file:\r\n") + wavPath, MsgButtons::OkCancel,
                                 MsgIcon::None, QStringLiteral("DEFAULT WAV FILE NOT FOUND"));
        m_platform.messages.show(QStringLiteral("The program CAN continue without:\r\n") + wavPath,
                                 MsgButtons::OkCancel, MsgIcon::None, QStringLiteral("ABLE TO CONTINUE..."));
    }
}

void mdiAlarmClock::MDIForm_Load()
{
    mnuAdminMode->menuAction()->setVisible(false);
    subStartupFileCheck();
    // A probe: a database that cannot be opened ends the program here, before
    // any window is shown.
    { DbHandle probe = m_db.MyDB(); }

    if (m_platform.instance.previousInstanceRunning()) {
        const QString name = m_settings.subReturnAlarmclockName();
        m_platform.messages.show(QStringLiteral("The application,\r\n") + name
                                     + QStringLiteral(" is already activated and running.\r\nYou may find it on your "
                                                      "task bar or to the bottom right within your task tray icons."),
                                 MsgButtons::Ok, MsgIcon::None, QStringLiteral("CLICK TO END,"));
        m_platform.end.endProgram();
    }

    try {
        subSetDonotAskAnyMoreQuestions();
        subAlarmclockCaption();
        m_state.intColorPick = m_settings.intReturnColorPicked();
        checkColourCommand(m_state.intColorPick);
        subShowWindows();
        subApplyMDIProgramSettings();
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("Err_MDIForm_Load"), e);
        return;
    }
    // Closed during the start-up sound: the table window's load went on and
    // armed the clock again.
    if (m_unloaded)
        m_table->tmrAlarmClock->stop();
    m_state.bEvaluateNow = true;
}

void mdiAlarmClock::checkColourCommand(int scheme)
{
    // Any other stored value leaves no scheme checked.
    mnuColorRegular->setChecked(scheme == 0);
    mnuColorMatrix->setChecked(scheme == 1);
    mnuColorCustom->setChecked(scheme == 2);
}

void mdiAlarmClock::subShowWindows()
{
    m_state.intMDIWindowState = 0;
    setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
    show();
    subUnloadSecondaryForms();
    if (!m_table->isLoaded())
        m_table->Form_Load();
    m_tableSub->show();
    subResetMainWindowSize();
    maximizeTableWindow();
    m_state.bEvaluateNow = true;
}

void mdiAlarmClock::subSetDonotAskAnyMoreQuestions()
{
    try {
        mnuDonotAskAnyMoreQuestions->setChecked(m_settings.readDonotAskAnyMore());
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subSetDonotAskAnyMoreQuestions"), e);
    }
}

void mdiAlarmClock::subAlarmclockCaption()
{
    try {
        const QString name = m_settings.subReturnAlarmclockName();
        setWindowTitle(name);
        // Shown as typed: an ampersand in a name is not a keyboard accelerator.
        mnuAlarmClock->setText(QString(name).replace(u'&', QStringLiteral("&&")));
        subRemoveTrayIcon();
        subMinimizeToTray(false, QString());
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subAlarmclockCaption"), e);
    }
}

void mdiAlarmClock::subAlarmclockCaptionModify()
{
    const QString tableName = QStringLiteral("tblprogramsetting");
    constexpr qsizetype kLongestName = 50;
    try {
        QString name;
        for (;;) {
            // An empty table suggests the classic name, not the stored default.
            QString suggestion = QStringLiteral("Alarm Clock");
            {
                Recordset current = m_db.MyDB().openTable(tableName);
                if (!current.eof()) {
                    current.moveFirst();
                    suggestion = textValue(windowTitle());
                    current.close();
                }
            }
            name = textValue(m_platform.input.ask(QStringLiteral("TYPE THE NAME OF YOUR PROGRAM:"),
                                                  QStringLiteral("MODIFY PROGRAM NAME"), suggestion));
            if (name.size() <= kLongestName)
                break;
            // Only shows where the cut would fall; the user types the name again.
            m_platform.messages.show(
                QStringLiteral("Your program name can only be 50 characters long, here is where it will truncate:")
                    + QStringLiteral("\r\n") + name.left(kLongestName),
                MsgButtons::Ok, MsgIcon::Critical,
                QStringLiteral("OOPS! YOUR PROGRAM NAME IS TOO LONG, Please Try Again..."));
        }

        if (!name.isEmpty()) {
            {
                Recordset existing = m_db.MyDB().openTable(tableName);
                if (existing.eof()) {
                    existing.addNew();
                    existing.setField(QStringLiteral("strprogramname"), QStringLiteral("Alarm Clock"));
                    existing.update();
                    existing.close();
                }
            }
            Recordset record = m_db.MyDB().openTable(tableName);
            record.moveFirst();
            record.edit();
            setWindowTitle(name);
            // Stored as the window shows it.
            record.setField(QStringLiteral("strprogramname"), textValue(windowTitle()));
            record.update();
            record.close();
        }

        subRemoveTrayIcon();
        subAlarmclockCaption();
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subAlarmclockCaptionModify"), e);
    }
}

void mdiAlarmClock::subApplyMDIProgramSettings()
{
    try {
        const std::optional<StoredSwitches> stored = m_settings.readSwitches();
        if (!stored)
            checkColourCommand(0);
        const StoredSwitches s = stored.value_or(StoredSwitches{});
        setMenuPair(MenuPair::TimeRow, s.timeRow);
        m_table->chkTimeRow->setChecked(s.timeRow);
        setMenuPair(MenuPair::PopupForm, s.alarmPopupForm);
        m_table->chkShow->setChecked(s.alarmPopupForm);
        setMenuPair(MenuPair::Sound, s.sound);
        m_table->chkSoundOnOff->setChecked(s.sound);
        setMenuPair(MenuPair::MinimizeToTray, s.minimizeToTray);
        m_table->chkMinimizeToTray->setChecked(s.minimizeToTray);
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("subApplyMDIProgramSettings"), e);
    }
}

// ---------------------------------------------------------------------------
// Shutdown

void mdiAlarmClock::closeEvent(QCloseEvent *event)
{
    MDIForm_Unload();
    event->accept();
}

void mdiAlarmClock::MDIForm_Unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    m_db.MyDBClose();
    subRemoveTrayIcon();
    // Every open window of the program, the last opened first, the table
    // window last of all.
    m_forms->closeAll();
    m_table->tmrAlarmClock->stop();
    // Ends a ringing alarm and silences its sound now, not at the end of a play.
    m_table->subStopAlarm();
    m_tableSub->close();
    QCoreApplication::quit();
}

// ---------------------------------------------------------------------------
// Shared window routines

void mdiAlarmClock::subResetMainWindowSize()
{
    // 12060 x 9240 twips at 15 twips a pixel.
    resize(804, 616);
}

void mdiAlarmClock::subUnloadSecondaryForms() { m_forms->unloadAll(); }

QWidget *mdiAlarmClock::showForm(SecondaryForm form) { return m_forms->show(form); }

QWidget *mdiAlarmClock::form(SecondaryForm form) const { return m_forms->form(form); }

void mdiAlarmClock::setColourMarks(int scheme) { checkColourCommand(scheme); }

void mdiAlarmClock::maximizeTableWindow() { m_tableSub->showMaximized(); }

QWidget *mdiAlarmClock::mainPictureTarget() { return m_mdiArea; }

void mdiAlarmClock::restoreMainWindow()
{
    // Normal size even from maximized: the pop-up shows the window as laid out.
    setWindowState((windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized)) | Qt::WindowActive);
    show();
    raise();
    activateWindow();
}

void mdiAlarmClock::setMenuPair(MenuPair pair, bool on)
{
    QAction *onAction = nullptr;
    QAction *offAction = nullptr;
    switch (pair) {
    case MenuPair::Sound:
        onAction = mnuSoundOn;
        offAction = mnuSoundOff;
        break;
    case MenuPair::PopupForm:
        onAction = mnuPopupFormOn;
        offAction = mnuPopupFormOff;
        break;
    case MenuPair::TimeRow:
        onAction = mnuActivateTimeRow;
        offAction = mnuDeactivateTimeRow;
        break;
    case MenuPair::MinimizeToTray:
        onAction = mnuMinimizedToTrayOn;
        offAction = mnuMinimizedToTrayOff;
        break;
    }
    onAction->setChecked(on);
    offAction->setChecked(!on);
}

bool mdiAlarmClock::questionsLimited() const { return mnuDonotAskAnyMoreQuestions->isChecked(); }

// ---------------------------------------------------------------------------
// Menu commands

void mdiAlarmClock::mnuAlarmClock_Click() { subShowWindows(); }

// Choosing it only closes the menu, which Qt has already done.
void mdiAlarmClock::mnuCancelMenu_Click() {}

void mdiAlarmClock::mnuExit_Click() { close(); }

QCheckBox *mdiAlarmClock::pairSwitch(MenuPair pair) const
{
    switch (pair) {
    case MenuPair::Sound:
        return m_table->chkSoundOnOff;
    case MenuPair::PopupForm:
        return m_table->chkShow;
    case MenuPair::TimeRow:
        return m_table->chkTimeRow;
    case MenuPair::MinimizeToTray:
        return m_table->chkMinimizeToTray;
    }
    Q_UNREACHABLE();
}

void mdiAlarmClock::switchPair(MenuPair pair, bool on, const QString &statement, OnError onError)
{
    const auto run = [onError](const auto &step) {
        if (onError == OnError::GoOn)
            resumeNext(step);
        else
            step();
    };
    // Changing the sound switch plays a check sound, and the user may choose
    // again while it plays: only a choice still standing is stored, so the
    // database never says other than the window.
    const quint64 choice = ++m_pairChoices;
    run([&] { setMenuPair(pair, on); });
    // Changing the switch runs its own click handling, as a user's click would.
    run([&] { pairSwitch(pair)->setChecked(on); });
    if (choice == m_pairChoices && pairSwitch(pair)->isChecked() == on)
        run([&] { m_settings.execute(statement); });
}

void mdiAlarmClock::mnuSoundOn_Click()
{
    switchPair(MenuPair::Sound, true, QStringLiteral("UPDATE tblprogramsetting set booSound = True"), OnError::GoOn);
}

void mdiAlarmClock::mnuSoundOff_Click()
{
    switchPair(MenuPair::Sound, false, QStringLiteral("UPDATE tblprogramsetting set booSound = False"),
               OnError::GoOn);
}

void mdiAlarmClock::mnuPopupFormOn_Click()
{
    switchPair(MenuPair::PopupForm, true, QStringLiteral("UPDATE tblprogramsetting set booAlarmPopupForm = True"),
               OnError::GoOn);
}

void mdiAlarmClock::mnuPopupFormOff_Click()
{
    switchPair(MenuPair::PopupForm, false, QStringLiteral("UPDATE tblprogramsetting set booAlarmPopupForm = False"),
               OnError::GoOn);
}

// The two time-row commands have no error handling of their own: an error
// there is an unhandled run-time error, which is reported and ends the program.
void mdiAlarmClock::endOnUnhandledError(const std::function<void()> &command)
{
    try {
        command();
    } catch (const AppError &e) {
        m_platform.messages.show(QStringLiteral("Run-time error '%1':\r\n\r\n%2").arg(e.number).arg(e.description),
                                 MsgButtons::Ok, MsgIcon::Critical, QString());
        m_platform.end.endProgram();
    }
}

void mdiAlarmClock::mnuActivateTimeRow_Click()
{
    endOnUnhandledError([this] {
        switchPair(MenuPair::TimeRow, true, QStringLiteral("UPDATE tblprogramsetting set booTimeRow = True"),
                   OnError::Stop);
    });
}

void mdiAlarmClock::mnuDeactivateTimeRow_Click()
{
    endOnUnhandledError([this] {
        switchPair(MenuPair::TimeRow, false, QStringLiteral("UPDATE tblprogramsetting set booTimeRow = False"),
                   OnError::Stop);
    });
}

void mdiAlarmClock::mnuMinimizedToTrayOn_Click()
{
    switchPair(MenuPair::MinimizeToTray, true, QStringLiteral("UPDATE tblprogramsetting set booMinimizeToTray = True"),
               OnError::GoOn);
}

void mdiAlarmClock::mnuMinimizedToTrayOff_Click()
{
    switchPair(MenuPair::MinimizeToTray, false,
               QStringLiteral("UPDATE tblprogramsetting set booMinimizeToTray = False"), OnError::GoOn);
}

void mdiAlarmClock::mnuMinimizeToTrayNow_Click()
{
    // Added without removing first; a second icon is the tray's business.
    resumeNext([this] { subMinimizeToTray(true, QString()); });
}

void mdiAlarmClock::mnuChangeProgramName_Click() { subAlarmclockCaptionModify(); }

void mdiAlarmClock::mnuDonotAskAnyMoreQuestions_Click()
{
    try {
        const bool limited = !mnuDonotAskAnyMoreQuestions->isChecked();
        mnuDonotAskAnyMoreQuestions->setChecked(limited);
        m_settings.execute(QStringLiteral("UPDATE tblprogramsetting set booDonotAskAnyMore = ")
                           + (limited ? QStringLiteral("True") : QStringLiteral("False")));
    } catch (const AppError &e) {
        showErrorBox(m_platform.messages, QStringLiteral("mnuDonotAskAnyMoreQuestions_Click"), e);
    }
}

void mdiAlarmClock::mnuStartAtLogin_Click()
{
    Autostart &autostart = m_platform.autostart;
    if (!autostart.setEnabled(!autostart.enabled()))
        m_platform.messages.show(QStringLiteral("Could not change the file:\r\n") + autostart.entryPath(),
                                 MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("START AT LOGIN"));
    mnuStartAtLogin->setChecked(autostart.enabled());
}

void mdiAlarmClock::selectColourScheme(qint16 scheme, const QString &statement)
{
    resumeNext([this] { subUnloadSecondaryForms(); });
    checkColourCommand(scheme);
    m_state.intColorPick = scheme;
    resumeNext([&] { m_settings.execute(statement); });
    resumeNext([this] { m_table->subSetMainForeAndBackGroundColors(); });
    resumeNext([this] { subResetMainWindowSize(); });
    // The next tick repaints every row's state colour.
    m_state.bEvaluateNow = true;
}

void mdiAlarmClock::mnuColorRegular_Click()
{
    selectColourScheme(0, QStringLiteral("UPDATE tblprogramsetting set intColorPick = 0;"));
}

void mdiAlarmClock::mnuColorMatrix_Click()
{
    selectColourScheme(1, QStringLiteral("UPDATE tblprogramsetting set intColorPick = 1;"));
}

void mdiAlarmClock::mnuColorCustom_Click()
{
    selectColourScheme(2, QStringLiteral("UPDATE tblprogramsetting set intColorPick = 2;"));
}

void mdiAlarmClock::mnuColorCustomModify_Click()
{
    // The dialog edits the custom scheme, so that scheme is shown while it is open.
    if (!mnuColorCustom->isChecked())
        mnuColorCustom_Click();
    openSecondary(SecondaryForm::CustomColors);
}

void mdiAlarmClock::mnuAbout_Click() { openSecondary(SecondaryForm::About); }

void mdiAlarmClock::mnuLegend_Click() { openSecondary(SecondaryForm::Legend); }

void mdiAlarmClock::mnuTables_Click() { openSecondary(SecondaryForm::Tables); }

void mdiAlarmClock::openSecondary(SecondaryForm form)
{
    resumeNext([this, form] { showForm(form); });
}

// ---------------------------------------------------------------------------
// Tray

void mdiAlarmClock::subMinimizeToTray(bool bHideForm, const QString &zMessage)
{
    if (bHideForm) {
        m_state.intMDIWindowState = 1;
        // Without a tray host nothing on screen could bring a hidden window
        // back: it stays minimized on the task bar instead.
        if (m_platform.tray.available())
            hide();
        else
            setWindowState(windowState() | Qt::WindowMinimized);
    }
    m_platform.tray.add(visibleTrayTip(trayTipField(m_settings.subReturnAlarmclockName(), zMessage)));
}

void mdiAlarmClock::subRemoveTrayIcon() { m_platform.tray.remove(); }

void mdiAlarmClock::trayMouseMessage(int message)
{
    if (message == TrayIcon::LeftDoubleClick) {
        m_state.bEvaluateNow = true;
        m_state.intMDIWindowState = 0;
        setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
        show();
        raise();
        activateWindow();
    } else if (message == TrayIcon::RightButtonDown) {
        mnuProgram->popup(QCursor::pos());
    }
}

void mdiAlarmClock::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || m_unloaded)
        return;
    const int state = windowStateCode(windowState());
    m_state.intMDIWindowState = state;
    if (state != 1) {
        m_state.bEvaluateNow = true;
        m_table->subWakeClock();
    } else if (m_table->chkMinimizeToTray->isChecked() && m_platform.tray.available()) {
        // Hidden once the minimize has finished, not in the middle of it.
        QMetaObject::invokeMethod(
            this,
            [this] {
                // Restored (or closed) before the minimize settled: nothing to hide.
                if (m_unloaded || !(windowState() & Qt::WindowMinimized))
                    return;
                subRemoveTrayIcon();
                subMinimizeToTray(true, QString());
            },
            Qt::QueuedConnection);
    }
}

bool mdiAlarmClock::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_mdiArea->viewport() && event->type() == QEvent::MouseButtonPress
        && (static_cast<QMouseEvent *>(event)->buttons() & Qt::RightButton)) {
        mnuProgram->popup(QCursor::pos());
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}
