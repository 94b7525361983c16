#include "shell/MainMenu.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

namespace {

void name(QMenu *menu, const char *control)
{
    menu->setObjectName(QLatin1String(control));
    menu->menuAction()->setObjectName(QLatin1String(control));
}

QMenu *topMenu(QMenuBar *bar, const char *control, const QString &caption)
{
    QMenu *menu = bar->addMenu(caption);
    name(menu, control);
    return menu;
}

QMenu *subMenu(QMenu *parent, const char *control, const QString &caption)
{
    QMenu *menu = parent->addMenu(caption);
    name(menu, control);
    return menu;
}

QAction *command(QMenu *menu, const char *control, const QString &caption)
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(QLatin1String(control));
    return action;
}

// A command that carries a check mark, set as designed.
QAction *checkCommand(QMenu *menu, const char *control, const QString &caption, bool checked)
{
    QAction *action = command(menu, control, caption);
    action->setCheckable(true);
    action->setChecked(checked);
    return action;
}

} // namespace

void MainMenu::setupMenus(QMainWindow *window)
{
    QMenuBar *bar = window->menuBar();
    mnuProgram = topMenu(bar, "mnuProgram", QStringLiteral("Program"));
    mnuAlarmClock = command(mnuProgram, "mnuAlarmClock", QStringLiteral("Alarm Clock"));
    mnuCancelMenu = command(mnuProgram, "mnuCancelMenu", QStringLiteral("Cancel Menu Selection"));
    mnuExit = command(mnuProgram, "mnuExit", QStringLiteral("Exit"));

    mnuUtilities = topMenu(bar, "mnuUtilities", QStringLiteral("Utilities"));
    mnuSound = subMenu(mnuUtilities, "mnuSound", QStringLiteral("Sound"));
    mnuSoundOn = checkCommand(mnuSound, "mnuSoundOn", QStringLiteral("Sound On"), true);
    mnuSoundOff = checkCommand(mnuSound, "mnuSoundOff", QStringLiteral("Sound Off"), false);
    mnuOnAlarmPopupForm = subMenu(mnuUtilities, "mnuOnAlarmPopupForm", QStringLiteral("On Alarm Popup Form"));
    mnuPopupFormOn = checkCommand(mnuOnAlarmPopupForm, "mnuPopupFormOn", QStringLiteral("Popup Form On"), false);
    mnuPopupFormOff = checkCommand(mnuOnAlarmPopupForm, "mnuPopupFormOff", QStringLiteral("Popup Form Off"), true);
    mnuTimeRow = subMenu(mnuUtilities, "mnuTimeRow", QStringLiteral("Time Row"));
    mnuActivateTimeRow = checkCommand(mnuTimeRow, "mnuActivateTimeRow", QStringLiteral("Activate Time Row"), false);
    mnuDeactivateTimeRow =
        checkCommand(mnuTimeRow, "mnuDeactivateTimeRow", QStringLiteral("Deactivate Time Row"), true);
    mnuMinimizeToTray = subMenu(mnuUtilities, "mnuMinimizeToTray", QStringLiteral("Minimize To Tray"));
    mnuMinimizedToTrayOn =
        checkCommand(mnuMinimizeToTray, "mnuMinimizedToTrayOn", QStringLiteral("Minimize To Tray Allowed"), true);
    mnuMinimizedToTrayOff =
        checkCommand(mnuMinimizeToTray, "mnuMinimizedToTrayOff", QStringLiteral("Minimized To Tray Disabled"), false);
    mnuMinimizeToTrayNow = command(mnuMinimizeToTray, "mnuMinimizeToTrayNow", QStringLiteral("Minimize To Tray Now"));
    mnuChangeProgramName = command(mnuUtilities, "mnuChangeProgramName", QStringLiteral("Change Program Name"));
    mnuDonotAskAnyMoreQuestions = checkCommand(mnuUtilities, "mnuDonotAskAnyMoreQuestions",
                                               QStringLiteral("Limit Application Questions Asked"), false);
    mnuStartAtLogin = checkCommand(mnuUtilities, "mnuStartAtLogin", QStringLiteral("Start at Login"), false);
    mnuWakeComputer =
        checkCommand(mnuUtilities, "mnuWakeComputer", QStringLiteral("Wake Computer for Alarms"), false);
    // A command that cannot work here says why on hover.
    mnuUtilities->setToolTipsVisible(true);
    mnuColors = subMenu(mnuUtilities, "mnuColors", QStringLiteral("Colors"));
    mnuColorRegular = checkCommand(mnuColors, "mnuColorRegular", QStringLiteral("Regular"), true);
    mnuColorMatrix = checkCommand(mnuColors, "mnuColorMatrix", QStringLiteral("Matrix"), false);
    mnuColorCustom = checkCommand(mnuColors, "mnuColorCustom", QStringLiteral("Custom"), false);
    mnuColorCustomModify = command(mnuColors, "mnuColorCustomModify", QStringLiteral("Modify Custom Colors"));

    mnuHelp = topMenu(bar, "mnuHelp", QStringLiteral("Help"));
    mnuAbout = command(mnuHelp, "mnuAbout", QStringLiteral("About"));
    mnuLegend = command(mnuHelp, "mnuLegend", QStringLiteral("Legend"));

    mnuAdminMode = topMenu(bar, "mnuAdminMode", QStringLiteral("Administration Mode"));
    mnuTables = command(mnuAdminMode, "mnuTables", QStringLiteral("Tables"));
    mnuAdminMode->menuAction()->setVisible(false);

    // The menu captions carry no accelerators, so F10 opens the menu bar from
    // the keyboard, as on other desktops.
    auto *menuKey = new QShortcut(QKeySequence(Qt::Key_F10), window);
    QObject::connect(menuKey, &QShortcut::activated, bar,
                     [bar, program = mnuProgram] { bar->setActiveAction(program->menuAction()); });
}

void MainMenu::onCommand(QAction *command, std::function<void()> handler)
{
    // Qt toggles a checkable command before the handler runs: undo that.
    QObject::connect(command, &QAction::triggered, command, [command, handler = std::move(handler)](bool nowChecked) {
        if (command->isCheckable())
            command->setChecked(!nowChecked);
        handler();
    });
}
