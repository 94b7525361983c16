// The main window's menu commands.

#include "shell/mdiAlarmClock.h"

#include "platform/Autostart.h"
#include "platform/Preferences.h"
#include "platform/WakeAlarm.h"
#include "platform/MessageBox.h"
#include "platform/ProgramEnd.h"
#include "rules/AppError.h"
#include "table/frmAlarmClock.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>

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

} // namespace

void mdiAlarmClock::connectMenus()
{
    using Handler = void (mdiAlarmClock::*)();
    const std::pair<QAction *, Handler> commands[] = {
        {mnuAlarmClock, &mdiAlarmClock::mnuAlarmClock_Click},
        {mnuCancelMenu, &mdiAlarmClock::mnuCancelMenu_Click},
        {mnuExit, &mdiAlarmClock::mnuExit_Click},
        {mnuSoundOn, &mdiAlarmClock::mnuSoundOn_Click},
        {mnuSoundOff, &mdiAlarmClock::mnuSoundOff_Click},
        {mnuPopupFormOn, &mdiAlarmClock::mnuPopupFormOn_Click},
        {mnuPopupFormOff, &mdiAlarmClock::mnuPopupFormOff_Click},
        {mnuActivateTimeRow, &mdiAlarmClock::mnuActivateTimeRow_Click},
        {mnuDeactivateTimeRow, &mdiAlarmClock::mnuDeactivateTimeRow_Click},
        {mnuMinimizedToTrayOn, &mdiAlarmClock::mnuMinimizedToTrayOn_Click},
        {mnuMinimizedToTrayOff, &mdiAlarmClock::mnuMinimizedToTrayOff_Click},
        {mnuMinimizeToTrayNow, &mdiAlarmClock::mnuMinimizeToTrayNow_Click},
        {mnuChangeProgramName, &mdiAlarmClock::mnuChangeProgramName_Click},
        {mnuDonotAskAnyMoreQuestions, &mdiAlarmClock::mnuDonotAskAnyMoreQuestions_Click},
        {mnuStartAtLogin, &mdiAlarmClock::mnuStartAtLogin_Click},
        {mnuWakeComputer, &mdiAlarmClock::mnuWakeComputer_Click},
        {mnuColorRegular, &mdiAlarmClock::mnuColorRegular_Click},
        {mnuColorMatrix, &mdiAlarmClock::mnuColorMatrix_Click},
        {mnuColorCustom, &mdiAlarmClock::mnuColorCustom_Click},
        {mnuColorCustomModify, &mdiAlarmClock::mnuColorCustomModify_Click},
        {mnuAbout, &mdiAlarmClock::mnuAbout_Click},
        {mnuLegend, &mdiAlarmClock::mnuLegend_Click},
        {mnuTables, &mdiAlarmClock::mnuTables_Click},
    };
    for (const auto &[command, handler] : commands)
        onCommand(command, [this, handler = handler] { (this->*handler)(); });

    mnuStartAtLogin->setChecked(m_platform.autostart.enabled());
    // The entry may have been removed elsewhere (a desktop's settings) meanwhile.
    connect(mnuUtilities, &QMenu::aboutToShow, this,
            [this] { mnuStartAtLogin->setChecked(m_platform.autostart.enabled()); });

    // Waking the computer needs a clock that can and the right to set it.
    const auto cannotWake = [this](const QString &why) {
        mnuWakeComputer->setEnabled(false);
        mnuWakeComputer->setChecked(false);
        mnuWakeComputer->setToolTip(why);
        m_platform.wake.setEnabled(false);
    };
    m_platform.wake.onUnavailable(cannotWake);
    if (const QString why = m_platform.wake.unavailableReason(); !why.isEmpty()) {
        cannotWake(why);
    } else {
        mnuWakeComputer->setChecked(m_platform.preferences.wakeComputer());
        mnuWakeComputer->setToolTip(QStringLiteral("Wakes the computer from sleep 90 seconds before the next alarm."));
        m_platform.wake.setEnabled(mnuWakeComputer->isChecked());
    }
}

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
    run([&] { setMenuPair(pair, on); });
    // Changing the switch runs its own click handling, as a user's click would.
    run([&] { pairSwitch(pair)->setChecked(on); });
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

void mdiAlarmClock::mnuWakeComputer_Click()
{
    const bool on = !mnuWakeComputer->isChecked();
    m_platform.preferences.setWakeComputer(on);
    mnuWakeComputer->setChecked(on);
    m_platform.wake.setEnabled(on);
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

