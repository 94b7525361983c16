#include "shell/mdiAlarmClock.h"

#include "data/DatabaseLocation.h"
#include "editors/frmEditURL.h"
#include "editors/frmEditWAVEFileNamePath.h"
#include "platform/AppDirectory.h"
#include "platform/FileSystem.h"
#include "platform/InputBox.h"
#include "platform/InstanceGuard.h"
#include "platform/MessageBox.h"
#include "platform/ProgramEnd.h"
#include "platform/TrayIcon.h"
#include "platform/WakeAlarm.h"
#include "platform/WallTimer.h"
#include "rules/AppError.h"
#include "rules/ValueConversions.h"
#include "shell/FrontWindow.h"
#include "shell/TrayPresence.h"
#include "table/frmAlarmClock.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCursor>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QWindow>

namespace {

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
    setupMenus(this);
    connectMenus();

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
    m_trayPresence = std::make_unique<TrayPresence>(platform.tray, *this, m_state, mnuProgram);
    // A second start knocks: it finds this window in front, even from the tray.
    platform.instance.onShowRequested([this] {
        if (!m_unloaded)
            m_trayPresence->bringBack();
    });
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
    // The native window made now, so that its own state news is heard.
    create();
    connect(windowHandle(), &QWindow::windowStateChanged, this,
            [this](Qt::WindowState state) { windowStatesChanged(state); });
}

mdiAlarmClock::~mdiAlarmClock()
{
    // The windows that hold references into this one go first, while
    // everything they may call back into is still whole.
    m_tableSub->disconnect(this);
    m_platform.instance.onShowRequested({});
    m_platform.wake.onUnavailable({});
    m_trayPresence.reset();
    m_forms.reset();
    delete m_tableSub;
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
        m_platform.instance.askPreviousToShow();
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
    // Closed while a start-up box was open: the table window's load went on
    // and armed the clock again.
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
        m_trayPresence->setProgramName(name);
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
    m_trayPresence->stopWatching();
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

void mdiAlarmClock::showLegend() { showForm(SecondaryForm::Legend); }

void mdiAlarmClock::editRowSound(int row, const QString &path)
{
    if (auto *editor = qobject_cast<frmEditWAVEFileNamePath *>(showForm(SecondaryForm::EditWAVEFileNamePath)))
        editor->editRow(row, path);
}

void mdiAlarmClock::editRowURL(int row, const QString &address)
{
    if (auto *editor = qobject_cast<frmEditURL *>(showForm(SecondaryForm::EditURL)))
        editor->editRow(row, address);
}

void mdiAlarmClock::closeSequence()
{
    subResetMainWindowSize();
    maximizeTableWindow();
    subUnloadSecondaryForms();
}

void mdiAlarmClock::subSetMainForeAndBackGroundColors() { m_table->subSetMainForeAndBackGroundColors(); }

QWidget *mdiAlarmClock::form(SecondaryForm form) const { return m_forms->form(form); }

void mdiAlarmClock::setColourMarks(int scheme) { checkColourCommand(scheme); }

void mdiAlarmClock::maximizeTableWindow() { m_tableSub->showMaximized(); }

QWidget *mdiAlarmClock::mainPictureTarget() { return m_mdiArea; }

void mdiAlarmClock::restoreMainWindow() { bringToFront(*this); }

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
// Tray

void mdiAlarmClock::subMinimizeToTray(bool bHideForm, const QString &zMessage)
{
    m_trayPresence->subMinimizeToTray(bHideForm, zMessage);
}

void mdiAlarmClock::subRemoveTrayIcon() { m_trayPresence->subRemoveTrayIcon(); }

void mdiAlarmClock::trayMouseMessage(int message) { m_trayPresence->mouseMessage(message); }

void mdiAlarmClock::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        windowStatesChanged(windowState());
}

// Told by the widget's state change and by its native window's, which on
// Wayland is the only one to hear of a minimize from Qt's own title bar.
void mdiAlarmClock::windowStatesChanged(Qt::WindowStates states)
{
    if (m_unloaded)
        return;
    const int state = windowStateCode(states);
    m_state.intMDIWindowState = state;
    if (state != 1) {
        m_goingToTray = false;
        m_state.bEvaluateNow = true;
        m_table->subWakeClock();
    } else if (!m_goingToTray && m_table->chkMinimizeToTray->isChecked() && m_platform.tray.available()) {
        m_goingToTray = true;
        // Hidden once the minimize has finished, not in the middle of it.
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_goingToTray = false;
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
