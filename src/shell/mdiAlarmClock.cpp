#include "shell/mdiAlarmClock.h"

#include "platform/AppDirectory.h"
#include "platform/AppError.h"
#include "platform/FileSystem.h"
#include "platform/InstanceGuard.h"
#include "platform/MessageBox.h"
#include "platform/ProgramEnd.h"
#include "platform/TrayIcon.h"
#include "shell/TrayTip.h"
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
#include <QTimer>

namespace {

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
    m_tableSub->setObjectName(QStringLiteral("frmAlarmClockWindow"));
    // No title of its own: a maximized child would append it to the main
    // window's caption, which must read exactly the program's name.
    m_tableSub->hide();
    connect(m_tableSub, &QMdiSubWindow::windowStateChanged, this,
            [this](Qt::WindowStates, Qt::WindowStates now) { m_table->Form_Resize(windowStateCode(now)); });

    platform.tray.setMouseHandler([this](int message) { trayMouseMessage(message); });
}

mdiAlarmClock::~mdiAlarmClock()
{
    // Closing the children below must not call back into a half-destroyed window.
    m_tableSub->disconnect(this);
    m_platform.tray.setMouseHandler({});
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
    auto none = [] {};

    mnuProgram = top("mnuProgram", QStringLiteral("Program"));
    mnuAlarmClock = addCommand(mnuProgram, "mnuAlarmClock", QStringLiteral("Alarm Clock"), false, false,
                               [this] { mnuAlarmClock_Click(); });
    mnuCancelMenu = addCommand(mnuProgram, "mnuCancelMenu", QStringLiteral("Cancel Menu Selection"), false, false,
                               [this] { mnuCancelMenu_Click(); });
    mnuExit = addCommand(mnuProgram, "mnuExit", QStringLiteral("Exit"), false, false, [this] { mnuExit_Click(); });

    mnuUtilities = top("mnuUtilities", QStringLiteral("Utilities"));
    mnuSound = addSubMenu(mnuUtilities, "mnuSound", QStringLiteral("Sound"));
    mnuSoundOn = addCommand(mnuSound, "mnuSoundOn", QStringLiteral("Sound On"), true, true, none);
    mnuSoundOff = addCommand(mnuSound, "mnuSoundOff", QStringLiteral("Sound Off"), true, false, none);
    mnuOnAlarmPopupForm = addSubMenu(mnuUtilities, "mnuOnAlarmPopupForm", QStringLiteral("On Alarm Popup Form"));
    mnuPopupFormOn = addCommand(mnuOnAlarmPopupForm, "mnuPopupFormOn", QStringLiteral("Popup Form On"), true, false, none);
    mnuPopupFormOff =
        addCommand(mnuOnAlarmPopupForm, "mnuPopupFormOff", QStringLiteral("Popup Form Off"), true, true, none);
    mnuTimeRow = addSubMenu(mnuUtilities, "mnuTimeRow", QStringLiteral("Time Row"));
    mnuActivateTimeRow =
        addCommand(mnuTimeRow, "mnuActivateTimeRow", QStringLiteral("Activate Time Row"), true, false, none);
    mnuDeactivateTimeRow =
        addCommand(mnuTimeRow, "mnuDeactivateTimeRow", QStringLiteral("Deactivate Time Row"), true, true, none);
    mnuMinimizeToTray = addSubMenu(mnuUtilities, "mnuMinimizeToTray", QStringLiteral("Minimize To Tray"));
    mnuMinimizedToTrayOn = addCommand(mnuMinimizeToTray, "mnuMinimizedToTrayOn",
                                      QStringLiteral("Minimize To Tray Allowed"), true, true, none);
    mnuMinimizedToTrayOff = addCommand(mnuMinimizeToTray, "mnuMinimizedToTrayOff",
                                       QStringLiteral("Minimized To Tray Disabled"), true, false, none);
    mnuMinimizeToTrayNow =
        addCommand(mnuMinimizeToTray, "mnuMinimizeToTrayNow", QStringLiteral("Minimize To Tray Now"), false, false, none);
    mnuChangeProgramName =
        addCommand(mnuUtilities, "mnuChangeProgramName", QStringLiteral("Change Program Name"), false, false, none);
    mnuDonotAskAnyMoreQuestions = addCommand(mnuUtilities, "mnuDonotAskAnyMoreQuestions",
                                             QStringLiteral("Limit Application Questions Asked"), true, false, none);
    mnuColors = addSubMenu(mnuUtilities, "mnuColors", QStringLiteral("Colors"));
    mnuColorRegular = addCommand(mnuColors, "mnuColorRegular", QStringLiteral("Regular"), true, true, none);
    mnuColorMatrix = addCommand(mnuColors, "mnuColorMatrix", QStringLiteral("Matrix"), true, false, none);
    mnuColorCustom = addCommand(mnuColors, "mnuColorCustom", QStringLiteral("Custom"), true, false, none);
    mnuColorCustomModify =
        addCommand(mnuColors, "mnuColorCustomModify", QStringLiteral("Modify Custom Colors"), false, false, none);

    mnuHelp = top("mnuHelp", QStringLiteral("Help"));
    mnuAbout = addCommand(mnuHelp, "mnuAbout", QStringLiteral("About"), false, false, none);
    mnuLegend = addCommand(mnuHelp, "mnuLegend", QStringLiteral("Legend"), false, false, none);

    mnuAdminMode = top("mnuAdminMode", QStringLiteral("Administration Mode"));
    mnuTables = addCommand(mnuAdminMode, "mnuTables", QStringLiteral("Tables"), false, false, none);
    mnuAdminMode->menuAction()->setVisible(false);
}

// ---------------------------------------------------------------------------
// Start-up

void mdiAlarmClock::subStartupFileCheck()
{
    const QString dir = m_platform.appDir.path();
    const QString dbPath = dir + QStringLiteral("/alarmclock.mdb");
    const QString wavPath = dir + QStringLiteral("/alarm.wav");
    if (!m_platform.files.fileExists(dbPath)) {
        const QString title = QStringLiteral("ERROR! DATABASE FILE NOT FOUND");
        m_platform.messages.show(QStringLiteral("Missing the file:\r\n") + dbPath, MsgButtons::OkCancel,
                                 MsgIcon::None, title);
        m_platform.messages.show(QStringLiteral("The program cannot continue without the database."),
                                 MsgButtons::OkCancel, MsgIcon::None, title);
        m_platform.end.endProgram();
    }
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
    const QString name = m_settings.subReturnAlarmclockName();
    setWindowTitle(name);
    // Shown as typed: an ampersand in a name is not a keyboard accelerator.
    mnuAlarmClock->setText(QString(name).replace(u'&', QStringLiteral("&&")));
    subRemoveTrayIcon();
    subMinimizeToTray(false, QString());
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
    // Every open window of the program, the last opened first.
    const QList<QPointer<QWidget>> forms{frmLegend, frmAbout, frmEditURL, frmEditWAVEFileNamePath, frmCustomColors};
    for (auto it = forms.crbegin(); it != forms.crend(); ++it)
        if (*it)
            (*it)->close();
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w != this && w->isVisible())
            w->close();
    m_table->tmrAlarmClock->stop();
    m_table->tmrAlarmSound->stop();
    m_table->tmrAlarmSoundFlash->stop();
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

void mdiAlarmClock::subUnloadSecondaryForms()
{
    for (QPointer<QWidget> *form : {&frmLegend, &frmAbout, &frmEditURL, &frmEditWAVEFileNamePath, &frmCustomColors})
        if (*form)
            (*form)->close();
}

void mdiAlarmClock::maximizeTableWindow() { m_tableSub->showMaximized(); }

QWidget *mdiAlarmClock::mainPictureTarget() { return m_mdiArea; }

void mdiAlarmClock::restoreMainWindow()
{
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
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

void mdiAlarmClock::mnuCancelMenu_Click() {}

void mdiAlarmClock::mnuExit_Click() { close(); }

// ---------------------------------------------------------------------------
// Tray

void mdiAlarmClock::subMinimizeToTray(bool bHideForm, const QString &zMessage)
{
    if (bHideForm) {
        m_state.intMDIWindowState = 1;
        hide();
    }
    m_platform.tray.add(trayTipField(m_settings.subReturnAlarmclockName(), zMessage));
}

void mdiAlarmClock::subRemoveTrayIcon() { m_platform.tray.remove(); }

void mdiAlarmClock::trayMouseMessage(int message)
{
    if (message == TrayIcon::LeftDoubleClick) {
        m_state.bEvaluateNow = true;
        m_state.intMDIWindowState = 0;
        setWindowState(windowState() & ~Qt::WindowMinimized);
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
    } else if (m_table->chkMinimizeToTray->isChecked()) {
        // Hidden once the minimize has finished, not in the middle of it.
        QMetaObject::invokeMethod(
            this,
            [this] {
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
